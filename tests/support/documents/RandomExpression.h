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

/// An expression that gives a value of the kind as a rule, though now and then one of another.
/// @param levels how many may be nested in one another, itself counted.
BruteForceExpression MakeRandomExpression(BruteForceKind kind, int levels, const RandomScope& scope,
                                          Randomness& random);

/// Texts that stand in tables, in constants and in the cells of cases, some of them odd where a number is meant.
std::string RandomWord(Randomness& random);
/// Numbers of which few differ, so that they meet one another.
double RandomSmallNumber(Randomness& random);

}  // namespace nbscore::test
