// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/entry_check.h"

#include <optional>

#include "resources/text_ids.h"
#include "values/input_check.h"
#include "values/number_text.h"

namespace vlt {
namespace {}  // namespace

bool CheckEntry(App& app, TextBox& box, double low, double high) {
  const std::string& text = box.Text();
  const std::optional<double> value = IsNumericText(text) == 0 ? ParseNumber(text) : std::nullopt;
  if (value && *value >= low && *value <= high) return true;
  box.SelectAll();
  app.Show(app.Text(value ? text::kDataOutOfRange : NoNumberText(text)),
           value ? MessageIcon::kStop : MessageIcon::kNone);
  box.SetFocus();
  return false;
}

}  // namespace vlt
