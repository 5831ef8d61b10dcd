#pragma once

/// Holds the status that scoring answers with.
struct MCScore {
    /// The status of one scored case. It carries nothing: scoring does not fail. A case that cannot be judged by
    /// some predictor is scored without it, and what could not be scored at all is a defect of the model, which
    /// stops the process at the index check that finds it.
    class MCStatus {};
};
