// SPDX-License-Identifier: GPL-3.0-or-later
// What a page shows, what a snapshot holds and what a comparison says are the same, row by row.
#include "compare_fixture.h"
#include "files/parameter_file.h"
#include "meter/value_text.h"
#include "pages/form10.h"
#include "pages/form11.h"
#include "pages/form2.h"
#include "pages/form3.h"
#include "pages/form4.h"
#include "pages/form5.h"
#include "pages/form6.h"

namespace vlt::test {
namespace {

constexpr const char* kFile = "/data/plant.ini";

// A page opened for each of its channels or outputs, everything ticked and read.
struct Visit {
  const char* page;
  int SharedState::*chosen;
  int places;
};
constexpr Visit kVisits[] = {{"Form10", &SharedState::ProcessChannel, 2},
                             {"Form2", &SharedState::RangeChannel, 3},
                             {"Form3", &SharedState::TotalChannel, 3},
                             {"Form4", &SharedState::OutputIndex, 4},
                             {"Form5", nullptr, 1},
                             {"Form6", nullptr, 1},
                             {"Form11", &SharedState::DetailChannel, 2}};

// Boxes that a list has switched off take part no more; all that can be ticked is, twice, because a list
// that is read switches others on.
void ReadPage(ParameterPage& page) {
  for (int round = 0; round < 2; ++round) {
    for (const auto& column : page.Columns()) {
      for (CheckBox* box : column->DistinctBoxes()) box->SetValue(1);
      column->ReadParameter_Click();
    }
  }
}

class Agreement : public CompareTest {
 public:
  using CompareTest::CompareTest;

  // The page with the given channel or output chosen; null where the meter has none.
  ParameterPage* OpenAt(const Visit& visit, int place) {
    app().windows.Unload(visit.page);
    if (visit.chosen != nullptr) app().state.*visit.chosen = place;
    auto& page = Open<ParameterPage>(visit.page);
    return IsOffered(page, place) ? &page : nullptr;
  }

 private:
  // Whether the page lets the channel or output be chosen.
  static bool IsOffered(const Form& page, int place) {
    for (const char* chooser : {"ChannelSelect", "DigitalOutputSelect", "DetailChSelect"}) {
      const Control* option = page.Find(std::string(chooser) + "(" + std::to_string(place) + ")");
      if (option != nullptr) return option->Enabled();
    }
    return place == 0;
  }
};

std::string ShownBy(const Field& field) {
  if (field.text != nullptr) return field.text->Text();
  const int index = field.Selected();
  if (index < 0) return "";
  return field.list != nullptr ? field.list->Text()
                               : field.options[static_cast<std::size_t>(index)]->Caption();
}

// Fields that a page does not show for what the meter holds.
bool IsLeftOut(const Field& field) {
  // The switch point of the direction that is not in use; a list that is switched off.
  return field.box->Enabled() == false || field.parameter->name.find("_switch_") != std::string_view::npos;
}

void CheckPage(const ParameterPage& page, const Snapshot& snapshot, int place, int& checked) {
  for (const auto& column : page.Columns()) {
    for (const Field& field : column->Fields()) {
      const int index = field.parameter->location == Location::kMeter ? 0 : place;
      const SnapshotRow* row = snapshot.Find({field.parameter, index});
      if (row == nullptr || IsLeftOut(field)) continue;
      const std::string shown = ShownBy(field);
      // A code that a list has no entry for selects nothing.
      if (shown.empty() && field.text == nullptr) continue;
      const std::string value = row->value.substr(0, row->value.find(" ("));
      EXPECT_EQ(shown, field.options[0] != nullptr ? value : row->value)
          << row->place.row->name << " " << index;
      if (field.unit != nullptr) {
        EXPECT_EQ(field.unit->Caption(), "[" + row->unit + "]") << row->place.row->name;
      }
      ++checked;
    }
  }
}

TEST(Agreement, PagesAndSnapshotShowTheSame) {
  for (const Shape& shape : kShapes) {
    SCOPED_TRACE(shape.name);
    Agreement test(shape);
    int checked = 0;
    for (const Visit& visit : kVisits) {
      for (int place = 0; place < visit.places; ++place) {
        SCOPED_TRACE(std::string(visit.page) + " " + std::to_string(place));
        ParameterPage* page = test.OpenAt(visit, place);
        if (page == nullptr) continue;
        ReadPage(*page);
        CheckPage(*page, test.Read(), place, checked);
      }
    }
    EXPECT_GT(checked, shape.specification == kSingle ? 60 : 100);
  }
}

// Lists that are shorter on some meters, or whose first entry is not the code 0: whatever is chosen, the page
// sends the code that a comparison of the fields counts with, and both call it by the same word.
TEST(Agreement, AnEntryIsTheSameCodeOnTheLineAndInAComparison) {
  const struct {
    Visit visit;
    int place;
    const char* row;
    const char* channel = nullptr;  // the list that the entries follow
  } lists[] = {
      {kVisits[1], 2, "range.kind"},        {kVisits[3], 0, "status.function"},
      {kVisits[3], 1, "status.function"},   {kVisits[4], 0, "display.item_2", "CHCombo2"},
      {kVisits[5], 0, "system.ao1_source"}, {kVisits[6], 0, "details.send_count"},
  };
  int checked = 0;
  for (const Shape& shape : kShapes) {
    for (const auto& list : lists) {
      SCOPED_TRACE(std::string(shape.name) + " " + list.row);
      Agreement test(shape);
      ParameterPage* page = test.OpenAt(list.visit, list.place);
      if (page == nullptr) continue;
      ReadPage(*page);
      ParameterColumn& column = *page->Columns().front();
      const Parameter& row = *FindParameter(list.row);
      const Field& field = *std::find_if(column.Fields().begin(), column.Fields().end(),
                                         [&](const Field& each) { return each.parameter == &row; });
      for (CheckBox* box : column.DistinctBoxes()) box->SetValue(box == field.box ? 1 : 0);
      if (list.channel != nullptr) static_cast<ComboBox*>(page->Find(list.channel))->SetListIndex(2);
      for (int entry = 0; field.Ticked() && entry < field.list->Count(); ++entry) {
        ASSERT_TRUE(field.list->Choose(entry));
        column.SetParameter_Click();
        const CompareSide fields = SideOfFields(test.app());
        const SideCell* cell = fields.Find({&row, list.place});
        ASSERT_NE(cell, nullptr) << entry;
        EXPECT_EQ(cell->text, field.list->Text());
        ++checked;
        const auto held = test.meter().holding().Read(static_cast<std::uint32_t>(cell->place.Address()), 2);
        EXPECT_TRUE(std::equal(held.begin(), held.end(), cell->raw.begin(), cell->raw.end())) << cell->text;
      }
    }
  }
  EXPECT_GT(checked, 150);
}

// The fields and a parameter file written from them hold what the meter holds, wherever they hold
// something, to the last digit that a page shows.
TEST(Agreement, FieldsAndParameterFileEqualTheMeterTheyWereReadFrom) {
  for (const Shape& shape : kShapes) {
    SCOPED_TRACE(shape.name);
    Agreement test(shape);
    for (const Visit& visit : kVisits) {
      if (ParameterPage* page = test.OpenAt(visit, 0)) ReadPage(*page);
    }
    const CompareSide meter = test.Meter();
    const CompareSide fields = SideOfFields(test.app());
    ASSERT_EQ(SaveParameterFile(test.app(), kFile), FileError::kGood);
    const FileSide file = SideOfFile(test.app(), kFile);
    ASSERT_EQ(file.error, FileError::kGood);
    for (const CompareSide* side : {&fields, &file.side}) {
      const Comparison comparison(*side, meter);
      EXPECT_GT(comparison.Count(RowState::kEqual), 50u);
      EXPECT_FALSE(comparison.NoDifferences()) << "channels that no page shows are missing";
      for (const ComparisonRow& row : comparison.Rows()) {
        if (row.state == RowState::kEqual || row.state == RowState::kOnlyRight) continue;
        // A text that was cut for showing, and options that stand for many codes, are all that a page has.
        EXPECT_EQ(row.state, RowState::kDifferent) << row.place.row->name << " " << row.note;
        EXPECT_EQ(row.right.text.substr(0, row.right.text.find(" (")), row.left.text) << row.place.row->name;
        EXPECT_EQ(row.right.unit, row.left.unit) << row.place.row->name;
      }
    }
  }
}

}  // namespace
}  // namespace vlt::test
