#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AdaptedDocument.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string Field(const std::string& name, const std::string& of) {
    return "<DerivedField name='" + name + "'><FieldRef field='" + of + "'/></DerivedField>\n";
}

/// A model with these local fields, one per line, and inputs over these fields.
std::string Model(const std::string& localFields, const std::vector<std::string>& inputs,
                  const std::string& attributes = "") {
    std::string text = "<NaiveBayesModel " + attributes + "><MiningSchema/><LocalTransformations>\n" + localFields +
                       "</LocalTransformations><BayesInputs>\n";
    for (const std::string& input : inputs)
        text += "<BayesInput fieldName='" + input + "'/>\n";
    return text + "</BayesInputs></NaiveBayesModel>\n";
}

std::string SubModel(const std::string& localFields, const std::vector<std::string>& inputs) {
    return Model(localFields, inputs, "algorithmName='SelfLearning' modelName=''");
}

/// With the data fields x and y on line 2, and the rest from line 3 on.
std::string Document(const std::string& rest) {
    return "<PMML>\n<DataDictionary><DataField name='x'/><DataField name='y'/></DataDictionary>\n" + rest + "</PMML>";
}

std::string Globals(const std::string& fields) {
    return "<TransformationDictionary>\n" + fields + "</TransformationDictionary>\n";
}

TEST(LocalFields, MoveToANewDictionaryBehindTheData) {
    const Adapted adapted = Adapt(Document(Model(Field("d", "x"), {"d"})));
    EXPECT_THAT(adapted.changes, ElementsAre("4: the derived field \"d\" is moved from LocalTransformations to the "
                                             "TransformationDictionary",
                                             "6: the derived field \"d\" is listed in the schema as an input"));
    EXPECT_THAT(adapted.text,
                HasSubstr("</DataDictionary><TransformationDictionary><DerivedField name=\"d\"><FieldRef field=\"x\"/>"
                          "</DerivedField></TransformationDictionary>"));
}

TEST(LocalFields, MoveBehindThoseOfTheWholeDocument) {
    const Adapted adapted = Adapt(Document(Globals(Field("g", "x")) + Model(Field("d", "g"), {"d", "g"})));
    EXPECT_EQ(adapted.changes.size(), 3U);
    EXPECT_THAT(adapted.text, HasSubstr("<DerivedField name=\"g\"><FieldRef field=\"x\"/></DerivedField>"
                                        "<DerivedField name=\"d\"><FieldRef field=\"g\"/></DerivedField>"
                                        "</TransformationDictionary>"));
}

TEST(LocalFields, MoveWithAllThatTheyAreComputedFrom_AndNothingElse) {
    const Adapted adapted = Adapt(Document(
        Model("<DerivedField name='d'><Apply function='+'><Apply function='-'><NormContinuous field='a'/></Apply>"
              "<Discretize field='b'/><TextIndex textField='c'><FieldRef field='y'/></TextIndex></Apply>"
              "<Extension><FieldRef field='idle'/></Extension></DerivedField>\n" +
                  Field("idle", "e") + Field("e", "x") +
                  "<DerivedField name='a'><MapValues><FieldColumnPair field='e'/>"
                  "<InlineTable><row><FieldRef field='idle'/></row></InlineTable></MapValues></DerivedField>"
                  "<DerivedField name='b'><NormDiscrete field='x'/></DerivedField>" +
                  Field("c", "c"),
              {"d"})));
    EXPECT_THAT(
        adapted.changes,
        ElementsAre(HasSubstr("4: the derived field \"d\" is moved"), HasSubstr("6: the derived field \"e\" is moved"),
                    HasSubstr("7: the derived field \"a\" is moved"), HasSubstr("7: the derived field \"b\" is moved"),
                    HasSubstr("7: the derived field \"c\" is moved"), HasSubstr("\"d\" is listed")));
    EXPECT_THAT(adapted.text, HasSubstr("<LocalTransformations><DerivedField name=\"idle\">"));
}

TEST(LocalFields, Stay_WhereNoInputNeedsThem) {
    EXPECT_THAT(Adapt(Document(Globals(Field("d", "x")) +
                               Model(Field("y", "x") + Field("d", "x") + Field("d", "y") +
                                         "<DerivedField/><DerivedField name=''/>",
                                     {"x", ""}) +
                               Model(Field("z", "x"), {"z"})))
                    .changes,
                IsEmpty());
}

TEST(LocalFields, AreRefused_WhereTheirNamesClash) {
    const std::string notClear = ": which of the two is meant is not clear.";
    const std::string named = "The derived field \"d\" of a model";
    EXPECT_EQ(GetRefusal(Document(Model(Field("d", "y") + Field(" y", "x"), {"d"}))),
              "5: The derived field \"y\" of a model has the name of a data field" + notClear);
    EXPECT_EQ(GetRefusal(Document(Globals(Field("d", "x")) + Model(Field("d", "y"), {"d"}))),
              "7: " + named + " has the name of one in the TransformationDictionary" + notClear);
    EXPECT_EQ(GetRefusal(Document(Model(Field("d", "x") + Field("d", "x"), {"d"}))),
              "5: " + named + " is declared twice" + notClear);
    EXPECT_EQ(GetRefusal(Document(SubModel(Field("d", "x"), {"d"}) + SubModel(Field("d", "y"), {"d"}))),
              "9: " + named + " is declared otherwise in another model" + notClear);
}

TEST(LocalFields, MoveOnce_WhereSubModelsDeclareThemAlike) {
    const std::string fields = Field("d", "e") + Field("e", "x");
    const Adapted adapted = Adapt(Document(SubModel(fields, {"d"}) + SubModel(fields, {"d"}) + SubModel("", {"x"})));
    EXPECT_EQ(adapted.changes.size(), 6U);
    EXPECT_EQ(adapted.changes[3], "10: the derived field \"d\" is the one that was moved from an earlier model");
    EXPECT_THAT(adapted.text, HasSubstr("<TransformationDictionary><DerivedField name=\"d\"><FieldRef field=\"e\"/>"
                                        "</DerivedField><DerivedField name=\"e\"><FieldRef field=\"x\"/></DerivedField>"
                                        "</TransformationDictionary>"));
}

TEST(LocalFields, AreLeftOut_WhereAnEarlierSubModelDeclaresThemAlike) {
    const std::string field = Field("d", "x");
    const Adapted adapted = Adapt(Document(SubModel(field, {"d"}) + SubModel(field + Field("unused", "x"), {"d"})));
    EXPECT_THAT(adapted.text, HasSubstr("<LocalTransformations><DerivedField name=\"unused\"><FieldRef field=\"x\"/>"
                                        "</DerivedField></LocalTransformations>"));
}

TEST(LocalFields, AreRefused_WhereAModelInThemWouldBecomeAnEarlierOne) {
    const std::string inner = "<Extension><NaiveBayesModel><MiningSchema/></NaiveBayesModel></Extension>";
    const std::string field = "<DerivedField name='d'>" + inner + "<FieldRef field='x'/></DerivedField>\n";
    EXPECT_EQ(GetRefusal(Document(Model(field, {"d"}))),
              "4: The derived field \"d\" of a model has a model in it, and cannot be moved.");
    EXPECT_THAT(Adapt(Document(Model(field, {"x"}))).changes, IsEmpty());
}

TEST(LocalFields, AreRefused_WhereOthersWouldComeToReadThem) {
    EXPECT_EQ(GetRefusal(Document(Globals(Field("g", "d")) + Model(Field("d", "x"), {"d"}))),
              "4: \"d\" is a derived field of a model, and cannot be seen from here.");
    EXPECT_EQ(GetRefusal(Document(SubModel(Field("d", "x"), {"d"}) + SubModel("", {"d"}))),
              "10: \"d\" is a derived field of a model, and cannot be seen from here.");
    EXPECT_EQ(GetRefusal(Document(SubModel(Field("d", "x"), {"d"}) + SubModel(Field("e", "d"), {"e"}))),
              "9: \"d\" is a derived field of a model, and cannot be seen from here.");
    EXPECT_EQ(
        GetRefusal(Document(SubModel(Field("d", "e") + Field("e", "x"), {"d"}) + SubModel(Field("d", "e"), {"d"}))),
        "10: \"e\" is a derived field of a model, and cannot be seen from here.");
}

TEST(LocalFields, TakeTimeInProportion_WhenThereAreVeryMany) {
    std::string fields;
    for (int i = 0; i < 10'000; ++i)
        fields += Field("d" + std::to_string(i), "d" + std::to_string(i + 1));
    EXPECT_EQ(Adapt(Document(Model(fields + Field("d10000", "x"), {"d0"}))).changes.size(), 10'002U);
}

}  // namespace
}  // namespace nbscore::test
