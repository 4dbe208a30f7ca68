// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/fw_notes.h"

#include <algorithm>

namespace vlt {

void FwNotes::Tell(const std::string& text) {
  if (std::find(happened_.begin(), happened_.end(), text) == happened_.end()) happened_.push_back(text);
}

void FwNotes::Advise(FwAdvice weight, const std::string& text) {
  if (weight < weight_ || (weight == weight_ && weight != FwAdvice::kKeepPower)) return;
  weight_ = weight;
  advice_ = text;
}

std::string FwNotes::Text() const {
  std::vector<std::string> lines{plan_};
  lines.insert(lines.end(), happened_.begin(), happened_.end());
  lines.insert(lines.end(), {advice_, journal_, notice_});
  std::string text;
  for (const std::string& line : lines) {
    if (!line.empty()) text += (text.empty() ? "" : "\n") + line;
  }
  return text;
}

}  // namespace vlt
