#pragma once

namespace nbscore {

/// Makes the XML library ready. Any thread may call it, any number of times: the first call does the work, and the
/// library is put away when the process ends (or when this library is unloaded).
void EnsureXmlPlatform();

}  // namespace nbscore
