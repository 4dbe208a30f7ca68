// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts in texts/compare_window.inc.
#pragma once

#define OLD(id, japanese, english)
#define ROW(id, name, japanese, english) inline constexpr int name = id;

namespace vlt::text {
#include "resources/texts/compare_window.inc"
}  // namespace vlt::text

#undef OLD
#undef ROW
