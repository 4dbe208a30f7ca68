// SPDX-License-Identifier: GPL-3.0-or-later
// Why channels did not answer in one reading. The next exchange forgets the reason of the one before, so it
// is kept here until the reading has ended.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace vlt {

class ChannelReasons {
 public:
  // `reason` in the words of the exchange ("[NO RESPONSE ERROR]").
  void Add(const std::string& channel, const std::string& reason);
  bool Empty() const { return reasons_.empty(); }
  // The reason; where there are several different ones, each behind the name of its channel:
  // "CH1 [NO RESPONSE ERROR] CH3 [CRC ERROR]".
  std::string Text() const;

 private:
  std::vector<std::pair<std::string, std::string>> reasons_;  // channel, reason
};

}  // namespace vlt
