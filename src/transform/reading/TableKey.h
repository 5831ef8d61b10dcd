#pragma once

#include <string>

#include "transform/evaluation/ExpressionValue.h"
#include "transform/evaluation/FieldReference.h"

namespace nbscore {

/// A column of a table in which the values of a field are looked up.
///
/// Numbers are equal whatever their digits look like, truth values whether they are spelt as words or as 1 and 0, texts
/// byte by byte. Where the kind of the field is not known (Any), what reads as a number is one, and a truth value is
/// looked up by its word when a cell of the column is that word, else as the number 1 or 0.
struct KeyColumn {
    FieldReference field;
    bool hasTrue = false;
    bool hasFalse = false;

    /// To be called for every cell before the first value is looked up.
    void NoteCell(const std::string& cell);
};

/// The key of a table row and of a case alike: a text of its parts, so that equal parts make equal keys and no others.
class TableKey {
public:
    /// @param part a cell of the column, or a value that is looked up in it.
    void Add(const ExpressionValue& part, const KeyColumn& column);
    const std::string& GetText() const { return text; }

private:
    std::string text;
};

}  // namespace nbscore
