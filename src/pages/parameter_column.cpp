// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/parameter_column.h"

#include <algorithm>
#include <ranges>
#include <span>
#include <stdexcept>
#include <utility>

#include "link/port.h"
#include "meter/device_queries.h"
#include "meter/facts.h"
#include "meter/offered_codes.h"
#include "meter/store.h"
#include "meter/units.h"
#include "meter/value_text.h"
#include "pages/parameter_column_guard.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"
#include "resources/text_ids_guard.h"
#include "resources/text_ids_origin.h"
#include "values/hex_digits.h"
#include "values/input_check.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr const char* kShowUnitInForce = "0";  // as a kept unit caption

// Whether registers hold what was sent to them, as far as the row shows it. What is carried out is over as
// soon as it has begun.
bool HoldsAlike(const Parameter& row, const ToldFacts& facts, std::span<const std::uint8_t> sent,
                std::span<const std::uint8_t> held) {
  if (std::equal(sent.begin(), sent.end(), held.begin(), held.end())) return true;
  if (row.wire == Wire::kDouble || row.wire == Wire::kCharacters) {
    return Trim(vlt::ValueText(row, facts, sent)) == Trim(vlt::ValueText(row, facts, held));
  }
  return row.IsCode() && row.IsOrder(CodeAt(row, sent, 0));
}

// The bytes of the last write that holds these registers; none when there is none.
std::span<const std::uint8_t> SentTo(const WritePlan& plan, int address, std::size_t bytes) {
  for (const PlannedWrite& write : plan.Writes() | std::views::reverse) {
    const int offset = address - write.address;
    if (offset < 0 || static_cast<std::size_t>(offset) + bytes > write.data.size()) continue;
    return std::span(write.data).subspan(static_cast<std::size_t>(offset), bytes);
  }
  return {};
}

// What a meter says of itself; a number that none of its entries stands for is shown as the number that it
// is.
bool TellsOfMeter(const Field& field) {
  constexpr std::string_view kGroup = "system";
  return field.list != nullptr && GroupOf(*field.parameter).name == kGroup;
}

std::string InBrackets(const std::string& unit) { return "[" + unit + "]"; }

}  // namespace

void CheckNumber(App& app, TextBox& box) {
  const int fault = TypedNumberFault(box.Text());
  if (fault == 0) return;
  box.SelectAll();
  app.Show(app.Text(fault));
  box.SetFocus();
}

void Depend(CheckBox& box, Control& entry, bool on) {
  box.SetEnabled(on);
  entry.SetEnabled(on && box.Ticked());
}

// --- what most pages do ----------------------------------------------------------------------------------

bool ColumnRules::AnythingSelected() { return column_->IsAnyTicked(); }

std::vector<CheckBox*> ColumnRules::Boxes() { return column_->DistinctBoxes(); }

void ColumnRules::BoxClicked(CheckBox& box) { column_->FollowBox(box); }

void ColumnRules::All_OnOff(int value) { column_->TickAll(value); }

void ColumnRules::Text_Box_Enable() { column_->EnableEntries(); }

void ColumnRules::Text_Box_Able() { column_->DisableEntries(); }

MeterFacts ColumnRules::FactsOfList(const Field&) { return column_->TheApp().state; }

std::vector<int> ColumnRules::CodesOfList(const Field& field, const MeterFacts& facts) {
  return OfferedCodes({field.parameter, IndexOf(field.parameter->location)}, facts);
}

void ColumnRules::LearnUnit(const Field&) {
  constexpr int kUnitSystem = -1;
  if (column_->FirstInThisRead(kUnitSystem)) ReadUnitSystem(column_->TheApp());
}

std::string ColumnRules::UnitOf(const Field& field) {
  return UnitText(column_->TheApp().state, field.parameter->unit, UnitChannel(field));
}

void ColumnRules::FieldWasRead(const Field&, int) {}

void ColumnRules::PlanWrites(WritePlan& plan) {
  for (const Field* field : column_->FieldsAsWritten()) column_->PlanField(plan, *field);
}

std::string ColumnRules::FailureName(const Field& field) {
  return column_->TheApp().Text(field.parameter->caption);
}

// --- fields and boxes ------------------------------------------------------------------------------------

ParameterColumn::ParameterColumn(App& app, Form& page, ColumnParts parts, ColumnRules& rules)
    : app_(app), page_(page), parts_(parts), rules_(rules), origins_(app, rules, fields_) {
  rules_.column_ = this;
}

void ParameterColumn::SetFields(std::vector<Field> fields) {
  parts_.read.on_click = [this] { ReadParameter_Click(); };
  parts_.set.on_click = [this] { SetParameter_Click(); };
  parts_.save.on_click = [this] { SaveParameter_Click(); };
  parts_.all.on_click = [this] { chkCheck_Click(); };
  fields_ = std::move(fields);
  for (const Field& field : fields_) Tie(field);
  for (const Field& field : fields_) {
    if (field.parameter->write != WriteWith::kNothing) as_written_.push_back(&field);
  }
  std::stable_sort(as_written_.begin(), as_written_.end(), [](const Field* a, const Field* b) {
    return PlaceInWriting(*a->parameter) < PlaceInWriting(*b->parameter);
  });
}

void ParameterColumn::Tie(const Field& field) {
  CheckBox& box = *field.box;
  box.on_click = [this, &box] { rules_.BoxClicked(box); };
  if (field.text == nullptr) return;
  TextBox& text = *field.text;
  text.SetLocked(field.parameter->write == WriteWith::kNothing);
  if (field.parameter->wire != Wire::kCharacters) {
    text.on_lost_focus = [this, &text] { CheckNumber(app_, text); };
  }
}

const Field& ParameterColumn::FieldOf(const Control& entry) const {
  for (const Field& field : fields_) {
    if (&field.Entry() == &entry) return field;
  }
  throw std::out_of_range("no field for " + entry.FullName());
}

std::vector<const Field*> ParameterColumn::FieldsIn(const PlannedWrite& write) const {
  std::vector<const Field*> found;
  for (const Field& field : fields_) {
    const int offset = AddressOnPage(*field.parameter) - write.address;
    const bool inside =
        offset >= 0 && offset + 2 * field.parameter->Words() <= static_cast<int>(write.data.size());
    if (inside && rules_.IsShown(field)) found.push_back(&field);
  }
  return found;
}

bool ParameterColumn::IsAnyTicked() const {
  return std::any_of(fields_.begin(), fields_.end(), [](const Field& field) { return field.Ticked(); });
}

void ParameterColumn::chkCheck_Click() { rules_.All_OnOff(parts_.all.Value()); }

std::vector<CheckBox*> ParameterColumn::DistinctBoxes() const {
  std::vector<CheckBox*> boxes;
  for (const Field& field : fields_) {
    if (std::find(boxes.begin(), boxes.end(), field.box) == boxes.end()) boxes.push_back(field.box);
  }
  return boxes;
}

void ParameterColumn::TickAll(int value) {
  for (CheckBox* box : rules_.Boxes()) box->SetValue(value == 1 ? 1 : 0);
  if (value == 1) {
    rules_.Text_Box_Enable();
  } else {
    rules_.Text_Box_Able();
  }
}

void ParameterColumn::EnableEntries() {
  for (const Field& field : fields_) field.SetEntryEnabled(field.box->Enabled());
}

void ParameterColumn::DisableEntries() {
  for (const Field& field : fields_) field.SetEntryEnabled(false);
}

void ParameterColumn::FollowBox(const CheckBox& box) {
  for (const Field& field : fields_) {
    if (field.box != &box) continue;
    field.SetEntryEnabled(field.Ticked());
    const bool number = field.text != nullptr && field.parameter->wire != Wire::kCharacters;
    if (field.Ticked() && number) CheckNumber(app_, *field.text);
  }
}

void ParameterColumn::EnableButtons(bool enabled) {
  for (Control* control : {static_cast<Control*>(&parts_.read), static_cast<Control*>(&parts_.set),
                           static_cast<Control*>(&parts_.save), static_cast<Control*>(&parts_.all)}) {
    control->SetEnabled(enabled);
  }
}

// --- slots, captions, units ------------------------------------------------------------------------------

void ParameterColumn::FillLists() {
  for (Field& field : fields_) {
    if (field.list != nullptr) Fill(field);
  }
}

void ParameterColumn::FillList(const ComboBox& list) {
  for (Field& field : fields_) {
    if (field.list == &list) Fill(field);
  }
}

void ParameterColumn::Fill(Field& field) {
  ToldFacts facts = app_.state;
  static_cast<MeterFacts&>(facts) = rules_.FactsOfList(field);
  std::vector<int> codes = rules_.CodesOfList(field, facts);
  const std::vector<std::string> entries = EntriesOf(*field.parameter, facts, codes);
  if (codes == field.codes && entries == field.list->Items()) return;
  const int selected = field.Selected();
  const int code = selected < 0 ? selected : field.CodeOf(selected);
  field.codes = std::move(codes);
  field.list->SetFont({app_.state.PageFont, 12, false});
  field.list->SetItems(entries);
  field.list->SetListIndex(selected < 0 ? selected : field.IndexOf(code));
}

void ParameterColumn::SlotsToControls() {
  restoring_ = true;
  for (const Field& field : fields_) {
    if (field.parameter->slot != Slot::kNone) RestoreEntry(field);
  }
  restoring_ = false;
  ApplyUnitCaptions();
}

void ParameterColumn::RestoreEntry(const Field& field) {
  ShowSlot(field, app_.slots[field.parameter->slot]);
  origins_.Restored(field);
}

void ParameterColumn::ControlsToSlots() {
  for (const Field& field : fields_) {
    const Parameter& row = *field.parameter;
    if (row.slot != Slot::kNone) app_.slots[row.slot] = SlotText(field);
    if (row.unit_slot != Slot::kNone) app_.slots[row.unit_slot] = Trim(field.unit->Caption());
  }
}

void ParameterColumn::ShowUnit(const Field& field) {
  field.unit->SetCaption(InBrackets(rules_.UnitOf(field)));
}

void ParameterColumn::ShowUnits() {
  for (const Field& field : fields_) {
    if (field.unit != nullptr) ShowUnit(field);
  }
}

void ParameterColumn::ShowUnitsOf(UnitKind kind) {
  for (const Field& field : fields_) {
    if (field.unit != nullptr && field.parameter->unit == kind) ShowUnit(field);
  }
}

void ParameterColumn::ForgetUnitCaptions() {
  for (const Field& field : fields_) {
    if (field.parameter->unit_slot != Slot::kNone) app_.slots[field.parameter->unit_slot].clear();
  }
}

void ParameterColumn::ShowUnitsOfMeter() {
  ForgetUnitCaptions();
  ShowUnits();
}

void ParameterColumn::ShowUnitsThatHold() {
  for (const Field& field : fields_) {
    if (field.unit == nullptr) continue;
    if (ValueText(field).empty() || origins_.UnitOfValue(field) == rules_.UnitOf(field)) ShowUnit(field);
  }
}

void ParameterColumn::ShowUnitsOfValues() {
  for (const Field& field : fields_) {
    if (field.unit == nullptr || ValueText(field).empty()) continue;
    field.unit->SetCaption(InBrackets(origins_.UnitOfValue(field)));
  }
}

void ParameterColumn::ApplyUnitCaptions() {
  for (const Field& field : fields_) {
    if (field.parameter->unit_slot == Slot::kNone) continue;
    const std::string& cached = app_.slots[field.parameter->unit_slot];
    if (cached == kShowUnitInForce) {
      ShowUnit(field);
    } else if (!cached.empty()) {
      field.unit->SetCaption(cached);
    }
  }
}

void ParameterColumn::ShowNames() {
  for (const Field& field : fields_) {
    field.box->SetCaption(app_.Text(field.parameter->caption));
    if (field.options[0] == nullptr) continue;
    const std::vector<std::string> words = CodeWords(*field.parameter, app_.state);
    for (std::size_t i = 0; i < 2; ++i) field.options[i]->SetCaption(words[i]);
  }
}

void ParameterColumn::ShowHints() {
  for (const Field& field : fields_) {
    const std::string hint = FieldHint(app_, *field.parameter, AddressOnPage(*field.parameter));
    field.Entry().SetHint(hint);
    if (field.options[1] != nullptr) field.options[1]->SetHint(hint);
    field.box->SetHint(HintOfBox(*field.box));
  }
}

// The registers of all fields that the box stands for, a line each.
std::string ParameterColumn::HintOfBox(const CheckBox& box) const {
  std::vector<std::string> lines;
  for (const Field& field : fields_) {
    if (field.box != &box) continue;
    const std::string line = FieldHint(app_, *field.parameter, AddressOnPage(*field.parameter));
    if (std::find(lines.begin(), lines.end(), line) == lines.end()) lines.push_back(line);
  }
  std::string hint;
  for (const std::string& line : lines) hint += (hint.empty() ? "" : "\n") + line;
  return hint;
}

void ParameterColumn::ShowLengths() {
  for (const Field& field : fields_) {
    if (field.text != nullptr) field.text->SetMaxLength(field.parameter->length.In(app_.state.UnitFlag));
  }
}

void ParameterColumn::ClearMarks() {
  for (const Field& field : fields_) field.Mark("");
}

// --- the exchanges -----------------------------------------------------------------------------------------

bool ParameterColumn::MayStart(bool selected) {
  if (!selected) return false;
  if (rules_.ChannelIsChosen()) return true;
  app_.Show(app_.Text(text::kChooseChannel));
  return false;
}

void ParameterColumn::ReadParameter_Click() {
  if (!MayStart(rules_.AnythingSelected())) return;
  if (ReadAfterSet) return ReadBack();
  Operation operation(app_, page_, parts_.read.Name(), parts_.read_started);
  if (!operation.OpenPortOrTell()) return;
  ClearMarks();
  read_marks_.clear();
  rules_.ReadBlocks();
  origins_.ExchangeEnded();
  operation.End(app_.Text(parts_.read_completed) + " " +
                Joined(app_.state.LastErrorText, rules_.ReadRemark()));
}

// A read inside of a set: under its lock and without words of its own.
void ParameterColumn::ReadBack() {
  if (!OpenPort(app_)) {
    app_.Show(app_.Text(text::kCommunicationError), MessageIcon::kStop);
    return;
  }
  read_marks_.clear();
  rules_.ReadBlocks();
}

bool ParameterColumn::FetchBlock(const Block& block, RegisterData& data) {
  const ExchangeReport exchange = ReadRegisters(app_, SpanOf(block, rules_.IndexOf(block.location)), data);
  sure_reply_ = exchange.Clean();
  if (exchange) return true;
  MarkUnread(block, exchange.text);
  rules_.BlockFailed(block);
  return false;
}

void ParameterColumn::ReadBlock(const Block& block) {
  RegisterData data;
  if (FetchBlock(block, data)) ShowBlock(block, data);
}

template <class F>
void ParameterColumn::ForEachIn(const Block& block, F&& action) const {
  const RegisterSpan span = SpanOf(block, rules_.IndexOf(block.location));
  for (const Field& field : fields_) {
    const Parameter& row = *field.parameter;
    const int offset = AddressOnPage(row) - span.address;
    const bool inside = offset >= 0 && offset + 2 * row.Words() <= 2 * span.count;
    if (row.function != block.function || !inside) continue;
    if (rules_.FieldTakesPart(field)) action(field, static_cast<std::size_t>(offset));
  }
}

void ParameterColumn::ShowBlock(const Block& block, const RegisterData& data) {
  ForEachIn(block, [&](const Field& field, std::size_t at) {
    if (at + 2 * static_cast<std::size_t>(field.parameter->Words()) <= data.size()) {
      ShowValue(field, data, at);
    }
  });
  const bool holding = block.function == ReadFunction::kHolding;
  if (proving_ != nullptr && holding) ProveCommands(SpanOf(block, rules_.IndexOf(block.location)), data);
}

// What a write of the same set has left stays: it says more.
void ParameterColumn::MarkUnread(const Block& block, const std::string& reason) const {
  ForEachIn(block, [&](const Field& field, std::size_t) {
    if (field.Entry().Mark().empty()) field.Mark(FormatText(app_.Text(text::kOriginNotRead), {reason}));
  });
}

void ParameterColumn::ShowValue(const Field& field, const RegisterData& data, std::size_t at) {
  int code = 0;
  if (field.unit != nullptr && !IsFixedUnit(field.parameter->unit)) rules_.LearnUnit(field);
  if (field.text != nullptr) {
    field.text->SetText(vlt::ShowValue(*field.parameter, app_.state, data, at));
  } else {
    code = CodeAt(*field.parameter, data, at);
    LearnFrom(app_, {field.parameter, rules_.IndexOf(field.parameter->location)}, code, sure_reply_);
    field.Select(field.IndexOf(code));
    if (TellsOfMeter(field) && field.Selected() < 0) {
      field.Mark(FormatText(app_.Text(text::kMeansNothing), {std::to_string(code)}));
    }
  }
  if (field.unit != nullptr) {
    ShowUnit(field);
    if (field.parameter->unit_slot != Slot::kNone) app_.slots[field.parameter->unit_slot].clear();
  }
  rules_.FieldWasRead(field, code);
  const auto held = std::span(data).subspan(at, 2 * static_cast<std::size_t>(field.parameter->Words()));
  origins_.WasRead(field, held);
  if (proving_ != nullptr) ProveField(field, held);
}

// A set that reads back, as long as this lives.
class ParameterColumn::ReadingBack {
 public:
  ReadingBack(ParameterColumn& column, const WritePlan& plan) : column_(column) {
    column_.ReadAfterSet = true;
    column_.proving_ = &plan;
  }
  ~ReadingBack() {
    column_.ReadAfterSet = false;
    column_.proving_ = nullptr;
  }
  ReadingBack(const ReadingBack&) = delete;
  ReadingBack& operator=(const ReadingBack&) = delete;

 private:
  ParameterColumn& column_;
};

std::vector<ParameterColumn::CutNumber> ParameterColumn::CutNumbers(const WritePlan& plan) const {
  std::vector<CutNumber> cut;
  for (const PlannedWrite& write : plan.Writes()) {
    if (write.field == nullptr || write.field->text == nullptr) continue;
    std::string told = CutNote(*write.field->parameter, app_.state, write.field->text->Text(), write.data);
    if (!told.empty()) cut.push_back({write.field, std::move(told)});
  }
  return cut;
}

void ParameterColumn::SetParameter_Click() {
  if (!MayStart(rules_.AnythingToSet())) return;
  ClearMarks();
  WritePlan plan;
  rules_.PlanWrites(plan);
  if (!Judge(plan) || !rules_.MaySet()) return;
  Operation operation(app_, page_, parts_.set.Name(), parts_.set_started);
  if (!operation.OpenPortOrTell() || !Guard(plan, operation)) return;
  const std::vector<CutNumber> cut = CutNumbers(plan);
  if (Execute(plan) && rules_.ReadsBack()) {
    const ReadingBack reading(*this, plan);
    ReadParameter_Click();
  }
  for (const CutNumber& each : cut) {
    if (each.field->Entry().Mark().empty()) each.field->Mark(each.told);
  }
  origins_.ExchangeEnded();
  operation.End(app_.Text(parts_.set_completed) + " " + Joined(app_.state.LastErrorText, TellNotTaken()));
}

// The echo proves nothing. Of two writes to one register the later one counts; one that has failed is told
// already.
void ParameterColumn::ProveField(const Field& field, std::span<const std::uint8_t> held) {
  const Parameter& row = *field.parameter;
  const auto sent = SentTo(*proving_, AddressOnPage(row), held.size());
  if (row.write == WriteWith::kNothing || sent.empty() || !field.Entry().Mark().empty()) return;
  if (HoldsAlike(row, app_.state, sent, held)) return;
  const std::string reason =
      FormatText(app_.Text(text::kSentButHolds),
                 {vlt::ValueText(row, app_.state, sent), vlt::ValueText(row, app_.state, held)});
  field.Mark(reason);
  not_taken_.push_back(rules_.StatusName(field) + ": " + reason);
}

// A write of no field, as the test mode's.
void ParameterColumn::ProveCommands(const RegisterSpan& span, const RegisterData& data) {
  for (const PlannedWrite& write : proving_->Writes()) {
    const int at = write.address - span.address;
    const int end = at + static_cast<int>(write.data.size());
    if (write.field != nullptr || at < 0 || end > static_cast<int>(data.size())) continue;
    const std::span<const std::uint8_t> held =
        std::span(data).subspan(static_cast<std::size_t>(at), write.data.size());
    if (std::equal(held.begin(), held.end(), write.data.begin())) continue;
    not_taken_.push_back(
        write.name + ": " +
        FormatText(app_.Text(text::kSentButHolds), {HexDigits(write.data), HexDigits(held)}));
  }
}

std::string ParameterColumn::TellNotTaken() {
  const std::vector<std::string> told = std::exchange(not_taken_, {});
  if (told.empty()) return {};
  app_.tally.failed += static_cast<std::int64_t>(told.size());
  if (app_.tally.first_failure.empty()) app_.tally.first_failure = told.front();
  const std::string more = std::to_string(told.size() - 1);
  return told.size() == 1 ? told.front() : FormatText(app_.Text(text::kAndMore), {told.front(), more});
}

bool ParameterColumn::Judge(const WritePlan& plan) {
  const Field* refused = plan.Refused();
  if (refused == nullptr) return true;
  const std::string why = TextFaultText(*refused->parameter, app_.state, plan.Fault());
  refused->Mark(why);
  app_.Status(app_.Text(text::kErrorOccurred) + " " + rules_.StatusName(*refused) + ": " + why);
  refused->text->SelectAll();
  refused->text->SetFocus();
  return false;
}

bool ParameterColumn::Guard(WritePlan& plan, Operation& operation) {
  const SetGuard guard(app_, rules_, *this);
  std::string refusal = guard.Ask(guard.Needs(plan));
  if (refusal.empty()) refusal = guard.Judge(plan);
  if (refusal.empty()) {
    // What was asked may give a value other bytes.
    plan = {};
    rules_.PlanWrites(plan);
    if (!Judge(plan)) return false;
    return true;
  }
  operation.Refuse(refusal);
  // The page shows the meter as it is.
  ShowUnitsOfMeter();
  page_.RunHook(&FormHooks::Form_Activate);
  return false;
}

void ParameterColumn::PlanInOrder(WritePlan& plan, const std::vector<const Control*>& entries) {
  for (const Control* entry : entries) PlanField(plan, FieldOf(*entry));
}

void ParameterColumn::PlanField(WritePlan& plan, const Field& field) {
  const Parameter& row = *field.parameter;
  if (!field.Ticked() || row.write == WriteWith::kNothing) return;
  PlannedWrite write{.field = &field,
                     .name = rules_.FailureName(field),
                     .address = AddressOnPage(row),
                     .write = row.write,
                     .data = {}};
  if (const auto* registers = origins_.RegistersOf(field)) {
    write.data = *registers;
    return plan.Add(std::move(write));
  }
  Encoded encoded = EncodeField(app_, field);
  if (encoded.fault != TextFault::kNone) return plan.Refuse(field, encoded.fault);
  if (encoded.bytes.empty()) return;
  write.data = std::move(encoded.bytes);
  plan.Add(std::move(write));
}

bool ParameterColumn::Execute(const WritePlan& plan) {
  return std::all_of(plan.Writes().begin(), plan.Writes().end(),
                     [this](const PlannedWrite& write) { return Send(write); });
}

bool ParameterColumn::Send(const PlannedWrite& write) {
  const WriteReport report = write.write == WriteWith::kSingle
                                 ? WriteRegister(app_, write.address, (write.data[0] << 8) | write.data[1])
                                 : WriteRegisters(app_, write.address, write.data);
  const bool refused = report.result == WriteResult::kRefused;
  if (!refused) app_.origins.PageHasSent();
  if (report.Proven()) {
    rules_.WriteProven(write);
    origins_.WasSet(write);
    return true;
  }
  if (!refused) origins_.MayBeSet(write);
  rules_.WriteFailed(write, report.result);
  const std::string reason = WriteFailureText(app_, report);
  if (write.field != nullptr) write.field->Mark(reason);
  app_.Status((write.field != nullptr ? rules_.StatusName(*write.field) : write.name) + ": " + reason);
  return app_.AskOkCancel(write.name + " " + app_.Text(parts_.not_set) + "\n" +
                          app_.Text(text::kContinueQuestion));
}

void ParameterColumn::SaveParameter_Click() {
  Operation operation(app_, page_, parts_.save.Name(), text::kSaveStarted);
  const bool saved = SaveToDevice(app_);
  operation.ShowNormalPointer();
  if (!saved) app_.Show(app_.Text(text::kNotSaved), MessageIcon::kStop);
  operation.End(app_.Text(text::kSaveCompleted) + " " + app_.state.LastErrorText);
}

}  // namespace vlt
