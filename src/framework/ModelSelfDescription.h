#pragma once

#include "framework/Export.h"
#include "framework/ModelDescription.h"

/// A face that a model may have beside ScoreModel: it tells what it was made of. To be asked for by
/// `dynamic_cast<const ModelSelfDescription*>(model)`.
class SCOREFRAMEWORK_API ModelSelfDescription {
public:
    virtual ~ModelSelfDescription();

    /// Takes time proportional to the model's tables. May be called from any thread once the model is configured.
    virtual nbscore::ModelDescription Describe() const = 0;

protected:
    ModelSelfDescription() = default;
    ModelSelfDescription(const ModelSelfDescription&) = default;
    ModelSelfDescription& operator=(const ModelSelfDescription&) = default;
};
