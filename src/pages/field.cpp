#include "pages/field.h"

#include <algorithm>
#include <array>

#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/codecs.h"
#include "values/encode.h"
#include "values/number_text.h"

namespace vlt {
namespace {

double DecodeNumber(const Field& field, std::span<const std::uint8_t> reply, std::size_t start) {
  switch (field.wire) {
    case Wire::kInt16:
      return BytesToInt16(reply, start);
    case Wire::kUInt16:
      return BytesToUInt16(reply, start);
    case Wire::kInt32:
      return BytesToInt32(reply, start);
    case Wire::kDouble:
      break;
  }
  return BytesToDouble(reply, start);
}

template <std::size_t N>
std::vector<std::uint8_t> Bytes(const std::array<std::uint8_t, N>& bytes) {
  return {bytes.begin(), bytes.end()};
}

double TenTo(int power) {
  double result = 1;
  for (int i = 0; i < power; ++i) result *= 10;
  return result;
}

std::string Hex4(unsigned address) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string hex(4, '0');
  for (int i = 3; i >= 0; --i, address >>= 4) hex[static_cast<std::size_t>(i)] = kDigits[address & 0xF];
  return hex;
}

// An index as the slots hold it; a text that is none selects nothing.
int IndexOfSlot(const std::string& slot) {
  const auto number = ParseNumber(slot);
  return number && *number >= 0 && *number < 1000 ? static_cast<int>(*number) : -1;
}

}  // namespace

Control& Field::Entry() const {
  if (text != nullptr) return *text;
  if (list != nullptr) return *list;
  return *options[0];
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

Field CodeField(CheckBox& box, ComboBox& list, std::uint16_t address, int caption, const char* key) {
  return {.box = &box, .list = &list, .address = address, .caption = caption, .key = key};
}

Field Kept(Field field, const char* key, const char* unit_key) {
  field.key = key;
  field.unit_key = unit_key;
  return field;
}

std::string SlotText(const Field& field) {
  if (field.text != nullptr) return std::string(Trim(field.text->Text()));
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

std::string DecodeText(const Field& field, int unit_flag, std::span<const std::uint8_t> reply,
                       std::size_t start) {
  const double number = DecodeNumber(field, reply, start);
  if (field.show == ShowAs::kDigits) return DigitsText(number, field.digits);
  if (field.show == ShowAs::kPlain) return GeneralText(number);
  const int decimals = field.decimals.In(unit_flag);
  return FixedText(number / TenTo(decimals), decimals);
}

int DecodeCode(const Field& field, std::span<const std::uint8_t> reply, std::size_t start) {
  return field.wire == Wire::kUInt16 ? BytesToUInt16(reply, start) : BytesToInt16(reply, start);
}

std::optional<std::vector<std::uint8_t>> EncodeText(const Field& field, int unit_flag,
                                                    const std::string& text) {
  const std::optional<double> number = ParseNumber(text);
  if (!number) return std::nullopt;
  if (field.wire == Wire::kDouble) return Bytes(DoubleToBytes(*number));
  const int decimals = field.decimals.In(unit_flag);
  if (field.wire == Wire::kInt32) {
    const auto scaled = ScaledInt32(*number, decimals);
    return scaled ? std::optional(Bytes(Int32ToBytes(*scaled))) : std::nullopt;
  }
  const auto scaled =
      field.wire == Wire::kUInt16 ? ScaledUInt16(*number, decimals) : ScaledInt16(*number, decimals);
  return scaled ? std::optional(Bytes(Int16ToBytes(*scaled))) : std::nullopt;
}

std::vector<std::uint8_t> EncodeCode(int code) { return Bytes(Int16ToBytes(code)); }

std::string FieldHint(const App& app, const Field& field) {
  constexpr int kTypes[] = {text::kTypeInt16, text::kTypeUInt16, text::kTypeInt32, text::kTypeDouble};
  return FormatText(app.Text(text::kTipRegister),
                    {Hex4(field.address), app.Text(kTypes[static_cast<int>(field.wire)])});
}

}  // namespace vlt
