#pragma once

#include <string>

#include "framework/Export.h"

namespace nbscore {

/// Why some case cannot be scored.
struct ScoringObstacle {
    /// What is at fault, as far as there is something that its owner can do about it.
    enum Kind {
        None,
        TargetMissing,
        SecondTarget,
        TargetValuesMissing,
        TargetValueTwice,
        CountsMissing,
        TargetCountedTwice,
        /// Parts that do not fit together otherwise.
        Other
    };

    Kind kind = None;
    /// A sentence for people that names the thing at fault.
    std::string message;

    explicit operator bool() const { return kind != None; }
};

inline ScoringObstacle NoTargetVariable() {
    return {ScoringObstacle::TargetMissing, "The model has no target variable."};
}

}  // namespace nbscore

/// A second face that a model may have beside ScoreModel: it knows whether scoring would stop the process.
///
/// A model whose parts do not fit together ends the process at an index check when it scores. A host that must not
/// end asks first: `dynamic_cast<const ModelSelfCheck*>(model)`, and where that is not null, FindScoringObstacle.
class SCOREFRAMEWORK_API ModelSelfCheck {
public:
    virtual ~ModelSelfCheck();

    /// Why some case cannot be scored; None when all can.
    virtual nbscore::ScoringObstacle FindScoringObstacle() const = 0;

protected:
    ModelSelfCheck() = default;
    ModelSelfCheck(const ModelSelfCheck&) = default;
    ModelSelfCheck& operator=(const ModelSelfCheck&) = default;
};
