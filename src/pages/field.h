// A parameter is one row of data. The page framework reads, writes, reads back, keeps and restores a page by
// walking its rows.
#pragma once

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
  // The entry control: a text box for a number, a list for a code.
  TextBox* text = nullptr;
  ComboBox* list = nullptr;

  std::uint16_t address = 0;  // register of CH1; a byte address
  Wire wire = Wire::kInt16;
  Decimals decimals = {};
  ShowAs show = ShowAs::kDecimals;
  int digits = 0;                // for ShowAs::kDigits
  int caption = 0;               // text id of the parameter's name, used in messages
  std::uint8_t function = 0x03;  // reading function
  bool by_channel = true;        // the channel's base is added to the address
  bool read_only = false;

  Label* unit = nullptr;  // shows the unit between brackets
  UnitKind unit_kind = UnitKind::kNone;

  const char* key = nullptr;       // of the parameter file
  const char* unit_key = nullptr;  // of the unit caption

  // For lists whose entries are not the codes in order; both empty when they are.
  std::function<int(int)> code_of_index = nullptr;
  std::function<int(int)> index_of_code = nullptr;

  Control& Entry() const { return text != nullptr ? static_cast<Control&>(*text) : *list; }
  bool Ticked() const { return box->Enabled() && box->Ticked(); }
  // Registers of 16 bits that the value takes.
  int Words() const { return wire == Wire::kDouble ? 4 : wire == Wire::kInt32 ? 2 : 1; }
};

// The text that the entry shows for the value at `start` of a reply.
std::string DecodeText(const Field& field, int unit_flag, std::span<const std::uint8_t> reply,
                       std::size_t start);
// The code at `start` of a reply.
int DecodeCode(const Field& field, std::span<const std::uint8_t> reply, std::size_t start);
// The register bytes of a typed text, or nothing when the text is no number or does not fit the register.
std::optional<std::vector<std::uint8_t>> EncodeText(const Field& field, int unit_flag,
                                                    const std::string& text);
std::vector<std::uint8_t> EncodeCode(int code);

// What a tooltip says of a parameter: register and value type.
std::string FieldHint(const App& app, const Field& field);

}  // namespace vlt
