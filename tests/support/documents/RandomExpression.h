#pragma once

#include <string>
#include <vector>

#include "support/BruteForceExpression.h"
#include "support/documents/RandomDraws.h"

namespace nbscore::test {

/// What a random expression may read and call.
struct RandomScope {
    struct Field {
        std::string name;
        BruteForceKind kind = BruteForceKind::Any;
    };
    std::vector<Field> fields;
    BruteForceFunctions functions;
};

/// An expression that usually gives a value of this kind, sometimes one of another.
/// @param levels how deep expressions may nest, the outermost included.
BruteForceExpression MakeRandomExpression(BruteForceKind kind, int levels, const RandomScope& scope,
                                          Randomness& random);

/// Texts for tables, constants and the cells of cases, some of them odd where a number is expected.
std::string RandomWord(Randomness& random);
/// Few different numbers, so that the same one is often drawn again.
double RandomSmallNumber(Randomness& random);

}  // namespace nbscore::test
