#include <algorithm>
#include <set>
#include <utility>

#include "count/CountedDocument.h"
#include "count/XmlWriter.h"
#include "framework/NumberText.h"
#include "pmml/DocumentParts.h"

namespace nbscore {
namespace {

using Counts = std::vector<double>;

/// What a document calls the parts that it adds to a table's columns.
class AddedNames {
public:
    explicit AddedNames(const CountedModel& model) : taken{model.target, model.subModelField} {
        for (const CountedField& field : model.fields)
            taken.insert(field.name);
    }
    std::string Make(std::string name) {
        while (!taken.insert(name).second)
            name += '_';
        return name;
    }

private:
    std::set<std::string> taken;
};

/// Whether a field's name can be that of an element.
bool IsPlainName(const std::string& name) {
    const auto isLetter = [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') || character == '_';
    };
    const auto isNameCharacter = [&isLetter](char character) {
        return isLetter(character) || (character >= '0' && character <= '9') || character == '-' || character == '.';
    };
    return !name.empty() && isLetter(name.front()) && std::ranges::all_of(name, isNameCharacter);
}

class DocumentWriter {
public:
    DocumentWriter(const CountedModel& countedModel, const std::vector<std::vector<TestCase>>& testCases)
        : model(countedModel), cases(testCases) {
        AddedNames names(model);
        for (const CountedField& field : model.fields) {
            const char* const ending = field.kind == CountedField::Bins ? "_bin" : "_grouped";
            derivedNames.push_back(IsDerived(field) ? names.Make(field.name + ending) : std::string());
        }
        predictionName = names.Make("predicted_" + model.target);
        for (const std::string& category : model.categories)
            probabilityNames.push_back(names.Make("probability_" + category));
    }

    std::string Write(const std::string& version) {
        xml.Open("PMML").Attribute("version", "4.4").Attribute("xmlns", "http://www.dmg.org/PMML-4_4");
        WriteHeader(version);
        WriteDictionary();
        WriteGroupings();
        for (std::size_t i = 0; i < model.classifiers.size(); ++i)
            WriteModel(i);
        xml.Close();
        return xml.Take();
    }

private:
    bool IsSet() const { return !model.subModelField.empty(); }
    static bool IsGrouped(const CountedField& field) { return !field.otherValue.empty(); }
    static bool IsDerived(const CountedField& field) { return field.kind == CountedField::Bins || IsGrouped(field); }

    void WriteHeader(const std::string& version) {
        double rows = 0.0;
        for (const CountedClassifier& classifier : model.classifiers)
            rows += classifier.CountRows();
        xml.Open("Header").Attribute("description", "Counts of " + FormatCount(rows) + " rows");
        xml.Open("Application").Attribute("name", "nbscore").Attribute("version", version);
        xml.Close();
        xml.Close();
    }

    void WriteDictionary() {
        const std::size_t numFields = model.fields.size() + (IsSet() ? 2 : 1);
        xml.Open("DataDictionary").Attribute("numberOfFields", std::to_string(numFields));
        for (const CountedField& field : model.fields) {
            const bool isNumber = field.kind != CountedField::Texts;
            OpenField(field.name, field.kind == CountedField::Bins ? "continuous" : "categorical",
                      field.kind == CountedField::WholeNumbers ? "integer" : (isNumber ? "double" : "string"));
            // What else there is of a field with rare values is a value, too.
            if (!IsGrouped(field)) WriteValues(field.values);
            xml.Close();
        }
        if (IsSet()) {
            OpenField(model.subModelField, "categorical", "string");
            xml.Open("Extension").Attribute("name", "isSelfLearningTarget").Attribute("value", "true");
            xml.Close();
            for (const CountedClassifier& classifier : model.classifiers)
                WriteValue(classifier.name);
            xml.Close();
        }
        OpenField(model.target, "categorical", "string");
        WriteValues(model.categories);
        xml.Close();
        xml.Close();
    }

    void OpenField(const std::string& name, const char* optype, const char* dataType) {
        xml.Open("DataField").Attribute("name", name).Attribute("optype", optype).Attribute("dataType", dataType);
    }
    void WriteValues(const std::vector<std::string>& values) {
        for (const std::string& value : values)
            WriteValue(value);
    }
    void WriteValue(const std::string& value) {
        xml.Open("Value").Attribute("value", value);
        xml.Close();
    }

    /// Rare texts, and those that the table did not hold, are one value.
    void WriteGroupings() {
        if (std::ranges::none_of(model.fields, IsGrouped)) return;
        xml.Open("TransformationDictionary");
        for (std::size_t i = 0; i < model.fields.size(); ++i) {
            const CountedField& field = model.fields[i];
            if (!IsGrouped(field)) continue;
            xml.Open("DerivedField").Attribute("name", derivedNames[i]);
            xml.Attribute("optype", "categorical").Attribute("dataType", "string");
            xml.Open("Apply").Attribute("function", "if");
            xml.Open("Apply").Attribute("function", "isIn");
            WriteFieldRef(field.name);
            for (const std::string& value : field.values)
                WriteConstant(value);
            // The function takes one text at least.
            if (field.values.empty()) WriteConstant(field.otherValue);
            xml.Close();
            WriteFieldRef(field.name);
            WriteConstant(field.otherValue);
            xml.Close();
            xml.Close();
        }
        xml.Close();
    }
    void WriteFieldRef(const std::string& name) {
        xml.Open("FieldRef").Attribute("field", name);
        xml.Close();
    }
    void WriteConstant(const std::string& value) {
        xml.Open("Constant").Attribute("dataType", "string");
        xml.CloseWithText(value);
    }

    void WriteModel(std::size_t number) {
        const CountedClassifier& classifier = model.classifiers[number];
        xml.Open("NaiveBayesModel").Attribute("modelName", IsSet() ? classifier.name : model.target);
        xml.Attribute("functionName", "classification");
        if (IsSet()) xml.Attribute("algorithmName", "SelfLearning");
        xml.Attribute("threshold", model.GetThreshold(classifier));
        WriteSchema(classifier);
        WriteOutput();
        WriteStatistics(classifier);
        xml.Open("BayesInputs");
        for (std::size_t i = 0; i < model.fields.size(); ++i) {
            if (HasCounts(classifier.inputs[i])) WriteInput(i, classifier.inputs[i]);
        }
        xml.Close();
        xml.Open("BayesOutput").Attribute("fieldName", model.target);
        WriteTargetCounts(classifier.countsOfCategories);
        xml.Close();
        if (number < cases.size() && !cases[number].empty()) WriteVerification(cases[number]);
        xml.Close();
    }

    static bool HasCounts(const CountedInput& input) { return std::ranges::any_of(input.counts, IsAnyCounted); }
    static bool IsAnyCounted(const Counts& counts) {
        return std::ranges::any_of(counts, [](double count) { return count > 0.0; });
    }

    /// A value that the document does not know leaves its input out, by either rule.
    void WriteSchema(const CountedClassifier& classifier) {
        xml.Open("MiningSchema");
        std::vector<std::string> grouped;
        for (std::size_t i = 0; i < model.fields.size(); ++i) {
            if (!HasCounts(classifier.inputs[i])) continue;
            xml.Open("MiningField").Attribute("name", model.fields[i].name);
            xml.Attribute("invalidValueTreatment", "asIs");
            xml.Close();
            if (IsGrouped(model.fields[i])) grouped.push_back(derivedNames[i]);
        }
        xml.Open("MiningField").Attribute("name", model.target).Attribute("usageType", "predicted");
        xml.Close();
        if (!grouped.empty()) {
            xml.Open("Extension").Attribute("extender", vendor_extension::extender);
            xml.Attribute("name", vendor_extension::derivedFields);
            for (const std::string& name : grouped) {
                xml.Open("MiningField").Attribute("name", name);
                xml.Close();
            }
            xml.Close();
        }
        xml.Close();
    }

    void WriteOutput() {
        xml.Open("Output");
        if (!IsSet()) {
            xml.Open("OutputField").Attribute("name", predictionName).Attribute("optype", "categorical");
            xml.Attribute("dataType", "string").Attribute("feature", "predictedValue");
            xml.Close();
        }
        // The score of a sub-model is the probability of the second category.
        for (std::size_t i = IsSet() ? 1 : 0; i < model.categories.size(); ++i) {
            xml.Open("OutputField").Attribute("name", probabilityNames[i]).Attribute("optype", "continuous");
            xml.Attribute("dataType", "double").Attribute("feature", "probability");
            xml.Attribute("value", model.categories[i]);
            xml.Close();
        }
        xml.Close();
    }

    void WriteStatistics(const CountedClassifier& classifier) {
        xml.Open("ModelStats");
        for (std::size_t i = 0; i < model.fields.size(); ++i) {
            xml.Open("UnivariateStats").Attribute("field", model.fields[i].name);
            xml.Open("Counts").Attribute("totalFreq", classifier.CountRows());
            xml.Attribute("missingFreq", classifier.inputs[i].missing);
            xml.Close();
            xml.Close();
        }
        xml.Close();
    }

    void WriteInput(std::size_t number, const CountedInput& input) {
        const CountedField& field = model.fields[number];
        xml.Open("BayesInput").Attribute("fieldName", IsGrouped(field) ? derivedNames[number] : field.name);
        if (field.kind == CountedField::Bins) WriteBins(field, derivedNames[number]);
        for (std::size_t value = 0; value < input.counts.size(); ++value) {
            if (field.kind != CountedField::Bins && !IsAnyCounted(input.counts[value])) continue;
            xml.Open("PairCounts").Attribute("value", NameValue(field, value));
            WriteTargetCounts(input.counts[value]);
            xml.Close();
        }
        xml.Close();
    }
    static std::string NameValue(const CountedField& field, std::size_t value) {
        if (field.kind == CountedField::Bins) return std::to_string(value);
        return value < field.values.size() ? field.values[value] : field.otherValue;
    }

    void WriteBins(const CountedField& field, const std::string& binName) {
        const std::vector<double>& cutpoints = field.cutpoints;
        xml.Open("DerivedField").Attribute("name", binName);
        xml.Attribute("optype", "categorical").Attribute("dataType", "string");
        xml.Open("Discretize").Attribute("field", field.name);
        for (std::size_t bin = 0; bin <= cutpoints.size(); ++bin) {
            const bool isLast = bin == cutpoints.size();
            xml.Open("DiscretizeBin").Attribute("binValue", std::to_string(bin));
            xml.Open("Interval").Attribute("closure", isLast ? "openOpen" : "openClosed");
            if (bin > 0) xml.Attribute("leftMargin", cutpoints[bin - 1]);
            if (!isLast) xml.Attribute("rightMargin", cutpoints[bin]);
            xml.Close();
            xml.Close();
        }
        xml.Close();
        xml.Close();
    }

    void WriteTargetCounts(const Counts& counts) {
        xml.Open("TargetValueCounts");
        for (std::size_t i = 0; i < counts.size(); ++i) {
            xml.Open("TargetValueCount").Attribute("value", model.categories[i]).Attribute("count", counts[i]);
            xml.Close();
        }
        xml.Close();
    }

    void WriteVerification(const std::vector<TestCase>& ofModel) {
        std::vector<std::string> names;
        for (const CountedField& field : model.fields)
            names.push_back(field.name);
        if (!IsSet()) names.push_back(predictionName);
        const std::size_t firstProbability = IsSet() ? 1 : 0;
        for (std::size_t i = 0; i < ofModel.front().probabilities.size(); ++i)
            names.push_back(probabilityNames[firstProbability + i]);

        std::vector<std::string> columns = names;
        if (!std::ranges::all_of(names, IsPlainName)) {
            for (std::size_t i = 0; i < columns.size(); ++i)
                columns[i] = "column" + std::to_string(i + 1);
        }
        xml.Open("ModelVerification").Attribute("recordCount", std::to_string(ofModel.size()));
        xml.Attribute("fieldCount", std::to_string(names.size()));
        xml.Open("VerificationFields");
        for (std::size_t i = 0; i < names.size(); ++i) {
            xml.Open("VerificationField").Attribute("field", names[i]);
            if (columns[i] != names[i]) xml.Attribute("column", columns[i]);
            xml.Close();
        }
        xml.Close();
        xml.Open("InlineTable");
        for (const TestCase& testCase : ofModel)
            WriteTestCase(testCase, columns);
        xml.Close();
        xml.Close();
    }
    void WriteTestCase(const TestCase& testCase, const std::vector<std::string>& columns) {
        xml.Open("row");
        std::size_t column = 0;
        for (const std::optional<std::string>& value : testCase.values) {
            if (value) WriteCell(columns[column], *value);
            ++column;
        }
        if (!IsSet()) WriteCell(columns[column++], testCase.prediction);
        for (const std::string& probability : testCase.probabilities)
            WriteCell(columns[column++], probability);
        xml.Close();
    }
    void WriteCell(const std::string& column, const std::string& text) {
        xml.Open(column);
        xml.CloseWithText(text);
    }

    const CountedModel& model;
    const std::vector<std::vector<TestCase>>& cases;
    XmlWriter xml;
    /// Of fields whose values are derived; else empty.
    std::vector<std::string> derivedNames;
    std::string predictionName;
    std::vector<std::string> probabilityNames;
};

}  // namespace

std::string WriteCountedDocument(const CountedModel& model, const std::string& version,
                                 const std::vector<std::vector<TestCase>>& cases) {
    return DocumentWriter(model, cases).Write(version);
}

}  // namespace nbscore
