// Bytes as derived fields: they decide what a document's expressions are and which cases are evaluated. A document is
// refused at an element, or every case has the same values whenever it is evaluated, and by whatever reading of the
// document. NBSCORE_FUZZ_SHOW=1 shows the derived fields, and why they are refused.

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "ExpressionWriter.h"
#include "Require.h"
#include "XmlCharacters.h"
#include "framework/VeskException.h"
#include "transform/DerivedDocument.h"

namespace nbscore::fuzz {
namespace {

const std::string dataFields =
    "<DataField name='x' dataType='double' optype='continuous'><Interval closure='closedOpen' leftMargin='0'/>"
    "<Value value='-9' property='missing'/></DataField>"
    "<DataField name='n' dataType='integer' optype='categorical'><Value value='1'/><Value value='2'/></DataField>"
    "<DataField name='s' dataType='string' optype='categorical'><Value value='a'/><Value value='b'/>"
    "<Value value='NA' property='missing'/></DataField>"
    "<DataField name='t' dataType='string' optype='categorical'/>";
const std::vector<std::string> dataNames = {"x", "n", "s", "t"};
constexpr std::size_t numNumericFields = 2;

constexpr std::size_t numFunctions = 2;
constexpr std::size_t mostDerivedFields = 3;
constexpr std::size_t numCases = 3;
constexpr std::size_t mostTextBytes = 200;

std::string SomeDataType(FuzzedDataProvider& source) {
    return source.PickValueInArray({"double", "string", "integer", "boolean", "date"});
}

/// A function may call those before it.
std::string WriteFunctions(FuzzedDataProvider& source, std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < numFunctions; ++i) {
        const std::string name = "f" + std::to_string(i);
        text += "<DefineFunction name='" + name + "' optype='continuous'><ParameterField name='p'/>" +
                "<ParameterField name='q' dataType='" + SomeDataType(source) + "'/>" +
                ExpressionWriter(source, {"p", "q"}, names).Write() + "</DefineFunction>\n";
        names.push_back(name);
    }
    return text;
}

std::string WriteTransformations(FuzzedDataProvider& source, std::vector<std::string>& derivedNames) {
    std::vector<std::string> functions;
    std::string text = source.ConsumeBool() ? WriteFunctions(source, functions) : "";
    std::vector<std::string> fields = dataNames;
    for (std::size_t left = 1 + source.ConsumeIntegralInRange<std::size_t>(0, mostDerivedFields - 1); left > 0;
         --left) {
        const std::string name = "d" + std::to_string(left);
        text += "<DerivedField name='" + name + "' optype='categorical' dataType='" + SomeDataType(source) + "'>" +
                ExpressionWriter(source, fields, functions).Write() + "</DerivedField>\n";
        fields.push_back(name);
        derivedNames.push_back(name);
    }
    return text;
}

void FillNumber(FuzzedDataProvider& source, BaseCaseRecord& record, int position) {
    if (source.ConsumeBool()) {
        record.SetNumber(position, source.ConsumeIntegralInRange<int>(-10, 10));
    } else {
        record.SetNumber(position, source.ConsumeFloatingPoint<double>());
    }
}

std::vector<BaseCaseRecord> MakeCases(FuzzedDataProvider& source) {
    std::vector<BaseCaseRecord> cases;
    for (std::size_t left = numCases; left > 0; --left) {
        BaseCaseRecord& record = cases.emplace_back(dataNames);
        for (std::size_t i = 0; i < dataNames.size(); ++i) {
            const int position = static_cast<int>(i);
            if (source.ConsumeIntegralInRange(0, 7) == 7) continue;
            if (i < numNumericFields) {
                FillNumber(source, record, position);
            } else {
                record.SetText(position, AsXmlCharacters(source.ConsumeRandomLengthString(mostTextBytes)));
            }
        }
    }
    return cases;
}

std::vector<std::string> ValuesOf(const DerivedDocument& document, const std::vector<std::string>& names,
                                  const BaseCaseRecord& record) {
    std::vector<std::string> values;
    for (const std::string& name : names)
        values.push_back(document.ValueOf(name, &record));
    return values;
}

void RequirePlacedRefusal(const VeskException& refusal) {
    Require(!refusal.GetMessage().empty(), "a refusal has a message");
    Require(refusal.GetPlace().line > 0 && !refusal.GetPlace().elementPath.empty(),
            "a refusal of an expression has its line and path");
}

void Evaluate(const std::string& transformations, const std::vector<std::string>& names,
              const std::vector<BaseCaseRecord>& cases) {
    const DerivedDocument document(dataFields, transformations);
    const DerivedDocument second(dataFields, transformations);
    std::vector<std::vector<std::string>> values;
    for (const BaseCaseRecord& record : cases)
        values.push_back(ValuesOf(document, names, record));
    for (std::size_t i = cases.size(); i-- > 0;) {
        Require(ValuesOf(second, names, cases[i]) == values[i], "values depend on nothing but the case");
    }
}

}  // namespace
}  // namespace nbscore::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider source(data, size);
    std::vector<std::string> names;
    const std::string transformations = nbscore::fuzz::WriteTransformations(source, names);
    const bool shows = std::getenv("NBSCORE_FUZZ_SHOW") != nullptr;
    if (shows) std::cerr << transformations;
    try {
        nbscore::fuzz::Evaluate(transformations, names, nbscore::fuzz::MakeCases(source));
    } catch (const VeskException& refusal) {
        if (shows) std::cerr << "refused: " << refusal.GetMessage() << '\n';
        nbscore::fuzz::RequirePlacedRefusal(refusal);
    }
    return 0;
}
