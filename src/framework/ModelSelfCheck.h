#pragma once

#include <string>

#include "framework/Export.h"

/// A second face that a model may have beside ScoreModel: it knows whether scoring would stop the process.
///
/// A model whose parts do not fit together ends the process at an index check when it scores. A host that must not
/// end asks first: `dynamic_cast<const ModelSelfCheck*>(model)`, and where that is not null, FindScoringObstacle.
class SCOREFRAMEWORK_API ModelSelfCheck {
public:
    virtual ~ModelSelfCheck();

    /// Why some case cannot be scored, as a sentence for people that names the thing at fault; empty when all can.
    virtual std::string FindScoringObstacle() const = 0;

protected:
    ModelSelfCheck() = default;
    ModelSelfCheck(const ModelSelfCheck&) = default;
    ModelSelfCheck& operator=(const ModelSelfCheck&) = default;
};
