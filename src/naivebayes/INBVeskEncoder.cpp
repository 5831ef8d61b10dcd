#include "naivebayes/INBVeskEncoder.h"

INBVeskEncoder::~INBVeskEncoder() = default;
