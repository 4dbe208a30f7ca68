// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/parameter_page.h"

#include <utility>

#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_origin.h"
#include "state/form_lock.h"

namespace vlt {

ParameterPage::ParameterPage(App& app, std::string name, const Texts& texts)
    : PageForm(app, std::move(name)), texts_(texts) {
  AddColumn({.all = chkCheck,
             .read = ReadParameter,
             .set = SetParameter,
             .save = SaveParameter,
             .set_started = texts.set_started,
             .set_completed = texts.set_completed,
             .read_started = texts.read_started,
             .read_completed = texts.read_completed,
             .not_set = texts.not_set},
            *this);
}

void ParameterPage::BindEntries() { column().SetFields(InRowOrder(std::exchange(fields_, {}))); }

ParameterColumn& ParameterPage::AddColumn(const ColumnParts& parts, ColumnRules& rules) {
  columns_.push_back(std::make_unique<ParameterColumn>(app(), *this, parts, rules));
  return *columns_.back();
}

void ParameterPage::SetteiHannei() {
  for (const auto& column : columns_) column->SlotsToControls();
}

void ParameterPage::Taihi() {
  for (const auto& column : columns_) column->ControlsToSlots();
}

void ParameterPage::BuildLists() {
  for (const auto& column : columns_) column->FillLists();
}

void ParameterPage::Form_Load() {
  BuildLists();
  for (const auto& column : columns_) {
    column->DisableEntries();
    // A page that is loaded only to be saved keeps its units, too.
    column->ShowUnits();
  }
  SetteiHannei();
  for (const auto& column : columns_) column->ShowUnitsOfValues();
}

void ParameterPage::Form_Activate() {
  EnableCommands(IsLineFree(app()));
  for (const auto& column : columns_) {
    column->ShowUnitsThatHold();
    column->ApplyUnitCaptions();
  }
}

void ParameterPage::Form_Unload(int& cancel) {
  PageForm::Form_Unload(cancel);
  if (cancel == 0) Taihi();
}

void ParameterPage::Entered(const Control& control) {
  for (const auto& column : columns_) column->Origins().Entered(control);
}

void ParameterPage::Settled() {
  int not_set = 0;
  for (const auto& column : columns_) {
    column->Origins().Show();
    not_set += column->Origins().NotSet();
  }
  // A page that was loaded only to be saved has no title.
  if (Caption().empty()) return;
  const std::string title = app().Text(texts_.title);
  if (not_set == 0) {
    SetCaption(title);
  } else {
    SetCaption(FormatText(app().Text(not_set == 1 ? text::kTitleOneNotSet : text::kTitleNotSet),
                          {title, std::to_string(not_set)}));
  }
}

void ParameterPage::EnableCommands(bool enabled) {
  for (const auto& column : columns_) column->EnableButtons(enabled);
}

void ParameterPage::SetPageCaptions(const std::vector<CaptionRow>& own) {
  SetCaption(app().Text(texts_.title));
  for (const CaptionRow& row : {CaptionRow{&ReadParameter, 2030}, CaptionRow{&SetParameter, 1650},
                                CaptionRow{&SaveParameter, 2140}, CaptionRow{&chkCheck, text::kSelectAll}}) {
    row.control->SetCaption(app().Text(row.text_id));
  }
  for (const auto& column : columns_) {
    column->ShowNames();
    column->ShowUnits();
    column->ShowLengths();
    column->ShowHints();
  }
  for (const CaptionRow& row : own) row.control->SetCaption(app().Text(row.text_id));
  for (Control* control : Controls()) control->SetFont({app().state.PageFont, 12, false});
}

void ParameterPage::FillList(ComboBox& list, const std::vector<std::string>& items) {
  list.SetFont({app().state.PageFont, 12, false});
  list.SetItems(items);
}

}  // namespace vlt
