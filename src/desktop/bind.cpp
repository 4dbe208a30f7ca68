// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/bind.h"

#include "desktop/binding_kinds.h"

namespace vlt {
namespace {

struct Maker {
  ControlKind kind;
  BindingMaker make;
};

constexpr Maker kMakers[] = {
    {ControlKind::kCheckBox, BindCheckBox},
    {ControlKind::kOptionButton, BindOptionButton},
    {ControlKind::kTextBox, BindTextBox},
    {ControlKind::kComboBox, BindComboBox},
    {ControlKind::kLabel, BindLabel},
    {ControlKind::kPushButton, BindPushButton},
    {ControlKind::kFrame, BindFrameBox},
    {ControlKind::kStatusBar, BindStatusBar},
    {ControlKind::kProgressBar, BindProgressBar},
    {ControlKind::kTab, BindTabControl},
    {ControlKind::kUpDown, BindUpDown},
    {ControlKind::kGrid, BindGrid},
    {ControlKind::kChart, BindChart},
    {ControlKind::kPicture, BindPicture},
    {ControlKind::kDrawing, BindDrawing},
};

}  // namespace

std::unique_ptr<Binding> Bind(Control& control, BindContext& context, QWidget* parent) {
  for (const Maker& maker : kMakers) {
    if (maker.kind == control.Kind()) return maker.make(control, context, parent);
  }
  return nullptr;
}

}  // namespace vlt
