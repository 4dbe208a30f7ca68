// SPDX-License-Identifier: GPL-3.0-or-later
// The layout tables, one file a window. A new window adds its table here and in layouts.cpp.
#pragma once

#include "desktop/layout.h"

namespace vlt {

extern const WindowLayout kMDIForm1Layout;
extern const WindowLayout kSplashLayout;
extern const WindowLayout kSplashT305Layout;
extern const WindowLayout kSplashK410Layout;
extern const WindowLayout kFrmMssgLayout;
extern const WindowLayout kFrmAboutLayout;
extern const WindowLayout kFrmWaitLayout;
extern const WindowLayout kFrmFoundRunsLayout;
extern const WindowLayout kFrmCSetLayout;
extern const WindowLayout kFrmCalcLayout;
extern const WindowLayout kFrmLineLayout;
extern const WindowLayout kFrmCompareLayout;
extern const WindowLayout kForm2Layout;
extern const WindowLayout kForm3Layout;
extern const WindowLayout kForm4Layout;
extern const WindowLayout kForm5Layout;
extern const WindowLayout kForm6Layout;
extern const WindowLayout kForm7Layout;
extern const WindowLayout kForm8Layout;
extern const WindowLayout kForm9Layout;
extern const WindowLayout kForm10Layout;
extern const WindowLayout kForm11Layout;
extern const WindowLayout kForm12Layout;

// The table of a form, or null.
const WindowLayout* FindLayout(std::string_view form);
// The shape of a grid of a form, or null when its layout gives it none.
const GridShape* FindGridShape(std::string_view form, std::string_view grid);
extern const WindowLayout kFrmMaintMainLayout;
extern const WindowLayout kFrmMaintWaitLayout;
extern const WindowLayout kFrmMaintCommLayout;

}  // namespace vlt
