// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/frm_calc.h"

#include "calc/process_values.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/code_tables.h"
#include "values/input_check.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kFontSize = 9;

constexpr const char* kRequiredMark = "*";

// Places of the fields in the list of entries, and of their marks.
enum EntryIndex { kDiameter, kWall, kPipeVelocity, kLiningThickness, kLiningVelocity, kFluidVelocity };

}  // namespace

frmCalc::frmCalc(App& app)
    : Form(app.windows, "frmCalc", FormPlace::kWindow),
      app_(app),
      entries_{Entry{SpacingField::kOuterDiameter, OUTER_DIAMETER, OUTER_DIAMETERText, Label8(0),
                     OUTER_DIAMETER_RANGE, kDiameter},
               Entry{SpacingField::kWallThickness, WALL_THICKNESS, WALL_THICKNESSText, Label8(1),
                     WALL_THICKNESS_RANGE, kWall},
               Entry{SpacingField::kPipeVelocity, TRANS_FREQUENCY, TRANS_FREQUENCYText, Label12,
                     TRANS_FREQUENCY_RANGE, kPipeVelocity},
               Entry{SpacingField::kLiningThickness, LINING_THICKNESS, LINING_THICKNESSText, Label2,
                     LINING_THICKNESS_RANGE, kLiningThickness},
               Entry{SpacingField::kLiningVelocity, LINING_S_V, LINING_S_VText, Label1(0), LINING_S_V_RANGE,
                     kLiningVelocity},
               Entry{SpacingField::kFluidVelocity, FLUID_S_V, FLUID_S_VText, Label1(1), FLUID_S_V_RANGE,
                     kFluidVelocity}},
      choices_{Choice{SpacingField::kPipeMaterial, PIPE_MATERIAL, PIPE_MATERIALCombo},
               Choice{SpacingField::kLiningMaterial, LINING_MATERIAL, LINING_MATERIALCombo},
               Choice{SpacingField::kFluid, KIND_OF_FLUID, KIND_OF_FLUIDCombo},
               Choice{SpacingField::kMount, SENSOR_MOUNT, SENSOR_MOUNTCombo},
               Choice{SpacingField::kSensor, SENSOR_TYPE, SENSOR_TYPECombo}} {
  for (const Entry& entry : entries_) {
    entry.text.on_lost_focus = [this, &entry] { CheckEntry(entry); };
    entry.text.on_change = [this] { InputChanged(); };
  }
  PIPE_MATERIALCombo.on_click = [this] { PIPE_MATERIALCombo_Click(); };
  LINING_MATERIALCombo.on_click = [this] { LINING_MATERIALCombo_Click(); };
  KIND_OF_FLUIDCombo.on_click = [this] { KIND_OF_FLUIDCombo_Click(); };
  SENSOR_MOUNTCombo.on_click = [this] { InputChanged(); };
  SENSOR_TYPECombo.on_click = [this] { InputChanged(); };
  ExecuteCalc.on_click = [this] { ExecuteCalc_Click(); };
  cmdTake.on_click = [this] { cmdTake_Click(); };
  cmdPrint.on_click = [this] { cmdPrint_Click(); };
  cmdSave.on_click = [this] { cmdSave_Click(); };
  cmdClose.on_click = [this] { cmdClose_Click(); };
}

void frmCalc::Form_Load() {
  changing_ = true;
  unit_flag_ = app_.state.UnitFlag;
  Dress();
  ShowUnitsAndRanges();
  FillLists();
  for (TextBox* result : {&txtResult1Text, &txtResult2Text}) {
    result->SetLocked(true);
    result->SetFont({app_.state.PageFont, kFontSize, true});
    result->SetBackColour(kButtonFaceColour);
  }
  changing_ = false;
  InputChanged();
}

void frmCalc::Settled() {
  if ((unit_flag_ != 0) == (app_.state.UnitFlag != 0)) return;
  unit_flag_ = app_.state.UnitFlag;
  ShowUnitsAndRanges();
  ConvertEntries();
}

void frmCalc::Dress() {
  SetCaption(app_.Text(1382));
  for (Control* control : Controls()) control->SetFont({app_.state.PageFont, kFontSize, false});
  for (const Entry& entry : entries_) entry.caption.SetCaption(FieldCaption(entry.field, Texts()));
  for (const int always : {kDiameter, kWall}) lblRequired(always).SetCaption(kRequiredMark);
  for (const Choice& list : choices_) list.caption.SetCaption(FieldCaption(list.field, Texts()));
  MOUNT_SIZE1.SetCaption(app_.Text(text::kSensorSpacing) + "1");
  MOUNT_SIZE2.SetCaption(app_.Text(text::kSensorSpacing) + "2");
  lblInputRequired.SetCaption("* : " + app_.Text(1967));
  struct Caption {
    Control& control;
    int text_id;
  };
  for (const Caption& row : {Caption{ExecuteCalc, 3922}, Caption{fraResult, 3926},
                             Caption{cmdTake, text::kCalcTake}, Caption{cmdPrint, text::kCalcPrint},
                             Caption{cmdSave, text::kCalcSave}, Caption{cmdClose, text::kClose}}) {
    row.control.SetCaption(app_.Text(row.text_id));
  }
}

void frmCalc::ShowUnitsAndRanges() {
  const RangeTexts limits = SubGetUnitRange(unit_flag_);
  for (const Entry& entry : entries_) {
    const std::string unit = UnitOf(entry.field, unit_flag_);
    const std::size_t at = RangeOf(entry.field);
    entry.unit.SetCaption(unit);
    entry.range.SetCaption(std::string(limits[at]) + "-" + std::string(limits[at + 1]) + unit);
  }
  Label4.SetCaption(SubGetUnitForm1(unit_flag_)[0]);
}

void frmCalc::FillLists() {
  const CodeContext codes = app_.Codes();
  PIPE_MATERIALCombo.SetItems(ListTexts(codes, 1));
  LINING_MATERIALCombo.SetItems(ListTexts(codes, 2));
  KIND_OF_FLUIDCombo.SetItems(ListTexts(codes, 3));
  SENSOR_TYPECombo.SetItems(ListTexts(codes, 6));
  // Of the four mounts the window offers two.
  SENSOR_MOUNTCombo.SetItems({app_.Text(3140), app_.Text(3150)});
  for (const Choice& list : choices_) list.list.SetListIndex(0);
  lblMount2Sensor.SetCaption("(" + CodeToText(codes, 6, 2) + "," + CodeToText(codes, 6, 3) + ")");
}

void frmCalc::Open(const Entry& entry, bool open) {
  entry.text.SetLocked(!open);
  entry.text.SetBackColour(open ? kWindowColour : kButtonFaceColour);
  lblRequired(entry.mark).SetCaption(open ? kRequiredMark : "");
}

void frmCalc::PIPE_MATERIALCombo_Click() {
  Open(entries_[kPipeVelocity], PIPE_MATERIALCombo.ListIndex() == kOwnPipe);
  InputChanged();
}

void frmCalc::KIND_OF_FLUIDCombo_Click() {
  Open(entries_[kFluidVelocity], KIND_OF_FLUIDCombo.ListIndex() == kOwnFluid);
  InputChanged();
}

void frmCalc::LINING_MATERIALCombo_Click() {
  Open(entries_[kLiningVelocity], LINING_MATERIALCombo.ListIndex() == kOwnLining);
  Open(entries_[kLiningThickness], LINING_MATERIALCombo.ListIndex() != kNoLining);
  InputChanged();
}

void frmCalc::CheckEntry(const Entry& entry) {
  const std::string& text = entry.text.Text();
  const int numeric = IsNumericText(text);
  if (numeric > 0) return;
  // What passes character by character may still be no number ("1.2.3").
  const bool is_number = numeric == 0 && ParseNumber(text).has_value();
  if (is_number && IsInRange(entry.field, text, unit_flag_)) return;
  entry.text.SelectAll();
  app_.Show(app_.Text(is_number ? text::kOutOfLimits : NoNumberText(text)));
}

SpacingInputs frmCalc::Inputs() const {
  const auto typed = [](const TextBox& box) {
    return box.Locked() ? std::nullopt : std::optional<std::string>(box.Text());
  };
  return {.unit_flag = unit_flag_,
          .sensor = SENSOR_TYPECombo.ListIndex(),
          .pipe = PIPE_MATERIALCombo.ListIndex(),
          .lining = LINING_MATERIALCombo.ListIndex(),
          .fluid = KIND_OF_FLUIDCombo.ListIndex(),
          .mount = SENSOR_MOUNTCombo.ListIndex(),
          .outer_diameter = OUTER_DIAMETERText.Text(),
          .wall_thickness = WALL_THICKNESSText.Text(),
          .lining_thickness = LINING_THICKNESSText.Text(),
          .pipe_velocity = typed(TRANS_FREQUENCYText),
          .lining_velocity = typed(LINING_S_VText),
          .fluid_velocity = typed(FLUID_S_VText)};
}

void frmCalc::ExecuteCalc_Click() {
  const SpacingInputs inputs = Inputs();
  // For the calculation it is a mount as any other that the meter does not know.
  if (inputs.mount < 0)
    return app_.Show(FaultText({InputFault::Why::kNothingChosen, SpacingField::kMount}, Texts()));
  const auto outcome = CalculateSpacing(inputs);
  if (const auto* failure = std::get_if<SpacingFailure>(&outcome)) {
    app_.Show(FailureText(*failure, inputs, Texts()));
    return;
  }
  const auto& result = std::get<SpacingResult>(outcome);
  txtResult1Text.SetText(result.result1);
  txtResult2Text.SetText(result.result2);
  executed_ = inputs;
  lblNote.SetCaption("");
}

void frmCalc::InputChanged() {
  if (changing_) return;
  const bool outdated = executed_ && !(*executed_ == Inputs());
  lblNote.SetCaption(outdated ? app_.Text(text::kCalcOutdated) : "");
  Redraw();
}

void frmCalc::Redraw() {
  const SpacingInputs inputs = Inputs();
  if (const auto fault = FindInputFault(inputs)) {
    picSpacing.SetNote(FaultText(*fault, Texts()));
    return;
  }
  const auto outcome = CalculateSpacing(inputs);
  if (const auto* failure = std::get_if<SpacingFailure>(&outcome)) {
    picSpacing.SetNote(FailureText(*failure, inputs, Texts()));
  } else {
    picSpacing.SetSheet(DrawSpacing(inputs, std::get<SpacingResult>(outcome), Texts()));
  }
}

TextOf frmCalc::Texts() const {
  return [this](int id) { return app_.Text(id); };
}

void frmCalc::ConvertEntries() {
  changing_ = true;
  for (const Entry& entry : entries_) {
    const auto number = ParseNumber(entry.text.Text());
    if (number) entry.text.SetText(ConvertedText(entry.field, *number, unit_flag_));
  }
  ForgetResult();
  changing_ = false;
  InputChanged();
}

void frmCalc::ForgetResult() {
  txtResult1Text.SetText("");
  txtResult2Text.SetText("");
  executed_.reset();
}

void frmCalc::Tell(const std::string& text) {
  lblNote.SetCaption(text);
  app_.Status(text);
}

void frmCalc::cmdClose_Click() { List().Unload(Name()); }

}  // namespace vlt
