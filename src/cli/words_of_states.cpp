// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/words_of_states.h"

#include <array>

namespace vlt {

std::string WordOf(WriteEnd end) {
  constexpr std::array kWords = {"stored", "refused", "not_proven", "not_sent"};
  return kWords.at(static_cast<std::size_t>(end));
}

std::string WordOf(RowState state) {
  constexpr std::array<const char*, kRowStates> kWords = {"equal", "different", "only_left", "only_right",
                                                          "unread"};
  return kWords.at(static_cast<std::size_t>(state));
}

}  // namespace vlt
