#include "pages/parameter_page.h"

#include "link/device_queries.h"
#include "state/form_lock.h"

namespace vlt {

void ParameterPage::Form_Load() {
  BuildLists();
  BuildBaseUnitNames(app());
  ClearControls();
  SetteiHannei();
}

void ParameterPage::Form_Activate() {
  EnableCommands(!app().state.UiLocked && IsMonitorIdle(app()));
  BuildBaseUnitNames(app());
  ApplyUnitCaptions();
}

void ParameterPage::Form_Unload(int& cancel) {
  PageForm::Form_Unload(cancel);
  if (cancel == 0) Taihi();
}

void ParameterPage::SetCaptions(const std::vector<CaptionRow>& rows) {
  for (const CaptionRow& row : rows) row.control->SetCaption(app().Text(row.text_id));
  for (Control* control : Controls()) control->SetFont({app().state.PageFont, 12, false});
}

void ParameterPage::FillList(ComboBox& list, const std::vector<std::string>& items) {
  list.SetFont({app().state.PageFont, 12, false});
  list.SetItems(items);
}

}  // namespace vlt
