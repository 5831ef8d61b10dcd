#include "standardtranslator/MiningFields.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "framework/SeededHash.h"
#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

/// Of which two schemas may not say different things.
constexpr Name treatments[] = {Name::optype,
                               Name::outliers,
                               Name::lowValue,
                               Name::highValue,
                               Name::missingValueReplacement,
                               Name::missingValueTreatment,
                               Name::invalidValueTreatment,
                               Name::invalidValueReplacement};

constexpr std::string_view outlierWords[] = {"asIs", "asMissingValues", "asExtremeValues"};
// What the standard did not have at first, producers wrote with "x-".
constexpr std::string_view invalidWords[] = {"returnInvalid", "asIs", "asMissing", "asValue", "x-asValue"};
/// All but the last two only say where a replacement came from.
constexpr std::string_view missingWords[] = {"asIs",    "asMean",        "asMode",         "asMedian",
                                             "asValue", "returnInvalid", "x-returnInvalid"};

bool IsInvalid(std::size_t missingWord) {
    return missingWords[missingWord].ends_with("returnInvalid");
}

MiningFieldEntry::Usage ReadUsage(Element field) {
    static constexpr std::string_view words[] = {"active", "predicted", "target",          "supplementary",
                                                 "group",  "order",     "frequencyWeight", "analysisWeight"};
    switch (WordAttribute(field, Name::usageType, words)) {
        case 0:
            return MiningFieldEntry::Active;
        case 1:
        case 2:
            return MiningFieldEntry::Target;
        default:
            return MiningFieldEntry::Other;
    }
}

class SchemaReader {
public:
    SchemaReader(const WrittenNames& namesOfDataFields, const Transcoder& textTranscoder, FaultList& faultsOfFields)
        : dataFields(namesOfDataFields), transcoder(textTranscoder), faults(faultsOfFields) {}

    void Read(Element schema) {
        for (const Element field : FindSchemaFields(schema))
            faults.Try([&] { ReadField(field); });
    }
    std::vector<MiningFieldEntry> TakeEntries() { return std::move(entries); }

private:
    void ReadField(Element field) {
        static constexpr std::string_view optypes[] = {"continuous", "ordinal", "categorical"};
        WordAttribute(field, Name::optype, optypes);
        const std::string name = dataFields.Find(RequiredText(transcoder, field, Name::name));
        const MiningFieldEntry::Usage usage = ReadUsage(field);
        const auto [position, isNew] = positions.emplace(name, entries.size());
        if (isNew) {
            entries.emplace_back(field, name, usage);
        } else if (entries[position->second].GetElement().GetParent() == field.GetParent()) {
            throw RefusalAt(field, Refusal::FieldRedefined, {ExcerptOf(name)});
        } else {
            entries[position->second].Join(field, usage);
        }
    }

    const WrittenNames& dataFields;
    const Transcoder& transcoder;
    FaultList& faults;
    std::vector<MiningFieldEntry> entries;
    SeededMap<std::string, std::size_t> positions;
};

}  // namespace

void MiningFieldEntry::Join(Element element, Usage otherUsage) {
    for (const Name attribute : treatments) {
        const auto mine = GetAttribute(attribute);
        const auto other = element.GetAttribute(attribute);
        if (mine && other && mine != other) {
            throw RefusalAt(element, Refusal::FieldTreatedTwice,
                            {ExcerptOf(name), SpellingOf(attribute), ExcerptOf(*mine), ExcerptOf(*other)});
        }
    }
    elements.push_back(element);
    if (otherUsage == Target || usage == Other) usage = otherUsage;
}

Element MiningFieldEntry::GetElementWith(Name attribute) const {
    const auto found = std::ranges::find_if(elements, [attribute](Element each) { return each.Has(attribute); });
    return found == elements.end() ? elements.front() : *found;
}

MiningFieldEntry::WrittenValue MiningFieldEntry::FindInvalidReplacement() const {
    const Element element = GetElementWith(Name::invalidValueReplacement);
    if (const auto text = element.GetAttribute(Name::invalidValueReplacement)) return {element, *text};
    for (const Element each : elements) {
        for (std::size_t i = 0; i < each.CountAttributes(); ++i) {
            const Element::Attribute attribute = each.GetAttributeAt(i);
            if (each.GetTree().GetSpelling(attribute.name) == olderInvalidReplacement) return {each, attribute.value};
        }
    }
    return {element, RequiredAttribute(element, Name::invalidValueReplacement)};
}

FieldTreatmentRules MiningFieldEntry::ReadTreatment(const ScoreDictVar& variable, const Transcoder& transcoder) const {
    const bool isNumeric = variable.GetStorageType() == ScoreDictVar::NumericStorage;
    const auto wordOf = [this](Name attribute, std::span<const std::string_view> words) {
        return WordAttribute(GetElementWith(attribute), attribute, words);
    };
    const auto numberOf = [this](Name attribute) -> std::optional<double> {
        const Element element = GetElementWith(attribute);
        if (const auto text = element.GetAttribute(attribute)) return DoubleAt(element, *text);
        return std::nullopt;
    };
    const auto valueOf = [&](Element element, std::string_view text) -> ExpressionValue {
        if (isNumeric) return DoubleAt(element, text);
        return TextAt(element, text, transcoder);
    };

    FieldTreatmentRules rules;
    rules.outliers = static_cast<FieldTreatmentRules::Outliers>(wordOf(Name::outliers, outlierWords));
    if (rules.outliers != FieldTreatmentRules::OutliersAsIs && !isNumeric) {
        throw RefusalAt(GetElementWith(Name::outliers), Refusal::OutliersOfTexts, {ExcerptOf(name)});
    }
    rules.lowValue = numberOf(Name::lowValue);
    rules.highValue = numberOf(Name::highValue);
    rules.invalid = static_cast<FieldTreatmentRules::Invalid>(
        std::min<std::size_t>(wordOf(Name::invalidValueTreatment, invalidWords), FieldTreatmentRules::InvalidAsValue));
    if (rules.invalid == FieldTreatmentRules::InvalidAsValue) {
        const auto written = FindInvalidReplacement();
        rules.invalidReplacement = valueOf(written.element, written.text);
    }
    if (const auto text = GetAttribute(Name::missingValueReplacement)) {
        rules.missingReplacement = valueOf(GetElementWith(Name::missingValueReplacement), *text);
    }
    rules.missingIsInvalid = IsInvalid(wordOf(Name::missingValueTreatment, missingWords));
    return rules;
}

void MiningFieldEntry::RequireUntreated() const {
    const auto refuse = [this](Name attribute) {
        return RefusalAt(GetElementWith(attribute), Refusal::DerivedFieldTreated,
                         {ExcerptOf(name), SpellingOf(attribute)});
    };
    if (WordAttribute(GetElementWith(Name::outliers), Name::outliers, outlierWords) != 0) throw refuse(Name::outliers);
    // What a derived field gives is taken as it stands.
    if (WordAttribute(GetElementWith(Name::invalidValueTreatment), Name::invalidValueTreatment, invalidWords) > 1) {
        throw refuse(Name::invalidValueTreatment);
    }
    if (GetAttribute(Name::missingValueReplacement)) throw refuse(Name::missingValueReplacement);
    if (IsInvalid(
            WordAttribute(GetElementWith(Name::missingValueTreatment), Name::missingValueTreatment, missingWords))) {
        throw refuse(Name::missingValueTreatment);
    }
}

std::vector<MiningFieldEntry> ReadMiningSchemas(const std::vector<Element>& schemas, const WrittenNames& dataFields,
                                                const Transcoder& transcoder, FaultList& faults) {
    SchemaReader reader(dataFields, transcoder, faults);
    for (const Element schema : schemas)
        reader.Read(schema);
    return reader.TakeEntries();
}

}  // namespace nbscore
