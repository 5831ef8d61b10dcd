#include "translator/DocumentReading.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "translator/ReadWith.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

constexpr std::size_t perRow = CountCells::cellsPerRow;
constexpr std::size_t perCategory = CountCells::cellsPerCategory;

CountCells CellsOf(std::size_t limit) {
    return {limit * CountCells::bytesPerCell, 0};
}

std::string TooMany(std::size_t limit) {
    return "The document's count tables and categories need more memory than max-memory allows: " +
           std::to_string(limit * CountCells::bytesPerCell) + " bytes.";
}

/// What a step comes to that takes cells at a document's only element.
ParseOutcome Taking(const std::function<void(Element)>& step) {
    return VisitDocument("<Table/>",
                         [&](const DocumentTree& document, const Transcoder&) { step(document.GetRoot()); });
}

ParseOutcome Take(std::size_t limit, const std::vector<std::size_t>& amounts) {
    return Taking([&](Element element) {
        CountCells cells = CellsOf(limit);
        for (const std::size_t amount : amounts)
            cells.Take(element, amount);
    });
}

TEST(CountCells, AreTaken_WhenAsManyAreLeft) {
    EXPECT_FALSE(Take(100, {100}).refusal);
    EXPECT_FALSE(Take(100, {50, 0, 50, 0}).refusal);
}

TEST(CountCells, AreRefused_WhenFewerAreLeft) {
    for (const auto& amounts :
         std::vector<std::vector<std::size_t>>{{101}, {50, 50, 1}, {1, std::numeric_limits<std::size_t>::max()}}) {
        EXPECT_TRUE(IsRefusedAs(Take(100, amounts), "<Table/>", {12, TooMany(100), "<Table/>", "/Table"}));
    }
}

TEST(CountCells, AreWhatTheElementsOfTheDocumentLeave) {
    const auto take = [](std::uint64_t taken, std::size_t amount) {
        return Taking([=](Element element) {
            CountCells(100 * CountCells::bytesPerCell, taken * CountCells::bytesPerCell).Take(element, amount);
        });
    };
    EXPECT_FALSE(take(60, 40).refusal);
    EXPECT_TRUE(IsRefusedAs(take(60, 41), "<Table/>", {12, TooMany(100), "<Table/>", "/Table"}));
    EXPECT_TRUE(take(101, 1).refusal);
}

TEST(TableCells, AreTakenOnce_WhenATableIsMeasuredAgain) {
    const auto grow = [](std::size_t limit) {
        return Taking([=](Element element) {
            CountCells cells = CellsOf(limit);
            TableCells table(cells);
            table.Require(element, 1, 5);
            table.Require(element, 2, 7);
            table.Require(element, 2, 6);
            table.Require(element, 2, 10);
        });
    };
    EXPECT_FALSE(grow(2 * perRow + 10).refusal);
    EXPECT_TRUE(grow(2 * perRow + 9).refusal);
}

std::string Repeated(const std::string& text, std::size_t times) {
    std::string repeated;
    for (std::size_t i = 0; i < times; ++i)
        repeated += text;
    return repeated;
}

/// What reading a document comes to when so many cells are there for it.
ParseOutcome ReadWithin(std::size_t limit, const TestDocument& document) {
    RecordingModel model;
    return ReadWith(model, document.Text(), [=](DocumentReading& reading) { reading.cells = CellsOf(limit); });
}

/// That a document takes exactly so many cells.
void ExpectTaken(const TestDocument& document, std::size_t cells) {
    EXPECT_FALSE(ReadWithin(cells, document).refusal);
    const ParseOutcome outcome = ReadWithin(cells - 1, document);
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 12);
    EXPECT_EQ(outcome.refusal->GetMessage(), TooMany(cells - 1));
    EXPECT_TRUE(outcome.refusal->HasPlace());
}

constexpr std::size_t encoderOfTwo = 2 * perCategory;
/// The target's encoder and the output's one row, both of two categories.
constexpr std::size_t targetOfTwo = encoderOfTwo + perRow + 2;

TEST(CountLimits, ChargeEveryCellOnce_WhenADocumentIsRead) {
    ExpectTaken(TestDocument(), targetOfTwo + encoderOfTwo + 2 * (perRow + 2));
}

TEST(CountLimits, ChargeAnOverwrittenRowOnce) {
    TestDocument document;
    const std::string row = R"(<PairCounts value="rain"><TargetValueCounts/></PairCounts>)";
    document.bayesInputs = "<BayesInput fieldName=\"outlook\">" + Repeated(row, 20) + "</BayesInput>";
    ExpectTaken(document, targetOfTwo + encoderOfTwo + 2 * (perRow + 2));
}

TEST(CountLimits, ChargeEveryRowAsLongAsTheLongest_WhenTargetCategoriesAreLearned) {
    TestDocument document;
    document.dataFields = R"(<DataField name="x" optype="categorical" dataType="string"/>
        <DataField name="play" optype="categorical" dataType="string"/>)";
    document.miningSchema = R"(<MiningField name="x"/><MiningField name="play" usageType="predicted"/>)";
    document.bayesInputs = R"(<BayesInput fieldName="x">
        <PairCounts value="a"><TargetValueCounts/></PairCounts>
        <PairCounts value="b"><TargetValueCounts><TargetValueCount value="1" count="1"/>
            <TargetValueCount value="2" count="1"/><TargetValueCount value="3" count="1"/></TargetValueCounts></PairCounts>
        </BayesInput>)";
    document.bayesOutput = R"(<BayesOutput fieldName="play"><TargetValueCounts/></BayesOutput>)";
    ExpectTaken(document, 2 * (perRow + 3) + perRow + 3);
}

TEST(CountLimits, ChargeTheTextsOfDeclaredValues_ForEveryEncoderAnew) {
    TestDocument document;
    constexpr std::size_t length = 20'000;
    document.dataFields = "<DataField name=\"x\" optype=\"categorical\" dataType=\"string\"><Value value=\"" +
                          std::string(length, 'a') + "\"/></DataField>" +
                          R"(<DataField name="play" optype="categorical" dataType="string">
                              <Value value="yes"/><Value value="no"/></DataField>)";
    document.miningSchema = R"(<MiningField name="x"/><MiningField name="play" usageType="predicted"/>)";
    document.bayesInputs = Repeated(R"(<BayesInput fieldName="x"/>)", 5);
    ExpectTaken(document, targetOfTwo + 5 * (perCategory + length / CountCells::bytesPerCell + perRow));
}

TEST(CountLimits, ChargeTheTextsOfTheTargetsValues) {
    TestDocument document;
    constexpr std::size_t length = 8'000;
    document.dataFields += "<DataField name=\"long\" optype=\"categorical\" dataType=\"string\"><Value value=\"" +
                           std::string(length, 'a') + "\"/></DataField>";
    document.miningSchema = R"(<MiningField name="outlook"/><MiningField name="long" usageType="predicted"/>)";
    document.bayesInputs = R"(<BayesInput fieldName="outlook"/>)";
    document.bayesOutput = R"(<BayesOutput fieldName="long"><TargetValueCounts/></BayesOutput>)";
    const std::size_t encoder = perCategory + length / CountCells::bytesPerCell;
    ExpectTaken(document, encoder + encoderOfTwo + 2 * perRow + perRow);
}

TEST(CountLimits, ChargeNoTexts_WhenValuesAreNumbers) {
    TestDocument document;
    document.dataFields += "<DataField name=\"size\" optype=\"categorical\" dataType=\"double\"><Value value=\"" +
                           std::string(1'000, '0') + "1\"/></DataField>";
    document.miningSchema += R"(<MiningField name="size"/>)";
    document.bayesInputs = R"(<BayesInput fieldName="size"/>)";
    ExpectTaken(document, targetOfTwo + perCategory + perRow);
}

TEST(CountLimits, ChargeEveryOutput) {
    TestDocument document;
    document.bayesInputs = R"(<BayesInput fieldName="outlook"/>)";
    document.bayesOutput = Repeated(document.bayesOutput, 3);
    ExpectTaken(document, encoderOfTwo + 3 * (perRow + 2) + encoderOfTwo + 2 * perRow);
}

}  // namespace
}  // namespace nbscore::test
