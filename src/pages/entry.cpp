// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/entry.h"

#include <algorithm>

namespace vlt {

Fields InRowOrder(Fields fields) {
  std::sort(fields.begin(), fields.end(),
            [](const Field& a, const Field& b) { return a.parameter < b.parameter; });
  return fields;
}

}  // namespace vlt
