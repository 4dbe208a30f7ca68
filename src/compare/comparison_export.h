// SPDX-License-Identifier: GPL-3.0-or-later
// A comparison as a CSV file and as sheets of paper, in the language of its sides.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "compare/comparison.h"
#include "platform/sheet.h"

namespace vlt {

// What is told beside a row; without one it is the row's note.
using RowRemark = std::function<std::string(const ComparisonRow& row)>;

// All rows, with the identities of both sides and the counts in front. Cells are
// quoted where they must be; "." under every locale.
std::string ComparisonCsv(const Comparison& comparison, const std::string& stamp, const RowRemark& tell = {});

struct ComparisonSheetParts {
  std::string stamp;            // date and time
  std::string program;          // who has made it
  std::vector<RowState> shown;  // rows of these states are listed; the counts are those of all rows
  RowRemark remark = {};
};
// A4, upright, as many pages as the rows need; each has its number and the number of all.
std::vector<Sheet> ComparisonSheets(const Comparison& comparison, const ComparisonSheetParts& parts);

}  // namespace vlt
