#include "growth/GrowingDocuments.h"

#include <algorithm>
#include <cmath>
#include <fstream>

#include "support/documents/ModelDocument.h"

namespace nbscore::bench {
namespace {

using namespace test;
using Path = std::filesystem::path;

void WriteFile(const Path& file, const std::string& text) {
    std::ofstream out(file, std::ios::binary);
    out.exceptions(std::ios::failbit | std::ios::badbit);
    out << text;
}

std::string Input(const std::string& field) {
    return BayesInput(field, PairCounts("red", NoYesCounts(3, 2))) + "\n";
}

/// An input of a field that holds numbers.
std::string BinnedInput(const std::string& field) {
    const std::string bins = DiscretizeBin("0", "openClosed", {}, "5") + DiscretizeBin("1", "openClosed", "5", {});
    return BayesInput(field, BinsOfInput("bin", field, bins) + PairCounts("0", NoYesCounts(1, 4)) +
                                 PairCounts("1", NoYesCounts(4, 1))) +
           "\n";
}

std::string Field(const std::string& name) {
    return DataField(name, FieldType::Texts) + "\n";
}

std::string Derived(const std::string& name, const std::string& expression) {
    return DerivedNumber(name, expression) + "\n";
}

/// Fields f0, f1 and so on.
std::string Fields(std::size_t number) {
    return Each(number, [](const std::string& i) { return Field("f" + i); });
}

/// Derived fields d0, d1 and so on, of the weight.
std::string DerivedWeights(std::size_t number) {
    return Each(number, [](const std::string& i) { return Derived("d" + i, FieldRef("weight")); });
}

/// References to fields of this prefix and a number.
std::string Refs(const std::string& prefix, std::size_t number) {
    return Each(number, [&prefix](const std::string& i) { return FieldRef(prefix + i); });
}

std::string Model(const std::string& attributes, const std::string& content) {
    return XmlElement("NaiveBayesModel",
                      Attribute("functionName", "classification") + attributes + Attribute("threshold", "0.01"),
                      content);
}

/// A small document with a text `colour`, a number `weight` and the target `y`, and what its parts hold in addition. The
/// number's input reads `derivedInput` if there is one, so that it is computed for each case.
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
        const std::string dictionary = DataField("colour", FieldType::Texts, valuesOfColour) +
                                       DataField("weight", FieldType::Bins, valuesOfWeight) +
                                       DataField("y", FieldType::Texts, ValueElement("no") + ValueElement("yes")) +
                                       fields;
        const std::string listing = derivedInput.empty() ? "" : DerivedFieldsExtension(MiningField(derivedInput));
        const std::string number = derivedInput.empty() ? "weight" : derivedInput;
        return PmmlDocument(
            XmlElement("Header", "", header) + XmlElement("DataDictionary", "", dictionary) +
            (derived.empty() ? "" : XmlElement("TransformationDictionary", "", derived)) +
            Model(modelAttributes, XmlElement("MiningSchema", "",
                                              MiningField("colour") + MiningField("weight") +
                                                  MiningField("y", "predicted") + schema + listing) +
                                       output + localTransformations +
                                       XmlElement("BayesInputs", "", Input("colour") + BinnedInput(number) + inputs) +
                                       BayesOutput("y", NoYesCounts(5, 5)) + verification) +
            otherModels);
    }
    std::string Table() const {
        std::string table = "colour,weight" + columns + "\n";
        for (std::size_t row = 0; row < rows; ++row)
            table += colour + "," + std::to_string(row % 10) + cells + "\n";
        return table;
    }
};

/// @param fill puts this many of the parts into a small document.
GrowingDocument Grow(const std::string& name, std::size_t most,
                     std::function<void(std::size_t number, Document& document)> fill) {
    return {name, most, [fill = std::move(fill)](std::size_t number, const Path& file, const Path& table) {
                Document document;
                fill(number, document);
                WriteFile(file, document.Text());
                WriteFile(table, document.Table());
            }};
}

/// A document of a shape, as those whose loading is measured.
GrowingDocument GrowShape(const std::string& name, std::size_t most,
                          std::function<DocumentShape(std::size_t)> shapeOf) {
    return {name, most, [shapeOf = std::move(shapeOf)](std::size_t number, const Path& file, const Path& table) {
                const DocumentShape shape = shapeOf(number);
                WriteDocument(shape, file);
                std::string header;
                std::string cells;
                for (std::size_t i = 0; i < shape.inputs; ++i) {
                    header += (i == 0 ? "field" : ",field") + std::to_string(i);
                    cells += (i == 0 ? "" : ",") + ValueOf(shape.type, shape.categories / 2);
                }
                WriteFile(table, header + "\n" + cells + "\n");
            }};
}

std::size_t RootOf(std::size_t number) {
    return static_cast<std::size_t>(std::sqrt(static_cast<double>(number)));
}

/// An Output element with results o0, o1 and so on, each on a line of its own.
std::string Outputs(std::size_t number, const std::function<std::string(const std::string& name)>& make) {
    return XmlElement("Output", "", Each(number, [&make](const std::string& i) { return make("o" + i) + "\n"; }));
}

constexpr std::size_t million = std::size_t{1} << 20;
/// Below the limit on the names of elements that a document may have.
constexpr std::size_t mostNames = std::size_t{1} << 17;

void AddModels(std::vector<GrowingDocument>& all) {
    all.push_back(GrowShape("inputs", million / 8, [](std::size_t n) { return DocumentShape{0, n, 2, 2}; }));
    all.push_back(GrowShape("texts of an input", million / 4, [](std::size_t n) { return DocumentShape{0, 1, n, 2}; }));
    all.push_back(GrowShape("numbers of an input", million / 4, [](std::size_t n) {
        return DocumentShape{0, 1, n, 2, FieldType::Numbers};
    }));
    all.push_back(GrowShape("bins of an input", million / 4, [](std::size_t n) {
        return DocumentShape{0, 1, n, 2, FieldType::Bins};
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
        document.fields = Fields(n);
        const auto subModel = [](const std::string& number) {
            return Attribute("algorithmName", "SelfLearning") + Attribute("modelName", "m" + number);
        };
        document.modelAttributes = subModel("");
        document.otherModels = Each(n, [subModel](const std::string& i) {
            return Model(subModel(i),
                         XmlElement("MiningSchema", "", MiningField("f" + i) + MiningField("y", "predicted")) +
                             XmlElement("BayesInputs", "", Input("f" + i)) + BayesOutput("y", NoYesCounts(3, 4))) +
                   "\n";
        });
        document.columns = Each(n, [](const std::string& i) { return ",f" + i; });
        document.cells = Each(n, [](const std::string&) { return ",red"; });
    }));
}

void AddFields(std::vector<GrowingDocument>& all) {
    all.push_back(Grow("fields that nothing reads", million / 2,
                       [](std::size_t n, Document& document) { document.fields = Fields(n); }));
    all.push_back(Grow("fields of the schema that nothing reads", million / 4, [](std::size_t n, Document& document) {
        document.fields = Fields(n);
        document.schema = Each(n, [](const std::string& i) { return MiningField("f" + i) + "\n"; });
        document.columns = Each(n, [](const std::string& i) { return ",f" + i; });
        document.cells = std::string(n, ',');
    }));
    for (const std::string property : {"valid", "missing", "invalid"}) {
        const auto value = [property](const std::string& i) { return ValueElement(i, property) + "\n"; };
        // A derived field, so that it must be known what is valid.
        const auto isRead = [](Document& document) {
            document.derived = Derived(
                "d", Apply("if", Apply("isMissing", FieldRef("colour")) + FieldRef("weight") + FieldRef("weight")));
            document.derivedInput = "d";
        };
        all.push_back(Grow(property + " texts of a field", million, [value, isRead](std::size_t n, Document& document) {
            document.valuesOfColour = ValueElement("red") + Each(n, value);
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
            return XmlElement("Interval", Attribute("closure", "closedOpen") + Attribute("leftMargin", i) +
                                              Attribute("rightMargin", i + ".5")) +
                   "\n";
        });
        document.derived = Derived("d", FieldRef("weight"));
        document.derivedInput = "d";
    }));
}

void AddDerivedFields(std::vector<GrowingDocument>& all) {
    all.push_back(Grow("derived fields", million / 4, [](std::size_t n, Document& document) {
        document.derived = DerivedWeights(n);
        document.derivedInput = "d0";
    }));
    all.push_back(Grow("derived fields in a chain", million / 4, [](std::size_t n, Document& document) {
        document.derived = Derived("d", FieldRef("weight"));
        std::string before = "d";
        for (std::size_t i = 0; i < n; ++i) {
            document.derived += Derived("d" + std::to_string(i), FieldRef(before));
            before = "d" + std::to_string(i);
        }
        document.derivedInput = before;
    }));
    all.push_back(Grow("derived fields that one reads", million / 4, [](std::size_t n, Document& document) {
        document.derived = DerivedWeights(n) + Derived("d", Apply("sum", Refs("d", n)));
        document.derivedInput = "d";
    }));
    all.push_back(Grow("derived fields that are inputs", million / 16, [](std::size_t n, Document& document) {
        document.derived = DerivedWeights(n);
        document.schema = DerivedFieldsExtension(Each(n, [](const std::string& i) { return MiningField("d" + i); }));
        document.inputs = Each(n, [](const std::string& i) { return BinnedInput("d" + i); });
    }));
    all.push_back(Grow("fields that one derived field reads", million / 4, [](std::size_t n, Document& document) {
        document.fields = Fields(n);
        document.derived = Derived("d", Apply("sum", FieldRef("weight") + Refs("f", n)));
        document.derivedInput = "d";
        document.columns = Each(n, [](const std::string& i) { return ",f" + i; });
        document.cells = Each(n, [](const std::string&) { return ",1"; });
    }));
    all.push_back(Grow("local derived fields", million / 4, [](std::size_t n, Document& document) {
        document.localTransformations = XmlElement("LocalTransformations", "", DerivedWeights(n));
        document.inputs =
            Each(std::min<std::size_t>(n, million / 16), [](const std::string& i) { return BinnedInput("d" + i); });
    }));
    all.push_back(Grow("functions", million / 4, [](std::size_t n, Document& document) {
        document.derived =
            Each(n, [](const std::string& i) { return DefineFunction("f" + i, FieldRef("p")) + "\n"; }) +
            Derived("d",
                    Apply("sum", Each(n, [](const std::string& i) { return Apply("f" + i, FieldRef("weight")); })));
        document.derivedInput = "d";
    }));
    all.push_back(Grow("parameters of a function", million / 4, [](std::size_t n, Document& document) {
        const std::string parameters =
            Each(n, [](const std::string& i) { return XmlElement("ParameterField", Attribute("name", "p" + i)); });
        document.derived = XmlElement("DefineFunction", Attribute("name", "f") + Attribute("optype", "continuous"),
                                      parameters + Apply("sum", Refs("p", n))) +
                           "\n" +
                           Derived("d", Apply("f", Each(n, [](const std::string&) { return FieldRef("weight"); })));
        document.derivedInput = "d";
    }));
}

/// An expression with many parts, which an input reads.
GrowingDocument GrowExpression(const std::string& name, std::size_t most,
                               std::function<std::string(std::size_t)> expressionOf) {
    return Grow(name, most, [expressionOf = std::move(expressionOf)](std::size_t n, Document& document) {
        document.derived = Derived("d", expressionOf(n));
        document.derivedInput = "d";
    });
}

/// The colour as each of the columns c0, c1 and so on of a table of values.
std::string ColourPairs(std::size_t number) {
    return Each(number, [](const std::string& i) { return FieldColumnPair("colour", "c" + i); });
}

void AddExpressions(std::vector<GrowingDocument>& all) {
    all.push_back(GrowExpression("arguments of a function", million / 2,
                                 [](std::size_t n) { return Apply("sum", FieldRef("weight") + Each(n, Constant)); }));
    all.push_back(GrowExpression("values to be in", million / 2, [](std::size_t n) {
        return Apply(
            "if", Apply("isIn", FieldRef("colour") + Each(n, TextConstant)) + FieldRef("weight") + FieldRef("weight"));
    }));
    all.push_back(GrowExpression("rows of a table of values", million / 4, [](std::size_t n) {
        return MapValues(FieldColumnPair("colour", "in"),
                         Each(n, [](const std::string& i) { return Row(Cell("in", i) + Cell("out", i)) + "\n"; }));
    }));
    all.push_back(GrowExpression("columns of a table of values", mostNames, [](std::size_t n) {
        return MapValues(ColourPairs(n), Row(Each(n, [](const std::string& i) { return Cell("c" + i, "red") + "\n"; }) +
                                             Cell("out", "1")));
    }));
    all.push_back(GrowExpression("rows and columns of a table of values", million, [](std::size_t n) {
        const std::size_t side = RootOf(n);
        return MapValues(ColourPairs(side), Each(side, [side](const std::string& row) {
                             const std::string cells =
                                 Each(side, [&row](const std::string& i) { return Cell("c" + i, row); });
                             return Row(cells + Cell("out", "1")) + "\n";
                         }));
    }));
    all.push_back(GrowExpression("bins of an expression", million / 4, [](std::size_t n) {
        return XmlElement("Discretize", Attribute("field", "weight"), Each(n, [](const std::string& i) {
                              return DiscretizeBin(i, "closedOpen", i, i + ".5") + "\n";
                          }));
    }));
    all.push_back(GrowExpression("points of a broken line", million / 2, [](std::size_t n) {
        return XmlElement("NormContinuous", Attribute("field", "weight"), Each(n + 2, [](const std::string& i) {
                              return XmlElement("LinearNorm", Attribute("orig", i) + Attribute("norm", i)) + "\n";
                          }));
    }));
    const auto search = [](const std::string& content) {
        return XmlElement("TextIndex", Attribute("textField", "colour"), content);
    };
    const auto words = [](std::size_t n) { return Each(n, [](const std::string& i) { return "w" + i + " "; }); };
    all.push_back(Grow("words of a text", million / 8, [search, words](std::size_t n, Document& document) {
        document.derived = Derived("d", search(Constant("blue")));
        document.derivedInput = "d";
        document.colour = words(n);
    }));
    all.push_back(GrowExpression("rules for texts", million / 16, [search](std::size_t n) {
        const std::string rows =
            Each(n, [](const std::string& i) { return Row(Cell("string", "w" + i) + Cell("stem", "v" + i)) + "\n"; });
        return search(XmlElement("TextIndexNormalization",
                                 Attribute("inField", "string") + Attribute("outField", "stem"),
                                 XmlElement("InlineTable", "", rows)) +
                      Constant("blue"));
    }));
    all.push_back(GrowExpression("words of a term", million / 4,
                                 [search, words](std::size_t n) { return search(Constant(words(n))); }));
}

void AddTestCases(std::vector<GrowingDocument>& all) {
    all.push_back(Grow("test cases", million / 4, [](std::size_t n, Document& document) {
        const std::string rows =
            Each(n, [](const std::string& i) { return Row(Cell("weight", i) + Cell("probability_no", "0.5")) + "\n"; });
        document.verification = ModelVerification(VerifiedField("weight") + VerifiedField("probability_no"), rows);
    }));
    all.push_back(Grow("results that test cases check", mostNames / 2, [](std::size_t n, Document& document) {
        document.output = Outputs(n, [](const std::string& name) { return ProbabilityField(name, "no"); });
        const std::string cells = Each(n, [](const std::string& i) { return Cell("o" + i, "0.5"); });
        document.verification =
            ModelVerification(Each(n, [](const std::string& i) { return VerifiedField("o" + i); }), Row(cells));
    }));
    all.push_back(Grow("fields of test cases", mostNames / 2, [](std::size_t n, Document& document) {
        document.fields = Fields(n);
        const std::string fields = Each(n, [](const std::string& i) { return VerifiedField("f" + i); });
        const std::string cells = Each(n, [](const std::string& i) { return Cell("f" + i, "red"); });
        document.verification =
            ModelVerification(VerifiedField("probability_no") + fields, Row(Cell("probability_no", "0.5") + cells));
    }));
    all.push_back(Grow("names in test cases that mean nothing", mostNames, [](std::size_t n, Document& document) {
        const std::string cells = Each(n, [](const std::string& i) { return Cell("u" + i, "1"); });
        document.verification = ModelVerification(VerifiedField("weight") + VerifiedField("probability_no"),
                                                  Row(Cell("weight", "1") + Cell("probability_no", "0.5") + cells));
    }));
}

void AddTheRest(std::vector<GrowingDocument>& all) {
    const auto extension = [](const std::string& i) {
        return XmlElement("Extension", Attribute("name", "e" + i) + Attribute("value", "1")) + "\n";
    };
    all.push_back(Grow("extensions of the header", million,
                       [extension](std::size_t n, Document& document) { document.header = Each(n, extension); }));
    all.push_back(Grow("extensions among inputs", million,
                       [extension](std::size_t n, Document& document) { document.inputs = Each(n, extension); }));
    all.push_back(Grow("elements with names of their own", mostNames, [](std::size_t n, Document& document) {
        document.header =
            XmlElement("Extension", "", Each(n, [](const std::string& i) { return XmlElement("e" + i, "") + "\n"; }));
    }));
    all.push_back(Grow("what scoring ignores", million / 4, [](std::size_t n, Document& document) {
        document.output = Outputs(n, [](const std::string& name) {
            return XmlElement("OutputField", Attribute("name", name) + Attribute("feature", "transformedValue"),
                              FieldRef("weight"));
        });
        document.fields = Fields(n);
        document.schema = Each(n, [](const std::string& i) {
            return XmlElement("MiningField", Attribute("name", "f" + i) + Attribute("usageType", "supplementary") +
                                                 Attribute("missingValueReplacement", "red")) +
                   "\n";
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
