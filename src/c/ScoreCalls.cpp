// The calls that score columns of cases, and streams of them.

#include <cerrno>
#include <memory>
#include <string>
#include <utility>

#include "c/ArrowAnswers.h"
#include "c/Failure.h"
#include "c/OpenModel.h"
#include "c/ScorePlan.h"
#include "c/nbscore.h"
#include "output/HostError.h"

namespace nbscore {
namespace {

/// Something of the Arrow C interfaces, released when this goes.
template <typename Struct>
class Owned {
public:
    Owned() = default;
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() {
        if (held.release != nullptr) held.release(&held);
    }

    Struct& Get() { return held; }

private:
    Struct held = {};
};

/// A number of the system's that says what became of a call.
int ErrnoOf(std::int32_t kind) {
    switch (kind) {
        case NBSCORE_OK:
            return 0;
        case NBSCORE_BAD_CASES:
        case NBSCORE_BAD_ARGUMENT:
            return EINVAL;
        case NBSCORE_OUT_OF_MEMORY:
            return ENOMEM;
        case NBSCORE_CANCELLED:
            return ECANCELED;
        default:
            return EIO;
    }
}

/// The scores of a stream of cases.
class ScoreStream {
public:
    /// Takes the cases over, unless their schema cannot be had, which throws InputOutputError.
    static void Make(ScorePlan plan, ArrowArrayStream& cases, ArrowArrayStream& out) {
        auto stream = std::make_unique<ScoreStream>(std::move(plan));
        if (cases.get_schema(&cases, &stream->schema.Get()) != 0) {
            const char* const reason = cases.get_last_error(&cases);
            stream->schema.Get().release = nullptr;
            throw InputOutputError("The stream of cases has no schema: " +
                                   std::string(reason == nullptr ? "" : reason));
        }
        std::swap(stream->input.Get(), cases);
        out = ArrowArrayStream{};
        out.get_schema = [](ArrowArrayStream* self, ArrowSchema* given) { return Of(self).GetSchema(given); };
        out.get_next = [](ArrowArrayStream* self, ArrowArray* given) { return Of(self).GetNext(given); };
        out.get_last_error = [](ArrowArrayStream* self) { return Of(self).GetLastError(); };
        out.release = [](ArrowArrayStream* self) {
            delete &Of(self);
            self->release = nullptr;
        };
        out.private_data = stream.release();
    }

    explicit ScoreStream(ScorePlan scorePlan) : plan(std::move(scorePlan)) {}
    ScoreStream(const ScoreStream&) = delete;
    ScoreStream& operator=(const ScoreStream&) = delete;
    ~ScoreStream() { nbscore_error_free(failure); }

private:
    static ScoreStream& Of(ArrowArrayStream* stream) { return *static_cast<ScoreStream*>(stream->private_data); }

    /// Does the work of a call, and answers what it returns.
    template <typename Work>
    int Run(const Work& work) {
        nbscore_error_free(failure);
        failure = nullptr;
        reasonOfInput = nullptr;
        return ErrnoOf(Guarded(&failure, work));
    }

    int GetSchema(ArrowSchema* given) {
        *given = ArrowSchema{};
        return Run([&] { GiveSchema(plan.GetColumns(), *given); });
    }

    int GetNext(ArrowArray* given) {
        *given = ArrowArray{};
        Owned<ArrowArray> cases;
        if (const int fault = input.Get().get_next(&input.Get(), &cases.Get())) {
            nbscore_error_free(std::exchange(failure, nullptr));
            reasonOfInput = input.Get().get_last_error(&input.Get());
            // What a stream leaves behind when it fails is not to be released.
            cases.Get().release = nullptr;
            return fault;
        }
        const bool isAtEnd = cases.Get().release == nullptr;
        return Run([&] {
            if (!isAtEnd) plan.Score(schema.Get(), cases.Get(), *given);
        });
    }

    const char* GetLastError() const { return failure == nullptr ? reasonOfInput : failure->message; }

    ScorePlan plan;
    Owned<ArrowArrayStream> input;
    Owned<ArrowSchema> schema;
    nbscore_error* failure = nullptr;
    /// Belongs to the stream of cases, until its next call.
    const char* reasonOfInput = nullptr;
};

ScorePlan PlanOf(const nbscore_model* model, const nbscore_scoring* scoring) {
    return ScorePlan(RequireArgument(model, "model").open, scoring);
}

}  // namespace
}  // namespace nbscore

int32_t nbscore_score_schema(const nbscore_model* model, const nbscore_scoring* scoring, struct ArrowSchema* schema,
                             nbscore_error** error) {
    if (schema != nullptr) *schema = ArrowSchema{};
    return nbscore::Guarded(error, [&] {
        nbscore::RequireArgument(schema, "schema");
        nbscore::GiveSchema(nbscore::PlanOf(model, scoring).GetColumns(), *schema);
    });
}

int32_t nbscore_score(const nbscore_model* model, const nbscore_scoring* scoring, const struct ArrowSchema* schema,
                      const struct ArrowArray* cases, struct ArrowArray* scores, nbscore_error** error) {
    if (scores != nullptr) *scores = ArrowArray{};
    return nbscore::Guarded(error, [&] {
        nbscore::RequireArgument(scores, "scores");
        nbscore::PlanOf(model, scoring)
            .Score(nbscore::RequireArgument(schema, "schema"), nbscore::RequireArgument(cases, "cases"), *scores);
    });
}

int32_t nbscore_score_stream(const nbscore_model* model, const nbscore_scoring* scoring, struct ArrowArrayStream* cases,
                             struct ArrowArrayStream* scores, nbscore_error** error) {
    if (scores != nullptr) *scores = ArrowArrayStream{};
    return nbscore::Guarded(error, [&] {
        nbscore::RequireArgument(scores, "scores");
        const ArrowArrayStream& given = nbscore::RequireArgument(cases, "cases");
        if (given.release == nullptr) throw nbscore::BadArgument("The stream of cases was released.");
        if (given.get_schema == nullptr || given.get_next == nullptr || given.get_last_error == nullptr)
            throw nbscore::BadArgument("The stream of cases lacks a function.");
        nbscore::ScoreStream::Make(nbscore::PlanOf(model, scoring), *cases, *scores);
    });
}
