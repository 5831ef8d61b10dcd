#pragma once

#include "framework/Export.h"
#include "framework/ModelTables.h"

/// A face that a model may have beside ScoreModel: it lays open the tables that it scores with. To be asked for by
/// `dynamic_cast<const ModelSelfTables*>(model)`.
class SCOREFRAMEWORK_API ModelSelfTables {
public:
    virtual ~ModelSelfTables();

    /// To be asked of a configured model that has no scoring obstacle (ModelSelfCheck); of any other it may stop the
    /// process. What the tables point to is valid until the model changes or goes. Takes time proportional to the
    /// number of categories. May be called from any thread once the model is configured.
    virtual nbscore::ModelTables GetTables() const = 0;

protected:
    ModelSelfTables() = default;
    ModelSelfTables(const ModelSelfTables&) = default;
    ModelSelfTables& operator=(const ModelSelfTables&) = default;
};
