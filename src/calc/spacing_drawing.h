// SPDX-License-Identifier: GPL-3.0-or-later
// A section through the pipe to scale: wall, lining, fluid, both sensors, the way of the sound and the
// spacing, and beside it the angles layer by layer.
#pragma once

#include "calc/spacing.h"
#include "calc/spacing_texts.h"
#include "platform/sheet.h"

namespace vlt {

inline constexpr double kDrawingWidth = 180;
inline constexpr double kDrawingHeight = 112;
// Where its right-hand part begins.
inline constexpr double kDrawingSideX = 118;

// `result` is what CalculateSpacing has made of `inputs`, which must describe a pipe (FindInputFault).
Sheet DrawSpacing(const SpacingInputs& inputs, const SpacingResult& result, const TextOf& text);

}  // namespace vlt
