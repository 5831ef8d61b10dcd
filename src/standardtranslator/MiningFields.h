#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/ScoreDictVar.h"
#include "pmml/DocumentTree.h"
#include "pmml/FaultList.h"
#include "pmml/Transcoder.h"
#include "standardtranslator/WrittenValues.h"
#include "transform/evaluation/FieldTreatment.h"

namespace nbscore {

/// How producers wrote an attribute of mining fields before the standard had it.
inline constexpr std::string_view olderInvalidReplacement = "x-invalidValueReplacement";

/// A field that mining schemas list: the model's own, and that of a MiningModel around it. What one of them does not
/// say, the other may; they may not say different things.
class MiningFieldEntry {
public:
    enum Usage { Active, Target, Other };

    MiningFieldEntry(Element element, std::string fieldName, Usage fieldUsage)
        : elements{element}, name(std::move(fieldName)), usage(fieldUsage) {}

    /// Adds what another schema says. Throws VeskException 12 where that is something else.
    void Join(Element element, Usage otherUsage);

    const std::string& GetName() const { return name; }
    Usage GetUsage() const { return usage; }
    Element GetElement() const { return elements.front(); }
    /// The element with the attribute; any where none has it.
    Element GetElementWith(Name attribute) const;
    std::optional<std::string_view> GetAttribute(Name attribute) const {
        return GetElementWith(attribute).GetAttribute(attribute);
    }

    /// Reads how values of the field are treated. Throws VeskException 5 for other than the listed words and for
    /// outliers of texts, 2 where the value that stands in for invalid ones is not there, 9 for what should be a
    /// number.
    FieldTreatmentRules ReadTreatment(const ScoreDictVar& variable, const Transcoder& transcoder) const;
    /// Throws VeskException 5 where the field, which is derived, would have to be treated.
    void RequireUntreated() const;

private:
    struct WrittenValue {
        Element element;
        std::string_view text;
    };

    /// Throws VeskException 2 where there is none.
    WrittenValue FindInvalidReplacement() const;

    std::vector<Element> elements;
    std::string name;
    Usage usage;
};

/// Reads the mining schemas of a document. Each field is in the list once, in the order of the document.
/// @param schemas that of the outer model first.
/// @param dataFields names of the data fields.
std::vector<MiningFieldEntry> ReadMiningSchemas(const std::vector<Element>& schemas, const WrittenNames& dataFields,
                                                const Transcoder& transcoder, FaultList& faults);

}  // namespace nbscore
