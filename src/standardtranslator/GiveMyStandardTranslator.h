#pragma once

#include "framework/Export.h"
#include "framework/ScoreTranslator.h"

/// The plug-in's second entry point: a new translator, which the caller owns, of models that are scored by the PMML
/// standard's rule. It is a BaseTranslator, and has the face DocumentFaults. What else is said of GiveMyTranslator is
/// true of it.
extern "C" NAIVEBAYES_API ScoreTranslator* GiveMyStandardTranslator();
