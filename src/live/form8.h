// SPDX-License-Identifier: GPL-3.0-or-later
// RAS: the word of alarm bits of each channel, bit by bit, a column a channel and a row an alarm.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "live/channel_reasons.h"
#include "pages/page.h"

namespace vlt {

// The present date in the fields of a record.
struct NowDate {
  std::int16_t year = 0;
  std::int16_t month = 0;
  std::int16_t day = 0;
  std::int16_t hour = 0;
  std::int16_t minute = 0;
  std::int16_t second = 0;
};

class Form8 : public PageForm {
 public:
  explicit Form8(App& app);

  // Captions, fonts and the fixed texts of the grid.
  void C10_RAS_FrmInit();
  void FrmInit() override { C10_RAS_FrmInit(); }
  void Form_Load() override;
  void Form_Activate() override;

  // The low 20 bits of a number as text, the least significant one first, and `ok` -1. A text that is no
  // number, or no text at all, leaves `text` alone and gives 0.
  static void Chg20Bit(std::optional<std::string_view> value, std::string& text, int& ok);
  void GetNowDate(NowDate& record);

  Label LabelRAS{*this, "LabelRAS"};
  Label lblOldColumns{*this, "lblOldColumns"};  // whose column is of an earlier read, and of which
  PushButton RASReadParameter{*this, "RASReadParameter"};
  // Row 0 is the head; row n shows bit 16 - n. Columns 0 to 2 are the channels, column 3 names the alarms.
  Grid MSFlexGrid1{*this, "MSFlexGrid1", 17, 4};
  Timer tmWait{*this, "tmWait"};

 private:
  void RASReadParameter_Click();
  void tmWait_Timer();
  // Reads the word of a channel into its column, which stays as it is without an answer, and is marked then.
  void ReadColumn(int ch, ChannelReasons& reasons);
  void ReadColumns(ChannelReasons& reasons);
  void ShowHeads();
  void SetGeometry(bool one_channel);

  int wait_ticks_ = 0;
  std::array<std::string, kChannels> read_at_;  // of each column; empty while it was never read
  std::array<bool, kChannels> fresh_{};         // it was read by the last read
};

}  // namespace vlt
