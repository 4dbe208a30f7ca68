// A parameter is one row of data. The page framework reads, writes, reads back, keeps and restores a page by
// walking its rows.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "state/app.h"

namespace vlt {

// What a register holds. All are big-endian; a double takes four registers, a 32-bit value two.
enum class Wire { kInt16, kUInt16, kInt32, kDouble };

// How a number is shown.
enum class ShowAs {
  kDecimals,  // as many decimals as the scale has: "0.00"
  kPlain,     // plain decimal text
  kDigits,    // cut to so many significant digits, plain decimal text
};

// Decimals of a scaled value by unit system; the integer on the wire is the value times ten to that power.
struct Decimals {
  int metric = 0;
  int english = 0;
  int In(int unit_flag) const { return unit_flag == 0 ? metric : english; }
};

// Which unit a value carries. The first four are the entries of BaseUnitNames; the next four are known to the
// pages that show them (see unit_text.h).
enum class UnitKind {
  kLength,
  kVelocity,
  kViscosity,
  kVoltage,
  kFlow,
  kTotal,
  kHeatFlow,
  kHeatTotal,
  kNone,
  kOwn
};

struct Field {
  CheckBox* box = nullptr;
  // The entry: a text box for a number, a list for a code, or two options for a code of 0 or 1.
  TextBox* text = nullptr;
  ComboBox* list = nullptr;
  std::array<OptionButton*, 2> options = {};

  std::uint16_t address = 0;  // register of CH1; a byte address
  Wire wire = Wire::kInt16;
  Decimals decimals = {};
  ShowAs show = ShowAs::kDecimals;
  int digits = 0;                // for ShowAs::kDigits
  int caption = 0;               // text id of the parameter's name, used in messages
  std::uint8_t function = 0x03;  // reading function
  bool by_channel = true;        // the channel's base is added to the address
  int group = 0;                 // for a page whose rows lie in several places
  bool read_only = false;

  Label* unit = nullptr;  // shows the unit between brackets
  UnitKind unit_kind = UnitKind::kNone;

  const char* key = nullptr;       // of the parameter file
  const char* unit_key = nullptr;  // of the unit caption
  bool text_of_list = false;       // the file keeps the text of the list's entry instead of its index
  const char* no_option = "-1";    // what the file keeps while neither option is set

  // For lists whose entries are not the codes in order; both empty when they are.
  std::function<int(int)> code_of_index = nullptr;
  std::function<int(int)> index_of_code = nullptr;

  Control& Entry() const;
  // The selected entry of the list or the set option, or -1. Not for numbers.
  int Selected() const;
  // Selects an entry or sets an option; an index that there is not selects nothing.
  void Select(int index) const;
  void SetEntryEnabled(bool enabled) const;
  bool Ticked() const { return box->Enabled() && box->Ticked(); }
  // Registers of 16 bits that the value takes.
  int Words() const { return wire == Wire::kDouble ? 4 : wire == Wire::kInt32 ? 2 : 1; }
};

// A list whose entries are the codes of a 16-bit register in order.
Field CodeField(CheckBox& box, ComboBox& list, std::uint16_t address, int caption, const char* key);
// The field with its keys of the parameter file; `unit_key` is null for one without a unit.
Field Kept(Field field, const char* key, const char* unit_key);

// The text that the entry shows for the value at `start` of a reply.
std::string DecodeText(const Field& field, int unit_flag, std::span<const std::uint8_t> reply,
                       std::size_t start);
// The code at `start` of a reply.
int DecodeCode(const Field& field, std::span<const std::uint8_t> reply, std::size_t start);
// The register bytes of a typed text, or nothing when the text is no number or does not fit the register.
std::optional<std::vector<std::uint8_t>> EncodeText(const Field& field, int unit_flag,
                                                    const std::string& text);
std::vector<std::uint8_t> EncodeCode(int code);

// What the parameter file keeps of the entry, and back.
std::string SlotText(const Field& field);
void ShowSlot(const Field& field, const std::string& slot);

// What a tooltip says of a parameter: register and value type.
std::string FieldHint(const App& app, const Field& field);

}  // namespace vlt
