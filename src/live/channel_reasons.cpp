// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/channel_reasons.h"

#include <algorithm>

namespace vlt {

void ChannelReasons::Add(const std::string& channel, const std::string& reason) {
  reasons_.emplace_back(channel, reason);
}

std::string ChannelReasons::Text() const {
  if (reasons_.empty()) return {};
  const std::string& first = reasons_.front().second;
  if (std::ranges::all_of(reasons_, [&](const auto& row) { return row.second == first; })) return first;
  std::string text;
  for (const auto& [channel, reason] : reasons_) {
    text.append(text.empty() ? "" : " ").append(channel).append(" ").append(reason);
  }
  return text;
}

}  // namespace vlt
