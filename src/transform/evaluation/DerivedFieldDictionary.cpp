#include "transform/evaluation/DerivedFieldDictionary.h"

#include <algorithm>
#include <mutex>
#include <unordered_map>
#include <utility>

#ifdef _WIN32
#include "transform/evaluation/ThreadSlot.h"
#endif

namespace nbscore {

struct DerivedRecordPool::Shelf {
    std::mutex mutex;
    std::vector<std::unique_ptr<DerivedCaseRecord>> records;
    std::vector<DerivedCaseRecord*> idle;

    DerivedCaseRecord* Take(const DerivedFields& derivedFields) {
        const std::lock_guard lock(mutex);
        if (idle.empty()) {
            records.push_back(std::make_unique<DerivedCaseRecord>(derivedFields));
            // Room for every record, so that giving one back never allocates and never fails.
            idle.reserve(records.size());
            return records.back().get();
        }
        DerivedCaseRecord* record = idle.back();
        idle.pop_back();
        return record;
    }

    void GiveBack(DerivedCaseRecord* record) {
        const std::lock_guard lock(mutex);
        idle.push_back(record);
    }
};

/// A record that a thread uses. It goes back to its pool when the thread ends, unless the pool is gone by then, and the
/// record with it.
class DerivedRecordPool::Loan {
public:
    Loan(const std::shared_ptr<Shelf>& lender, DerivedCaseRecord* lent) : shelf(lender), record(lent) {}
    Loan(Loan&& other) noexcept : shelf(std::move(other.shelf)), record(other.record) {}
    Loan& operator=(Loan&&) = delete;
    ~Loan() {
        if (const auto lender = shelf.lock()) lender->GiveBack(record);
    }

    bool IsOver() const { return shelf.expired(); }
    DerivedCaseRecord& GetRecord() const { return *record; }

    /// The calling thread's loans, by lender. Another lender may come to the address of one that is gone: a loan counts
    /// only when it is not over.
    static std::unordered_map<const Shelf*, Loan>& OfThisThread() {
        using Loans = std::unordered_map<const Shelf*, Loan>;
#ifdef _WIN32
        static const ThreadSlot slot([](void* loans) { delete static_cast<Loans*>(loans); });
        if (slot.Get() == nullptr) {
            auto loans = std::make_unique<Loans>();
            slot.Set(loans.get());
            return *loans.release();
        }
        return *static_cast<Loans*>(slot.Get());
#else
        thread_local Loans loans;
        return loans;
#endif
    }

private:
    std::weak_ptr<Shelf> shelf;
    DerivedCaseRecord* record;
};

DerivedRecordPool::DerivedRecordPool(const DerivedFields& derivedFields)
    : derived(derivedFields), shelf(std::make_shared<Shelf>()) {}

DerivedCaseRecord& DerivedRecordPool::RecordOfThisThread() {
    auto& loans = Loan::OfThisThread();
    if (const auto found = loans.find(shelf.get()); found != loans.end() && !found->second.IsOver()) {
        return found->second.GetRecord();
    }
    // Loans of pools that are gone are removed here, so that there are never more than pools that existed together.
    std::erase_if(loans, [](const auto& loan) { return loan.second.IsOver(); });
    Loan loan(shelf, shelf->Take(derived));
    return loans.emplace(shelf.get(), std::move(loan)).first->second.GetRecord();
}

DerivedFieldDictionary::DerivedFieldDictionary(std::unique_ptr<const DerivedFields> derivedFields)
    : derived(std::move(derivedFields)), records(*derived) {}

void DerivedFieldDictionary::SetUpDerivedCaseRecord() {
    // So that this thread's first case takes no longer than the others. Other threads do it at their first case.
    records.RecordOfThisThread();
}

const ScoreCaseRecord* DerivedFieldDictionary::GetValuesForDeriedVars(const ScoreCaseRecord* record,
                                                                      const ScoreDictionary*) {
    DerivedCaseRecord& derivedRecord = records.RecordOfThisThread();
    derivedRecord.Begin(record);
    return &derivedRecord;
}

void DerivedFieldDictionary::GetDerivedVars(std::vector<ScoreDictVar*>& vars) const {
    vars.clear();
    vars.reserve(derived->fields.size());
    for (const DerivedField& field : derived->fields)
        vars.push_back(field.variable.get());
}

ScoreDictVar* DerivedFieldDictionary::GetVar(const std::string& name) const {
    const DerivedField* const field = derived->Find(name);
    return field ? field->variable.get() : nullptr;
}

std::vector<std::string> DerivedFieldDictionary::GetFieldsRead(const std::string& derivedField) const {
    const DerivedField* const field = derived->Find(derivedField);
    if (field == nullptr) return {};
    std::vector<std::string> names;
    for (const std::uint32_t input : derived->InputsOf(*field))
        names.push_back(derived->inputs[input].name);
    for (const std::uint32_t dependency : derived->DependenciesOf(*field))
        names.push_back(derived->fields[dependency].variable->GetNameText());
    return names;
}

std::vector<std::string> DerivedFieldDictionary::FindFewSources(const std::string& derivedField,
                                                                std::size_t mostFields) const {
    const auto start = derived->PositionOf(derivedField);
    if (!start) return {};
    std::vector<std::uint32_t> met = {*start};
    std::vector<std::uint32_t> inputs;
    const auto add = [](std::vector<std::uint32_t>& positions, std::uint32_t position) {
        if (std::ranges::find(positions, position) == positions.end()) positions.push_back(position);
    };
    for (std::size_t next = 0; next < met.size(); ++next) {
        const DerivedField& field = derived->fields[met[next]];
        if (field.inputCount > mostFields || field.dependencyCount > mostFields) return {};
        for (const std::uint32_t input : derived->InputsOf(field))
            add(inputs, input);
        for (const std::uint32_t dependency : derived->DependenciesOf(field))
            add(met, dependency);
        if (met.size() + inputs.size() > mostFields) return {};
    }
    std::vector<std::string> names;
    for (const std::uint32_t input : inputs)
        names.push_back(derived->inputs[input].name);
    return names;
}

std::string DerivedFieldDictionary::Describe(const std::string& derivedField) const {
    const auto position = derived->PositionOf(derivedField);
    return position && *position < derived->texts.size() ? derived->texts[*position] : std::string();
}

std::vector<std::string> DerivedFieldDictionary::DescribeFunctions() const {
    return derived->textsOfFunctions;
}

}  // namespace nbscore
