#pragma once

#include "framework/StringValue.h"

namespace nbscore::test {

/// A text that counts how many of its kind are alive.
class CountedValue : public StringValue {
public:
    explicit CountedValue(int& counter) : StringValue("counted"), alive(&counter) { ++*alive; }
    CountedValue(const CountedValue& other) : StringValue(other), alive(other.alive) { ++*alive; }
    CountedValue& operator=(const CountedValue&) = delete;
    ~CountedValue() override { --*alive; }
    ScoreValue* Clone() const override { return new CountedValue(*this); }

private:
    int* alive;
};

}  // namespace nbscore::test
