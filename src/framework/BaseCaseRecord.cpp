#include "framework/BaseCaseRecord.h"

BaseCaseRecord::BaseCaseRecord(const std::vector<std::string>& names) : cells(names.size()) {
    for (std::size_t position = 0; position < names.size(); ++position) {
        positions.emplace(names[position], static_cast<int>(position));
    }
}

BaseCaseRecord::~BaseCaseRecord() = default;

const ScoreValue* BaseCaseRecord::GetValueByIndex(int index) const {
    switch (GetContent(index)) {
        case Number:
            return &cells[static_cast<std::size_t>(index)].number;
        case Text:
            return &cells[static_cast<std::size_t>(index)].text;
        case Absent:
            break;
    }
    return nullptr;
}

const ScoreValue* BaseCaseRecord::GetValueByName(const std::string& name) const {
    return GetValueByIndex(GetVarIndex(name));
}

bool BaseCaseRecord::IsIndexed() const {
    return true;
}

int BaseCaseRecord::GetVarIndex(const std::string& name) const {
    const auto found = positions.find(name);
    return found != positions.end() ? found->second : -1;
}

void BaseCaseRecord::SetNumber(int index, double number) {
    Cell& cell = cells[static_cast<std::size_t>(index)];
    cell.content = Number;
    cell.number.SetDoubleValue(number);
}

void BaseCaseRecord::SetText(int index, std::string_view text) {
    Cell& cell = cells[static_cast<std::size_t>(index)];
    cell.content = Text;
    cell.text.SetText(text);
}

void BaseCaseRecord::SetAbsent(int index) {
    cells[static_cast<std::size_t>(index)].content = Absent;
}

void BaseCaseRecord::SetAllAbsent() {
    for (Cell& cell : cells)
        cell.content = Absent;
}
