#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "transform/ExpressionProbe.h"

namespace {

std::string Index(const std::string& term, const std::string& attributes = "", const std::string& content = "") {
    return "<TextIndex textField='s' " + attributes + ">" + content + "<Constant dataType='string'>" + term +
           "</Constant></TextIndex>";
}

std::string Count(const std::string& text, const std::string& term, const std::string& attributes = "",
                  const std::string& content = "") {
    return Given(Index(term, attributes, content), Case(1, text), "double");
}

std::string Table(const std::string& rows, const std::string& attributes = "") {
    return "<TextIndexNormalization " + attributes + "><InlineTable>" + rows +
           "</InlineTable></TextIndexNormalization>";
}

std::string Row(const std::string& in, const std::string& out, const std::string& regex = "") {
    return "<row><string>" + in + "</string><stem>" + out + "</stem>" +
           (regex.empty() ? "" : "<regex>" + regex + "</regex>") + "</row>";
}

TEST(TextIndex, CountsWords) {
    EXPECT_EQ(Count("the cat and the dog", "the"), "number 2");
    EXPECT_EQ(Count("the cat and the dog", "he"), "number 0");
    EXPECT_EQ(Count("the cat and the dog", "the dog"), "number 1");
    EXPECT_EQ(Count("the  cat\tand\nthe dog", "cat and"), "number 1");
    EXPECT_EQ(Count("a a a", "a a"), "number 2");  // occurrences may overlap
    EXPECT_EQ(Count("", "a"), "number 0");
    EXPECT_EQ(Count("a", ""), "number 0");
    EXPECT_EQ(Count("a", "a b"), "number 0");
}

TEST(TextIndex, IgnoresPunctuationAtTheEndsOfWords) {
    EXPECT_EQ(Count("Excellent! (really 'excellent', - excellent...)", "excellent"), "number 3");
    EXPECT_EQ(Count("a - b", "a b"), "number 1");
    EXPECT_EQ(Count("it's", "its"), "number 0");
    EXPECT_EQ(Count("end.", "end!"), "number 1");
}

TEST(TextIndex, IgnoresCase_UnlessItCounts) {
    EXPECT_EQ(Count("The THE the \xC3\x84rger", "the"), "number 3");
    EXPECT_EQ(Count("The THE the", "the", "isCaseSensitive='true'"), "number 1");
    EXPECT_EQ(Count("\xC3\x84rger", "\xC3\xA4RGER"), "number 1");
    EXPECT_EQ(Count("\xC3\x84rger", "\xC3\xA4rger", "isCaseSensitive='1'"), "number 0");
}

TEST(TextIndex, SplitsWhereTheDocumentSays) {
    EXPECT_EQ(Count("a-b_c d", "b", "wordSeparatorCharacterRE='[-_]'"), "number 1");
    EXPECT_EQ(Count("a-b_c d", "c d", "wordSeparatorCharacterRE='[-_]'"), "number 1");
    EXPECT_EQ(Count("abc", "b", "wordSeparatorCharacterRE='x*'"), "number 0");  // an empty match separates nothing
    EXPECT_EQ(Count("axxb", "b", "wordSeparatorCharacterRE='x*'"), "number 1");
}

TEST(TextIndex, SplitsLongTextsAndLongSeparators) {
    for (const int blanks : {1, 200, 255, 256, 257, 300, 511, 512, 513, 2000}) {
        for (const int letters : {1, 250, 256, 511, 512, 1500}) {
            const std::string text = std::string(static_cast<std::size_t>(letters), 'x') +
                                     std::string(static_cast<std::size_t>(blanks), ' ') + "y";
            EXPECT_EQ(Count(text + " " + text, std::string(static_cast<std::size_t>(letters), 'x') + " y"), "number 2")
                << blanks << " " << letters;
        }
    }
    for (std::size_t letters = 500; letters < 520; ++letters) {
        const std::string word(letters, 'w');
        EXPECT_EQ(Count(word + "--b", "b", "wordSeparatorCharacterRE='--'"), "number 1") << letters;
        EXPECT_EQ(Count(word + "xaay b", "aay", "wordSeparatorCharacterRE='x[^y]*y|[ x]'"), "number 0") << letters;
    }
}

TEST(TextIndex, WeighsTheCount) {
    const std::string text = "b a b a b";
    EXPECT_EQ(Count(text, "a", "localTermWeights='termFrequency'"), "number 2");
    EXPECT_EQ(Count(text, "a", "localTermWeights='binary'"), "number 1");
    EXPECT_EQ(Count(text, "c", "localTermWeights='binary'"), "number 0");
    EXPECT_EQ(Count("a a a a a a a a a", "a", "localTermWeights='logarithmic'"), "number 1");
    EXPECT_EQ(Count(text, "c", "localTermWeights='logarithmic'"), "number 0");
    EXPECT_EQ(Count("b a b a b b", "a", "localTermWeights='augmentedNormalizedTermFrequency'"), "number 0.75");
    EXPECT_EQ(Count(text, "b", "localTermWeights='augmentedNormalizedTermFrequency'"), "number 1");
    EXPECT_EQ(Count(text, "c", "localTermWeights='augmentedNormalizedTermFrequency'"), "number 0");
    EXPECT_EQ(Count("", "c", "localTermWeights='augmentedNormalizedTermFrequency'"), "number 0");
}

TEST(TextIndex, AcceptsMisspeltWords_UpToTheDistance) {
    const std::string text = "coffee cofee koffe tea";
    EXPECT_EQ(Count(text, "coffee"), "number 1");
    EXPECT_EQ(Count(text, "coffee", "maxLevenshteinDistance='1'"), "number 2");
    EXPECT_EQ(Count(text, "coffee", "maxLevenshteinDistance='2'"), "number 3");
    EXPECT_EQ(Count(text, "coffee", "maxLevenshteinDistance='2147483647'"), "number 4");
    EXPECT_EQ(Count("blak cofee", "black coffee", "maxLevenshteinDistance='1'"), "number 0");  // of all words together
    EXPECT_EQ(Count("blak cofee", "black coffee", "maxLevenshteinDistance='2'"), "number 1");
    EXPECT_EQ(Count("M\xC3\xBCller", "Muller", "maxLevenshteinDistance='1'"), "number 1");  // characters, not bytes
}

TEST(TextIndex, CountsTheBestHitsOnly_WhenAsked) {
    const std::string text = "coffee cofee coffee koffe";
    EXPECT_EQ(Count(text, "coffee", "maxLevenshteinDistance='2' countHits='bestHits'"), "number 2");
    EXPECT_EQ(Count(text, "cofeee", "maxLevenshteinDistance='2' countHits='bestHits'"), "number 3");
    EXPECT_EQ(Count(text, "coffee", "maxLevenshteinDistance='2' countHits='allHits'"), "number 4");
    EXPECT_EQ(Count(text, "x", "maxLevenshteinDistance='2' countHits='bestHits'"), "number 0");
}

TEST(TextIndex, LooksInsideWordsToo_WhenItIsNotTokenized) {
    EXPECT_EQ(Count("banana BANANA", "ana", "tokenize='false'"), "number 4");
    EXPECT_EQ(Count("banana BANANA", "ana", "tokenize='false' isCaseSensitive='true'"), "number 2");
    EXPECT_EQ(Count("a  b", "a b", "tokenize='false'"), "number 0");
    EXPECT_EQ(Count("a", "", "tokenize='false'"), "number 0");
}

TEST(TextIndex, IsMissing_WhenTheTextOrTheTermIs) {
    EXPECT_EQ(Count("NA", "a"), "absent");
    EXPECT_EQ(Given("<TextIndex textField='s'><FieldRef field='x'/></TextIndex>", Case(-9, "a")), "absent");
    EXPECT_EQ(Given("<TextIndex textField='x'><FieldRef field='x'/></TextIndex>", Case(2.5, "a")), "text 1");
}

TEST(TextIndex, ReplacesWordsFirst_WhenItHasATable) {
    const std::string table = Table(Row("bad", "poor") + Row("not good", "poor") + Row("poor", "negative"));
    EXPECT_EQ(Count("Bad, bad! Not  good.", "negative", "", table), "number 3");
    EXPECT_EQ(Count("badly", "negative", "", table), "number 0");
    EXPECT_EQ(Count("a b a b a", "x", "", Table(Row("a b a", "x"))), "number 1");  // what is replaced is gone
    EXPECT_EQ(Count("a a a", "x a", "", Table(Row("a a", "x"))), "number 1");
    EXPECT_EQ(Count("good", "negative", "", Table(Row("good", "bad")) + Table(Row("bad", "negative"))), "number 1");
    EXPECT_EQ(Count("bad", "bad", "", Table(Row("bad", "poor"))), "number 0");  // the term stays as it is
    EXPECT_EQ(Count("a(b)", "x", "tokenize='false'", Table(Row("(B)", "$1x\\"))), "number 1");
    EXPECT_EQ(Count("a(b)", "a$1x\\", "tokenize='false'", Table(Row("(B)", "$1x\\"))), "number 1");
}

TEST(TextIndex, ReplacesWhatAnExpressionMatches_WhenARowSaysSo) {
    EXPECT_EQ(Count("interfaces Interface", "iface", "", Table(Row("interfaces?", "iface", "true"))), "number 2");
    EXPECT_EQ(Count("interfaces?", "iface", "", Table(Row("interfaces?", "iface", "false"))), "number 1");
    EXPECT_EQ(Count("ab12", "12-ab", "", Table(Row("([a-z]+)([0-9]+)", "$2-$1", "1"))), "number 1");
    EXPECT_EQ(Count("AB", "x", "", Table(Row("ab", "x", "true"), "isCaseSensitive='true'")), "number 0");
}

TEST(TextIndex, UsesTheColumnsThatTheTableNames) {
    const std::string table =
        "<TextIndexNormalization inField='a' outField='b' regexField='c'><InlineTable>"
        "<row><a>x.</a><b>found</b><c>true</c></row><row><d:a>y</d:a><b>found</b><string>z</string></row>"
        "</InlineTable></TextIndexNormalization>";
    EXPECT_EQ(Count("xx y", "found", "", table), "number 2");
}

TEST(TextIndex, LooksForRowsAsItsTableSays) {
    EXPECT_EQ(Count("cofee", "tea", "", Table(Row("coffee", "tea"), "maxLevenshteinDistance='1'")), "number 1");
    EXPECT_EQ(Count("cofee", "tea", "maxLevenshteinDistance='1'", Table(Row("coffee", "tea"))), "number 1");
    EXPECT_EQ(Count("A", "x", "", Table(Row("a", "x"), "isCaseSensitive='true'")), "number 0");
    EXPECT_EQ(Count("a-b", "x", "", Table(Row("b", "- x"), "wordSeparatorCharacterRE='-'")), "number 1");
}

TEST(TextIndex, AppliesTheTableUntilNothingChanges_WhenItIsRecursive) {
    const std::string rows = Row("c", "d") + Row("b", "c") + Row("a", "b");
    EXPECT_EQ(Count("a", "b", "", Table(rows)), "number 1");
    EXPECT_EQ(Count("a", "d", "", Table(rows, "recursive='true'")), "number 1");
    EXPECT_EQ(Count("a", "a", "", Table(Row("a", "b") + Row("b", "a"), "recursive='true'")), "number 1");  // settles
    EXPECT_EQ(Count("a", "a", "", Table(Row("a", "a a"), "recursive='true'")), "absent");                  // never does
    EXPECT_EQ(Count("a", "a", "", Table(Row("a", "b") + Row("b", "a x"), "recursive='true'")), "absent");
}

TEST(TextIndex, IsMissing_WhenItWouldTakeTooMuch) {
    std::string text;
    for (int i = 0; i < 200000; ++i)
        text += "a ";
    const std::string term = text.substr(0, 200000);
    EXPECT_EQ(Count(text, term), "number 100001");
    std::string fields =
        "<DerivedField name='d' dataType='double'><TextIndex textField='s' maxLevenshteinDistance='1'>"
        "<Constant>" +
        term + "</Constant></TextIndex></DerivedField>";
    for (int i = 1; i < 50; ++i)  // which share the work that a case may take
        fields +=
            "<DerivedField name='d" + std::to_string(i) + "' dataType='double'><Constant>1</Constant></DerivedField>";
    const Case longText(2, text);
    EXPECT_EQ(DerivedDocument(caseFields, fields).ValueOf("d", &longText), "absent");
    EXPECT_EQ(Count(text, "a", "", Table(Row("a", "a a a a a a a a"))), "absent");  // too long a text
    EXPECT_EQ(Count(text, "b", "", Table(Row("a", "b"))), "number 200000");
    EXPECT_EQ(Count(std::string(1000001, 'a'), "a"), "absent");
    EXPECT_EQ(Count(std::string(999999, 'a') + "b", std::string(500000, 'a') + "b", "tokenize='false'"), "number 1");
}

TEST(TextIndex, IsRefused_WhenItsPartsAreUnknown) {
    const std::string place = " 4:1 DerivedField[1]/TextIndex[1]: ";
    const std::string term = "<Constant>a</Constant>";
    EXPECT_EQ(RefusalOfExpression("<TextIndex>" + term + "</TextIndex>"),
              "2" + place + "<TextIndex> has no attribute \"textField\".");
    EXPECT_EQ(RefusalOfExpression("<TextIndex textField='y'>" + term + "</TextIndex>"),
              "8" + place + "\"y\" is no field.");
    EXPECT_EQ(RefusalOfExpression("<TextIndex textField='s'/>"), "1" + place + "<TextIndex> has no term.");
    EXPECT_EQ(
        RefusalOfExpression("<TextIndex textField='s'>" + term + "\n" + term + "</TextIndex>"),
        "1 5:1 DerivedField[1]/TextIndex[1]/Constant[2]: <Constant> is not expected in <TextIndex> behind its term.");
    EXPECT_EQ(RefusalOfExpression(Index("a", "localTermWeights='x'")),
              "5" + place +
                  "\"x\" is no \"localTermWeights\" of <TextIndex>: termFrequency, binary, logarithmic or "
                  "augmentedNormalizedTermFrequency.");
    EXPECT_EQ(RefusalOfExpression(Index("a", "countHits='x'")),
              "5" + place + "\"x\" is no \"countHits\" of <TextIndex>: allHits or bestHits.");
    EXPECT_EQ(RefusalOfExpression(Index("a", "tokenize='no'")),
              "5" + place + "\"no\" is no \"tokenize\" of <TextIndex>: true, 1, false or 0.");
    EXPECT_EQ(RefusalOfExpression(Index("a", "maxLevenshteinDistance='1.5'")),
              "9" + place + "\"1.5\" is no whole number of 32 bits.");
    EXPECT_EQ(RefusalOfExpression(Index("a", "maxLevenshteinDistance='-1'")),
              "5" + place + "maxLevenshteinDistance is below zero.");
    EXPECT_EQ(RefusalOfExpression(Index("a", "maxLevenshteinDistance='1' tokenize='false'")),
              "11" + place + "maxLevenshteinDistance is not supported with tokenize=\"false\".");
    EXPECT_EQ(RefusalOfExpression(Index("a", "localTermWeights='augmentedNormalizedTermFrequency' tokenize='false'")),
              "11" + place + "augmentedNormalizedTermFrequency is not supported with tokenize=\"false\".");
    EXPECT_EQ(RefusalOfExpression(Index("a", "wordSeparatorCharacterRE='['")),
              "5" + place + "The regular expression \"[\" cannot be used: missing ]: [.");
}

TEST(TextIndex, IsRefused_WhenATableIsInvalid) {
    const std::string table = "DerivedField[1]/TextIndex[1]/TextIndexNormalization[1]";
    const auto refusal = [](const std::string& normalization) {
        return RefusalOfExpression("<TextIndex textField='s'>\n" + normalization + "</TextIndex>");
    };
    EXPECT_EQ(refusal("<TextIndexNormalization/>"),
              "1 5:1 " + table + ": <TextIndexNormalization> has no <InlineTable>.");
    EXPECT_EQ(refusal("<TextIndexNormalization>\n<TableLocator/></TextIndexNormalization>"),
              "11 6:1 " + table + "/TableLocator[1]: <TableLocator> is not supported.");
    EXPECT_EQ(refusal("<TextIndexNormalization><InlineTable/>\n<Constant/></TextIndexNormalization>"),
              "1 6:1 " + table + "/Constant[1]: <Constant> is not expected in <TextIndexNormalization>.");
    EXPECT_EQ(refusal(Table("\n<row><string>a</string></row>")),
              "5 6:1 " + table + "/InlineTable[1]/row[1]: The row has no cell for the column \"stem\".");
    EXPECT_EQ(refusal(Table("<row>\n<string> ! </string><stem/></row>")),
              "5 6:1 " + table + "/InlineTable[1]/row[1]/string[1]: The row has nothing to look for.");
    EXPECT_EQ(refusal(Table("<row>\n<string>a(</string><stem/><regex>true</regex></row>")),
              "5 6:1 " + table +
                  "/InlineTable[1]/row[1]/string[1]: The regular expression \"a(\" cannot be used: missing ): (?i)a(.");
    EXPECT_EQ(refusal(Table("<row>\n<string>a</string><stem>$1</stem><regex>true</regex></row>")),
              "5 6:1 " + table +
                  "/InlineTable[1]/row[1]/string[1]: The regular expression \"a\" cannot be used: it has no group 1.");
    EXPECT_EQ(refusal(Table("<row><string>a</string><stem/>\n<regex>yes</regex></row>")),
              "5 6:1 " + table + "/InlineTable[1]/row[1]/regex[1]: \"yes\" is no truth value: true, false, 1 or 0.");
    std::string rows;
    for (int i = 0; i < 1200; ++i)
        rows += Row("a" + std::to_string(i), "b", "true");
    EXPECT_NE(refusal(Table(rows)).find("The regular expressions of the document are together more than 256 megabytes"),
              std::string::npos);
}

TEST(TextIndex, ReadsAndScoresManyRows) {
    std::string rows;
    for (int i = 0; i < 100000; ++i)
        rows += Row("w" + std::to_string(i), "v" + std::to_string(i));
    EXPECT_EQ(Count("w0 w99999 w5", "v99999", "", Table(rows)), "number 1");
}

/// The edit distance, computed by the whole table.
std::size_t PlainDistance(const std::string& left, const std::string& right) {
    std::vector<std::vector<std::size_t>> table(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
    for (std::size_t i = 0; i <= left.size(); ++i) {
        for (std::size_t j = 0; j <= right.size(); ++j) {
            if (i == 0 || j == 0) {
                table[i][j] = i + j;
            } else {
                table[i][j] = std::min({table[i - 1][j] + 1, table[i][j - 1] + 1,
                                        table[i - 1][j - 1] + (left[i - 1] == right[j - 1] ? 0 : 1)});
            }
        }
    }
    return table[left.size()][right.size()];
}

using Text = std::vector<std::string>;

Text AnyWords(int fewest, int most) {
    const auto word = rc::gen::nonEmpty(rc::gen::container<std::string>(rc::gen::elementOf(std::string("abc"))));
    Text words;
    const int count = *rc::gen::inRange(fewest, most);
    for (int i = 0; i < count; ++i)
        words.push_back((*rc::gen::resize(6, word)).substr(0, 6));
    return words;
}

std::string Joined(const Text& words) {
    std::string text;
    for (const std::string& word : words)
        text += word + " ";
    return text;
}

RC_GTEST_PROP(TextIndex, CountsWhatComparingEverywhereCounts, ()) {
    const Text text = AnyWords(0, 12), term = AnyWords(1, 3);
    const int distance = *rc::gen::inRange(0, 6);
    const bool bestOnly = *rc::gen::arbitrary<bool>();
    std::vector<std::size_t> hits;
    for (std::size_t start = 0; start + term.size() <= text.size(); ++start) {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < term.size(); ++i)
            sum += PlainDistance(text[start + i], term[i]);
        if (sum <= static_cast<std::size_t>(distance)) hits.push_back(sum);
    }
    auto expected = static_cast<std::ptrdiff_t>(hits.size());
    if (bestOnly && !hits.empty())
        expected = std::count(hits.begin(), hits.end(), *std::min_element(hits.begin(), hits.end()));
    RC_ASSERT(Count(Joined(text), Joined(term),
                    "maxLevenshteinDistance='" + std::to_string(distance) + "' countHits='" +
                        (bestOnly ? "bestHits" : "allHits") + "'") == "number " + std::to_string(expected));
}

}  // namespace
