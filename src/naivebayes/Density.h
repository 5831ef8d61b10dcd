#pragma once

namespace nbscore {

/// How the values of a continuous input are distributed in one target category.
struct Density {
    enum Kind {
        /// Nothing is known.
        None,
        Gaussian,
        Poisson,
        Uniform,
        /// Of no named shape: taken as a Gaussian.
        Any
    };

    Kind kind = None;
    /// Of a Gaussian, a Poisson and any other: the mean. Of a uniform one: the lower end.
    double first = 0.0;
    /// Of a Gaussian and any other: the variance. Of a uniform one: the upper end.
    double second = 0.0;
};

}  // namespace nbscore
