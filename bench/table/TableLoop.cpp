#include "table/TableLoop.h"

#include <fcntl.h>
#include <hwy/highway.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "factors/KnownRows.h"
#include "framework/ModelSelfTables.h"
#include "framework/NumberText.h"
#include "host/LoadedModel.h"
#include "scoring/ShapeLoops.h"
#include "table/ModelResults.h"

namespace nbscore::bench {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using Code = std::int8_t;
constexpr Code noCode = -1;
constexpr std::size_t slack = 64;

/// Texts of up to 16 bytes, in a table in which no two of them meet.
class TextCodes {
public:
    explicit TextCodes(const std::vector<const std::string*>& texts) {
        for (slots.resize(64); !Fill(texts); slots.resize(2 * slots.size())) {
        }
    }
    /// @param text followed by enough bytes to read 16.
    Code Find(const char* text, std::size_t length) const {
        const Key key = KeyOf(text, length);
        const Slot& slot = slots[PlaceOf(key)];
        return slot.key.front == key.front && slot.key.back == key.back ? slot.code : noCode;
    }

private:
    struct Key {
        std::uint64_t front = 0;
        std::uint64_t back = 0;
    };
    struct Slot {
        Key key;
        Code code = noCode;
    };

    static Key KeyOf(const char* text, std::size_t length) {
        Key key;
        std::memcpy(&key, text, sizeof key);
        const auto keep = [](std::size_t bytes) { return bytes == 0 ? 0 : ~std::uint64_t{0} >> (64 - 8 * bytes); };
        if (length <= 8) return {key.front & keep(length), 0};
        return {key.front, key.back & keep(std::min<std::size_t>(length - 8, 8))};
    }
    std::size_t PlaceOf(const Key& key) const { return ((key.front ^ std::rotl(key.back, 21)) * multiplier) >> shift; }
    bool Fill(const std::vector<const std::string*>& texts) {
        shift = static_cast<unsigned>(64 - std::countr_zero(slots.size()));
        for (multiplier = 0x9E3779B97F4A7C15; multiplier != 0x9E3779B97F4A7C15 + 2000; multiplier += 2) {
            std::ranges::fill(slots, Slot());
            bool meets = false;
            for (std::size_t i = 0; i < texts.size() && !meets; ++i) {
                const std::string text = *texts[i] + std::string(16, '\0');
                const Key key = KeyOf(text.data(), texts[i]->size());
                Slot& slot = slots[PlaceOf(key)];
                meets = slot.code != noCode;
                slot = {key, static_cast<Code>(i)};
            }
            if (!meets) return true;
        }
        return false;
    }

    std::vector<Slot> slots;
    std::uint64_t multiplier = 0;
    unsigned shift = 0;
};

/// Whole numbers below 10,000, by themselves or by the bin that each is in.
class NumberCodes {
public:
    NumberCodes(const std::vector<double>& numbers, bool areCutpoints) : codes(10'000, noCode) {
        for (std::size_t number = 0; number < codes.size(); ++number) {
            if (areCutpoints) codes[number] = static_cast<Code>(FindBin(numbers, static_cast<double>(number)));
        }
        for (std::size_t i = 0; i < numbers.size() && !areCutpoints; ++i)
            codes[static_cast<std::size_t>(numbers[i])] = static_cast<Code>(i);
    }
    Code Find(const char* text, std::size_t length) const {
        std::size_t number = 0;
        for (std::size_t i = 0; i < length; ++i)
            number = 10 * number + static_cast<std::size_t>(text[i] - '0');
        return codes[number];
    }

private:
    std::vector<Code> codes;
};

struct TableColumn {
    std::optional<TextCodes> texts;
    std::optional<NumberCodes> numbers;
    /// Of the cases of a block.
    std::vector<Code> codes;
};

/// A model's tables for ShapeLoops, and what its columns hold.
struct TightModel {
    std::vector<std::string> categories;
    std::vector<ShapeTables> classifiers;
    std::map<std::string, TableColumn> columns;
    std::vector<std::string> order;
    bool isSet = false;

    explicit TightModel(const ModelTables& tables) : isSet(tables.isSet) {
        for (const ScoreValue* const category : tables.targetCategories)
            categories.push_back(category->GetString());
        std::map<std::string, std::size_t> places;
        for (const ClassifierTables& classifier : tables.classifiers) {
            std::vector<std::size_t> inputs;
            for (const PredictorTables& predictor : classifier.predictors) {
                const std::string name = predictor.var->GetName();
                const auto [place, isNew] = places.try_emplace(name, order.size());
                if (isNew) {
                    order.push_back(name);
                    if (predictor.kind == PredictorTables::Texts) {
                        columns[name].texts.emplace(predictor.texts);
                    } else {
                        columns[name].numbers.emplace(predictor.numbers, predictor.kind == PredictorTables::Bins);
                    }
                }
                inputs.push_back(place->second);
            }
            classifiers.emplace_back(classifier, inputs, categories.size());
        }
    }
};

/// Positions of commas and line ends. @param end of bytes; as many as a vector has may be read behind it.
void FindMarks(const char* bytes, std::size_t begin, std::size_t end, std::vector<std::uint32_t>& marks) {
    const hn::CappedTag<std::uint8_t, 64> tag;
    const auto* const at = reinterpret_cast<const std::uint8_t*>(bytes);
    marks.resize(end - begin + 2 * slack);
    std::uint32_t* out = marks.data();
    for (std::size_t i = begin; i < end; i += hn::Lanes(tag)) {
        const auto piece = hn::LoadU(tag, at + i);
        const auto found = hn::Or(hn::Eq(piece, hn::Set(tag, ',')), hn::Eq(piece, hn::Set(tag, '\n')));
        std::uint8_t stored[8] = {};
        hn::StoreMaskBits(tag, found, stored);
        std::uint64_t bits = 0;
        std::memcpy(&bits, stored, sizeof bits);
        if (end - i < 64) bits &= ~std::uint64_t{0} >> (64 - (end - i));
        const auto count = static_cast<std::size_t>(std::popcount(bits));
        for (std::size_t k = 0; k < count; k += 8) {
            for (std::size_t n = k; n < k + 8; ++n, bits &= bits - 1)
                out[n] = static_cast<std::uint32_t>(i + static_cast<std::size_t>(std::countr_zero(bits)));
        }
        out += count;
    }
    marks.resize(static_cast<std::size_t>(out - marks.data()));
}

class TightRun {
public:
    TightRun(const TightModel& tightModel, const std::string& table, const std::string& output)
        : model(tightModel),
          input(open(table.c_str(), O_RDONLY)),
          out(open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644)) {
        if (input < 0 || out < 0) throw std::runtime_error("cannot open the files");
    }
    ~TightRun() {
        close(input);
        close(out);
    }
    TightRun(const TightRun&) = delete;
    TightRun& operator=(const TightRun&) = delete;

    void Score(const std::string& addedColumns) {
        std::size_t kept = 0;
        bool isFirst = true;
        for (;;) {
            const ssize_t count = read(input, room.data() + kept, bytesAtOnce - kept);
            if (count < 0) throw std::runtime_error("cannot read the table");
            if (count == 0) break;
            const std::size_t end = kept + static_cast<std::size_t>(count);
            const std::string_view bytes(room.data(), end);
            const std::size_t rowsEnd = bytes.rfind('\n') + 1;
            std::size_t begin = 0;
            if (isFirst) {
                begin = bytes.find('\n') + 1;
                TakeHeader(bytes.substr(0, begin - 1), addedColumns);
                isFirst = false;
            }
            ScoreRows(begin, rowsEnd);
            kept = end - rowsEnd;
            std::memmove(room.data(), room.data() + rowsEnd, kept);
        }
        Write();
    }

private:
    static constexpr std::size_t bytesAtOnce = std::size_t{1} << 18;
    static constexpr std::size_t casesAtOnce = 256;

    void TakeHeader(std::string_view header, const std::string& addedColumns) {
        columns.resize(model.order.size());
        std::size_t number = 0;
        for (std::size_t begin = 0; begin <= header.size(); ++number) {
            const std::size_t end = std::min(header.find(',', begin), header.size());
            const auto name = std::ranges::find(model.order, header.substr(begin, end - begin));
            placesOfColumns.push_back(name == model.order.end() ? -1 : static_cast<int>(name - model.order.begin()));
            begin = end + 1;
        }
        for (std::vector<Code>& codes : columns)
            codes.resize(casesAtOnce);
        numbers.resize(casesAtOnce * (model.isSet ? model.classifiers.size() : model.categories.size()));
        text.resize(textAtOnce + header.size() + addedColumns.size() + 1);
        Append(header);
        Append(addedColumns);
        Append("\n");
    }

    void ScoreRows(std::size_t begin, std::size_t end) {
        FindMarks(room.data(), begin, end, marks);
        const std::size_t numColumns = placesOfColumns.size();
        const std::size_t rows = marks.size() / numColumns;
        for (std::size_t first = 0; first < rows; first += casesAtOnce) {
            const std::size_t cases = std::min(casesAtOnce, rows - first);
            const std::uint32_t* const ends = marks.data() + first * numColumns;
            for (std::size_t column = 0; column < numColumns; ++column) {
                if (placesOfColumns[column] >= 0) Encode(column, cases, ends, begin);
            }
            const ShapeAnswers answers{predicted.data(), confidence.data(), numbers.data()};
            if (model.isSet) {
                ScoreShapeOfSet(model.classifiers, columns, cases, answers);
            } else {
                ScoreShape(model.classifiers.front(), model.categories.size(), columns, cases, answers);
            }
            for (std::size_t i = 0; i < cases; ++i) {
                const std::size_t rowEnd = ends[(i + 1) * numColumns - 1];
                AppendRow({room.data() + begin, rowEnd - begin}, i);
                begin = rowEnd + 1;
            }
        }
    }

    void Encode(std::size_t column, std::size_t cases, const std::uint32_t* ends, std::size_t rowBegin) {
        const std::size_t place = static_cast<std::size_t>(placesOfColumns[column]);
        const TableColumn& found = model.columns.at(model.order[place]);
        Code* const codes = columns[place].data();
        const std::size_t numColumns = placesOfColumns.size();
        const auto encode = [&](const auto& known) {
            for (std::size_t i = 0; i < cases; ++i) {
                const std::size_t mark = i * numColumns + column;
                const std::size_t begin = mark == 0 ? rowBegin : ends[static_cast<std::ptrdiff_t>(mark) - 1] + 1;
                const std::size_t length = ends[mark] - begin;
                codes[i] = length == 0 ? noCode : known.Find(room.data() + begin, length);
            }
        };
        if (found.texts) {
            encode(*found.texts);
        } else {
            encode(*found.numbers);
        }
    }

    void AppendRow(std::string_view row, std::size_t i) {
        const std::size_t count = model.isSet ? model.classifiers.size() : model.categories.size();
        const std::size_t mostBytes = row.size() + (count + 2) * (mostNumberBytes + 1) + 256;
        if (used + mostBytes > text.size()) Write();
        if (mostBytes > text.size()) text.resize(mostBytes);
        Append(row);
        char* to = text.data() + used;
        const double* const own = numbers.data() + i * count;
        if (model.isSet) {
            for (std::size_t k = 0; k < count; ++k) {
                *to++ = ',';
                to = WriteNumber(to, own[k]);
            }
        } else {
            const std::string& category = model.categories[static_cast<std::size_t>(predicted[i])];
            *to++ = ',';
            std::memcpy(to, category.data(), category.size());
            to += category.size();
            const char* const written = to;
            *to++ = ',';
            to = WriteNumber(to, confidence[i]);
            const auto length = static_cast<std::size_t>(to - written);
            for (std::size_t k = 0; k < count; ++k) {
                if (own[k] == confidence[i]) {
                    std::memcpy(to, written, length);
                    to += length;
                } else {
                    *to++ = ',';
                    to = WriteNumber(to, own[k]);
                }
            }
        }
        *to++ = '\n';
        used = static_cast<std::size_t>(to - text.data());
    }

    void Append(std::string_view some) {
        std::memcpy(text.data() + used, some.data(), some.size());
        used += some.size();
    }

    void Write() {
        for (std::size_t begin = 0; begin < used;) {
            const ssize_t count = write(out, text.data() + begin, used - begin);
            if (count < 0) throw std::runtime_error("cannot write the scores");
            begin += static_cast<std::size_t>(count);
        }
        used = 0;
    }

    static constexpr std::size_t textAtOnce = std::size_t{1} << 18;

    const TightModel& model;
    int input;
    int out;
    std::vector<char> room = std::vector<char>(bytesAtOnce + slack);
    std::vector<std::uint32_t> marks;
    /// For each column of the table its place among the model's, or -1.
    std::vector<int> placesOfColumns;
    std::vector<std::vector<Code>> columns;
    std::vector<std::int32_t> predicted = std::vector<std::int32_t>(casesAtOnce);
    std::vector<double> confidence = std::vector<double>(casesAtOnce);
    std::vector<double> numbers;
    std::vector<char> text;
    std::size_t used = 0;
};

std::string NameAddedColumns(ScoreModel& model, const ModelTables& tables) {
    std::string names;
    if (tables.isSet) {
        for (const std::string& label : LabelSubModels(FindSubModelNames(model).value()))
            names += ",score_" + label;
        return names;
    }
    names = ",predicted_" + tables.target->GetName() + ",confidence";
    for (const ScoreValue* const category : tables.targetCategories)
        names += ",probability_" + category->GetString();
    return names;
}

}  // namespace

void ScoreFileTightly(const std::string& modelFile, const std::string& table, const std::string& output) {
    const LoadedModel model = LoadedModel::Read(PluginLibrary::Load(NBSCORE_PLUGIN_FILE), modelFile);
    model.RequireScorable();
    const auto& open = dynamic_cast<const ModelSelfTables&>(model.Get());
    const ModelTables tables = open.GetTables();
    const TightModel tight(tables);
    TightRun(tight, table, output).Score(NameAddedColumns(model.Get(), tables));
}

}  // namespace nbscore::bench
