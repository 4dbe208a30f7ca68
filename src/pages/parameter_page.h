// A parameter page: a page whose own column of parameters follows the life of the window.
#pragma once

#include <string>

#include "pages/page.h"
#include "pages/parameter_column.h"

namespace vlt {

class ParameterPage : public PageForm, public ParameterColumn {
 public:
  void SetteiHannei() override { SlotsToControls(); }
  // Copies the controls into the slots.
  void Taihi() override { ControlsToSlots(); }

  void Form_Load() override;
  void Form_Activate() override;
  void Form_Unload(int& cancel) override;

 protected:
  // The buttons, the master box and the column start with the page's own controls.
  ParameterPage(App& app, std::string name, ColumnParts parts)
      : PageForm(app, std::move(name)), ParameterColumn(app, *this, parts) {}
  using PageForm::app;

  // Fills the lists; runs once a load, before the column is cleared.
  virtual void BuildLists() {}
  // The buttons follow the state of the program; a page with more buttons adds them.
  virtual void EnableCommands(bool enabled) { EnableButtons(enabled); }
  // Puts a caption on every control of a table of ids.
  struct CaptionRow {
    Control* control;
    int text_id;
  };
  void SetCaptions(const std::vector<CaptionRow>& rows);
  // A list in the page's font.
  void FillList(ComboBox& list, const std::vector<std::string>& items);
};

}  // namespace vlt
