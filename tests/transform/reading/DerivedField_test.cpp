#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "framework/BaseDictVar.h"
#include "framework/DerivedFieldSources.h"
#include "transform/DerivedDocument.h"

namespace {

/// A derived number that is another field's value.
std::string Copy(const std::string& name, const std::string& of) {
    return "<DerivedField name='" + name + "' optype='continuous' dataType='double'><FieldRef field='" + of +
           "'/></DerivedField>";
}

void ExpectRefused(const std::string& transformations, VeskException::ExceptionCode code, const std::string& message,
                   const std::string& place) {
    const auto refusal = RefusalOf([&] { DerivedDocument(caseFields, transformations); });
    ASSERT_TRUE(refusal) << message;
    EXPECT_EQ(refusal->GetCode(), code);
    EXPECT_EQ(refusal->GetMessage(), message);
    EXPECT_EQ(PlaceText(refusal->GetPlace()), place);
}

const std::string dictionaryPath = "/PMML/TransformationDictionary[1]";

TEST(DerivedFields, AreVariablesInDocumentOrder_WhenDeclared) {
    const DerivedDocument document(
        caseFields, Copy("b", "x") +
                        "<DerivedField name='a' optype='ordinal' dataType='string' displayName='A'><Extension/>"
                        "<FieldRef field='s'/><Value value='lo'/><Value value='hi'/></DerivedField>");
    std::vector<ScoreDictVar*> vars;
    document.derived->GetDerivedVars(vars);
    ASSERT_EQ(vars.size(), 2u);
    EXPECT_EQ(vars[0]->GetName(), "b");
    EXPECT_EQ(vars[0]->GetStorageType(), 0);
    EXPECT_EQ(vars[0]->GetMeasureLevel(), 0);
    EXPECT_EQ(vars[1], document.derived->GetVar("a"));
    EXPECT_EQ(vars[1]->GetMeasureLevel(), 1);
    EXPECT_EQ(vars[1]->GetValueLabelSet()->GetValueLabels().size(), 2u);
    EXPECT_EQ(dynamic_cast<BaseDictVar&>(*vars[1]).GetDisplayName(), "A");
    EXPECT_EQ(document.derived->GetVar("x"), nullptr);
}

TEST(DerivedFields, ListTheFieldsThatTheyRead) {
    const DerivedDocument document(
        caseFields,
        "<DerivedField name='mixed' optype='continuous' dataType='double'><Apply function='+'>"
        "<Apply function='+'><FieldRef field='x'/><FieldRef field='copy'/></Apply>"
        "<Apply function='+'><FieldRef field='x'/><FieldRef field='copy'/></Apply></Apply></DerivedField>" +
            Copy("copy", "x") + Copy("of text", "s") +
            "<DerivedField name='mapped' optype='categorical' dataType='string'><MapValues "
            "outputColumn='out'><FieldColumnPair field='x' column='a'/><FieldColumnPair field='s' column='b'/>"
            "<InlineTable/></MapValues></DerivedField>"
            "<DerivedField name='fixed' optype='continuous' dataType='double'><Constant>1</Constant>"
            "</DerivedField>");
    const auto& sources = dynamic_cast<const DerivedFieldSources&>(*document.derived);
    using Names = std::vector<std::string>;
    EXPECT_EQ(sources.GetFieldsRead("mixed"), (Names{"x", "copy"}));
    EXPECT_EQ(sources.GetFieldsRead("copy"), (Names{"x"}));
    EXPECT_EQ(sources.GetFieldsRead("of text"), (Names{"s"}));
    EXPECT_EQ(sources.GetFieldsRead("mapped"), (Names{"x", "s"}));
    EXPECT_EQ(sources.GetFieldsRead("fixed"), Names{});
    EXPECT_EQ(sources.GetFieldsRead("x"), Names{});
}

TEST(DerivedFields, NameTheDataFieldsBehindThem_WhereTheyAreFew) {
    std::string both =
        "<Apply function='if'><Apply function='equal'><FieldRef field='s'/><FieldRef field='of text'/>"
        "</Apply><FieldRef field='copy'/></Apply>";
    const DerivedDocument document(caseFields, Copy("copy", "x") + Copy("of text", "s") + Copy("copy of copy", "copy") +
                                                   "<DerivedField name='both' optype='categorical' dataType='string'>" +
                                                   both + "</DerivedField>");
    const auto& sources = dynamic_cast<const DerivedFieldSources&>(*document.derived);
    using Names = std::vector<std::string>;
    EXPECT_EQ(sources.FindFewSources("copy of copy", 3), (Names{"x"}));
    EXPECT_EQ(sources.FindFewSources("copy of copy", 2), Names{});
    EXPECT_EQ(sources.FindFewSources("both", 5), (Names{"s", "x"}));
    EXPECT_EQ(sources.FindFewSources("both", 4), Names{});
    EXPECT_EQ(sources.FindFewSources("x", 5), Names{});
}

TEST(DerivedFields, AreNone_WhenTheElementIsEmpty) {
    const DerivedDocument document("", "<Extension/>");
    std::vector<ScoreDictVar*> vars;
    document.derived->GetDerivedVars(vars);
    EXPECT_TRUE(vars.empty());
    EXPECT_EQ(document.ValueOf("any", nullptr), "absent");
}

TEST(DerivedFields, AreRefused_WhenThereIsNoElement) {
    DocumentProbe probe(nullptr);
    probe.CreateTranscoder("");
    const auto refusal = RefusalOf([&] { probe.HandleTransformationDictionary(nullptr, nullptr); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::UnexpectedElement);
    EXPECT_EQ(refusal->GetMessage(), "The document has no <TransformationDictionary>.");
}

TEST(DerivedFields, MayReferToOneAnother_WhateverTheirOrder) {
    const DerivedDocument document(caseFields, Copy("last", "middle") + Copy("first", "x") + Copy("middle", "first"));
    const Case record(5, "a");
    EXPECT_EQ(document.ValueOf("last", &record), "number 5");
    EXPECT_EQ(document.ValueOf("first", &record), "number 5");
}

TEST(DerivedFields, AreMissing_WhenTheResultIsADeclaredMissingValue) {
    const DerivedDocument document(caseFields,
                                   "<DerivedField name='d' dataType='double'><FieldRef field='x'/>"
                                   "<Value value='3' property='missing'/><Value value='1'/></DerivedField>");
    const Case three(3, "a"), one(1, "a"), other(8, "a");
    EXPECT_EQ(document.ValueOf("d", &three), "absent");
    EXPECT_EQ(document.ValueOf("d", &one), "number 1");
    EXPECT_EQ(document.ValueOf("d", &other), "number 8");  // outside its declared list, and stays
}

TEST(DerivedFields, AreRefused_WhenANameIsTaken) {
    ExpectRefused(Copy("d", "x") + "\n" + Copy("d", "x"), VeskException::InconsistentDocument,
                  "The derived field \"d\" is declared twice.", "4:1 " + dictionaryPath + "/DerivedField[2]");
    ExpectRefused(Copy("s", "x"), VeskException::InconsistentDocument,
                  "The derived field \"s\" has the name of a data field.",
                  "3:1 " + dictionaryPath + "/DerivedField[1]");
}

TEST(DerivedFields, AreRefused_WhenTheyDependOnThemselves) {
    const std::string message = " depends on itself.";
    ExpectRefused(Copy("a", "a"), VeskException::InconsistentDocument, "The derived field \"a\"" + message,
                  "3:1 " + dictionaryPath + "/DerivedField[1]");
    ExpectRefused(Copy("start", "a") + "\n" + Copy("a", "b") + Copy("b", "c") + Copy("c", "a"),
                  VeskException::InconsistentDocument, "The derived field \"a\"" + message,
                  "4:1 " + dictionaryPath + "/DerivedField[2]");
}

TEST(DerivedFields, AreRefused_WhenTheyHaveNoNameNoExpressionOrTwo) {
    const std::string place = "3:1 " + dictionaryPath + "/DerivedField[1]";
    ExpectRefused("<DerivedField><Constant/></DerivedField>", VeskException::MissingAttribute,
                  "<DerivedField> has no attribute \"name\".", place);
    ExpectRefused("<DerivedField name='d'><Value value='1'/></DerivedField>", VeskException::UnexpectedElement,
                  "The derived field \"d\" has no expression.", place);
    ExpectRefused("<DerivedField name='d'><Constant/>\n<Constant/></DerivedField>", VeskException::UnexpectedElement,
                  "<Constant> is not expected in <DerivedField> behind its expression.",
                  "4:1 " + dictionaryPath + "/DerivedField[1]/Constant[2]");
}

TEST(DerivedFields, AreRefusedByName_WhenTheyUseWhatIsNotSupported) {
    for (const std::string kind : {"Aggregate", "Lag", "Nonsense"}) {
        ExpectRefused("<DerivedField name='d'>\n<" + kind + "/></DerivedField>", VeskException::UnsupportedExpression,
                      "The expression <" + kind + "> is not supported.",
                      "4:1 " + dictionaryPath + "/DerivedField[1]/" + kind + "[1]");
    }
    ExpectRefused("<DataField name='f'/>", VeskException::UnexpectedElement,
                  "<DataField> is not expected in <TransformationDictionary>.",
                  "3:1 " + dictionaryPath + "/DataField[1]");
}

TEST(DerivedFields, AreRefused_WhenAnExpressionNestsDeeperThanTheParserAllows) {
    WithDocument(
        "<TransformationDictionary><DerivedField name='d'><Constant/></DerivedField></TransformationDictionary>",
        [](DocumentProbe& probe, xercesc::DOMDocument& document) {
            xercesc::DOMElement* field = BaseTranslator::GetFirstChildElt(document.getDocumentElement());
            xercesc::DOMNode* innermost = field->removeChild(field->getFirstChild());
            for (int i = 0; i < 100000; ++i) {
                xercesc::DOMElement* apply = document.createElement(nbscore::XmlName("Apply"));
                apply->setAttribute(nbscore::XmlName("function"), nbscore::XmlName("abs"));
                apply->appendChild(innermost);
                innermost = apply;
            }
            field->appendChild(innermost);
            const auto refusal =
                RefusalOf([&] { probe.HandleTransformationDictionary(document.getDocumentElement(), nullptr); });
            ASSERT_TRUE(refusal);
            EXPECT_EQ(refusal->GetCode(), VeskException::InconsistentDocument);
            EXPECT_EQ(refusal->GetMessage(), "Expressions nest deeper than 1000 levels.");
            field->removeChild(innermost);
        });
}

/// f0 is x, and every other field is the one before it.
std::vector<std::string> ChainOf(int length) {
    std::vector<std::string> fields = {Copy("f0", "x")};
    for (int i = 1; i < length; ++i)
        fields.push_back(Copy("f" + std::to_string(i), "f" + std::to_string(i - 1)));
    return fields;
}

std::string Joined(const std::vector<std::string>& fields) {
    std::string text;
    for (const std::string& field : fields)
        text += field;
    return text;
}

TEST(DerivedFields, AreComputed_WhenTheyFormALongChainInEitherOrder) {
    constexpr int length = 100000;
    std::vector<std::string> fields = ChainOf(length);
    const Case record(5, "a"), next(6, "a");
    for (int order = 0; order < 2; ++order) {
        const DerivedDocument document(caseFields, Joined(fields));
        EXPECT_EQ(document.ValueOf("f99999", &record), "number 5");
        EXPECT_EQ(document.ValueOf("f99999", &next), "number 6");
        std::reverse(fields.begin(), fields.end());
    }
}

TEST(DerivedFields, AreRefused_WhenALongChainIsACycle) {
    std::vector<std::string> fields = ChainOf(100000);
    fields[0] = Copy("f0", "f99999");
    const auto refusal = RefusalOf([&] { DerivedDocument(caseFields, Joined(fields)); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetMessage(), "The derived field \"f0\" depends on itself.");
}

}  // namespace
