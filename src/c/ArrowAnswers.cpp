#include "c/ArrowAnswers.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <utility>

#include "c/Failure.h"
#include "framework/MCMV.h"

namespace nbscore {
namespace {

/// What belongs to a struct array or its schema. A child that somebody took has no release any more.
template <typename Struct>
struct StructParts {
    explicit StructParts(std::size_t numChildren) : children(numChildren, Struct{}) {
        for (Struct& child : children)
            pointers.push_back(&child);
    }
    StructParts(const StructParts&) = delete;
    StructParts& operator=(const StructParts&) = delete;
    ~StructParts() {
        for (Struct& child : children) {
            if (child.release != nullptr) child.release(&child);
        }
    }

    std::vector<Struct> children;
    std::vector<Struct*> pointers;
    std::array<const void*, 1> buffers = {nullptr};
};

template <typename Parts, typename Struct>
void Release(Struct* released) {
    delete static_cast<Parts*>(released->private_data);
    released->release = nullptr;
}

const char* FormatOf(ColumnKind kind) {
    switch (kind) {
        case ColumnKind::Texts:
            return "u";
        case ColumnKind::Numbers:
            return "g";
        case ColumnKind::WholeNumbers:
            return "l";
    }
    return "";
}

void GiveColumnSchema(const ColumnType& column, ArrowSchema& out) {
    auto name = std::make_unique<std::string>(column.name);
    out = ArrowSchema{};
    out.format = FormatOf(column.kind);
    out.name = name->c_str();
    out.flags = ARROW_FLAG_NULLABLE;
    out.release = &Release<std::string, ArrowSchema>;
    out.private_data = name.release();
}

}  // namespace

std::size_t CountNumbers(std::size_t cases, std::size_t numbersOfCase) {
    constexpr std::size_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(double);
    if (numbersOfCase > 0 && cases > most / numbersOfCase) throw std::bad_alloc();
    return cases * numbersOfCase;
}

struct ArrowColumn::Parts {
    explicit Parts(ArrowColumn&& given) : column(std::move(given)) {
        const void* const validity = column.numAbsent == 0 ? nullptr : column.bits.data();
        const double* const allNumbers = column.numbers ? column.numbers->data() : column.ownNumbers.data();
        switch (column.kind) {
            case ColumnKind::Texts:
                buffers = {validity, column.offsets.data(), column.bytes.data()};
                break;
            case ColumnKind::Numbers:
                buffers = {validity, allNumbers + column.firstNumber, nullptr};
                break;
            case ColumnKind::WholeNumbers:
                buffers = {validity, column.wholeNumbers.data(), nullptr};
                break;
        }
    }

    ArrowColumn column;
    std::array<const void*, 3> buffers;
};

ArrowColumn::ArrowColumn(std::shared_ptr<const std::vector<double>> all, std::size_t first, std::size_t count)
    : kind(ColumnKind::Numbers), size(count), numbers(std::move(all)), firstNumber(first) {
    for (std::size_t entry = 0; entry < count; ++entry) {
        if (MCMV::IsMissing((*numbers)[first + entry])) MarkAbsent(entry);
    }
}

ArrowColumn::ArrowColumn(ColumnKind columnKind) : kind(columnKind) {
    if (kind == ColumnKind::Texts) offsets.push_back(0);
}

void ArrowColumn::MarkAbsent(std::size_t entry) {
    const std::size_t needed = (std::max(size, entry + 1) + 7) / 8;
    if (bits.size() < needed) bits.resize(needed, 0xFF);
    bits[entry / 8] = static_cast<std::uint8_t>(bits[entry / 8] & ~(1U << (entry % 8)));
    ++numAbsent;
}

void ArrowColumn::AddAbsent() {
    MarkAbsent(size);
    switch (kind) {
        case ColumnKind::Texts:
            offsets.push_back(offsets.back());
            break;
        case ColumnKind::Numbers:
            ownNumbers.push_back(0.0);
            break;
        case ColumnKind::WholeNumbers:
            wholeNumbers.push_back(0);
            break;
    }
    ++size;
}

void ArrowColumn::Add(double number) {
    if (MCMV::IsMissing(number)) return AddAbsent();
    ownNumbers.push_back(number);
    ++size;
}

void ArrowColumn::AddWhole(std::int64_t number) {
    wholeNumbers.push_back(number);
    ++size;
}

void ArrowColumn::Add(std::string_view text) {
    constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
    if (text.size() > most - bytes.size())
        throw BadCases("The texts of an answer's column come to more than 2^31 bytes: score fewer cases at once.");
    bytes += text;
    offsets.push_back(static_cast<std::int32_t>(bytes.size()));
    ++size;
}

void ArrowColumn::Give(ArrowColumn&& column, ArrowArray& out) {
    // Absent ones at the end may need bits that those before did not.
    if (column.numAbsent > 0) column.bits.resize((column.size + 7) / 8, 0xFF);
    auto parts = std::make_unique<Parts>(std::move(column));
    out = ArrowArray{};
    out.length = static_cast<std::int64_t>(parts->column.size);
    out.null_count = parts->column.numAbsent;
    out.n_buffers = parts->column.kind == ColumnKind::Texts ? 3 : 2;
    out.buffers = parts->buffers.data();
    out.release = &Release<Parts, ArrowArray>;
    out.private_data = parts.release();
}

void GiveArray(std::vector<ArrowColumn>&& columns, std::size_t entries, ArrowArray& out) {
    auto parts = std::make_unique<StructParts<ArrowArray>>(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i)
        ArrowColumn::Give(std::move(columns[i]), parts->children[i]);
    out = ArrowArray{};
    out.length = static_cast<std::int64_t>(entries);
    out.n_buffers = 1;
    out.n_children = static_cast<std::int64_t>(columns.size());
    out.buffers = parts->buffers.data();
    out.children = parts->pointers.data();
    out.release = &Release<StructParts<ArrowArray>, ArrowArray>;
    out.private_data = parts.release();
}

void GiveSchema(const std::vector<ColumnType>& columns, ArrowSchema& out) {
    auto parts = std::make_unique<StructParts<ArrowSchema>>(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i)
        GiveColumnSchema(columns[i], parts->children[i]);
    out = ArrowSchema{};
    out.format = "+s";
    out.name = "";
    out.n_children = static_cast<std::int64_t>(columns.size());
    out.children = parts->pointers.data();
    out.release = &Release<StructParts<ArrowSchema>, ArrowSchema>;
    out.private_data = parts.release();
}

}  // namespace nbscore
