#pragma once

#include "framework/Export.h"
#include "framework/ScoreTranslator.h"

/// The plug-in's entry point: a new translator, which the caller owns. Hosts that load the plug-in at run
/// time find it under exactly this name.
///
/// The translator, everything made with it and every exception from it must be gone before the plug-in is
/// unloaded.
extern "C" NAIVEBAYES_API ScoreTranslator* GiveMyTranslator();
