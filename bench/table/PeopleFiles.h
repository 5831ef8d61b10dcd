#pragma once

#include <cstddef>
#include <filesystem>

namespace nbscore::bench {

/// The files of a measurement, in a folder.
struct PeopleFiles {
    explicit PeopleFiles(const std::filesystem::path& folder)
        : model(folder / "model.pmml"),
          training(folder / "training.csv"),
          differing(folder / "differing.csv"),
          repeating(folder / "repeating.csv"),
          repeatingLong(folder / "repeating_long.csv") {}

    std::filesystem::path model;
    /// The people that the model's counts come from, with their answers.
    std::filesystem::path training;
    /// Cases, nearly all of which differ.
    std::filesystem::path differing;
    /// As many cases, drawn from 20,000 people.
    std::filesystem::path repeating;
    /// Several times as many, drawn in the same way, so that the start and end of a run matter little.
    std::filesystem::path repeatingLong;
};

constexpr std::size_t timesAsLong = 5;

/// Writes all of them.
void WritePeopleFiles(const PeopleFiles& files, std::size_t numCases);

}  // namespace nbscore::bench
