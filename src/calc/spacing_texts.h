// SPDX-License-Identifier: GPL-3.0-or-later
// What a person is told about the calculator's fields: what they are called, and why there is nothing to draw
// or to calculate.
#pragma once

#include <functional>
#include <string>

#include "calc/spacing.h"
#include "calc/spacing_check.h"

namespace vlt {

// The text of an id in the language in force.
using TextOf = std::function<std::string(int id)>;

std::string FieldCaption(SpacingField field, const TextOf& text);
std::string FaultText(const InputFault& fault, const TextOf& text);
// `inputs` are those that failed.
std::string FailureText(const SpacingFailure& failure, const SpacingInputs& inputs, const TextOf& text);

}  // namespace vlt
