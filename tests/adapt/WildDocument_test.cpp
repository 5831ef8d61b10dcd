// The same model as producers of many kinds and times write it: each document must give the same bits.

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "framework/BaseCaseRecord.h"
#include "framework/ScoreClsResult.h"
#include "framework/VeskException.h"
#include "host/LoadedModel.h"
#include "support/TemporaryFolder.h"

namespace nbscore::test {
namespace {

// The field has a blank and letters beyond ASCII in its name; the numbers are whole ones, one of them written "2.0".
const std::string header = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
const std::string root = "<PMML version=\"4.4\" xmlns=\"http://www.dmg.org/PMML-4_4\">";
const std::string body = R"(<Header/>
<DataDictionary><DataField name="Größe in cm" optype="categorical" dataType="integer"><Value value="1"/><Value value="2.0"/></DataField>
<DataField name="Maß" optype="continuous" dataType="double"/>
<DataField name="Art" optype="categorical" dataType="string"><Value value="Möhre"/><Value value="Rübe"/></DataField></DataDictionary>
<NaiveBayesModel functionName="classification" threshold="0.01"><MiningSchema><MiningField name="Größe in cm"/>
<MiningField name="Maß" usageType="active"/><MiningField name="Art" usageType="predicted"/></MiningSchema>
<BayesInputs><BayesInput fieldName="Größe in cm">
<PairCounts value="1.0"><TargetValueCounts><TargetValueCount value="Möhre" count="3"/><TargetValueCount value="Rübe" count="1"/></TargetValueCounts></PairCounts>
<PairCounts value="2"><TargetValueCounts><TargetValueCount value="Möhre" count=" 1 "/><TargetValueCount value="Rübe" count="4"/></TargetValueCounts></PairCounts></BayesInput>
<BayesInput fieldName="Maß"><DerivedField name="b" optype="categorical" dataType="string"><Discretize field="Maß"><DiscretizeBin binValue="0"><Interval closure="openClosed" rightMargin="2"/></DiscretizeBin><DiscretizeBin binValue="1"><Interval closure="openOpen" leftMargin="2"/></DiscretizeBin></Discretize></DerivedField>
<PairCounts value="0"><TargetValueCounts><TargetValueCount value="Möhre" count="1"/><TargetValueCount value="Rübe" count="3"/></TargetValueCounts></PairCounts>
<PairCounts value="1"><TargetValueCounts><TargetValueCount value="Möhre" count="3"/><TargetValueCount value="Rübe" count="2"/></TargetValueCounts></PairCounts></BayesInput></BayesInputs>
<BayesOutput fieldName="Art"><TargetValueCounts><TargetValueCount value="Möhre" count="4"/><TargetValueCount value="Rübe" count="5"/></TargetValueCounts></BayesOutput></NaiveBayesModel></PMML>)";

std::string ReplaceAll(std::string text, const std::string& that, const std::string& with) {
    for (std::size_t at = text.find(that); at != std::string::npos; at = text.find(that, at + with.size()))
        text.replace(at, that.size(), with);
    return text;
}

class WildDocument : public testing::Test {
protected:
    /// The bits of the confidence of one case; nothing when the document is refused.
    std::optional<std::uint64_t> Score(const std::string& text, bool adapt = false) const {
        const std::filesystem::path path = folder.Write("document.pmml", text);
        SourceDocument source = SourceDocument::Read(path.string());
        if (adapt) source.Adapt();
        try {
            const LoadedModel model = LoadedModel::Read(PluginLibrary::Load(NBSCORE_PLUGIN), source);
            model.RequireScorable();
            return BitsOf(model.Get());
        } catch (const VeskException& refusal) {
            refusals.push_back(refusal.GetMessage());
            return std::nullopt;
        }
    }
    void ExpectSame(const std::string& text, bool adapt = false) const {
        EXPECT_EQ(Score(text, adapt), Score(header + root + body)) << text.substr(0, 200);
    }

    mutable std::vector<std::string> refusals;

private:
    static std::uint64_t BitsOf(ScoreModel& model) {
        BaseCaseRecord record({"Größe in cm", "Maß"});
        record.SetNumber(0, 2);
        record.SetNumber(1, 2.5);
        ScoreResult* result = nullptr;
        model.GetScore(&record, result, false);
        const std::unique_ptr<ScoreResult> owned(result);
        EXPECT_EQ(result->GetPrediction()->GetString(), "Rübe");
        return std::bit_cast<std::uint64_t>(result->GetConfidence());
    }

    TemporaryFolder folder;
};

TEST_F(WildDocument, IsOfAnyVersionAndNamespace) {
    for (const char* version :
         {"2.0", "2.1", "3.0", "3.1", "3.2", "4.0", "4.1", "4.2", "4.2.1", "4.3", "4.4", "4.4.1"}) {
        const std::string name = ReplaceAll(std::string(version).substr(0, 3), ".", "_");
        const std::string opening = std::string("<PMML version=\"") + version + "\"";
        ExpectSame(header + opening + ">" + body);
        ExpectSame(header + opening + " xmlns=\"http://www.dmg.org/PMML-" + name + "\">" + body);
        ExpectSame(header + opening + " xmlns='http://www.dmg.org/PMML-" + name +
                   "' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='a b'>" + body);
    }
}

TEST_F(WildDocument, HasAnyPrefixOfPmml) {
    std::string prefixed = ReplaceAll(ReplaceAll(body, "</", "\x01"), "<", "<p:");
    prefixed = ReplaceAll(prefixed, "\x01", "</p:");
    ExpectSame(header + "<p:PMML version='4.3' xmlns:p='http://www.dmg.org/PMML-4_3'>" + prefixed);
}

TEST_F(WildDocument, HasCommentsAndWhiteSpaceAnywhere) {
    const std::string roomy = ReplaceAll(body, "><", ">\r\n\t<!-- <Value value='3'/> --> <?note here?>\n<");
    ExpectSame(header + "\n<!-- before -->\n" + root + roomy + "\n<!-- behind -->\n");
    ExpectSame(header + root + ReplaceAll(ReplaceAll(body, "/>", "\n  />"), "\" ", "\"\t\n "));
}

TEST_F(WildDocument, HasTheEncodingItDeclares) {
    const std::string text = root + body;
    const std::vector<std::pair<const char*, const char*>> letters = {
        {"ö", "\xF6"}, {"ü", "\xFC"}, {"ß", "\xDF"}, {"Ö", "\xD6"}};
    std::string narrow = text;
    for (const auto& [utf8, byte] : letters)
        narrow = ReplaceAll(narrow, utf8, byte);
    for (const char* encoding : {"ISO-8859-1", "iso-8859-1", "windows-1252", "Windows-1252"})
        ExpectSame(std::string("<?xml version='1.0' encoding='") + encoding + "'?>" + narrow);
    ExpectSame("\xEF\xBB\xBF" + header + text);
    ExpectSame(text);

    std::string wide("\xFF\xFE", 2);
    const std::string declared = "<?xml version='1.0' encoding='UTF-16'?>" + narrow;
    for (const char unit : declared)
        wide += {unit, '\0'};
    ExpectSame(wide);
}

TEST_F(WildDocument, HasElementsOfOtherProducersWhereTheStandardHasThem) {
    ExpectSame(header + root +
               ReplaceAll(body, "<BayesInputs>",
                          "<Output><OutputField name='p' feature='predictedValue'/></Output><ModelStats/><Targets/>"
                          "<LocalTransformations/><BayesInputs><Extension name='v' extender='v'><v:w xmlns:v='urn:v'/>"
                          "</Extension>"));
    ExpectSame(header + root + ReplaceAll(body, "<MiningSchema>", "<Extension name='a' value='b'/><MiningSchema>"));
    ExpectSame(header + root + ReplaceAll(body, "<Value value=\"1\"/>", "<Extension name='a'/><Value value=\"1\"/>"));
}

TEST_F(WildDocument, IsReadByAdapting_WhereTheReaderIsStrict) {
    const std::string newer = ReplaceAll(
        ReplaceAll(ReplaceAll(body, "usageType=\"predicted\"", "usageType=\"target\""), " fieldName=\"Art\"", ""),
        "<TargetValueCounts>", "<Extension/><TargetValueCounts><Extension name='x'/>");
    const std::string text =
        header + root + ReplaceAll(newer, "<DataDictionary>", "<DataDictionary><Extension name='v'>text</Extension>");
    EXPECT_EQ(Score(text), std::nullopt);
    ExpectSame(text, true);
}

TEST_F(WildDocument, StaysRefusedOrIgnored_WhereTheRulesSaySo) {
    EXPECT_EQ(Score(header + root +
                        ReplaceAll(body, "<PairCounts value=\"1.0\">", "<TargetValueStats/><PairCounts value=\"1.0\">"),
                    true),
              std::nullopt);
    EXPECT_EQ(refusals.back(), "Only PairCounts elements are allowed here.");
}

}  // namespace
}  // namespace nbscore::test
