#include "pmml/KnownContent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/TreeOf.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Unknown(const std::string& text, const std::function<bool(Element)>& isEntered = {}) {
    std::vector<std::string> found;
    const ParsedDocument document = TreeOf(text);
    const auto take = [&found](const UnknownContent& unknown) {
        const std::string tag = unknown.element.GetTag();
        const std::string parent = unknown.element.GetParent().GetTag();
        found.push_back(unknown.attribute.empty()
                            ? tag + " in " + parent + (unknown.isInPlaceOfExpression ? " (expression)" : "")
                            : std::string(unknown.attribute) + "=" + std::string(unknown.value) + " of " + tag);
    };
    FindUnknownContent(document->GetRoot(), take, isEntered);
    return found;
}

/// Has every element and attribute that is known, each element but those of expressions once.
const std::string everything = R"(<PMML version="4.4" xmlns="http://www.dmg.org/PMML-4_4">
<DataDictionary numberOfFields="2">
<DataField name="a" displayName="A" optype="categorical" dataType="string" taxonomy="t" isCyclic="0"><Interval
    closure="openOpen" leftMargin="0" rightMargin="1"/><Value value="1" displayValue="one" property="valid"/>
    </DataField></DataDictionary>
<TransformationDictionary>
<DefineFunction name="f" optype="categorical" dataType="string"><ParameterField name="p" displayName="P"
    optype="categorical" dataType="string"/><Constant dataType="string" missing="true"/></DefineFunction>
<DerivedField name="b" displayName="B" optype="categorical" dataType="string"><Apply function="f" mapMissingTo="1"
    defaultValue="2" invalidValueTreatment="asIs"><FieldRef field="a" mapMissingTo="1"/></Apply></DerivedField>
    </TransformationDictionary>
<MiningModel modelName="m" functionName="classification" algorithmName="n" isScorable="true">
<Segmentation multipleModelMethod="selectFirst" missingPredictionTreatment="x" missingThreshold="1"><Segment id="1"
    weight="1"><True/>
<NaiveBayesModel modelName="m" functionName="classification" algorithmName="n" isScorable="true" threshold="1">
<MiningSchema><MiningField name="a" usageType="active" optype="categorical" importance="1" outliers="asIs"
    lowValue="1" highValue="2" missingValueReplacement="1" missingValueTreatment="asIs" invalidValueTreatment="asIs"
    invalidValueReplacement="1"/></MiningSchema>
<Output><OutputField name="o" displayName="O" optype="categorical" dataType="string" targetField="t"
    feature="decision" value="1" rank="1" segmentId="1" isFinalResult="true" ruleFeature="r" algorithm="x"
    rankBasis="x" rankOrder="x" isMultiValued="0"/></Output>
<Targets><Target field="t" optype="categorical"><TargetValue value="1" displayValue="one" priorProbability="1"/>
    </Target></Targets>
<LocalTransformations>
<DerivedField name="c"><Discretize field="a" mapMissingTo="1" defaultValue="2" dataType="string"><DiscretizeBin
    binValue="1"><Interval closure="openOpen"/></DiscretizeBin></Discretize></DerivedField>
<DerivedField name="d"><NormContinuous field="a" mapMissingTo="1" outliers="asIs"><LinearNorm orig="0" norm="1"/>
    </NormContinuous></DerivedField>
<DerivedField name="e"><NormDiscrete field="a" value="1" mapMissingTo="1" method="indicator"/></DerivedField>
<DerivedField name="g"><MapValues outputColumn="o" mapMissingTo="1" defaultValue="2" dataType="string">
    <FieldColumnPair field="a" column="x"/></MapValues></DerivedField>
<DerivedField name="h"><TextIndex textField="a" localTermWeights="binary" countHits="allHits" isCaseSensitive="true"
    maxLevenshteinDistance="1" tokenize="true" wordSeparatorCharacterRE="x"><TextIndexNormalization inField="i"
    outField="o" regexField="r" recursive="true" isCaseSensitive="true" maxLevenshteinDistance="1" tokenize="true"
    wordSeparatorCharacterRE="x"/></TextIndex></DerivedField></LocalTransformations>
<NaiveBayes modelName="m" functionName="classification" algorithmName="n">
<BayesInputs>
<BayesInput fieldName="a">
<DerivedField/><PairCounts value="1"><TargetValueCounts><TargetValueCount value="1" count="1"/></TargetValueCounts>
    </PairCounts></BayesInput>
<BayesInput fieldName="n"><TargetValueStats>
<TargetValueStat value="1"><GaussianDistribution mean="1" variance="1"/></TargetValueStat>
<TargetValueStat value="2"><AnyDistribution mean="1" variance="1"/></TargetValueStat>
<TargetValueStat value="3"><PoissonDistribution mean="1"/></TargetValueStat>
<TargetValueStat value="4"><UniformDistribution lower="0" upper="1"/></TargetValueStat></TargetValueStats>
    </BayesInput></BayesInputs>
<BayesOutput fieldName="t"><TargetValueCounts/></BayesOutput></NaiveBayes></NaiveBayesModel></Segment></Segmentation>
    </MiningModel></PMML>)";

TEST(KnownContent, IsAllThatReadersRead) {
    EXPECT_THAT(Unknown(everything), IsEmpty());
}

/// Where each start tag of a text begins.
std::vector<std::size_t> StartTags(const std::string& text) {
    std::vector<std::size_t> tags;
    for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at + 1)) {
        if (text[at + 1] != '/') tags.push_back(at);
    }
    return tags;
}

std::string NameAt(const std::string& text, std::size_t tag) {
    return text.substr(tag + 1, text.find_first_of(" \n/>", tag) - tag - 1);
}

TEST(UnknownContent, IsAnAttributeOfAnyElement) {
    for (const std::size_t tag : StartTags(everything)) {
        const std::string name = NameAt(everything, tag);
        std::string text = everything;
        EXPECT_THAT(Unknown(text.insert(tag + 1 + name.size(), " other='v'")),
                    ElementsAre("other=v of <" + name + ">"));
    }
}

TEST(UnknownContent, IsAChildOfAnyElement) {
    for (const std::size_t tag : StartTags(everything)) {
        const std::string name = NameAt(everything, tag);
        std::string text = everything;
        const std::size_t end = text.find('>', tag);
        if (text[end - 1] == '/') {
            text.replace(end - 1, 2, "><Other><Inner/></Other></" + name + ">");
        } else {
            text.insert(end + 1, "<Other><Inner/></Other>");
        }
        const std::vector<std::string> found = Unknown(text);
        ASSERT_EQ(found.size(), 1U) << name;
        EXPECT_THAT(found.front(), testing::StartsWith("<Other> in <" + name + ">"));
    }
}

TEST(UnknownContent, IsMarkedWhereAnExpressionIsExpected) {
    EXPECT_THAT(Unknown("<PMML><TransformationDictionary><DerivedField><Lag/></DerivedField><DerivedField><FieldRef>"
                        "<Lag/></FieldRef></DerivedField></TransformationDictionary></PMML>"),
                ElementsAre("<Lag> in <DerivedField> (expression)", "<Lag> in <FieldRef>"));
}

TEST(UnknownContent, IsNothingThatOnlyDescribes) {
    EXPECT_THAT(Unknown("<PMML><Header x='1'><Any/></Header><MiningBuildTask><Any/></MiningBuildTask><DataDictionary>"
                        "<Taxonomy x='1'><Any/></Taxonomy></DataDictionary><NaiveBayesModel><ModelStats><Any/>"
                        "</ModelStats><ModelExplanation x='1'/><ModelVerification><Any/></ModelVerification>"
                        "</NaiveBayesModel></PMML>"),
                IsEmpty());
}

TEST(UnknownContent, IsNoAttributeOfItsWritersOwn_UnlessItIsNamedAsAKnownOne) {
    EXPECT_THAT(Unknown("<PMML xmlns:v='urn:v'><DataDictionary v:numberOfFields='1' x-note='1'/></PMML>"), IsEmpty());
    EXPECT_THAT(Unknown("<PMML><DataDictionary x-numberOfFields='1'/></PMML>"),
                ElementsAre("x-numberOfFields=1 of <DataDictionary>"));
    EXPECT_THAT(Unknown("<PMML><DataDictionary x-threshold='1'/></PMML>"), IsEmpty());
}

TEST(UnknownContent, StandsBesideWhatIsReadThroughAWrapper) {
    EXPECT_THAT(Unknown("<PMML><NaiveBayes><NaiveBayesModel/><BayesInputs/></NaiveBayes></PMML>"),
                ElementsAre("<BayesInputs> in <NaiveBayes>"));
    EXPECT_THAT(Unknown("<PMML><NaiveBayesModel><NaiveBayes><NaiveBayesModel/><BayesInputs/></NaiveBayes>"
                        "</NaiveBayesModel></PMML>"),
                ElementsAre("<NaiveBayesModel> in <NaiveBayes>"));
}

TEST(UnknownContent, IsLookedForOnlyWhereItIsWanted) {
    const std::string text = "<Document><Other/><NaiveBayesModel><Other/></NaiveBayesModel></Document>";
    EXPECT_THAT(Unknown(text), ElementsAre("<Other> in <Document>", "<Other> in <NaiveBayesModel>"));
    EXPECT_THAT(Unknown(text, [](Element child) { return !child.Is(Name::NaiveBayesModel); }),
                ElementsAre("<Other> in <Document>"));
    FindUnknownContent({}, [](const UnknownContent&) { FAIL(); });
}

std::string InModel(const std::string& content) {
    return "<PMML><NaiveBayesModel>" + content + "</NaiveBayesModel></PMML>";
}

TEST(DataType, IsUnknown_WhereItIsNone) {
    EXPECT_THAT(
        Unknown("<PMML><DataDictionary><DataField dataType='double'/><DataField dataType='dateDaysSince[1960]'/>"
                "<DataField dataType='numeric'/><DataField dataType=''/></DataDictionary></PMML>"),
        ElementsAre("dataType=numeric of <DataField>", "dataType= of <DataField>"));
}

TEST(ContentOfAnExtension, IsUnknown_WhereItWouldCountOutside) {
    EXPECT_THAT(Unknown(InModel("<MiningSchema><Extension><MiningField/></Extension></MiningSchema>")),
                ElementsAre("<MiningField> in <Extension>"));
    EXPECT_THAT(Unknown(InModel("<Extension><Deep><v:TargetValueCounts xmlns:v='urn:v'><TargetValueCount/>"
                                "</v:TargetValueCounts></Deep></Extension>")),
                ElementsAre("<v:TargetValueCounts> in <Deep>"));
    EXPECT_THAT(Unknown("<PMML><DataDictionary><DataField><Extension><Value/></Extension></DataField></DataDictionary>"
                        "</PMML>"),
                ElementsAre("<Value> in <Extension>"));
    EXPECT_THAT(Unknown(InModel("<BayesInputs><BayesInput><Extension><DerivedField/></Extension></BayesInput>"
                                "</BayesInputs>")),
                ElementsAre("<DerivedField> in <Extension>"));
}

TEST(ContentOfAnExtension, MeansNothing_WhereItHasOtherPeoplesNames) {
    EXPECT_THAT(Unknown(InModel("<Extension x='1'><Value a='1'/><Constant/><ModelStats/><Any/></Extension>")),
                IsEmpty());
    EXPECT_THAT(
        Unknown("<PMML><DataDictionary><DataField><Extension><X-Labels><Value/></X-Labels></Extension></DataField>"
                "</DataDictionary></PMML>"),
        IsEmpty());
}

TEST(ContentOfAnExtension, IsLikeOther_WhereProducersPutIt) {
    const std::string input = "<BayesInput x='1'><Extension><PairCounts x='2'/></Extension></BayesInput>";
    EXPECT_THAT(Unknown(InModel("<BayesInputs><Extension>" + input + "</Extension></BayesInputs>")),
                ElementsAre("x=1 of <BayesInput>", "x=2 of <PairCounts>"));
    EXPECT_THAT(Unknown(InModel("<BayesInputs><Extension><Group>" + input + "</Group></Extension></BayesInputs>")),
                ElementsAre("<BayesInput> in <Group>"));
    const std::string listing = "<Extension extender='scoring.nbscore' name='DerivedFields'>";
    EXPECT_THAT(Unknown(InModel("<MiningSchema>" + listing + "<MiningField x='1'/></Extension></MiningSchema>")),
                ElementsAre("x=1 of <MiningField>"));
}

TEST(Extension, HoldsContent_WhereThatCountsOrWouldOutside) {
    const auto holds = [](const std::string& input) {
        const ParsedDocument document = TreeOf("<BayesInput>" + input + "</BayesInput>");
        return HoldsContent(document->GetRoot().GetFirstChild());
    };
    EXPECT_TRUE(holds("<Extension><PairCounts/></Extension>"));
    EXPECT_TRUE(holds("<Extension><Deep><TargetValueStat/></Deep></Extension>"));
    EXPECT_FALSE(holds("<Extension><Deep><Any/></Deep></Extension>"));
    EXPECT_FALSE(holds("<Extension/>"));
}

}  // namespace
}  // namespace nbscore::test
