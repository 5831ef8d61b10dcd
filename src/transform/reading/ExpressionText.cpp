#include "transform/reading/ExpressionText.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "framework/ControlCharacters.h"
#include "framework/CountedNoun.h"
#include "framework/NumberText.h"
#include "transform/reading/ElementReading.h"

namespace nbscore {
namespace {

std::string Quoted(std::string_view text) {
    return '"' + MaskControls(text) + '"';
}

/// Appends an expression to a text.
class Writer {
public:
    explicit Writer(std::string& destination) : text(destination) {}

    void Write(Element expression) {
        switch (expression.GetName()) {
            case Name::FieldRef:
                WriteField(expression);
                break;
            case Name::Constant:
                WriteConstant(expression);
                break;
            case Name::Apply:
                text += MaskControls(expression.GetAttributeOr(Name::function, {}));
                WriteParts(expression, {Name::function});
                break;
            case Name::Discretize:
            case Name::NormContinuous:
            case Name::NormDiscrete:
                text += expression.GetSpelling();
                WriteParts(expression, {Name::field, Name::dataType});
                break;
            default:
                text += expression.GetSpelling();
                WriteParts(expression, {Name::dataType});
        }
    }

private:
    void WriteField(Element field) {
        text += MaskControls(field.GetAttributeOr(Name::field, {}));
        if (field.Has(Name::mapMissingTo)) {
            text += '(';
            isFirst = true;
            WriteAttributes(field, {Name::field});
            text += ')';
            isFirst = false;
        }
    }

    void WriteConstant(Element constant) {
        const std::string value = constant.GetTextInside();
        const ValueKind kind = DataTypeOf(constant);
        const bool isNumber = (kind == ValueKind::Any || kind == ValueKind::Number) && ReadNumber(value).has_value();
        if (constant.GetAttributeOr(Name::missing, {}) == "true") {
            text += "missing";
        } else {
            text += isNumber ? MaskControls(value) : Quoted(value);
        }
    }

    /// What stands in the brackets: the field, the parts inside, the attributes.
    /// @param said attributes that were named already, or that only say what the result is.
    void WriteParts(Element expression, std::initializer_list<Name> said) {
        text += '(';
        isFirst = true;
        if (std::ranges::find(said, Name::field) != said.end()) {
            BeginPart();
            text += MaskControls(expression.GetAttributeOr(Name::field, {}));
        }
        for (const Element child : ChildrenOf(expression)) {
            BeginPart();
            WritePart(child);
        }
        WriteAttributes(expression, said);
        text += ')';
        isFirst = false;
    }

    void WritePart(Element part) {
        switch (part.GetName()) {
            case Name::DiscretizeBin:
                WriteInterval(part.GetChild(Name::Interval));
                text += " is " + Quoted(part.GetAttributeOr(Name::binValue, {}));
                break;
            case Name::LinearNorm:
                text += MaskControls(part.GetAttributeOr(Name::orig, {})) + " is " +
                        MaskControls(part.GetAttributeOr(Name::norm, {}));
                break;
            case Name::FieldColumnPair:
                text += MaskControls(part.GetAttributeOr(Name::field, {})) + " in column " +
                        Quoted(part.GetAttributeOr(Name::column, {}));
                break;
            case Name::InlineTable:
                text += CountedNoun(CountRows(part), "row");
                break;
            default:
                Write(part);
        }
    }

    void WriteInterval(Element interval) {
        const std::string_view closure = interval.GetAttributeOr(Name::closure, {});
        text += closure.starts_with("closed") ? '[' : '(';
        text += MaskControls(interval.GetAttributeOr(Name::leftMargin, "-inf")) + ", " +
                MaskControls(interval.GetAttributeOr(Name::rightMargin, "inf"));
        text += closure.ends_with("Closed") ? ']' : ')';
    }

    void WriteAttributes(Element element, std::initializer_list<Name> said) {
        for (std::size_t i = 0; i < element.CountAttributes(); ++i) {
            const auto [name, value] = element.GetAttributeAt(i);
            if (std::ranges::find(said, name) != said.end()) continue;
            if (static_cast<std::size_t>(name) >= knownNameCount) continue;  // no reader looks at it
            BeginPart();
            text += std::string(SpellingOf(name)) + " " + Quoted(value);
        }
    }

    static std::size_t CountRows(Element table) {
        std::size_t rows = 0;
        for ([[maybe_unused]] const Element row : table.GetChildren(Name::row))
            ++rows;
        return rows;
    }

    void BeginPart() {
        text += isFirst ? "" : ", ";
        isFirst = false;
    }

    std::string& text;
    bool isFirst = true;
};

}  // namespace

std::string ExpressionText(Element expression) {
    std::string text;
    Writer(text).Write(expression);
    return text;
}

std::string FunctionText(Element function) {
    std::string parameters;
    std::string body;
    for (const Element child : ChildrenOf(function)) {
        if (child.Is(Name::ParameterField)) {
            parameters += parameters.empty() ? "" : ", ";
            parameters += MaskControls(child.GetAttributeOr(Name::name, {}));
        } else {
            body = ExpressionText(child);
        }
    }
    return MaskControls(function.GetAttributeOr(Name::name, {})) + '(' + parameters + ") = " + body;
}

}  // namespace nbscore
