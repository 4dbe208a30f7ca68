// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form5.h"

#include "meter/display_table.h"
#include "meter/offered_codes.h"

namespace vlt {
namespace {

constexpr int kFlowRate = 1;  // code of the one item that has a decimal point

}  // namespace

Form5::Form5(App& app)
    : ParameterPage(app, "Form5",
                    {.title = 2120,
                     .set_started = 3995,
                     .set_completed = 4005,
                     .read_started = 4015,
                     .read_completed = 4025}),
      rows_{Row{CHCombo1, Selection1, Selection1Combo, Flow_Unit1, Flow_Unit1Combo, 2100},
            Row{CHCombo2, Selection2, Selection2Combo, Flow_Unit2, Flow_Unit2Combo, 2110}} {
  column().SetFields(Table());
  CHCombo1.on_click = [this] { CHCombo1_Click(); };
  CHCombo2.on_click = [this] { CHCombo2_Click(); };
  Selection1Combo.on_click = [this] { Selection1Combo_Click(); };
  Selection2Combo.on_click = [this] { Selection2Combo_Click(); };
  optLCD.ForEach([this](OptionButton& option) { option.on_click = [this] { optLCD_Click(); }; });
}

std::vector<Field> Form5::RowFields(Row& row, const Parameter& channel, const Parameter& item,
                                    const Parameter& decimal) {
  std::vector<Field> fields = {Bind(channel, row.selection_box, row.channel),
                               Bind(item, row.selection_box, row.selection),
                               Bind(decimal, row.decimal_box, row.decimal)};
  fields[0].text_of_list = true;
  return fields;
}

std::vector<Field> Form5::Table() {
  std::vector<Field> table =
      RowFields(rows_[0], DisplayRow("channel_1"), DisplayRow("item_1"), DisplayRow("decimal_point_1"));
  for (const Field& field :
       RowFields(rows_[1], DisplayRow("channel_2"), DisplayRow("item_2"), DisplayRow("decimal_point_2"))) {
    table.push_back(field);
  }
  table.push_back(Bind(DisplayRow("backlight"), LCD_Check, optLCD(0), optLCD(1)));
  table.back().no_option = "";
  table.push_back(Bind(DisplayRow("lights_out_time"), LCD_Check, cmbLCD_Time));
  return table;
}

void Form5::BuildLists() {
  config_ = AskChannelConfig(app(), *this);
  for (Row& row : rows_) {
    SubGetCHForm5(row.channel);
    SubGetSelectForm5(row);
    SubGetUnitForm5(row.decimal);
  }
  column().FillList(cmbLCD_Time);
}

void Form5::Form_Load() {
  ParameterPage::Form_Load();
  for (Row& row : rows_) FollowSelection(row);
  LCD_Check_Click();
}

void Form5::Form_Activate() {
  config_ = AskChannelConfig(app(), *this);
  EnableChannels();
  for (Row& row : rows_) RebuildSelection(row);
  ParameterPage::Form_Activate();
}

void Form5::Text_Box_Enable() {
  ColumnRules::Text_Box_Enable();
  EnableChannels();
  EnableTime();
}

void Form5::EnableChannels() {
  // A single-channel meter has no channel to choose.
  for (Row& row : rows_)
    row.channel.SetEnabled(row.selection_box.Ticked() && HasSeveralChannels(app().state));
}

void Form5::C04_HYOJI_FrmInit() {
  SetPageCaptions({{&FrameDisplay1, 2100},
                   {&FrameDisplay2, 2110},
                   {&lblChannel1, 179},
                   {&lblChannel2, 179},
                   {&Selection1, 4670},
                   {&Selection2, 4670},
                   {&Flow_Unit1, 2240},
                   {&Flow_Unit2, 2240},
                   {&LCD_Check, text::kLcdBacklight},
                   {&lblLCD_Time, 4962}});
  lblTimeUnit.SetCaption("[" + app().Text(text::kMinute) + "]");
}

void Form5::SubGetCHForm5(ComboBox& list) { column().FillList(list); }

void Form5::SubGetUnitForm5(ComboBox& list) { column().FillList(list); }

MeterFacts Form5::FactsOfList(const Field& field) {
  MeterFacts facts = ParameterPage::FactsOfList(field);
  facts.PathMode = PathModeOf(config_);
  return facts;
}

std::vector<int> Form5::CodesOfList(const Field& field, const MeterFacts& facts) {
  for (const Row& row : rows_) {
    if (field.list == &row.selection) {
      return OfferedCodes({field.parameter, 0}, facts, row.channel.ListIndex());
    }
  }
  return ParameterPage::CodesOfList(field, facts);
}

void Form5::SubGetSelectForm5(Row& row) { column().FillList(row.selection); }

void Form5::RebuildSelection(Row& row) {
  const bool chosen = row.selection.ListIndex() >= 0;
  SubGetSelectForm5(row);
  const bool reduced = config_ == ChannelConfig::kTwoPipes && row.channel.ListIndex() == kComputedChannel;
  if (chosen && row.selection.ListIndex() < 0 && reduced) row.selection.SetListIndex(0);
  FollowSelection(row);
}

void Form5::SelectCode(Row& row, int code) {
  row.selection.SetListIndex(column().FieldOf(row.selection).IndexOf(code));
}

void Form5::FollowSelection(Row& row) {
  const int code = column().FieldOf(row.selection).CodeOf(row.selection.ListIndex());
  Depend(row.decimal_box, row.decimal, code == kFlowRate);
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

void Form5::BoxClicked(CheckBox& box) {
  if (&box == &LCD_Check) return LCD_Check_Click();
  column().FollowBox(box);
  EnableChannels();
}

void Form5::ReadBlocks() {
  for (Row& row : rows_) row.read_code = -1;
  column().ReadBlock(kDisplayBlock);
  if (HasSeveralChannels(app().state)) column().ReadBlock(kDisplayChannelBlock);
  // Only now the channels are known, and with them what the codes of the items mean.
  for (Row& row : rows_) {
    RebuildSelection(row);
    if (row.read_code >= 0) SelectCode(row, row.read_code);
  }
}

void Form5::PlanWrites(WritePlan& plan) {
  for (const Row& row : rows_) {
    if (HasSeveralChannels(app().state)) column().PlanField(plan, column().FieldOf(row.channel));
    column().PlanInOrder(plan, {&row.selection, &row.decimal});
  }
  PlanBacklight(plan);
}

// The mode and its time go together, so that the meter never sees one without the other.
void Form5::PlanBacklight(WritePlan& plan) {
  const bool timed = optLCD(1).Value() && cmbLCD_Time.ListIndex() >= 0;
  if (!LCD_Check.Ticked() || !(optLCD(0).Value() || timed)) return;
  std::vector<std::uint8_t> data = EncodeCode(timed ? 1 : 0);
  if (timed) {
    const auto minutes = EncodeCode(cmbLCD_Time.ListIndex());
    data.insert(data.end(), minutes.begin(), minutes.end());
  }
  plan.Add({.field = &column().FieldOf(optLCD(0)),
            .name = app().Text(text::kLcdBacklight),
            .address = DisplayRow("backlight").address,
            .data = data});
}

std::string Form5::FailureName(const Field& field) {
  for (const Row& row : rows_) {
    if (field.list == &row.decimal) return app().Text(row.name) + " " + app().Text(field.parameter->caption);
  }
  return ColumnRules::FailureName(field);
}

}  // namespace vlt
