#include "table/People.h"

#include <algorithm>

namespace nbscore::bench {
namespace {

std::array<PersonColumn, numPersonColumns> MakeColumns() {
    using enum InputKind;
    return {{
        {"region", Texts, {"coast", "south", "north", "inland", "mountains", "border", "capital", "islands"}},
        {"job",
         Texts,
         {"student", "employee", "worker", "pensioner", "nurse", "teacher", "engineer", "farmer", "shopkeeper",
          "civil servant", "self-employed", "none"}},
        {"education", Texts, {"none", "primary", "secondary", "college", "university", "doctorate"}},
        {"housing", Texts, {"rent", "own", "family", "dormitory", "cooperative"}},
        {"channel", Texts, {"branch", "phone", "web", "app", "letter", "partner", "fair"}},
        {"plan", Texts, {"basic", "plus", "gold", "family", "youth", "senior", "night", "travel", "business"}},
        {"children", Numbers, {}, 0, 6},
        {"rooms", Numbers, {}, 1, 7},
        {"age", Bins, {}, 18, 73, {25, 35, 45, 55, 65}},
        {"income", Bins, {}, 800, 9200, {1500, 2500, 3500, 5000}},
    }};
}

std::size_t CountValues(const PersonColumn& column) {
    return column.kind == InputKind::Texts ? column.texts.size() : column.count;
}

}  // namespace

const std::array<PersonColumn, numPersonColumns>& GetPersonColumns() {
    static const std::array<PersonColumn, numPersonColumns> columns = MakeColumns();
    return columns;
}

Person PeopleDrawer::Draw() {
    Person person{};
    for (std::size_t i = 0; i < numPersonColumns; ++i)
        person[i] = DrawBelow(CountValues(GetPersonColumns()[i]));
    return person;
}

Person PeopleDrawer::DrawWhoSays(bool yes) {
    Person person = Draw();
    if (!yes) return person;
    const Person other = Draw();
    for (std::size_t i = 0; i < numPersonColumns; ++i)
        person[i] = std::max(person[i], other[i]);
    return person;
}

void WritePerson(std::ostream& out, const Person& person) {
    for (std::size_t i = 0; i < numPersonColumns; ++i) {
        const PersonColumn& column = GetPersonColumns()[i];
        if (i > 0) out << ',';
        if (column.kind == InputKind::Texts) {
            out << column.texts[person[i]];
        } else {
            out << column.least + person[i];
        }
    }
}

std::size_t CategoryOf(const PersonColumn& column, std::size_t value) {
    if (column.kind != InputKind::Bins) return value;
    const auto bin = std::ranges::lower_bound(column.cutpoints, column.least + value);
    return static_cast<std::size_t>(bin - column.cutpoints.begin());
}

}  // namespace nbscore::bench
