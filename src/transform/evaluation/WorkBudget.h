#pragma once

#include <cstddef>

#include "framework/Limits.h"

namespace nbscore {

/// How many more elementary steps the computation of a derived field may take: no text, no table and no pattern holds
/// up a case for longer, nor makes it need more memory. A step is about as much as comparing two characters. Numbers
/// are not counted: what they take is in proportion to the document (EvaluationCost.h).
///
/// Each derived field of a case has a budget of its own, so that no field's value depends on which others were computed
/// before it. When it is spent, the field is missing.
class WorkBudget {
public:
    /// For all derived fields of a case together, who share it equally: seconds, and for the costliest patterns half a
    /// minute.
    static constexpr double ofCase = 1e9;
    /// A text that goes from one expression to the next is copied and read a few times: all of a case's together come
    /// to 125 megabytes at most.
    static constexpr double perByteOfText = 8;

    /// @param limitWatch asked while the budget is spent; borrowed, and null where nobody wants to be asked.
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

    /// To be called for each function that is called, because numbers spend nothing. Throws CancelledError.
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
