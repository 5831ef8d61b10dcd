#pragma once

#include "host/OutputBuffer.h"

namespace nbscore {

/// How a request to stop is heard by whichever thread is writing: a signal comes to one thread only, and another may be
/// the one that waits for a full pipe.
OutputWaiting InterruptibleWriting();

}  // namespace nbscore
