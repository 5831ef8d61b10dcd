#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "framework/ScoreDictVar.h"
#include "framework/ScoreDictionary.h"
#include "framework/SeededHash.h"
#include "standard/ValuePositions.h"

namespace nbscore {

/// The values of a field, so that what a document writes elsewhere is known again: as ValuePositions tells them apart
/// or, where no text is quite so, as they are without the blanks around them.
class WrittenValues {
public:
    explicit WrittenValues(ValueKind kind) : positions(kind) {}
    /// Those that a variable declares.
    explicit WrittenValues(const ScoreDictVar& variable);

    /// Appends a value, which in a field of numbers must be one.
    /// @return false where it is known already.
    bool Add(const std::string& text);
    /// The value's position; nothing for one that is not known, and for one of which that is not clear.
    std::optional<std::size_t> Find(const std::string& text) const;
    std::size_t GetSize() const { return positions.GetSize(); }
    /// For values that do not stand in the document, whose blanks are their own.
    const ValuePositions& GetPositions() const { return positions; }

private:
    ValuePositions positions;
    /// Without blanks around them; nothing where several texts are the same then.
    SeededMap<std::string, std::optional<std::size_t>> trimmedTexts;
};

/// The names of fields, so that one is known again that is written with other blanks around it.
class WrittenNames {
public:
    void Add(const std::string& name);
    /// The name of the field that is meant; the text itself where none is.
    const std::string& Find(const std::string& written) const;

private:
    WrittenValues texts{ValueKind::Text};
    std::vector<std::string> names;
};

/// Data fields by their names as a document writes them.
class FieldsByWrittenName : public ScoreDictionary {
public:
    /// Both must outlive this.
    FieldsByWrittenName(const ScoreDictionary& dataDictionary, const WrittenNames& namesOfFields)
        : dictionary(dataDictionary), names(namesOfFields) {}

    /// Adds nothing.
    bool AddVar(const std::string& /*name*/, ScoreDictVar* /*var*/) override { return false; }
    ScoreDictVar* GetVar(const std::string& name) const override { return dictionary.GetVar(names.Find(name)); }
    void GetAllVars(std::vector<ScoreDictVar*>& vars) const override { dictionary.GetAllVars(vars); }

private:
    const ScoreDictionary& dictionary;
    const WrittenNames& names;
};

}  // namespace nbscore
