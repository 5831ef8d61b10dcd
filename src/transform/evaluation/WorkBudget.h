#pragma once

#include <cstddef>

#include "framework/Limits.h"

namespace nbscore {

/// How many more elementary steps the computation of a derived field may take: so no text, table or pattern can make a
/// case take unbounded time or memory. A step is about as much as comparing two characters. Work on numbers is not
/// counted: it is in proportion to the document, which has limits of its own.
///
/// Each derived field of a case has its own budget, so that its value does not depend on which others were computed
/// before it. When the budget is spent, the field is missing.
class WorkBudget {
public:
    /// For all derived fields of a case together, in equal parts: seconds, for the costliest patterns half a minute.
    static constexpr double ofCase = 1e9;
    /// A text that one expression passes to the next is copied and read a few times. So the texts of a case come to 125
    /// megabytes at most.
    static constexpr double perByteOfText = 8;

    /// @param limitWatch asked while the budget is spent; borrowed, and null when there is nothing to ask.
    explicit WorkBudget(double steps, LimitWatch* limitWatch = nullptr)
        : left(steps), leftAtNextQuestion(steps - stepsPerQuestion), watch(limitWatch) {}

    /// False when that is more than is left; nothing is left from then on. Throws CancelledError.
    bool Spend(double steps) {
        left -= steps;
        if (left < leftAtNextQuestion) {
            leftAtNextQuestion = left - stepsPerQuestion;
            if (watch != nullptr) watch->GetLimits().ThrowIfCancelled();
        }
        return left >= 0;
    }
    bool Spend(std::size_t steps) { return Spend(static_cast<double>(steps)); }

    bool IsSpent() const { return left < 0; }

    /// To be called for each call of a function, because numbers spend nothing. Throws CancelledError.
    void NoteCall() {
        if (watch != nullptr) watch->Step();
    }

private:
    /// A few milliseconds of the costliest ones.
    static constexpr double stepsPerQuestion = 100'000;

    double left;
    double leftAtNextQuestion;
    LimitWatch* watch;
};

}  // namespace nbscore
