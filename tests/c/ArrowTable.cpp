#include "c/ArrowTable.h"

#include "framework/NumberText.h"

namespace nbscore::test {

void ArrowTable::Fill(Part& part, const std::string& name, const std::string& format) {
    part.name = name;
    part.format = format;
    part.schema.release = [](ArrowSchema* schema) { schema->release = nullptr; };
    part.array.release = [](ArrowArray* array) { array->release = nullptr; };
}

ArrowTable::Part& ArrowTable::AddPart(const std::string& name, const std::string& format) {
    Part& part = parts.emplace_back();
    Fill(part, name, format);
    return part;
}

void ArrowTable::Finish(Part& part, std::int64_t length) {
    part.schema.name = part.name.c_str();
    part.schema.format = part.format.c_str();
    part.schema.flags = ARROW_FLAG_NULLABLE;
    part.array.length = length;
    part.array.n_buffers = static_cast<std::int64_t>(part.buffers.size());
    part.array.buffers = part.buffers.data();
}

void ArrowTable::FinishAll() {
    if (whole.schema.release != nullptr) return;
    Fill(whole, "", "+s");
    whole.buffers = {nullptr};
    Finish(whole, cases);
    for (Part& part : parts) {
        Finish(part, cases);
        schemas.push_back(&part.schema);
        arrays.push_back(&part.array);
    }
    whole.schema.n_children = whole.array.n_children = static_cast<std::int64_t>(parts.size());
    whole.schema.children = schemas.data();
    whole.array.children = arrays.data();
}

std::vector<std::string> ArrowScores::GetNames() const {
    std::vector<std::string> names;
    for (std::int64_t i = 0; i < schema.n_children; ++i)
        names.emplace_back(schema.children[i]->name);
    return names;
}

std::vector<std::string> ArrowScores::GetRow(std::int64_t entry) const {
    std::vector<std::string> cells;
    for (std::int64_t i = 0; i < array.n_children; ++i) {
        const ArrowArray& column = *array.children[i];
        const auto* const bits = static_cast<const std::uint8_t*>(column.buffers[0]);
        const bool isThere = bits == nullptr || ((bits[entry / 8] >> (entry % 8)) & 1) != 0;
        std::string& cell = cells.emplace_back();
        if (!isThere) continue;
        if (std::string(schema.children[i]->format) == "l") {
            cell = std::to_string(static_cast<const std::int64_t*>(column.buffers[1])[entry]);
        } else if (std::string(schema.children[i]->format) == "u") {
            const auto* const offsets = static_cast<const std::int32_t*>(column.buffers[1]);
            cell.assign(static_cast<const char*>(column.buffers[2]) + offsets[entry],
                        static_cast<const char*>(column.buffers[2]) + offsets[entry + 1]);
        } else {
            cell = FormatNumber(static_cast<const double*>(column.buffers[1])[entry]);
        }
    }
    return cells;
}

}  // namespace nbscore::test
