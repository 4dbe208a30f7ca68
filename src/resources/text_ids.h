// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts of the meter's documents, and of those that every folder needs.
#pragma once

#define OLD(id, japanese, english)
#define ROW(id, name, japanese, english) inline constexpr int name = id;

namespace vlt::text {
#include "resources/texts/common.inc"
#include "resources/texts/product.inc"
}  // namespace vlt::text

#undef OLD
#undef ROW
