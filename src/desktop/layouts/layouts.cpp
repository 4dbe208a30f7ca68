// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

constexpr const WindowLayout* kLayouts[] = {
    &kMDIForm1Layout,     &kSplashLayout,       &kSplashT305Layout,   &kSplashK410Layout,
    &kFrmMssgLayout,      &kFrmAboutLayout,     &kFrmWaitLayout,      &kFrmCSetLayout,
    &kFrmCalcLayout,      &kForm2Layout,        &kForm3Layout,        &kForm4Layout,
    &kForm5Layout,        &kForm6Layout,        &kForm7Layout,        &kForm8Layout,
    &kForm9Layout,        &kForm10Layout,       &kForm11Layout,       &kForm12Layout,
    &kFrmLineLayout,      &kFrmMaintMainLayout, &kFrmMaintWaitLayout, &kFrmMaintCommLayout,
    &kFrmFoundRunsLayout, &kFrmCompareLayout,
};

}  // namespace

const WindowLayout* FindLayout(std::string_view form) {
  for (const WindowLayout* layout : kLayouts) {
    if (layout->form == form) return layout;
  }
  return nullptr;
}

const GridShape* FindGridShape(std::string_view form, std::string_view grid) {
  const WindowLayout* layout = FindLayout(form);
  if (layout == nullptr) return nullptr;
  for (const LayoutItem& item : layout->items) {
    if (item.names[0] == grid && !item.grid.columns.empty()) return &item.grid;
  }
  return nullptr;
}

}  // namespace vlt
