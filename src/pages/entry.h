// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter on its page, said once: its tick, what is typed or chosen, and the label of its unit. An entry
// binds itself: the fields of a page are those that its entries have put down.
#pragma once

#include <optional>
#include <vector>

#include "pages/field.h"

namespace vlt {

// The fields that the entries of a page put down while it is made.
using Fields = std::vector<Field>;

// As the rows of one group stand in the catalogue.
Fields InRowOrder(Fields fields);

// The tick of an entry; a base, so that it is made before the entry.
struct EntryTick {
  CheckBox box;
};

// A name, with a place where the control lies in an array.
struct LabelName {
  const char* name;
  int index = Control::kNoIndex;
};

// A number or characters. With a label the row's unit is shown behind it.
class NumberEntry : public EntryTick, public TextBox {
 public:
  NumberEntry(ControlOwner& page, Fields& fields, const Parameter& row, const char* box_name,
              const char* text_name, std::optional<LabelName> unit_name = {})
      : EntryTick{{page, box_name}}, TextBox(page, text_name) {
    if (unit_name) unit.emplace(page, unit_name->name, unit_name->index);
    fields.push_back(Bind(row, box, *this, unit ? &*unit : nullptr));
  }
  std::optional<Label> unit;
};

// A list, which page loading fills with the codes that the meter offers.
class ListEntry : public EntryTick, public ComboBox {
 public:
  ListEntry(ControlOwner& page, Fields& fields, const Parameter& row, const char* box_name,
            const char* list_name)
      : EntryTick{{page, box_name}}, ComboBox(page, list_name) {
    fields.push_back(Bind(row, box, *this));
  }
};

}  // namespace vlt
