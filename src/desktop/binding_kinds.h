// SPDX-License-Identifier: GPL-3.0-or-later
// One maker for each kind of control; Bind() chooses among them.
#pragma once

#include "desktop/binding.h"

namespace vlt {

using BindingMaker = std::unique_ptr<Binding> (*)(Control&, BindContext&, QWidget* parent);

std::unique_ptr<Binding> BindCheckBox(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindOptionButton(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindTextBox(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindComboBox(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindLabel(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindPushButton(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindFrameBox(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindStatusBar(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindProgressBar(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindTabControl(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindUpDown(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindGrid(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindChart(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindPicture(Control& control, BindContext& context, QWidget* parent);
std::unique_ptr<Binding> BindDrawing(Control& control, BindContext& context, QWidget* parent);

}  // namespace vlt
