// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/string_table.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>

namespace vlt {
namespace {

struct Row {
  int id;
  const char* japanese;
  const char* english;
};

#define OLD(id, japanese, english) {id, japanese, english},
#define ROW(id, name, japanese, english) {id, japanese, english},
constexpr Row kTexts[] = {
#include "resources/texts/common.inc"
#include "resources/texts/compare.inc"
#include "resources/texts/compare_window.inc"
#include "resources/texts/files.inc"
#include "resources/texts/firmware.inc"
#include "resources/texts/guard.inc"
#include "resources/texts/heal.inc"
#include "resources/texts/line.inc"
#include "resources/texts/live.inc"
#include "resources/texts/origin.inc"
#include "resources/texts/pages.inc"
#include "resources/texts/product.inc"
#include "resources/texts/proof.inc"
#include "resources/texts/timing.inc"
#include "resources/texts/words.inc"
};
#undef OLD
#undef ROW

constexpr auto kRows = [] {
  std::array<Row, std::size(kTexts)> rows = std::to_array(kTexts);
  std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.id < b.id; });
  return rows;
}();

constexpr int kEnglishOffset = 5000;

constexpr bool IdsAreUnique() {
  for (std::size_t i = 1; i < std::size(kRows); ++i) {
    if (kRows[i - 1].id >= kRows[i].id) return false;
  }
  return kRows[0].id > 0 && std::end(kRows)[-1].id < kEnglishOffset;
}
static_assert(IdsAreUnique(), "texts/: no id has two rows, and all lie in 1 to 4999");

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
