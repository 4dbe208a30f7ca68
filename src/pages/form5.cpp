#include "pages/form5.h"

#include "link/device_queries.h"
#include "resources/text_ids.h"
#include "values/codecs.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kDisplayBlock = 0x00C0;  // 6 registers
constexpr int kChannelBlock = 0x04B0;  // 2 registers
constexpr int kBacklight = 0x00C8;     // and the lights-out time in the next register
constexpr int kTwoPipes = 3;           // of GetChannelConfig
constexpr int kComputedChannel = 2;
constexpr int kFlowRate = 1;          // code of the one item that has a decimal point
constexpr int kItemsWithoutHeat = 7;  // codes 0 to 6 of the display items
constexpr int kMinutes = 100;         // entries of the lights-out list

}  // namespace

Form5::Form5(App& app)
    : ParameterPage(
          app, "Form5",
          {chkCheck, ReadParameter, SetParameter, SaveParameter, "DISPLAY", 3995, 4005, 4015, 4025}),
      rows_{Row{CHCombo1, Selection1, Selection1Combo, Flow_Unit1, Flow_Unit1Combo, 2100},
            Row{CHCombo2, Selection2, Selection2Combo, Flow_Unit2, Flow_Unit2Combo, 2110}} {
  SetFields(Table());
  CHCombo1.on_click = [this] { CHCombo1_Click(); };
  CHCombo2.on_click = [this] { CHCombo2_Click(); };
  Selection1Combo.on_click = [this] { Selection1Combo_Click(); };
  Selection2Combo.on_click = [this] { Selection2Combo_Click(); };
  optLCD.ForEach([this](OptionButton& option) { option.on_click = [this] { optLCD_Click(); }; });
  LCD_Check.on_click = [this] { LCD_Check_Click(); };
  for (Row& row : rows_) {
    const auto tied = row.selection_box.on_click;
    row.selection_box.on_click = [this, tied] {
      tied();
      EnableChannels();
    };
  }
}

std::vector<Field> Form5::Table() {
  std::vector<Field> table;
  constexpr const char* kKeys[2][3] = {
      {"DISPLAY1_SELECT_CH", "DISPLAY1_SELECT_Data", "DISPLAY1_DECIMAL_POINT_Data"},
      {"DISPLAY2_SELECT_CH", "DISPLAY2_SELECT_Data", "DISPLAY2_DECIMAL_POINT_Data"}};
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    Row& row = rows_[i];
    const auto channel = static_cast<std::uint16_t>(kChannelBlock + 2 * i);
    const auto item = static_cast<std::uint16_t>(kDisplayBlock + 4 * i);
    table.push_back({.box = &row.selection_box,
                     .list = &row.channel,
                     .address = channel,
                     .caption = 179,
                     .key = kKeys[i][0],
                     .text_of_list = true});
    table.push_back({.box = &row.selection_box,
                     .list = &row.selection,
                     .address = item,
                     .caption = row.name,
                     .key = kKeys[i][1],
                     .code_of_index = [&row](int index) { return index + row.first_code; },
                     .index_of_code = [&row](int code) { return code - row.first_code; }});
    table.push_back({.box = &row.decimal_box,
                     .list = &row.decimal,
                     .address = static_cast<std::uint16_t>(item + 2),
                     .caption = 2240,
                     .key = kKeys[i][2]});
  }
  table.push_back({.box = &LCD_Check,
                   .options = {&optLCD(0), &optLCD(1)},
                   .address = kBacklight,
                   .caption = 4961,
                   .key = "LCD_BACKLIGHT_MODE",
                   .no_option = ""});
  table.push_back({.box = &LCD_Check,
                   .list = &cmbLCD_Time,
                   .address = kBacklight + 2,
                   .caption = 4961,
                   .key = "LCD_BACKLIGHT_TIME"});
  return table;
}

void Form5::BuildLists() {
  channel_config_ = AskChannelConfig(app(), *this);
  for (Row& row : rows_) {
    SubGetCHForm5(row.channel);
    SubGetSelectForm5(row);
    SubGetUnitForm5(row.decimal);
  }
  std::vector<std::string> minutes;
  for (int i = 0; i < kMinutes; ++i) minutes.push_back(std::to_string(i));
  FillList(cmbLCD_Time, minutes);
}

void Form5::Form_Load() {
  ParameterPage::Form_Load();
  for (Row& row : rows_) FollowSelection(row);
  LCD_Check_Click();
}

void Form5::Form_Activate() {
  channel_config_ = AskChannelConfig(app(), *this);
  EnableChannels();
  for (Row& row : rows_) RebuildSelection(row);
  ParameterPage::Form_Activate();
}

void Form5::Text_Box_Enable() {
  ParameterPage::Text_Box_Enable();
  EnableChannels();
  EnableTime();
}

void Form5::EnableChannels() {
  // A single-channel meter has no channel to choose.
  for (Row& row : rows_) row.channel.SetEnabled(row.selection_box.Ticked() && app().state.SpecClass == 0);
}

void Form5::C04_HYOJI_FrmInit() {
  SetCaption(app().Text(2120));
  SetCaptions({{&FrameDisplay1, 2100},
               {&FrameDisplay2, 2110},
               {&lblChannel1, 179},
               {&lblChannel2, 179},
               {&Selection1, 4670},
               {&Selection2, 4670},
               {&Flow_Unit1, 2240},
               {&Flow_Unit2, 2240},
               {&LCD_Check, 4961},
               {&lblLCD_Time, 4962},
               {&optLCD(0), text::kOn},
               {&optLCD(1), 2340},
               {&ReadParameter, 2030},
               {&SetParameter, 1650},
               {&SaveParameter, 2140},
               {&chkCheck, text::kSelectAll}});
  lblTimeUnit.SetCaption("[" + app().Text(4963) + "]");
  ShowUnits();
}

void Form5::SubGetCHForm5(ComboBox& list) { FillList(list, ListTexts(app().Codes(), 43)); }

void Form5::SubGetUnitForm5(ComboBox& list) { FillList(list, ListTexts(app().Codes(), 19)); }

bool Form5::IsReducedList(const Row& row) const {
  return channel_config_ == kTwoPipes && row.channel.ListIndex() == kComputedChannel;
}

void Form5::SubGetSelectForm5(Row& row) {
  std::vector<std::string> items = ListTexts(app().Codes(), 18);
  const bool no_heat =
      app().state.SpecClass == 1 || (channel_config_ == kTwoPipes && row.channel.ListIndex() >= 0);
  if (no_heat) items.resize(kItemsWithoutHeat);
  row.first_code = 0;
  if (IsReducedList(row)) {
    // The computed channel of two pipes has no velocity.
    items.erase(items.begin());
    row.first_code = kFlowRate;
  }
  if (items != row.selection.Items()) FillList(row.selection, items);
}

void Form5::RebuildSelection(Row& row) {
  const int index = row.selection.ListIndex();
  const int code = index < 0 ? -1 : index + row.first_code;
  SubGetSelectForm5(row);
  SelectCode(row, code);
  if (code >= 0 && row.selection.ListIndex() < 0 && IsReducedList(row)) row.selection.SetListIndex(0);
  FollowSelection(row);
}

void Form5::SelectCode(Row& row, int code) {
  row.selection.SetListIndex(code < 0 ? -1 : code - row.first_code);
}

void Form5::FollowSelection(Row& row) {
  const int index = row.selection.ListIndex();
  Depend(row.decimal_box, row.decimal, index >= 0 && index + row.first_code == kFlowRate);
}

void Form5::LCD_Check_Click() {
  optLCD.ForEach([this](OptionButton& option) { option.SetEnabled(LCD_Check.Ticked()); });
  EnableTime();
}

void Form5::EnableTime() {
  const bool on = LCD_Check.Ticked() && optLCD(1).Value();
  for (Control* control : {static_cast<Control*>(&cmbLCD_Time), static_cast<Control*>(&lblLCD_Time),
                           static_cast<Control*>(&lblTimeUnit)}) {
    control->SetEnabled(on);
  }
}

void Form5::FieldWasRead(const Field& field, int code) {
  for (Row& row : rows_) {
    if (field.list == &row.selection) row.read_code = code;
  }
}

void Form5::ReadBlocks() {
  for (Row& row : rows_) row.read_code = -1;
  ReadBlock(0x03, kDisplayBlock, 6);
  if (app().state.SpecClass == 0) ReadBlock(0x03, kChannelBlock, 2);
  // Only now the channels are known, and with them what the codes of the items mean.
  for (Row& row : rows_) {
    RebuildSelection(row);
    if (row.read_code >= 0) SelectCode(row, row.read_code);
  }
}

ParameterColumn::Outcome Form5::WriteFields() {
  for (const Row& row : rows_) {
    const Outcome outcome = WriteRow(row);
    if (outcome != Outcome::kGoOn) return outcome;
  }
  return WriteBacklight();
}

ParameterColumn::Outcome Form5::WriteRow(const Row& row) {
  std::vector<const Control*> entries = {&row.selection, &row.decimal};
  if (app().state.SpecClass == 0) entries.insert(entries.begin(), &row.channel);
  return WriteInOrder(entries);
}

ParameterColumn::Outcome Form5::WriteBacklight() {
  if (!LCD_Check.Ticked()) return Outcome::kGoOn;
  if (optLCD(0).Value()) return WriteRegisters(kBacklight, EncodeCode(0), app().Text(4961));
  if (!optLCD(1).Value() || cmbLCD_Time.ListIndex() < 0) return Outcome::kGoOn;
  // The mode and its time go together, so that the meter never sees one without the other.
  std::vector<std::uint8_t> data = EncodeCode(1);
  const auto minutes = EncodeCode(cmbLCD_Time.ListIndex());
  data.insert(data.end(), minutes.begin(), minutes.end());
  return WriteRegisters(kBacklight, data, app().Text(4961));
}

std::string Form5::FailureName(const Field& field) {
  for (const Row& row : rows_) {
    if (field.list == &row.decimal) return app().Text(row.name) + " " + app().Text(field.caption);
  }
  return ParameterPage::FailureName(field);
}

}  // namespace vlt
