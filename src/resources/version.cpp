// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/version.h"

namespace vlt {

VersionRecord ProductVersion() { return {VELTRANO3_MAJOR, VELTRANO3_MINOR, VELTRANO3_REVISION}; }

std::string VersionText(const std::string& suffix) {
  const VersionRecord record = ProductVersion();
  return "Version " + std::to_string(record.major_number) + "." + std::to_string(record.minor_number) + "." +
         std::to_string(record.revision) + suffix;
}

}  // namespace vlt
