#include "transform/evaluation/DerivedRecordPool.h"

#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

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

/// A record in the hands of a thread, given back when the thread ends; unless its pool is gone, and the record too.
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

    /// The calling thread's loans, by lender. A lender's address may be used again after it is gone: a loan counts
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
    // What is left of pools that are gone goes now, so that it never outgrows the pools that were alive together.
    std::erase_if(loans, [](const auto& loan) { return loan.second.IsOver(); });
    Loan loan(shelf, shelf->Take(derived));
    return loans.emplace(shelf.get(), std::move(loan)).first->second.GetRecord();
}

}  // namespace nbscore
