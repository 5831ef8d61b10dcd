#pragma once

namespace nbscore {

/// A flag as the text dumps show it. Some dumps write a full stop behind it and some do not.
inline const char* DumpFlag(bool flag) {
    return flag ? "True" : "False";
}

}  // namespace nbscore
