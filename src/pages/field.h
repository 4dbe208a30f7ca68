// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter on a page: its row of the catalogue, and the controls that it is bound to.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "meter/parameter.h"
#include "state/app.h"

namespace vlt {

struct Field {
  const Parameter* parameter = nullptr;
  CheckBox* box = nullptr;
  // The entry: a text box for a number, a list for a code, or two options for a code of 0 or 1.
  TextBox* text = nullptr;
  ComboBox* list = nullptr;
  std::array<OptionButton*, 2> options = {};
  Label* unit = nullptr;  // shows the unit between brackets

  bool text_of_list = false;     // the file keeps the text of the list's entry instead of its index
  const char* no_option = "-1";  // what the file keeps while neither option is set
  std::vector<int> codes = {};   // that the entries of the list stand for; empty while it is not filled

  Control& Entry() const;
  // Whether a control is the entry, or one of its options.
  bool HasEntry(const Control& control) const;
  // The selected entry of the list or the set option, or -1. Not for numbers.
  int Selected() const;
  // Selects an entry or sets an option; an index that there is not selects nothing.
  void Select(int index) const;
  void SetEntryEnabled(bool enabled) const;
  bool Ticked() const { return box->Enabled() && box->Ticked(); }

  // The code that a selected entry or option stands for, and the entry or option of a code; -1 for none.
  int CodeOf(int index) const;
  int IndexOf(int code) const;
  // What a person reads in the entry: its text, the entry of the list, the caption of the set option.
  std::string ShownText() const;
  // What a failed exchange or a value that can't be sent leaves at the entry; empty takes it away.
  void Mark(const std::string& reason) const;
};

// A number or characters; `unit` shows the row's unit.
Field Bind(const Parameter& parameter, CheckBox& box, TextBox& text, Label* unit = nullptr);
// A list that page loading fills with the codes that the meter offers.
Field Bind(const Parameter& parameter, CheckBox& box, ComboBox& list);
// Two options for the codes 0 and 1.
Field Bind(const Parameter& parameter, CheckBox& box, OptionButton& first, OptionButton& second);

// What the parameter file keeps of the entry, and back.
std::string SlotText(const Field& field);
void ShowSlot(const Field& field, const std::string& slot);

// The value that the entry holds, as text: of a list and of options the code, whatever entries are offered;
// empty when there is none.
std::string ValueText(const Field& field);
// The same as register bytes; none when there is no value.
Encoded EncodeField(const App& app, const Field& field);

// What a tooltip says of a parameter whose register lies at `address`: register and value type.
std::string FieldHint(const App& app, const Parameter& row, int address);

}  // namespace vlt
