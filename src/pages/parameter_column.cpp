#include "pages/parameter_column.h"

#include <algorithm>
#include <stdexcept>

#include "link/device_queries.h"
#include "link/modbus.h"
#include "link/port.h"
#include "link/store.h"
#include "state/form_lock.h"
#include "values/input_check.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);
constexpr std::size_t kDataStart = 3;  // of a read reply

std::string InBrackets(const std::string& unit) { return "[" + unit + "]"; }

// During a run the interface is locked already, and an exchange would run into that of the run.
bool IsLineTaken(App& app) { return app.state.UiLocked || !IsMonitorIdle(app); }

// What GetChannelConfig last found.
int KnownChannelConfig(const SharedState& state) {
  if (state.SpecClass != 0) return state.SpecClass == 1 ? 1 : -1;
  return state.PathMode >= 0 && state.PathMode <= 2 ? state.PathMode + 1 : -1;
}

void AskOnFreeLine(App& app, Form& page, const std::function<void()>& ask) {
  FormLock(app, page, 0);
  app.windows.SetMousePointer(kHourglassPointer);
  if (OpenPort(app)) ask();
  app.windows.SetMousePointer(kNormalPointer);
  FormLock(app, page, 1);
}

}  // namespace

void CheckNumber(App& app, TextBox& box) {
  if (IsNumericText(box.Text(), static_cast<int>(CharCount(box.Text()))) >= 0) return;
  box.SelectAll();
  app.Show(app.Text(3920));
  box.SetFocus();
}

void Depend(CheckBox& box, Control& entry, bool on) {
  box.SetEnabled(on);
  entry.SetEnabled(on && box.Ticked());
}

void AskUnderLock(App& app, Form& page, const std::function<void()>& ask) {
  if (!IsLineTaken(app)) AskOnFreeLine(app, page, ask);
}

int AskChannelConfig(App& app, Form& page) {
  if (IsLineTaken(app)) return KnownChannelConfig(app.state);
  int config = -1;
  AskOnFreeLine(app, page, [&] { config = GetChannelConfig(app); });
  return config;
}
ParameterColumn::ParameterColumn(App& app, Form& page, ColumnParts parts)
    : app_(app), page_(page), parts_(parts) {}

void ParameterColumn::SetFields(std::vector<Field> fields) {
  parts_.read.on_click = [this] { ReadParameter_Click(); };
  parts_.set.on_click = [this] { SetParameter_Click(); };
  parts_.save.on_click = [this] { SaveParameter_Click(); };
  parts_.all.on_click = [this] { chkCheck_Click(); };
  fields_ = std::move(fields);
  for (const Field& field : fields_) {
    Tie(field);
    slots_.push_back(field.key != nullptr ? SlotIndex(parts_.section, field.key) : kNoSlot);
    unit_slots_.push_back(field.unit_key != nullptr ? SlotIndex(parts_.section, field.unit_key) : kNoSlot);
  }
}

void ParameterColumn::Tie(const Field& field) {
  CheckBox& box = *field.box;
  if (field.text != nullptr) {
    TextBox& text = *field.text;
    text.SetLocked(field.read_only);
    text.on_lost_focus = [this, &text] { CheckNumber(app_, text); };
  }
  // A box may lead several entries; each of them follows it.
  const auto before = box.on_click;
  box.on_click = [this, before, &field] {
    if (before) before();
    field.SetEntryEnabled(field.Ticked());
    if (field.Ticked() && field.text != nullptr) CheckNumber(app_, *field.text);
  };
}

const Field& ParameterColumn::FieldOf(const Control& entry) const {
  for (const Field& field : fields_) {
    if (&field.Entry() == &entry) return field;
  }
  throw std::out_of_range("no field for " + entry.FullName());
}

bool ParameterColumn::IsAnyTicked() const {
  return std::any_of(fields_.begin(), fields_.end(), [](const Field& field) { return field.Ticked(); });
}

void ParameterColumn::chkCheck_Click() { All_OnOff(parts_.all.Value()); }

std::vector<CheckBox*> ParameterColumn::Boxes() {
  std::vector<CheckBox*> boxes;
  for (const Field& field : fields_) {
    if (boxes.empty() || boxes.back() != field.box) boxes.push_back(field.box);
  }
  return boxes;
}

void ParameterColumn::All_OnOff(int value) {
  for (CheckBox* box : Boxes()) box->SetValue(value == 1 ? 1 : 0);
  if (value == 1) {
    Text_Box_Enable();
  } else {
    Text_Box_Able();
  }
}

void ParameterColumn::Text_Box_Enable() {
  for (const Field& field : fields_) field.SetEntryEnabled(field.box->Enabled());
}

void ParameterColumn::Text_Box_Able() {
  for (const Field& field : fields_) field.SetEntryEnabled(false);
}

void ParameterColumn::ClearControls() {
  for (const Field& field : fields_) {
    if (field.text != nullptr) {
      field.text->SetText("");
    } else {
      field.Select(-1);
    }
    field.SetEntryEnabled(false);
  }
  parts_.all.SetValue(0);
  All_OnOff(0);
}

void ParameterColumn::SlotsToControls() {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    if (slots_[i] != kNoSlot) RestoreEntry(fields_[i]);
  }
  ApplyUnitCaptions();
}

void ParameterColumn::RestoreEntry(const Field& field) {
  ShowSlot(field, app_.slots.At(parts_.section, field.key));
}

void ParameterColumn::ControlsToSlots() {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    if (slots_[i] != kNoSlot) app_.slots[slots_[i]] = SlotText(fields_[i]);
    if (unit_slots_[i] != kNoSlot) app_.slots[unit_slots_[i]] = Trim(fields_[i].unit->Caption());
  }
}

void ParameterColumn::SetUnitCaption(const Field& field) {
  field.unit->SetCaption(InBrackets(UnitText(field)));
}

void ParameterColumn::ShowUnitsOf(UnitKind kind) {
  for (const Field& field : fields_) {
    if (field.unit != nullptr && field.unit_kind == kind) SetUnitCaption(field);
  }
}

void ParameterColumn::ForgetUnitCaptions() {
  for (const std::size_t slot : unit_slots_) {
    if (slot != kNoSlot) app_.slots[slot].clear();
  }
}

void ParameterColumn::ApplyUnitCaptions() {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    if (unit_slots_[i] == kNoSlot) continue;
    const std::string& cached = app_.slots[unit_slots_[i]];
    if (cached == "0") {
      SetUnitCaption(fields_[i]);
    } else if (!cached.empty()) {
      fields_[i].unit->SetCaption(cached);
    }
  }
}

void ParameterColumn::ShowNames() {
  for (const Field& field : fields_) field.box->SetCaption(app_.Text(field.caption));
}

void ParameterColumn::ShowUnits() {
  for (const Field& field : fields_) {
    field.Entry().SetHint(FieldHint(app_, field));
    field.box->SetHint(FieldHint(app_, field));
    if (field.unit != nullptr) SetUnitCaption(field);
  }
}

void ParameterColumn::EnableButtons(bool enabled) {
  for (Control* control : {static_cast<Control*>(&parts_.read), static_cast<Control*>(&parts_.set),
                           static_cast<Control*>(&parts_.save), static_cast<Control*>(&parts_.all)}) {
    control->SetEnabled(enabled);
  }
}

std::string ParameterColumn::UnitText(const Field& field) {
  return app_.state.BaseUnitNames.at(static_cast<std::size_t>(field.unit_kind));
}

void ParameterColumn::LearnUnit(const Field&) {
  if (!FirstInThisRead(0)) return;
  ReadUnitSystem(app_);
  BuildBaseUnitNames(app_);
}

void ParameterColumn::FieldWasRead(const Field&, int) {}

std::string ParameterColumn::FailureName(const Field& field) { return app_.Text(field.caption); }

// --- the exchanges -------------------------------------------------------------------------------------

bool ParameterColumn::MayStart() {
  if (!AnythingSelected()) return false;
  if (ChannelIsChosen()) return true;
  app_.Show(app_.Text(3931));
  return false;
}

void ParameterColumn::Begin(int text_id) {
  FormLock(app_, page_, 0);
  app_.windows.SetMousePointer(kHourglassPointer);
  app_.Status(app_.Text(text_id));
}

void ParameterColumn::End(const std::string& text) {
  FormLock(app_, page_, 1);
  app_.windows.SetMousePointer(kNormalPointer);
  app_.Status(text);
}

void ParameterColumn::PortFailed() {
  app_.Show(app_.Text(3950), MessageIcon::kStop);
  End(CommunicationErrorText(app_));
}

void ParameterColumn::ReadParameter_Click() {
  if (!MayStart()) return;
  if (!ReadAfterSet) Begin(parts_.read_started);
  if (!OpenPort(app_)) {
    PortFailed();
    return;
  }
  read_marks_.clear();
  ReadBlocks();
  if (ReadAfterSet) return;
  End(app_.Text(parts_.read_completed) + " " + app_.state.LastErrorText);
}

bool ParameterColumn::Exchange(int function, int start, int registers, Frame& reply) {
  Frame request = ReadRequest(StationNumber(app_), function, start, registers);
  reply = ReplyFor(request);
  return SendReceive(app_, request, reply);
}

bool ParameterColumn::ReadBlock(int function, int start, int registers) {
  Frame reply;
  if (!Exchange(function, start, registers, reply)) return false;
  ShowBlock(function, start, registers, reply);
  return true;
}

void ParameterColumn::ShowBlock(int function, int start, int registers, const Frame& reply) {
  for (const Field& field : fields_) {
    const int offset = AddressOf(field) - start;
    if (field.function != function || offset < 0 || offset + 2 * field.Words() > 2 * registers) continue;
    if (FieldTakesPart(field)) ShowValue(field, reply, kDataStart + static_cast<std::size_t>(offset));
  }
}

void ParameterColumn::ShowValue(const Field& field, const Frame& reply, std::size_t at) {
  int code = 0;
  if (field.unit != nullptr) LearnUnit(field);
  if (field.text != nullptr) {
    field.text->SetText(DecodeText(field, app_.state.UnitFlag, reply, at));
  } else {
    code = DecodeCode(field, reply, at);
    field.Select(field.index_of_code ? field.index_of_code(code) : code);
  }
  if (field.unit != nullptr) {
    SetUnitCaption(field);
    if (field.unit_key != nullptr) app_.slots.At(parts_.section, field.unit_key).clear();
  }
  FieldWasRead(field, code);
}

void ParameterColumn::SetParameter_Click() {
  if (!MayStart()) return;
  Begin(parts_.set_started);
  if (!OpenPort(app_)) {
    PortFailed();
    return;
  }
  const Outcome outcome = WriteFields();
  if (outcome == Outcome::kBadNumber) {
    End(app_.Text(4965));
    return;
  }
  if (outcome == Outcome::kGoOn) {
    ReadAfterSet = true;
    ReadParameter_Click();
    ReadAfterSet = false;
  }
  End(app_.Text(parts_.set_completed) + " " + app_.state.LastErrorText);
}

ParameterColumn::Outcome ParameterColumn::WriteFields() { return WriteInOrder(write_order_); }

ParameterColumn::Outcome ParameterColumn::WriteInOrder(const std::vector<const Control*>& entries) {
  for (const Control* entry : entries) {
    const Outcome outcome = WriteField(FieldOf(*entry));
    if (outcome != Outcome::kGoOn) return outcome;
  }
  return Outcome::kGoOn;
}

ParameterColumn::Outcome ParameterColumn::WriteField(const Field& field) {
  if (!field.Ticked()) return Outcome::kGoOn;
  if (field.text == nullptr) {
    const int index = field.Selected();
    if (index < 0) return Outcome::kGoOn;
    const int code = field.code_of_index ? field.code_of_index(index) : index;
    return WriteRegisters(AddressOf(field), EncodeCode(code), FailureName(field));
  }
  const std::string text(Trim(field.text->Text()));
  if (text.empty()) return Outcome::kGoOn;
  const auto data = EncodeText(field, app_.state.UnitFlag, text);
  if (!data) return Outcome::kBadNumber;
  return WriteRegisters(AddressOf(field), *data, FailureName(field));
}

ParameterColumn::Outcome ParameterColumn::WriteRegisters(int address, const std::vector<std::uint8_t>& data,
                                                         const std::string& name) {
  Frame request = WriteRegistersRequest(StationNumber(app_), address, data);
  Frame reply = ReplyFor(request);
  if (SendReceive(app_, request, reply) && EchoWordEqual(reply, static_cast<int>(data.size() / 2))) {
    return Outcome::kGoOn;
  }
  const bool go_on = app_.AskOkCancel(name + " " + app_.Text(3930) + "\n" + app_.Text(4170));
  return go_on ? Outcome::kGoOn : Outcome::kCancelled;
}

void ParameterColumn::SaveParameter_Click() {
  Begin(4030);
  const bool saved = SaveToDevice(app_);
  app_.windows.SetMousePointer(kNormalPointer);
  if (!saved) app_.Show(app_.Text(3960), MessageIcon::kStop);
  End(app_.Text(4040) + " " + app_.state.LastErrorText);
}

}  // namespace vlt
