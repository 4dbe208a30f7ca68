// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the firmware tool's texts about what to do, and what its page says before a run. They live in the
// block 4425 to 4457.
#pragma once

namespace vlt::text {

// What to do, a whole instruction each. kFwKeepPower and kFwKeepPowerFit: %1 the modules that may be
// incomplete in the device.
inline constexpr int kFwDoPort = 4425;
inline constexpr int kFwDoAnswer = 4426;
inline constexpr int kFwDoNoise = 4427;
inline constexpr int kFwDoPlug = 4428;
inline constexpr int kFwDoFit = 4429;
inline constexpr int kFwDoWait = 4430;
inline constexpr int kFwDoFiles = 4431;
inline constexpr int kFwDoDownload = 4432;
inline constexpr int kFwKeepPower = 4433;
inline constexpr int kFwKeepPowerFit = 4434;

// What was read back: %1 the file. kFwFolderShut: %1 the reason.
inline constexpr int kFwReadBack = 4435;
inline constexpr int kFwFolderShut = 4437;

// What stands on the page before a run.
inline constexpr int kFwBootMeans = 4440;
inline constexpr int kFwAfterNg = 4441;

}  // namespace vlt::text
