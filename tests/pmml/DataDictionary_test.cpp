#include <gtest/gtest.h>
#include <xercesc/dom/DOMElement.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/BaseDictVar.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "pmml/DocumentProbe.h"

namespace {

using Fields = std::unique_ptr<ScoreDictionary>;

/// The dictionary of a DataDictionary with this content; it outlives its document.
Fields Read(const std::string& content) {
    Fields fields;
    WithDocument("<DataDictionary>\n" + content + "</DataDictionary>",
                 [&](DocumentProbe& probe, xercesc::DOMDocument& document) {
                     fields.reset(probe.ParseDictionary(document.getDocumentElement()));
                 });
    return fields;
}

/// "storage/level" of the only field, whose attributes are given.
std::string KindOf(const std::string& attributes, const std::string& content = "") {
    const Fields fields = Read("<DataField name='f' " + attributes + ">" + content + "</DataField>");
    const ScoreDictVar* field = fields->GetVar("f");
    return std::to_string(field->GetStorageType()) + "/" + std::to_string(field->GetMeasureLevel());
}

void ExpectRefused(const std::string& content, VeskException::ExceptionCode code, const std::string& message,
                   const std::string& place) {
    const auto refusal = RefusalOf([&] { Read(content); });
    ASSERT_TRUE(refusal) << message;
    EXPECT_EQ(refusal->GetCode(), code);
    EXPECT_EQ(refusal->GetMessage(), message);
    EXPECT_EQ(PlaceText(refusal->GetPlace()), place);
}

TEST(DataDictionary, HasItsFieldsInOrder_WhenItDeclaresSeveral) {
    const Fields fields = Read("<DataField name='b'/><DataField name='\xC3\xA4' displayName='the \xC3\xA4'/>");
    std::vector<ScoreDictVar*> all;
    fields->GetAllVars(all);
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0]->GetName(), "b");
    EXPECT_EQ(all[1]->GetName(), "\xC3\xA4");
    EXPECT_EQ(dynamic_cast<BaseDictVar&>(*all[0]).GetDisplayName(), "");
    EXPECT_EQ(dynamic_cast<BaseDictVar&>(*all[1]).GetDisplayName(), "the \xC3\xA4");
    EXPECT_EQ(all[1], fields->GetVar("\xC3\xA4"));
}

TEST(DataDictionary, IsEmpty_WhenItDeclaresNothing) {
    std::vector<ScoreDictVar*> all;
    Read("")->GetAllVars(all);
    EXPECT_TRUE(all.empty());
}

TEST(DataDictionary, PassesOver_WhatIsNoNamedField) {
    const Fields fields = Read("<Extension/><Taxonomy name='t'/><DataField/><DataField name=''/><DataField name='f'/>");
    std::vector<ScoreDictVar*> all;
    fields->GetAllVars(all);
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0]->GetName(), "f");
}

TEST(DataDictionary, KeepsTheFirstField_WhenANameIsDeclaredTwice) {
    const Fields fields =
        Read("<DataField name='f' dataType='double'/><DataField name='f' dataType='string'/><DataField name='g'/>");
    EXPECT_EQ(fields->GetVar("f")->GetStorageType(), 0);
    std::vector<ScoreDictVar*> all;
    fields->GetAllVars(all);
    EXPECT_EQ(all.size(), 2u);
}

TEST(DataDictionary, IsRefused_WhenThereIsNone) {
    DocumentProbe probe(nullptr);
    probe.CreateTranscoder("");
    const auto refusal = RefusalOf([&] { probe.ParseDictionary(nullptr); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::UnexpectedElement);
    EXPECT_EQ(refusal->GetMessage(), "The document has no <DataDictionary>.");
}

TEST(DataDictionary, HoldsUtf8_WhenNoTranscoderWasCreated) {
    WithDocument("<DataDictionary><DataField name='\xC3\xA4'/></DataDictionary>",
                 [](DocumentProbe&, xercesc::DOMDocument& document) {
                     PMMLTranslator translator("");
                     const Fields fields(translator.ParseDictionary(document.getDocumentElement()));
                     EXPECT_NE(fields->GetVar("\xC3\xA4"), nullptr);
                 });
}

TEST(DataField, HoldsNumbers_WhenItsDataTypeIsANumericOne) {
    for (const char* type : {"integer", "float", "double"}) {
        EXPECT_EQ(KindOf("optype='continuous' dataType='" + std::string(type) + "'"), "0/0") << type;
    }
    for (const char* type : {"string", "boolean", "date", "dateDaysSince[1960]", "Double", ""}) {
        EXPECT_EQ(KindOf("optype='categorical' dataType='" + std::string(type) + "'"), "1/2") << type;
    }
}

TEST(DataField, HasTheLevelOfItsOptype_WhenItDeclaresOne) {
    EXPECT_EQ(KindOf("optype='continuous' dataType='string'"), "1/0");
    EXPECT_EQ(KindOf("optype='ordinal' dataType='integer'"), "0/1");
    EXPECT_EQ(KindOf("optype='categorical' dataType='integer'"), "0/2");
}

TEST(DataField, IsUnderstoodFromTheRest_WhenItDeclaresLess) {
    EXPECT_EQ(KindOf("optype='continuous'"), "0/0");
    EXPECT_EQ(KindOf("optype='categorical'"), "1/2");
    EXPECT_EQ(KindOf("optype='ordinal'"), "1/1");
    EXPECT_EQ(KindOf(""), "1/2");
    EXPECT_EQ(KindOf("dataType='string'"), "1/2");
    EXPECT_EQ(KindOf("dataType='double'"), "0/0");
    EXPECT_EQ(KindOf("dataType='double'", "<Value value='1'/>"), "0/2");
    EXPECT_EQ(KindOf("dataType='double'", "<Value value='1' property='missing'/>"), "0/0");
    EXPECT_EQ(KindOf("dataType='double'", "<Interval closure='openOpen'/>"), "0/0");
}

TEST(DataField, IsRefused_WhenItsOptypeIsUnknown) {
    ExpectRefused("<DataField name='f'/>\n <DataField name='g' optype='nominal'/>", VeskException::InconsistentDocument,
                  "\"nominal\" is no optype: continuous, ordinal or categorical.", "3:2 /DataDictionary/DataField[2]");
}

TEST(DataFieldValue, IsALabelInDocumentOrder_WhenItIsValid) {
    const Fields fields = Read(
        "<DataField name='f' dataType='string'><Extension/><Value value=' z ' displayValue='Zed'/>"
        "<Value value='' property='valid'/><Value value='bad' property='invalid'/><Value value='007'/></DataField>");
    const auto& labels = fields->GetVar("f")->GetValueLabelSet()->GetValueLabels();
    ASSERT_EQ(labels.size(), 3u);
    EXPECT_EQ(*labels[0].GetValue(), StringValue(" z "));
    EXPECT_EQ(labels[0].GetDisplayValue(), "Zed");
    EXPECT_EQ(*labels[1].GetValue(), StringValue(""));
    EXPECT_EQ(labels[1].GetDisplayValue(), "");
    EXPECT_EQ(*labels[2].GetValue(), StringValue("007"));
}

TEST(DataFieldValue, IsANumber_WhenTheFieldHoldsNumbers) {
    const Fields fields = Read("<DataField name='f' dataType='integer'><Value value=' 1.50 '/></DataField>");
    const auto& labels = fields->GetVar("f")->GetValueLabelSet()->GetValueLabels();
    ASSERT_EQ(labels.size(), 1u);
    EXPECT_EQ(*labels[0].GetValue(), NumericValue(1.5));
}

TEST(DataFieldValue, LeavesTheFieldWithoutLabels_WhenNoneIsValid) {
    const Fields fields = Read(
        "<DataField name='f' dataType='double'><Value value='x' property='invalid'/>"
        "<Value value='9' property='missing'/><Value value='NA' property='missing'/></DataField>");
    const ScoreDictVar* field = fields->GetVar("f");
    EXPECT_EQ(field->GetValueLabelSet(), nullptr);
    const NumericValue nine(9), one(1);
    const StringValue notAvailable("NA"), invalid("x");
    EXPECT_TRUE(field->IsMissingValue(&nine));
    EXPECT_TRUE(field->IsMissingValue(&notAvailable));
    EXPECT_FALSE(field->IsMissingValue(&one));
    EXPECT_FALSE(field->IsMissingValue(&invalid));
}

TEST(DataFieldValue, IsKeptAsInvalid_WhenItIsDeclaredSo) {
    const Fields fields = Read(
        "<DataField name='f' dataType='double'><Value value='-1.0' property='invalid'/>"
        "<Value value='x' property='invalid'/></DataField>");
    const auto* field = dynamic_cast<const BaseDictVar*>(fields->GetVar("f"));
    ASSERT_NE(field, nullptr);
    ASSERT_EQ(field->GetInvalidValues().size(), 2u);
    EXPECT_EQ(*field->GetInvalidValues()[0], NumericValue(-1));
    EXPECT_EQ(*field->GetInvalidValues()[1], StringValue("x"));
}

TEST(DataFieldValue, IsMissingAsText_WhenTheFieldHoldsTexts) {
    const Fields fields = Read("<DataField name='f'><Value value='9' property='missing'/></DataField>");
    const StringValue text("9");
    const NumericValue number(9);
    EXPECT_TRUE(fields->GetVar("f")->IsMissingValue(&text));
    EXPECT_FALSE(fields->GetVar("f")->IsMissingValue(&number));
}

TEST(DataFieldValue, IsRefused_WhenItDeclaresNonsense) {
    const std::string place = "3:1 /DataDictionary/DataField[1]/Value[2]";
    const std::string start = "<DataField name='f' dataType='double'><Value value='1'/>\n";
    ExpectRefused(start + "<Value/></DataField>", VeskException::MissingAttribute,
                  "<Value> has no attribute \"value\".", place);
    ExpectRefused(start + "<Value value='one'/></DataField>", VeskException::InvalidNumber, "\"one\" is no number.",
                  place);
    ExpectRefused(start + "<Value value='1' property='odd'/></DataField>", VeskException::InconsistentDocument,
                  "\"odd\" is no property of a value: valid, invalid or missing.", place);
}

TEST(DataFieldInterval, IsKept_WhenItIsDeclared) {
    const Fields fields = Read(
        "<DataField name='f' optype='continuous'><Interval closure='openClosed' leftMargin='0' rightMargin='1.5'/>"
        "<Interval closure='closedOpen' leftMargin='7'/><Interval closure='openOpen' rightMargin='-1'/>"
        "<Interval closure='closedClosed'/></DataField>");
    const auto& intervals = dynamic_cast<BaseDictVar&>(*fields->GetVar("f")).GetIntervals();
    ASSERT_EQ(intervals.size(), 4u);
    EXPECT_EQ(intervals[0].closure, ValueInterval::OpenClosed);
    EXPECT_EQ(intervals[0].leftMargin, 0);
    EXPECT_EQ(intervals[0].rightMargin, 1.5);
    EXPECT_EQ(intervals[1].closure, ValueInterval::ClosedOpen);
    EXPECT_TRUE(intervals[1].Contains(7) && intervals[1].Contains(1e300) && !intervals[1].Contains(6.9));
    EXPECT_EQ(intervals[2].closure, ValueInterval::OpenOpen);
    EXPECT_TRUE(intervals[2].Contains(-1e300) && !intervals[2].Contains(-1));
    EXPECT_EQ(intervals[3].closure, ValueInterval::ClosedClosed);
}

TEST(DataFieldInterval, IsRefused_WhenItDeclaresNonsense) {
    const std::string place = "2:45 /DataDictionary/DataField[1]/Interval[1]";
    const std::string start = "<DataField   name='f'   optype='continuous'>";
    ExpectRefused(start + "<Interval/></DataField>", VeskException::MissingAttribute,
                  "<Interval> has no attribute \"closure\".", place);
    ExpectRefused(start + "<Interval closure='open'/></DataField>", VeskException::InconsistentDocument,
                  "\"open\" is no closure: openOpen, openClosed, closedOpen or closedClosed.", place);
    ExpectRefused(start + "<Interval closure='openOpen' leftMargin=''/></DataField>", VeskException::InvalidNumber,
                  "\"\" is no number.", place);
    ExpectRefused(start + "<Interval closure='openOpen' rightMargin='x'/></DataField>", VeskException::InvalidNumber,
                  "\"x\" is no number.", place);
}

TEST(DataDictionary, IsRead_WhenItIsHuge) {
    std::string content = "<DataField name='many' dataType='double'>";
    for (int i = 0; i < 100000; ++i)
        content += "<Value value='" + std::to_string(i) + "'/>";
    content += "</DataField>";
    for (int i = 0; i < 100000; ++i)
        content += "<DataField name='f" + std::to_string(i) + "'/>";
    const Fields fields = Read(content);
    EXPECT_EQ(fields->GetVar("many")->GetValueLabelSet()->GetValueLabels().size(), 100000u);
    EXPECT_NE(fields->GetVar("f99999"), nullptr);
}

/// How a document is refused whose texts the encoding asked for cannot hold.
void ExpectTooWide(const std::string& content, const std::string& place) {
    DocumentProbe probe([](DocumentProbe& self, xercesc::DOMDocument& document) -> ScoreModel* {
        const Fields fields(self.ParseDictionary(document.getDocumentElement()));
        return nullptr;
    });
    std::istringstream stream("<DataDictionary>\n" + content + "</DataDictionary>");
    const auto refusal = RefusalOf([&] { probe.ParseFromTree(stream, "ISO-8859-1"); });
    ASSERT_TRUE(refusal) << content;
    EXPECT_EQ(refusal->GetCode(), VeskException::UnsupportedEncoding);
    EXPECT_EQ(refusal->GetMessage(), "The encoding \"ISO-8859-1\" cannot hold the text \"\xE4\xB8\x80\".");
    EXPECT_EQ(PlaceText(refusal->GetPlace()), place);
}

TEST(DataDictionary, IsRefusedWithThePlace_WhenTheEncodingCannotHoldAText) {
    const std::string value = "/DataDictionary/DataField[1]/Value[1]";
    ExpectTooWide("<DataField name='&#x4E00;'/>", "2:1 /DataDictionary/DataField[1]");
    ExpectTooWide("<DataField name='f' displayName='&#x4E00;'/>", "2:1 /DataDictionary/DataField[1]");
    ExpectTooWide("<DataField name='f'>\n<Value value='&#x4E00;'/></DataField>", "3:1 " + value);
    ExpectTooWide("<DataField name='f'>\n<Value value='a' displayValue='&#x4E00;'/></DataField>", "3:1 " + value);
    ExpectTooWide("<DataField name='f'>\n<Value value='&#x4E00;' property='missing'/></DataField>", "3:1 " + value);
}

}  // namespace
