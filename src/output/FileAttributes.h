#pragma once

namespace nbscore {

/// Gives a new file what the file that it is to replace passes on: owner, group, permissions, the list of who else may
/// access it, and the attributes that users gave it. Both are open descriptors. False, with errno, where the
/// permissions cannot be set.
///
/// Until then the new file must be for its owner alone: others are let in last. What lets a program run as somebody
/// else (set-user-ID, set-group-ID, capabilities) is never passed on. Only the administrator can give a file to another
/// owner, and others only to a group of their own. Where the group or the list cannot be kept, the group and everybody
/// else get what both of them had: the members of another group are strangers to the file.
bool PassOnAttributes(int from, int to);

}  // namespace nbscore
