// SPDX-License-Identifier: GPL-3.0-or-later
// Condition: the second tab of the transit-time page. It reads what the meter works with on each path, once a
// press, into a grid with a column a channel, and saves it as CSV.
#pragma once

#include <array>
#include <string>

#include "meter/condition.h"
#include "pages/form11.h"

namespace vlt {

class ConditionTab : public FormPart {
 public:
  ConditionTab(App& app, Form& page);

  void Form_Load() override;
  void FrmInit() override;
  void Form_Activate() override;

  // The file as text lines; what was read, not what the grid shows.
  FileError WriteConditionCsv(const std::string& path);

  // What was read of a row. A text of a channel that has not answered yet is empty.
  struct Record {
    std::string name;
    std::string symbol;
    std::string unit;
    std::array<std::string, 2> values;
  };
  std::array<Record, kConditionRows> Records;
  // Of the last channel that answered, as "yyyy/mm/dd hh:mm:ss"; empty while there is nothing to save.
  std::string ReadTime;

  PushButton ReadInfButton{Whole(), "ReadInfButton"};
  PushButton SaveInfButton{Whole(), "SaveInfButton"};
  // Row 0 is the head; columns: name, unit, CH1, CH2.
  Grid InfData1Grid{Whole(), "InfData1Grid", kConditionRows + 1, 4};

 private:
  void ReadInfButton_Click();
  void SaveInfButton_Click();
  // Empty, or why nothing was read. The rows of the channel stay as they are then.
  std::string ReadChannel(int ch);
  // The channels that the meter has; the error of the last exchange behind all of them.
  std::string ReadChannels();
  void ShowNames();
  void SubGetUnitForm11();
  void SetColumns(bool two_channels);
  bool ShowsSecondChannel() const;
  void Tell(const std::string& text);

  App& app_;
  StatusBar& status_;
};

}  // namespace vlt
