#include "growth/GrowingDocuments.h"

#include <algorithm>
#include <cmath>
#include <fstream>

#include "common/DocumentShape.h"

namespace nbscore::bench {
namespace {

using Path = std::filesystem::path;

void WriteFile(const Path& file, const std::string& text) {
    std::ofstream out(file, std::ios::binary);
    out.exceptions(std::ios::failbit | std::ios::badbit);
    out << text;
}

/// A text for each number from 0, one behind the other.
template <typename Make>
std::string Each(std::size_t number, const Make& make) {
    std::string text;
    for (std::size_t i = 0; i < number; ++i)
        text += make(std::to_string(i));
    return text;
}

std::string Counts(const std::string& no, const std::string& yes) {
    return "<TargetValueCounts><TargetValueCount value=\"no\" count=\"" + no +
           "\"/><TargetValueCount value=\"yes\" count=\"" + yes + "\"/></TargetValueCounts>";
}

std::string Input(const std::string& field) {
    return "<BayesInput fieldName=\"" + field + "\"><PairCounts value=\"red\">" + Counts("3", "2") +
           "</PairCounts></BayesInput>\n";
}

/// Of a field that holds numbers.
std::string BinnedInput(const std::string& field) {
    return "<BayesInput fieldName=\"" + field +
           "\"><DerivedField name=\"bin\" optype=\"categorical\" dataType=\"integer\"><Discretize field=\"" + field +
           "\"><DiscretizeBin binValue=\"0\"><Interval closure=\"openClosed\" rightMargin=\"5\"/></DiscretizeBin>"
           "<DiscretizeBin binValue=\"1\"><Interval closure=\"openClosed\" leftMargin=\"5\"/></DiscretizeBin>"
           "</Discretize></DerivedField><PairCounts value=\"0\">" +
           Counts("1", "4") + "</PairCounts><PairCounts value=\"1\">" + Counts("4", "1") +
           "</PairCounts></BayesInput>\n";
}

std::string Field(const std::string& name) {
    return "<DataField name=\"" + name + "\" optype=\"categorical\" dataType=\"string\"/>\n";
}

std::string Derived(const std::string& name, const std::string& expression) {
    return "<DerivedField name=\"" + name + "\" optype=\"continuous\" dataType=\"double\">" + expression +
           "</DerivedField>\n";
}

std::string Ref(const std::string& field) {
    return "<FieldRef field=\"" + field + "\"/>";
}

std::string Apply(const std::string& function, const std::string& arguments) {
    return "<Apply function=\"" + function + "\">" + arguments + "</Apply>";
}

/// A small document, and what stands in its parts beside what it needs: a text `colour`, a number `weight`, the target
/// `y`. What the number's input reads is `derived` if that is there, so that it is computed for each case.
struct Document {
    std::string header;
    std::string valuesOfColour;
    std::string valuesOfWeight;
    std::string fields;
    std::string derived;
    /// The derived field that is an input; the weight where it is empty.
    std::string derivedInput;
    std::string modelAttributes;
    std::string schema;
    std::string localTransformations;
    std::string output;
    std::string inputs;
    std::string verification;
    std::string otherModels;
    std::string columns;
    std::string cells;
    std::string colour = "red";
    std::size_t rows = 1;

    std::string Text() const {
        const std::string number = derivedInput.empty() ? "weight" : derivedInput;
        const std::string listing =
            "<Extension extender=\"scoring.nbscore\" name=\"DerivedFields\"><MiningField name=\"" + derivedInput +
            "\"/></Extension>";
        return "<PMML version=\"4.2\"><Header>" + header + "</Header><DataDictionary>" +
               "<DataField name=\"colour\" optype=\"categorical\" dataType=\"string\">" + valuesOfColour +
               "</DataField><DataField name=\"weight\" optype=\"continuous\" dataType=\"double\">" + valuesOfWeight +
               "</DataField><DataField name=\"y\" optype=\"categorical\" dataType=\"string\"><Value value=\"no\"/>"
               "<Value value=\"yes\"/></DataField>" +
               fields + "</DataDictionary>" +
               (derived.empty() ? "" : "<TransformationDictionary>" + derived + "</TransformationDictionary>") +
               "<NaiveBayesModel functionName=\"classification\" threshold=\"0.01\"" + modelAttributes +
               "><MiningSchema>"
               "<MiningField name=\"colour\"/><MiningField name=\"weight\"/>"
               "<MiningField name=\"y\" usageType=\"predicted\"/>" +
               schema + (derivedInput.empty() ? "" : listing) + "</MiningSchema>" + output + localTransformations +
               "<BayesInputs>" + Input("colour") + BinnedInput(number) + inputs +
               "</BayesInputs><BayesOutput fieldName=\"y\">" + Counts("5", "5") + "</BayesOutput>" + verification +
               "</NaiveBayesModel>" + otherModels + "</PMML>";
    }
    std::string Table() const {
        std::string table = "colour,weight" + columns + "\n";
        for (std::size_t row = 0; row < rows; ++row)
            table += colour + "," + std::to_string(row % 10) + cells + "\n";
        return table;
    }
};

/// @param fill puts so much of the thing into a small document.
GrowingDocument Grow(const std::string& name, std::size_t most,
                     std::function<void(std::size_t number, Document& document)> fill) {
    return {name, most, [fill = std::move(fill)](std::size_t number, const Path& file, const Path& table) {
                Document document;
                fill(number, document);
                WriteFile(file, document.Text());
                WriteFile(table, document.Table());
            }};
}

/// Of the documents that are measured when they are loaded.
GrowingDocument GrowShape(const std::string& name, std::size_t most,
                          std::function<DocumentShape(std::size_t)> shapeOf) {
    return {name, most, [shapeOf = std::move(shapeOf)](std::size_t number, const Path& file, const Path& table) {
                const DocumentShape shape = shapeOf(number);
                WriteDocument(shape, file);
                std::string header;
                std::string cells;
                for (std::size_t i = 0; i < shape.inputs; ++i) {
                    header += (i == 0 ? "field" : ",field") + std::to_string(i);
                    cells += (i == 0 ? "" : ",") + ValueOf(shape.kind, shape.categories / 2);
                }
                WriteFile(table, header + "\n" + cells + "\n");
            }};
}

std::size_t RootOf(std::size_t number) {
    return static_cast<std::size_t>(std::sqrt(static_cast<double>(number)));
}

std::string Verification(const std::string& fields, const std::string& rows) {
    return "<ModelVerification><VerificationFields>" + fields + "</VerificationFields><InlineTable>" + rows +
           "</InlineTable></ModelVerification>";
}

std::string VerificationField(const std::string& name) {
    return "<VerificationField field=\"" + name + "\"/>";
}

constexpr std::size_t million = std::size_t{1} << 20;
/// Below the limit on the names of elements that a document may have.
constexpr std::size_t mostNames = std::size_t{1} << 17;

void AddModels(std::vector<GrowingDocument>& all) {
    all.push_back(GrowShape("inputs", million / 8, [](std::size_t n) { return DocumentShape{0, n, 2, 2}; }));
    all.push_back(GrowShape("texts of an input", million / 4, [](std::size_t n) { return DocumentShape{0, 1, n, 2}; }));
    all.push_back(GrowShape("numbers of an input", million / 4, [](std::size_t n) {
        return DocumentShape{0, 1, n, 2, InputKind::Numbers};
    }));
    all.push_back(GrowShape("bins of an input", million / 4, [](std::size_t n) {
        return DocumentShape{0, 1, n, 2, InputKind::Bins};
    }));
    all.push_back(GrowShape("target categories", million / 4, [](std::size_t n) { return DocumentShape{0, 1, 2, n}; }));
    all.push_back(GrowShape("texts times target categories", million, [](std::size_t n) {
        return DocumentShape{0, 1, RootOf(n), RootOf(n)};
    }));
    all.push_back(GrowShape("sub-models", million / 16, [](std::size_t n) { return DocumentShape{n, 2, 2, 2}; }));
    all.push_back(GrowShape("inputs times sub-models", million / 4, [](std::size_t n) {
        return DocumentShape{RootOf(n), RootOf(n), 2, 2};
    }));
    all.push_back(GrowShape("texts times sub-models", million / 4, [](std::size_t n) {
        return DocumentShape{RootOf(n), 1, RootOf(n), 2};
    }));
    all.push_back(Grow("inputs of one field", million / 8, [](std::size_t n, Document& document) {
        document.inputs = Each(n, [](const std::string&) { return Input("colour"); });
    }));
    all.push_back(Grow("sub-models with fields of their own", million / 32, [](std::size_t n, Document& document) {
        document.fields = Each(n, [](const std::string& i) { return Field("f" + i); });
        document.modelAttributes = " algorithmName=\"SelfLearning\" modelName=\"m\"";
        document.otherModels = Each(n, [](const std::string& i) {
            return "<NaiveBayesModel functionName=\"classification\" algorithmName=\"SelfLearning\" modelName=\"m" + i +
                   "\" threshold=\"0.01\"><MiningSchema><MiningField name=\"f" + i +
                   "\"/><MiningField name=\"y\" usageType=\"predicted\"/></MiningSchema><BayesInputs>" +
                   Input("f" + i) + "</BayesInputs><BayesOutput fieldName=\"y\">" + Counts("3", "4") +
                   "</BayesOutput></NaiveBayesModel>\n";
        });
        document.columns = Each(n, [](const std::string& i) { return ",f" + i; });
        document.cells = Each(n, [](const std::string&) { return ",red"; });
    }));
}

void AddFields(std::vector<GrowingDocument>& all) {
    all.push_back(Grow("fields that nothing reads", million / 2, [](std::size_t n, Document& document) {
        document.fields = Each(n, [](const std::string& i) { return Field("f" + i); });
    }));
    all.push_back(Grow("fields of the schema that nothing reads", million / 4, [](std::size_t n, Document& document) {
        document.fields = Each(n, [](const std::string& i) { return Field("f" + i); });
        document.schema = Each(n, [](const std::string& i) { return "<MiningField name=\"f" + i + "\"/>\n"; });
        document.columns = Each(n, [](const std::string& i) { return ",f" + i; });
        document.cells = std::string(n, ',');
    }));
    for (const std::string property : {"valid", "missing", "invalid"}) {
        const auto value = [property](const std::string& i) {
            return "<Value value=\"" + i + "\" property=\"" + property + "\"/>\n";
        };
        // So that derived fields have to know what is valid.
        const auto isRead = [](Document& document) {
            document.derived =
                Derived("d", Apply("if", Apply("isMissing", Ref("colour")) + Ref("weight") + Ref("weight")));
            document.derivedInput = "d";
        };
        all.push_back(Grow(property + " texts of a field", million, [value, isRead](std::size_t n, Document& document) {
            document.valuesOfColour = "<Value value=\"red\"/>" + Each(n, value);
            isRead(document);
        }));
        all.push_back(
            Grow(property + " numbers of a field", million, [value, isRead](std::size_t n, Document& document) {
                document.valuesOfWeight = Each(n, value);
                isRead(document);
            }));
    }
    all.push_back(Grow("intervals of a field", million, [](std::size_t n, Document& document) {
        document.valuesOfWeight = Each(n, [](const std::string& i) {
            return "<Interval closure=\"closedOpen\" leftMargin=\"" + i + "\" rightMargin=\"" + i + ".5\"/>\n";
        });
        document.derived = Derived("d", Ref("weight"));
        document.derivedInput = "d";
    }));
}

void AddDerivedFields(std::vector<GrowingDocument>& all) {
    all.push_back(Grow("derived fields", million / 4, [](std::size_t n, Document& document) {
        document.derived = Each(n, [](const std::string& i) { return Derived("d" + i, Ref("weight")); });
        document.derivedInput = "d0";
    }));
    all.push_back(Grow("derived fields in a chain", million / 4, [](std::size_t n, Document& document) {
        document.derived = Derived("d", Ref("weight"));
        std::string before = "d";
        for (std::size_t i = 0; i < n; ++i) {
            document.derived += Derived("d" + std::to_string(i), Ref(before));
            before = "d" + std::to_string(i);
        }
        document.derivedInput = before;
    }));
    all.push_back(Grow("derived fields that one reads", million / 4, [](std::size_t n, Document& document) {
        document.derived = Each(n, [](const std::string& i) { return Derived("d" + i, Ref("weight")); }) +
                           Derived("d", Apply("sum", Each(n, [](const std::string& i) { return Ref("d" + i); })));
        document.derivedInput = "d";
    }));
    all.push_back(Grow("derived fields that are inputs", million / 16, [](std::size_t n, Document& document) {
        document.derived = Each(n, [](const std::string& i) { return Derived("d" + i, Ref("weight")); });
        document.schema = "<Extension extender=\"scoring.nbscore\" name=\"DerivedFields\">" +
                          Each(n, [](const std::string& i) { return "<MiningField name=\"d" + i + "\"/>"; }) +
                          "</Extension>";
        document.inputs = Each(n, [](const std::string& i) { return BinnedInput("d" + i); });
    }));
    all.push_back(Grow("fields that one derived field reads", million / 4, [](std::size_t n, Document& document) {
        document.fields = Each(n, [](const std::string& i) { return Field("f" + i); });
        document.derived =
            Derived("d", Apply("sum", Ref("weight") + Each(n, [](const std::string& i) { return Ref("f" + i); })));
        document.derivedInput = "d";
        document.columns = Each(n, [](const std::string& i) { return ",f" + i; });
        document.cells = Each(n, [](const std::string&) { return ",1"; });
    }));
    all.push_back(Grow("local derived fields", million / 4, [](std::size_t n, Document& document) {
        document.localTransformations = "<LocalTransformations>" +
                                        Each(n, [](const std::string& i) { return Derived("d" + i, Ref("weight")); }) +
                                        "</LocalTransformations>";
        document.inputs =
            Each(std::min<std::size_t>(n, million / 16), [](const std::string& i) { return BinnedInput("d" + i); });
    }));
    all.push_back(Grow("functions", million / 4, [](std::size_t n, Document& document) {
        document.derived =
            Each(n,
                 [](const std::string& i) {
                     return "<DefineFunction name=\"f" + i + "\" optype=\"continuous\"><ParameterField name=\"p\"/>" +
                            Ref("p") + "</DefineFunction>\n";
                 }) +
            Derived("d", Apply("sum", Each(n, [](const std::string& i) { return Apply("f" + i, Ref("weight")); })));
        document.derivedInput = "d";
    }));
    all.push_back(Grow("parameters of a function", million / 4, [](std::size_t n, Document& document) {
        document.derived = "<DefineFunction name=\"f\" optype=\"continuous\">" +
                           Each(n, [](const std::string& i) { return "<ParameterField name=\"p" + i + "\"/>"; }) +
                           Apply("sum", Each(n, [](const std::string& i) { return Ref("p" + i); })) +
                           "</DefineFunction>\n" +
                           Derived("d", Apply("f", Each(n, [](const std::string&) { return Ref("weight"); })));
        document.derivedInput = "d";
    }));
}

/// An expression of its own kind with many parts, which an input reads.
GrowingDocument GrowExpression(const std::string& name, std::size_t most,
                               std::function<std::string(std::size_t)> expressionOf) {
    return Grow(name, most, [expressionOf = std::move(expressionOf)](std::size_t n, Document& document) {
        document.derived = Derived("d", expressionOf(n));
        document.derivedInput = "d";
    });
}

void AddExpressions(std::vector<GrowingDocument>& all) {
    all.push_back(GrowExpression("arguments of a function", million / 2, [](std::size_t n) {
        return Apply("sum",
                     Ref("weight") + Each(n, [](const std::string& i) { return "<Constant>" + i + "</Constant>"; }));
    }));
    all.push_back(GrowExpression("values to be in", million / 2, [](std::size_t n) {
        return Apply("if", Apply("isIn", Ref("colour") + Each(n,
                                                              [](const std::string& i) {
                                                                  return "<Constant dataType=\"string\">" + i +
                                                                         "</Constant>";
                                                              })) +
                               Ref("weight") + Ref("weight"));
    }));
    all.push_back(GrowExpression("rows of a table of values", million / 4, [](std::size_t n) {
        return "<MapValues outputColumn=\"out\"><FieldColumnPair field=\"colour\" column=\"in\"/><InlineTable>" +
               Each(n, [](const std::string& i) { return "<row><in>" + i + "</in><out>" + i + "</out></row>\n"; }) +
               "</InlineTable></MapValues>";
    }));
    all.push_back(GrowExpression("columns of a table of values", mostNames, [](std::size_t n) {
        return "<MapValues outputColumn=\"out\">" +
               Each(n,
                    [](const std::string& i) { return "<FieldColumnPair field=\"colour\" column=\"c" + i + "\"/>"; }) +
               "<InlineTable><row>" + Each(n, [](const std::string& i) { return "<c" + i + ">red</c" + i + ">\n"; }) +
               "<out>1</out></row></InlineTable></MapValues>";
    }));
    all.push_back(GrowExpression("rows and columns of a table of values", million, [](std::size_t n) {
        const std::size_t side = RootOf(n);
        return "<MapValues outputColumn=\"out\">" +
               Each(side,
                    [](const std::string& i) { return "<FieldColumnPair field=\"colour\" column=\"c" + i + "\"/>"; }) +
               "<InlineTable>" +
               Each(side,
                    [side](const std::string& row) {
                        return "<row>" +
                               Each(side,
                                    [&row](const std::string& i) { return "<c" + i + ">" + row + "</c" + i + ">"; }) +
                               "<out>1</out></row>\n";
                    }) +
               "</InlineTable></MapValues>";
    }));
    all.push_back(GrowExpression("bins of an expression", million / 4, [](std::size_t n) {
        return "<Discretize field=\"weight\">" +
               Each(n,
                    [](const std::string& i) {
                        return "<DiscretizeBin binValue=\"" + i + "\"><Interval closure=\"closedOpen\" leftMargin=\"" +
                               i + "\" rightMargin=\"" + i + ".5\"/></DiscretizeBin>\n";
                    }) +
               "</Discretize>";
    }));
    all.push_back(GrowExpression("points of a broken line", million / 2, [](std::size_t n) {
        return "<NormContinuous field=\"weight\">" +
               Each(n + 2,
                    [](const std::string& i) { return "<LinearNorm orig=\"" + i + "\" norm=\"" + i + "\"/>\n"; }) +
               "</NormContinuous>";
    }));
    const auto search = [](const std::string& rules) {
        return "<TextIndex textField=\"colour\">" + rules + "<Constant>blue</Constant></TextIndex>";
    };
    all.push_back(Grow("words of a text", million / 8, [search](std::size_t n, Document& document) {
        document.derived = Derived("d", search(""));
        document.derivedInput = "d";
        document.colour = Each(n, [](const std::string& i) { return "w" + i + " "; });
    }));
    all.push_back(GrowExpression("rules for texts", million / 16, [search](std::size_t n) {
        return search("<TextIndexNormalization inField=\"string\" outField=\"stem\"><InlineTable>" +
                      Each(n,
                           [](const std::string& i) {
                               return "<row><string>w" + i + "</string><stem>v" + i + "</stem></row>\n";
                           }) +
                      "</InlineTable></TextIndexNormalization>");
    }));
    all.push_back(GrowExpression("words of a term", million / 4, [](std::size_t n) {
        return "<TextIndex textField=\"colour\"><Constant>" +
               Each(n, [](const std::string& i) { return "w" + i + " "; }) + "</Constant></TextIndex>";
    }));
}

void AddTestCases(std::vector<GrowingDocument>& all) {
    all.push_back(Grow("test cases", million / 4, [](std::size_t n, Document& document) {
        document.verification = Verification(
            VerificationField("weight") + VerificationField("probability_no"), Each(n, [](const std::string& i) {
                return "<row><weight>" + i + "</weight><probability_no>0.5</probability_no></row>\n";
            }));
    }));
    all.push_back(Grow("results that test cases check", mostNames / 2, [](std::size_t n, Document& document) {
        document.output = "<Output>" +
                          Each(n,
                               [](const std::string& i) {
                                   return "<OutputField name=\"o" + i + "\" feature=\"probability\" value=\"no\"/>\n";
                               }) +
                          "</Output>";
        document.verification = Verification(
            Each(n, [](const std::string& i) { return VerificationField("o" + i); }),
            "<row>" + Each(n, [](const std::string& i) { return "<o" + i + ">0.5</o" + i + ">"; }) + "</row>");
    }));
    all.push_back(Grow("fields of test cases", mostNames / 2, [](std::size_t n, Document& document) {
        document.fields = Each(n, [](const std::string& i) { return Field("f" + i); });
        document.verification =
            Verification(VerificationField("probability_no") +
                             Each(n, [](const std::string& i) { return VerificationField("f" + i); }),
                         "<row><probability_no>0.5</probability_no>" +
                             Each(n, [](const std::string& i) { return "<f" + i + ">red</f" + i + ">"; }) + "</row>");
    }));
    all.push_back(Grow("names in test cases that mean nothing", mostNames, [](std::size_t n, Document& document) {
        document.verification =
            Verification(VerificationField("weight") + VerificationField("probability_no"),
                         "<row><weight>1</weight><probability_no>0.5</probability_no>" +
                             Each(n, [](const std::string& i) { return "<u" + i + ">1</u" + i + ">"; }) + "</row>");
    }));
}

void AddTheRest(std::vector<GrowingDocument>& all) {
    const auto extension = [](const std::string& i) { return "<Extension name=\"e" + i + "\" value=\"1\"/>\n"; };
    all.push_back(Grow("extensions of the header", million,
                       [extension](std::size_t n, Document& document) { document.header = Each(n, extension); }));
    all.push_back(Grow("extensions among inputs", million,
                       [extension](std::size_t n, Document& document) { document.inputs = Each(n, extension); }));
    all.push_back(Grow("elements with names of their own", mostNames, [](std::size_t n, Document& document) {
        document.header =
            "<Extension>" + Each(n, [](const std::string& i) { return "<e" + i + "/>\n"; }) + "</Extension>";
    }));
    all.push_back(Grow("what scoring does not heed", million / 4, [](std::size_t n, Document& document) {
        document.output = "<Output>" +
                          Each(n,
                               [](const std::string& i) {
                                   return "<OutputField name=\"o" + i + "\" feature=\"transformedValue\">" +
                                          Ref("weight") + "</OutputField>\n";
                               }) +
                          "</Output>";
        document.fields = Each(n, [](const std::string& i) { return Field("f" + i); });
        document.schema = Each(n, [](const std::string& i) {
            return "<MiningField name=\"f" + i + "\" usageType=\"supplementary\" missingValueReplacement=\"red\"/>\n";
        });
    }));
    all.push_back(Grow("other models", million / 4, [](std::size_t n, Document& document) {
        document.otherModels = Each(n, [](const std::string&) {
            return "<TreeModel functionName=\"classification\"><MiningSchema/><Node><True/></Node></TreeModel>\n";
        });
    }));
    all.push_back(Grow("columns of a table", million / 2, [](std::size_t n, Document& document) {
        document.columns = Each(n, [](const std::string& i) { return ",c" + i; });
        document.cells = std::string(n, ',');
    }));
    all.push_back(Grow("rows of a table", 4 * million, [](std::size_t n, Document& document) { document.rows = n; }));
    all.push_back(Grow("letters of a cell", 16 * million,
                       [](std::size_t n, Document& document) { document.colour = std::string(n, 'x'); }));
}

}  // namespace

std::vector<GrowingDocument> GetGrowingDocuments() {
    std::vector<GrowingDocument> all;
    AddModels(all);
    AddFields(all);
    AddDerivedFields(all);
    AddExpressions(all);
    AddTestCases(all);
    AddTheRest(all);
    return all;
}

}  // namespace nbscore::bench
