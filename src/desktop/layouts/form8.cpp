// SPDX-License-Identifier: GPL-3.0-or-later
// RAS: the alarm bits of each channel.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Strip("LabelRAS", "lblOldColumns", ">"),
    Wide("MSFlexGrid1"),
    Strip(">", "RASReadParameter"),
};

}  // namespace

constinit const WindowLayout kForm8Layout{"Form8", WindowStyle::kPage, kItems};

}  // namespace vlt
