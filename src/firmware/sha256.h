// SPDX-License-Identifier: GPL-3.0-or-later
// SHA-256 (FIPS 180-4), to name a module file beyond doubt in the window and in the journal.
#pragma once

#include <string>
#include <string_view>

namespace vlt {

// 64 lower-case hexadecimal digits.
std::string Sha256(std::string_view bytes);

}  // namespace vlt
