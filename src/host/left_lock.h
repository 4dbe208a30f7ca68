// SPDX-License-Identifier: GPL-3.0-or-later
// A lock file that a QLockFile has left behind.
#pragma once

#include <QString>

namespace vlt {

enum class LeftLock : unsigned char {
  kGone,    // it is removed, or it was not there any more
  kHeld,    // a process holds it
  kStuck,   // no process holds it, and it can't be removed
  kUnsure,  // the system can't tell
};

// Removes the lock file at `path` when no process holds it. The lock of the system on the open file decides:
// it ends with its process, and it is seen from every machine that shares the file system.
LeftLock RemoveLeftLock(const QString& path);

}  // namespace vlt
