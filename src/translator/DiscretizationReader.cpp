#include "translator/ElementReaders.h"

#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {

namespace {

constexpr double lowest = std::numeric_limits<double>::lowest();

/// Walks through the bins, collecting the cutpoints between them.
class BinReader {
public:
    explicit BinReader(const Transcoder& documentTranscoder) : transcoder(documentTranscoder) {}

    void Read(Element bin, Element discretize);
    const std::vector<double>& GetCutpoints() const { return cutpoints; }

private:
    void AppendCutpoint(Element interval);

    const Transcoder& transcoder;
    std::vector<double> cutpoints;
    double leftMargin = lowest;
    double previousRightMargin = lowest;
    bool isFirst = true;
};

void BinReader::Read(Element bin, Element discretize) {
    RequireName(bin, Name::DiscretizeBin, discretize, Refusal::DiscretizeBinExpected);
    // Bins are numbered, so their names serve nothing; but one that the encoding cannot hold is refused.
    AttributeText(transcoder, bin, Name::binValue);
    Element interval = bin.GetFirstChild();
    RequireName(interval, Name::Interval, bin, Refusal::IntervalExpected);
    if (!isFirst) AppendCutpoint(interval);
    isFirst = false;
    // Empty counts as absent here, but not for the left margin.
    const std::string_view right = interval.GetAttributeOr(Name::rightMargin, {});
    if (!right.empty()) previousRightMargin = DoubleAt(interval, right);
}

void BinReader::AppendCutpoint(Element interval) {
    if (const auto left = interval.GetAttribute(Name::leftMargin)) {
        leftMargin = DoubleAt(interval, *left);
    }
    if (!(leftMargin == previousRightMargin)) throw RefusalAt(interval, Refusal::MarginsDiffer);
    cutpoints.push_back(leftMargin);
}

void RequireDerivedField(const BaseTranslator& translator, Element derivedField, Element parent) {
    if (derivedField.Is(Name::DerivedField)) return;
    // For people at a terminal, so UTF-8 whatever the document's encoding is; and a text that is broken is no reason
    // to refuse the document otherwise.
    const std::string name = WithoutHalfPairs(derivedField.GetSpelling());
    const Element faulty = derivedField ? derivedField : parent;
    const RefusalEntry& notice = GetRefusal(Refusal::BinningExpectedNotice);
    translator.GiveNotice(FillIn(notice.message, {name.empty() ? "missing" : '<' + name + '>'}),
                          "Element DerivedField not found in ParseDiscretize\nThe element is " + name,
                          faulty.GetPlace(), notice.advice);
    throw RefusalAt(faulty, Refusal::BinningExpected);
}

}  // namespace

std::unique_ptr<NBinningEncoder> ReadDiscretization(const BaseTranslator& translator, const Transcoder& transcoder,
                                                    Element derivedField, Element parent) {
    RequireDerivedField(translator, derivedField, parent);
    Element discretize = derivedField.GetFirstChild();
    RequireName(discretize, Name::Discretize, derivedField, Refusal::DiscretizeExpected);
    BinReader bins(transcoder);
    for (const Element bin : discretize.GetChildren()) {
        bins.Read(bin, discretize);
    }
    if (bins.GetCutpoints().empty()) throw RefusalAt(discretize, Refusal::FewerThanTwoBins);
    return std::make_unique<NBinningEncoder>(bins.GetCutpoints());
}

}  // namespace nbscore
