// SPDX-License-Identifier: GPL-3.0-or-later
// What the calculator takes from the process page. All that stands in the window is of one pipe afterwards:
// what the page does not know of it is emptied, and so are the result and the drawing of another one.
#include <algorithm>

#include "calc/frm_calc.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_pages.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

using State = ProcessValue::State;

constexpr std::size_t kNamesOfLine = 6;
constexpr const char* kBetweenSentences = "   ";

bool IsThere(const ProcessValue& value) { return value.state == State::kThere; }

bool IsSame(const std::string& a, const std::string& b) {
  const auto number = ParseNumber(a);
  return a == b || (number && number == ParseNumber(b));
}

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) text += i % kNamesOfLine == 0 ? ",\n" : ", ";
    text += names[i];
  }
  return text;
}

std::string InOneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

}  // namespace

const frmCalc::Entry* frmCalc::EntryOf(SpacingField field) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.field == field; });
  return found == entries_.end() ? nullptr : &*found;
}

const frmCalc::Choice* frmCalc::ChoiceOf(SpacingField field) const {
  const auto found =
      std::find_if(choices_.begin(), choices_.end(), [&](const Choice& list) { return list.field == field; });
  return found == choices_.end() ? nullptr : &*found;
}

void frmCalc::cmdTake_Click() {
  std::vector<ProcessValue> values = ReadProcessValues(app_, unit_flag_);
  if (std::none_of(values.begin(), values.end(), IsThere)) {
    const std::string why = NotTaken(values);
    const bool knows_nothing = std::all_of(values.begin(), values.end(),
                                           [](const auto& value) { return value.state == State::kNotThere; });
    app_.Show(knows_nothing ? app_.Text(text::kProcessEmpty)
                            : FormatText(app_.Text(text::kTakenNone), {why}));
    return;
  }
  if (const std::string goes = WhatGoes(values); !goes.empty()) {
    if (!app_.AskOkCancel(FormatText(app_.Text(text::kTypedGoes), {goes}))) return;
    values = ReadProcessValues(app_, unit_flag_);
  }
  changing_ = true;
  for (const ProcessValue& value : values) Put(value);
  entered_.clear();
  if (executed_ && !(*executed_ == Inputs())) ForgetResult();
  picSpacing.SetSheet({});
  changing_ = false;
  InputChanged();
  TellTaken(values);
}

std::string frmCalc::WhatGoes(const std::vector<ProcessValue>& values) const {
  std::string goes;
  const auto add = [&](const Label& caption, const std::string& content) {
    goes += (goes.empty() ? "" : "\n") + caption.Caption() + " " + content;
  };
  for (const ProcessValue& value : values) {
    if (const Choice* list = ChoiceOf(value.field)) {
      const bool stays = IsThere(value) && value.index == list->list.ListIndex();
      if (entered_.contains(&list->list) && list->list.ListIndex() >= 0 && !stays)
        add(list->caption, list->list.Text());
    } else if (const Entry* entry = EntryOf(value.field)) {
      const std::string typed(Trim(entry->text.Text()));
      const bool stays = IsThere(value) && IsSame(typed, value.shown);
      if (entered_.contains(&entry->text) && !typed.empty() && !stays)
        add(entry->caption, typed + " " + entry->unit.Caption());
    }
  }
  return goes;
}

void frmCalc::Put(const ProcessValue& value) {
  if (const Choice* list = ChoiceOf(value.field))
    return list->list.SetListIndex(IsThere(value) ? value.index : -1);
  if (const Entry* entry = EntryOf(value.field)) entry->text.SetText(IsThere(value) ? value.shown : "");
}

std::string frmCalc::NotTaken(const std::vector<ProcessValue>& values) const {
  std::vector<std::string> names;
  for (const ProcessValue& value : values) {
    const Entry* entry = EntryOf(value.field);
    if (IsThere(value) || (entry != nullptr && entry->text.Locked())) continue;
    const std::string caption = FieldCaption(value.field, Texts());
    if (value.state == State::kNotThere) {
      names.push_back(caption);
    } else if (value.state == State::kOtherPipe) {
      names.push_back(FormatText(app_.Text(text::kOfOtherPipe), {caption, value.shown}));
    } else {
      names.push_back(FormatText(app_.Text(text::kNotOfferedHere), {caption, value.shown}));
    }
  }
  return Joined(names);
}

void frmCalc::TellTaken(const std::vector<ProcessValue>& values) {
  std::vector<std::string> names;
  for (const ProcessValue& value : values) {
    if (IsThere(value)) names.push_back(FieldCaption(value.field, Texts()));
  }
  const std::string channel = app_.state.ProcessChannel == 1 ? "2" : "1";
  std::vector<std::string> told = {FormatText(app_.Text(text::kTaken), {channel, Joined(names)})};
  if (const std::string missing = NotTaken(values); !missing.empty()) {
    told.push_back(FormatText(app_.Text(text::kNotTaken), {missing}));
  }
  std::string status, note;
  for (const std::string& sentence : told) {
    status += (status.empty() ? "" : kBetweenSentences) + InOneLine(sentence);
    note += (note.empty() ? "" : "\n") + sentence;
  }
  lblNote.SetCaption(note);
  app_.Status(status);
}

}  // namespace vlt
