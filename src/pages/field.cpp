// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/field.h"

#include <algorithm>

#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/hex_digits.h"
#include "values/number_text.h"

namespace vlt {
namespace {

// An index as the slots hold it; a text that is none selects nothing.
int IndexOfSlot(const std::string& slot) {
  const auto number = ParseWhole(slot);
  return number && *number >= 0 && *number < 1000 ? *number : -1;
}

// A typed number as the file keeps those of four digits; what is no whole number stays as it is.
std::string PaddedText(const std::string& text) {
  const auto number = ParseWhole(text);
  return number ? ZeroPadded(*number, 4) : text;
}

}  // namespace

Control& Field::Entry() const {
  if (text != nullptr) return *text;
  if (list != nullptr) return *list;
  return *options[0];
}

bool Field::HasEntry(const Control& control) const {
  return &control == text || &control == list || &control == options[0] || &control == options[1];
}

std::string Field::ShownText() const {
  if (text != nullptr) return std::string(Trim(text->Text()));
  if (list != nullptr) return list->Text();
  const int selected = Selected();
  return selected < 0 ? std::string() : options[static_cast<std::size_t>(selected)]->Caption();
}

int Field::Selected() const {
  if (list != nullptr) return list->ListIndex();
  if (options[0]->Value()) return 0;
  return options[1]->Value() ? 1 : -1;
}

void Field::Select(int index) const {
  if (list != nullptr) {
    list->SetListIndex(index);
    return;
  }
  for (int i = 0; i < 2; ++i) options[static_cast<std::size_t>(i)]->SetValue(i == index);
}

void Field::SetEntryEnabled(bool enabled) const {
  if (text == nullptr && list == nullptr) {
    for (OptionButton* option : options) option->SetEnabled(enabled);
  } else {
    Entry().SetEnabled(enabled);
  }
}

int Field::CodeOf(int index) const {
  if (codes.empty() || index < 0) return index;
  return codes.at(static_cast<std::size_t>(index));
}

int Field::IndexOf(int code) const {
  if (parameter->any_is_second && code != 0) return 1;
  if (codes.empty()) return code;
  const auto at = std::find(codes.begin(), codes.end(), code);
  return at == codes.end() ? -1 : static_cast<int>(at - codes.begin());
}

void Field::Mark(const std::string& reason) const { Entry().SetMark(reason); }

Field Bind(const Parameter& parameter, CheckBox& box, TextBox& text, Label* unit) {
  Field field;
  field.parameter = &parameter;
  field.box = &box;
  field.text = &text;
  field.unit = unit;
  return field;
}

Field Bind(const Parameter& parameter, CheckBox& box, ComboBox& list) {
  Field field;
  field.parameter = &parameter;
  field.box = &box;
  field.list = &list;
  return field;
}

Field Bind(const Parameter& parameter, CheckBox& box, OptionButton& first, OptionButton& second) {
  Field field;
  field.parameter = &parameter;
  field.box = &box;
  field.options = {&first, &second};
  return field;
}

std::string SlotText(const Field& field) {
  if (field.text != nullptr) {
    const std::string text(Trim(field.text->Text()));
    return field.parameter->show == Show::kPadded ? PaddedText(text) : text;
  }
  if (field.text_of_list) return std::string(Trim(field.list->Text()));
  const int selected = field.Selected();
  if (selected < 0 && field.list == nullptr) return field.no_option;
  return std::to_string(selected);
}

void ShowSlot(const Field& field, const std::string& slot) {
  if (field.text != nullptr) {
    field.text->SetText(slot);
  } else if (field.text_of_list) {
    const std::vector<std::string>& items = field.list->Items();
    const auto at = std::find(items.begin(), items.end(), slot);
    field.list->SetListIndex(at == items.end() ? -1 : static_cast<int>(at - items.begin()));
  } else {
    field.Select(IndexOfSlot(slot));
  }
}

std::string ValueText(const Field& field) {
  if (field.text != nullptr) return std::string(Trim(field.text->Text()));
  const int selected = field.Selected();
  return selected < 0 ? std::string() : std::to_string(field.CodeOf(selected));
}

Encoded EncodeField(const App& app, const Field& field) {
  if (field.text == nullptr) {
    return field.Selected() < 0 ? Encoded{} : Encoded{EncodeCode(field.CodeOf(field.Selected()))};
  }
  const std::string_view text = Trim(field.text->Text());
  return text.empty() ? Encoded{} : EncodeText(*field.parameter, app.state, text);
}

std::string FieldHint(const App& app, const Parameter& row, int address) {
  constexpr int kTypes[] = {text::kTypeInt16,  text::kTypeUInt16,     text::kTypeInt32,
                            text::kTypeDouble, text::kTypeCharacters, text::kTypeInt16};
  return FormatText(app.Text(text::kTipRegister), {HexDigits(static_cast<unsigned>(address), 4),
                                                   app.Text(kTypes[static_cast<std::size_t>(row.wire)])});
}

}  // namespace vlt
