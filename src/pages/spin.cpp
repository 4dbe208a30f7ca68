// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/spin.h"

#include <algorithm>
#include <optional>

#include "values/number_text.h"

namespace vlt {

void TieSpin(UpDown& arrows, TextBox& box, double step, double least, double greatest) {
  const auto turn = [&box, least, greatest](double by) {
    const std::string_view text = Trim(box.Text());
    const std::optional<double> number = text.empty() ? 0 : ParseNumber(text);
    if (number) box.Enter(PlainText(std::clamp(*number + by, least, greatest)));
  };
  arrows.on_up = [turn, step] { turn(step); };
  arrows.on_down = [turn, step] { turn(-step); };
}

}  // namespace vlt
