#pragma once

#include <iosfwd>
#include <string>

#include "framework/Export.h"
#include "framework/ScoreValue.h"

/// Turns the values of one predictor into category codes: 0, 1, 2, … in the order of first registration.
///
/// An encoder is filled on one thread; afterwards any number of threads may ask for codes. Value pointers are
/// borrowed for the call and must not be null.
///
/// The order of the operations is the order of the virtual table and part of the interface. Note the
/// crossed overloads: AddCategory takes the value first and the text second, GetCategory the text first and
/// the value second. This is deliberate; putting them straight would swap two slots of the table.
class NAIVEBAYES_API INBVeskEncoder {
public:
    enum EncoderType { Binning = 1, CategoricalNumeric = 2, CategoricalString = 3 };
    /// The code of a value that is no known category.
    static constexpr int unknownCategory = -1;

    virtual ~INBVeskEncoder();

    /// An EncoderType as a number.
    virtual int GetEncoderType() const = 0;
    /// How many codes there are; they run from 0 to this number minus 1.
    virtual int GetNumCategories() const = 0;
    /// Registers a value and gives its code; a value that is registered already keeps its code. (An encoder
    /// that bins numbers registers nothing and only gives the code.)
    virtual int AddCategory(const ScoreValue* value) = 0;
    virtual int AddCategory(const std::string& text) = 0;
    /// The code of a value, or -1 when it is no known category.
    virtual int GetCategory(const std::string& text) const = 0;
    virtual int GetCategory(const ScoreValue* value) const = 0;
    /// A new encoder of the same class with equal content; the caller owns it.
    virtual INBVeskEncoder* Clone() const = 0;
    /// Writes the encoder as text for people.
    virtual void Display(std::ostream& out) const = 0;

protected:
    INBVeskEncoder() = default;
    INBVeskEncoder(const INBVeskEncoder&) = default;
    INBVeskEncoder& operator=(const INBVeskEncoder&) = default;
};
