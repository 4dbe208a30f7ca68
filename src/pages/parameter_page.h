// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter page: the four commands, and one column of parameters or several that follow the life of the
// window.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "pages/entry.h"
#include "pages/page.h"
#include "pages/parameter_column.h"

namespace vlt {

class ParameterPage : public PageForm, public ColumnRules {
 public:
  CheckBox chkCheck{*this, "chkCheck"};
  PushButton ReadParameter{*this, "ReadParameter"};
  PushButton SetParameter{*this, "SetParameter"};
  PushButton SaveParameter{*this, "SaveParameter"};

  // The page's own column first.
  const std::vector<std::unique_ptr<ParameterColumn>>& Columns() const { return columns_; }

  void SetteiHannei() override;
  // Copies the controls into the slots.
  void Taihi() override;
  void Form_Load() override;
  void Form_Activate() override;
  void Form_Unload(int& cancel) override;
  void Entered(const Control& control) override;
  // Where the values come from, and in the title how many were typed and not set.
  void Settled() override;

 protected:
  // Text ids of a page.
  struct Texts {
    int title = 0;
    int set_started = 0;
    int set_completed = 0;
    int read_started = 0;
    int read_completed = 0;
    int not_set = 3930;
  };
  ParameterPage(App& app, std::string name, const Texts& texts);

  // The page's own column.
  using ColumnRules::column;
  // The page's entries become the fields of its own column, in the order of the catalogue. Called by the
  // constructor of the page when they are there.
  void BindEntries();
  // One more, whose rules and controls live as long as the page. Called by its constructor.
  ParameterColumn& AddColumn(const ColumnParts& parts, ColumnRules& rules);

  // Fills the lists; runs once a load, before the columns are cleared. By default those with a code table.
  virtual void BuildLists();
  // The buttons follow the state of the program; a page with more buttons adds them.
  virtual void EnableCommands(bool enabled);

  // A control and the text id of its caption.
  struct CaptionRow {
    Control* control;
    int text_id;
  };
  // Title, commands, names and units of the columns, and the page's own captions, in the language in force;
  // the page's font for all of it; greatest lengths and tooltips.
  void SetPageCaptions(const std::vector<CaptionRow>& own);
  // A list in the page's font.
  void FillList(ComboBox& list, const std::vector<std::string>& items);

  Fields fields_;  // that entries put down, until BindEntries

 private:
  Texts texts_;
  std::vector<std::unique_ptr<ParameterColumn>> columns_;
};

}  // namespace vlt
