// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/string_table.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace vlt {
namespace {

struct Row {
  int id;
  const char* japanese;
  const char* english;
};

constexpr Row kRows[] = {
#include "resources/strings.inc"
};

constexpr int kEnglishOffset = 5000;

constexpr bool SortedAndUnique() {
  for (std::size_t i = 1; i < std::size(kRows); ++i) {
    if (kRows[i - 1].id >= kRows[i].id) return false;
  }
  return kRows[0].id > 0 && std::end(kRows)[-1].id < kEnglishOffset;
}
static_assert(SortedAndUnique(), "strings.inc: ids must rise from row to row and lie in 1 to 4999");

}  // namespace

const char* LookupText(int id) {
  const bool english = id > kEnglishOffset;
  const int row_id = english ? id - kEnglishOffset : id;
  const Row* row = std::lower_bound(std::begin(kRows), std::end(kRows), row_id,
                                    [](const Row& r, int wanted) { return r.id < wanted; });
  if (row == std::end(kRows) || row->id != row_id) {
    throw std::out_of_range("no text with id " + std::to_string(id));
  }
  return english ? row->english : row->japanese;
}

std::string FormatText(std::string_view text, std::initializer_list<std::string_view> args) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char next = text[i] == '%' && i + 1 < text.size() ? text[i + 1] : '\0';
    const auto index = static_cast<std::size_t>(next - '1');
    if (next == '%') {
      result += '%';
      ++i;
    } else if (next >= '1' && next <= '9' && index < args.size()) {
      result += args.begin()[index];
      ++i;
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace vlt
