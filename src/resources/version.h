// SPDX-License-Identifier: GPL-3.0-or-later
// The program's version record, filled from the project's version by the build.
#pragma once

#include <string>

namespace vlt {

struct VersionRecord {
  int major_number;
  int minor_number;
  int revision;
};

VersionRecord ProductVersion();

// "Version 1.0.0" and the suffix, as the splash and the about window show it.
std::string VersionText(const std::string& suffix);

}  // namespace vlt
