#pragma once

#include <string>
#include <utility>
#include <vector>

#include "framework/Export.h"
#include "framework/MCMV.h"
#include "framework/ScoreValue.h"

/// A value that holds a list of elements, such as what a set of models says of one case.
///
/// As a value among values it is no more than its length: comparisons set this value's length against the other
/// value's whole number, whatever the elements hold. Its number is missing; its text tells the length.
///
/// It owns its elements and copies them with itself. An unchanging list may be read from any number of threads.
template <typename Element>
class NBSCORE_HEADER_TYPE VectorValue : public ScoreValue {
public:
    explicit VectorValue(std::vector<Element> list) : elements(std::move(list)) {}
    VectorValue(const VectorValue&) = default;
    VectorValue& operator=(const VectorValue&) = default;
    VectorValue(VectorValue&&) noexcept = default;
    VectorValue& operator=(VectorValue&&) noexcept = default;
    ~VectorValue() override = default;

    /// Takes over the elements of another list of the same kind; any other value, or null, empties this one.
    void SetValue(const ScoreValue* value) override {
        if (value == this) return;
        const auto* list = dynamic_cast<const VectorValue*>(value);
        if (list == nullptr) {
            elements.clear();
        } else {
            elements = list->elements;
        }
    }
    ScoreValue* GetValue() const override { return Clone(); }
    ScoreValue* Clone() const override { return new VectorValue(*this); }

    bool operator==(const ScoreValue& other) const override { return GetInt() == other.GetInt(); }
    /// The length alone decides; both refinements are ignored. Null equals nothing.
    bool Equal(const ScoreValue* other, bool /*ignoreCase*/, bool /*missingEqual*/) const override {
        return other != nullptr && *this == *other;
    }
    bool operator>(const ScoreValue& other) const override { return GetInt() > other.GetInt(); }
    bool operator<(const ScoreValue& other) const override { return GetInt() < other.GetInt(); }
    bool operator<=(const ScoreValue& other) const override { return GetInt() <= other.GetInt(); }
    bool operator>=(const ScoreValue& other) const override { return GetInt() >= other.GetInt(); }

    bool IsSystemMissingValue() const override { return false; }
    int GetInt() const override { return Size(); }
    double GetDouble() const override { return MCMV::gMissingValue; }
    std::string GetString() const override {
        return "Vector Value: Length of vector = " + std::to_string(elements.size()) + "\n";
    }
    ValueType GetType() const override { return Vector; }

    /// Replaces the elements by copies of these.
    void SetVectorValue(const std::vector<Element>& list) { elements = list; }
    /// The elements themselves, valid until the value changes or goes.
    std::vector<Element>& GetVectorValue() { return elements; }
    const std::vector<Element>& GetVectorValue() const { return elements; }
    int Size() const { return static_cast<int>(elements.size()); }

private:
    std::vector<Element> elements;
};
