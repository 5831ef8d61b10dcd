#pragma once

/// @file
/// The groups of measurements, by what stands in front of a slash in their names. Items are cases.

namespace nbscore::bench {

/// workload_a, _b, _c: each in a batch ("batch") and by the tight loop for its shape ("tight_loop").
void RegisterWorkloads();
/// per_case: GetScore of one case, with the allocations that a call makes.
void RegisterPerCase();
/// columns: the same cases in columns of every kind.
void RegisterColumnKinds();
/// growth_*: how the time for a case goes with the cases of a call, predictors, categories, target categories,
/// sub-models, threads.
void RegisterGrowth();
/// machine: what the processor can do at the most.
void RegisterMachineLimits();

}  // namespace nbscore::bench
