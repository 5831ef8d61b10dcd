#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace nbscore {

/// A pattern of C's printf for one number: text with exactly one conversion in it. We interpret it ourselves: a
/// document's pattern never reaches printf.
///
/// Conversions: d i u (rounded to a whole number, a half to the even one), o x X (the same, below 2^64), f F e E g G,
/// and s for the shortest digits that read back as the same number. Flags: minus, plus, blank and 0. Width and
/// precision up to 1000. The lengths h l L q j z t mean nothing for a double and are ignored. %% is a percent sign.
class NumberPattern {
public:
    /// @param fault receives what is wrong, as a clause, when the result is nothing.
    static std::optional<NumberPattern> Read(std::string_view pattern, std::string& fault);

    /// The number formatted by the pattern; nothing when it is not finite, or when the conversion has no sign and the
    /// number is below 0 or too great.
    std::optional<std::string> Format(double number) const;

private:
    struct Conversion {
        bool alignsLeft = false;
        bool padsWithZeros = false;
        /// What stands before a number that is not negative: nothing, a plus sign or a blank.
        std::string positiveSign;
        std::size_t width = 0;
        std::optional<std::size_t> precision;
        char kind = 0;
    };

    static std::string ReadConversion(std::string_view& rest, Conversion& conversion);
    std::string Padded(const std::string& sign, const std::string& digits) const;

    std::string textBefore;
    Conversion conversion;
    std::string textBehind;
};

}  // namespace nbscore
