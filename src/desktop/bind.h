// SPDX-License-Identifier: GPL-3.0-or-later
// The binding that a control gets, by its kind.
#pragma once

#include <memory>

#include "desktop/binding.h"

namespace vlt {

// The binding for the kind of `control`, its widget a child of `parent`. Null for kinds without a widget of
// their own (timers, menu items).
std::unique_ptr<Binding> Bind(Control& control, BindContext& context, QWidget* parent);

}  // namespace vlt
