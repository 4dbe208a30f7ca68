// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/string_table.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>
#include <utility>
#include <vector>

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

constexpr int kFirstOfEnglish = static_cast<int>(Language::kEnglish);

constexpr bool IdsAreUnique() {
  for (std::size_t i = 1; i < std::size(kRows); ++i) {
    if (kRows[i - 1].id >= kRows[i].id) return false;
  }
  return kRows[0].id > 0 && std::end(kRows)[-1].id < kFirstOfEnglish;
}
static_assert(IdsAreUnique(), "texts/: no id has two rows, and all lie in 1 to 4999");

// By row, once it was made.
std::vector<std::string>& ThirdColumn() {
  static std::vector<std::string> column;
  return column;
}

}  // namespace

const char* LookupText(int id, Language language) {
  const auto row = std::lower_bound(kRows.begin(), kRows.end(), id,
                                    [](const Row& r, int wanted) { return r.id < wanted; });
  if (row == kRows.end() || row->id != id) throw std::out_of_range("no text with id " + std::to_string(id));
  switch (language) {
    case Language::kJapanese:
      return row->japanese;
    case Language::kEnglish:
      return row->english;
    case Language::kThird:
      break;
  }
  return ThirdColumn().at(static_cast<std::size_t>(row - kRows.begin())).c_str();
}

const char* LookupText(int id) {
  const int language = id / kFirstOfEnglish * kFirstOfEnglish;
  return LookupText(id - language, static_cast<Language>(language));
}

void MakeThirdLanguage(const TextMaker& make) {
  std::vector<std::string> column;
  for (const Row& row : kRows) column.push_back(make(row.japanese, row.english));
  ThirdColumn() = std::move(column);
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
