// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/form8.h"

#include <array>
#include <bitset>
#include <cmath>

#include "link/operation.h"
#include "link/registers.h"
#include "meter/device_queries.h"
#include "meter/live_fields.h"
#include "platform/clock.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_live.h"
#include "state/device_facts.h"
#include "state/form_lock.h"
#include "values/code_tables.h"
#include "values/codecs.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kAlarms = 16;
constexpr int kNameColumn = 3;
constexpr int kHeadTexts[] = {182, 183, 184, 4920};
constexpr const char* kOldMark = "*";

// In the page's logical units.
constexpr int kChannelWidth = 800;
constexpr int kNameWidth = 4000;
constexpr int kGridWidth = 6635;
constexpr int kNarrowGridWidth = 5035;
constexpr int kGridHeight = 6500;

constexpr int kTickMs = 1000;
constexpr int kLongestWait = 2;  // ticks

}  // namespace

Form8::Form8(App& app) : PageForm(app, "Form8") {
  RASReadParameter.on_click = [this] { RASReadParameter_Click(); };
  tmWait.on_timer = [this] { tmWait_Timer(); };
  tmWait.SetInterval(kTickMs);
}

void Form8::C10_RAS_FrmInit() {
  SetCaption(app().Text(text::kRasTitle));
  LabelRAS.SetCaption(app().Text(text::kAlarmHead));
  RASReadParameter.SetCaption(app().Text(text::kRead));
  ShowHeads();
  const auto names = AlarmRows(app().state.Spoken());
  for (int row = 1; row <= kAlarms; ++row) {
    MSFlexGrid1.SetCell(row, kNameColumn, names[static_cast<std::size_t>(row - 1)]);
  }
  for (Control* control : Controls()) control->SetFont({app().state.PageFont, 12, false});
}

void Form8::Form_Load() {
  SetGeometry(false);
  C10_RAS_FrmInit();
}

void Form8::Form_Activate() { RASReadParameter.SetEnabled(IsLineFree(app())); }

void Form8::RASReadParameter_Click() {
  Operation operation(app(), *this, RASReadParameter.Name(), text::kReadingOfRasWasStarted);
  if (!operation.OpenPortOrTell(MessageIcon::kNone)) return;
  ChannelReasons reasons;
  ReadColumns(reasons);
  ShowHeads();
  if (!reasons.Empty()) app().state.LastErrorText = reasons.Text();
  operation.End(app().Text(text::kReadingOfRasWasCompleted) + " " + app().state.LastErrorText);
}

void Form8::ReadColumns(ChannelReasons& reasons) {
  fresh_.fill(false);
  const QueryAnswer told = QueryChannelConfig(app());
  const auto config = static_cast<ChannelConfig>(told.value);
  if (!told.exchange) reasons.Add(app().Text(text::kChannel), told.exchange.text);
  ReadColumn(0, reasons);
  if (config == ChannelConfig::kOneChannel) SetGeometry(true);
  if (config != ChannelConfig::kTwoPaths && config != ChannelConfig::kTwoPipes) return;
  SetGeometry(false);
  ReadColumn(1, reasons);
  ReadColumn(2, reasons);
}

// A column that is not of the last read has a star, and beside the title stands when it was read.
void Form8::ShowHeads() {
  std::string old;
  for (int column = 0; column < MSFlexGrid1.Columns(); ++column) {
    std::string head = app().Text(kHeadTexts[column]);
    const auto ch = static_cast<std::size_t>(column);
    if (column != kNameColumn && !MSFlexGrid1.IsHidden(column) && !fresh_[ch] && !read_at_[ch].empty()) {
      old += (old.empty() ? "" : ", ") + head + " " + read_at_[ch];
      head += kOldMark;
    }
    MSFlexGrid1.SetCell(0, column, head);
  }
  lblOldColumns.SetCaption(old.empty() ? "" : FormatText(app().Text(text::kOldColumns), {old}));
}

void Form8::ReadColumn(int ch, ChannelReasons& reasons) {
  RegisterData data;
  const auto at = static_cast<std::size_t>(ch);
  const ExchangeReport exchange =
      ReadRegisters(app(), SpanOf(MeasuredBlock(), LiveFieldAt(kAlarmPlace), ch), data);
  if (!exchange) {
    reasons.Add(app().Text(kHeadTexts[at]), exchange.text);
    return;
  }
  fresh_[at] = true;
  read_at_[at] = DateTimeText(app().platform.clock.Now());
  const std::bitset<kAlarms> bits(static_cast<unsigned>(BytesToUInt16(data, 0)));
  for (int row = 1; row <= kAlarms; ++row) {
    MSFlexGrid1.SetCell(row, ch, bits[static_cast<std::size_t>(kAlarms - row)] ? "1" : "0");
  }
}

void Form8::SetGeometry(bool one_channel) {
  MSFlexGrid1.SetColumnWidth(0, kChannelWidth);
  MSFlexGrid1.SetColumnWidth(1, one_channel ? 0 : kChannelWidth);
  MSFlexGrid1.SetColumnWidth(2, one_channel ? 0 : kChannelWidth);
  MSFlexGrid1.SetColumnWidth(kNameColumn, kNameWidth);
  MSFlexGrid1.SetSize(one_channel ? kNarrowGridWidth : kGridWidth, kGridHeight);
}

void Form8::Chg20Bit(std::optional<std::string_view> value, std::string& text, int& ok) {
  constexpr std::size_t kBits = 20;
  constexpr double kModulus = 1 << kBits;
  ok = 0;
  const std::optional<double> number = value ? ParseNumber(*value) : std::nullopt;
  if (!number) return;
  double low = std::fmod(RoundHalfEven(*number), kModulus);
  if (low < 0) low += kModulus;
  const std::bitset<kBits> bits(static_cast<unsigned>(low));
  text.clear();
  for (std::size_t i = 0; i < kBits; ++i) text += bits[i] ? '1' : '0';
  ok = -1;
}

void Form8::GetNowDate(NowDate& record) {
  const LocalTime now = app().platform.clock.Now();
  const auto word = [](int value) { return static_cast<std::int16_t>(value); };
  record = {word(now.year), word(now.month),  word(now.day),
            word(now.hour), word(now.minute), word(now.second)};
}

void Form8::tmWait_Timer() {
  if (++wait_ticks_ <= kLongestWait) return;
  wait_ticks_ = 0;
  tmWait.SetRunning(false);
  app().state.StopRequest = 1;
}

}  // namespace vlt
