// SPDX-License-Identifier: GPL-3.0-or-later
// Sensor spacing calculator: off line, from pipe, lining, fluid and sensor to the distance of the sensors.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "calc/process_values.h"
#include "calc/spacing.h"
#include "calc/spacing_check.h"
#include "calc/spacing_sheet.h"
#include "state/app.h"
#include "window/drawing.h"

namespace vlt {

class frmCalc : public Form {
 public:
  explicit frmCalc(App& app);

  void Form_Load() override;
  // Takes over the unit system if it has changed since.
  void Settled() override;
  void Entered(const Control& control) override { entered_.insert(&control); }
  void ExecuteCalc_Click();

  // What the fields hold.
  SpacingInputs Inputs() const;

  Label lblInputRequired{*this, "lblInputRequired"};
  // Marks of the fields that must be typed: 0 outer diameter, 1 wall, 2 pipe velocity, 3 lining thickness,
  // 4 lining velocity, 5 fluid velocity.
  ControlArray<Label> lblRequired{*this, "lblRequired", Indexes(6)};

  Label OUTER_DIAMETER{*this, "OUTER_DIAMETER"};
  TextBox OUTER_DIAMETERText{*this, "OUTER_DIAMETERText"};
  Label OUTER_DIAMETER_RANGE{*this, "OUTER_DIAMETER_RANGE"};
  Label PIPE_MATERIAL{*this, "PIPE_MATERIAL"};
  ComboBox PIPE_MATERIALCombo{*this, "PIPE_MATERIALCombo"};
  Label WALL_THICKNESS{*this, "WALL_THICKNESS"};
  TextBox WALL_THICKNESSText{*this, "WALL_THICKNESSText"};
  Label WALL_THICKNESS_RANGE{*this, "WALL_THICKNESS_RANGE"};
  // The pipe's sound velocity, in spite of its name.
  Label TRANS_FREQUENCY{*this, "TRANS_FREQUENCY"};
  TextBox TRANS_FREQUENCYText{*this, "TRANS_FREQUENCYText"};
  Label TRANS_FREQUENCY_RANGE{*this, "TRANS_FREQUENCY_RANGE"};

  Label LINING_MATERIAL{*this, "LINING_MATERIAL"};
  ComboBox LINING_MATERIALCombo{*this, "LINING_MATERIALCombo"};
  Label LINING_THICKNESS{*this, "LINING_THICKNESS"};
  TextBox LINING_THICKNESSText{*this, "LINING_THICKNESSText"};
  Label LINING_THICKNESS_RANGE{*this, "LINING_THICKNESS_RANGE"};
  Label LINING_S_V{*this, "LINING_S_V"};
  TextBox LINING_S_VText{*this, "LINING_S_VText"};
  Label LINING_S_V_RANGE{*this, "LINING_S_V_RANGE"};

  Label KIND_OF_FLUID{*this, "KIND_OF_FLUID"};
  ComboBox KIND_OF_FLUIDCombo{*this, "KIND_OF_FLUIDCombo"};
  Label FLUID_S_V{*this, "FLUID_S_V"};
  TextBox FLUID_S_VText{*this, "FLUID_S_VText"};
  Label FLUID_S_V_RANGE{*this, "FLUID_S_V_RANGE"};

  Label SENSOR_MOUNT{*this, "SENSOR_MOUNT"};
  ComboBox SENSOR_MOUNTCombo{*this, "SENSOR_MOUNTCombo"};
  Label SENSOR_TYPE{*this, "SENSOR_TYPE"};
  ComboBox SENSOR_TYPECombo{*this, "SENSOR_TYPECombo"};

  // Units: Label8 outer diameter and wall, Label12 pipe velocity, Label2 lining thickness, Label1 lining and
  // fluid velocity, Label4 the spacing.
  ControlArray<Label> Label8{*this, "Label8", Indexes(2)};
  Label Label12{*this, "Label12"};
  Label Label2{*this, "Label2"};
  ControlArray<Label> Label1{*this, "Label1", Indexes(2)};
  Label Label4{*this, "Label4"};

  FrameBox fraResult{*this, "fraResult"};
  Label MOUNT_SIZE1{*this, "MOUNT_SIZE1"};
  TextBox txtResult1Text{*this, "txtResult1Text"};
  Label MOUNT_SIZE2{*this, "MOUNT_SIZE2"};
  TextBox txtResult2Text{*this, "txtResult2Text"};
  Label lblMount2Sensor{*this, "lblMount2Sensor"};
  PushButton ExecuteCalc{*this, "ExecuteCalc"};

  Drawing picSpacing{*this, "picSpacing"};
  // What was done last, or that the result is not that of the fields any more.
  Label lblNote{*this, "lblNote"};
  PushButton cmdTake{*this, "cmdTake"};
  PushButton cmdPrint{*this, "cmdPrint"};
  PushButton cmdSave{*this, "cmdSave"};
  PushButton cmdClose{*this, "cmdClose"};

 private:
  // A typed field with all that belongs to it.
  struct Entry {
    SpacingField field;
    Label& caption;
    TextBox& text;
    Label& unit;
    Label& range;
    int mark;
  };
  struct Choice {
    SpacingField field;
    Label& caption;
    ComboBox& list;
  };

  void Dress();
  void ShowUnitsAndRanges();
  void FillLists();
  void PIPE_MATERIALCombo_Click();
  void LINING_MATERIALCombo_Click();
  void KIND_OF_FLUIDCombo_Click();
  // Opens the field and sets its mark, or locks it and takes the mark away.
  void Open(const Entry& entry, bool open);
  void CheckEntry(const Entry& entry);
  // A field or list has changed: the drawing follows, and a result that is there may be outdated.
  void InputChanged();
  void Redraw();
  TextOf Texts() const;
  void ConvertEntries();
  void ForgetResult();

  void cmdTake_Click();
  // What a person has entered and these values would replace or empty, a line for each field.
  std::string WhatGoes(const std::vector<ProcessValue>& values) const;
  void Put(const ProcessValue& value);
  void TellTaken(const std::vector<ProcessValue>& values);
  // What was not taken, with its reason; of fields that are not in use nothing.
  std::string NotTaken(const std::vector<ProcessValue>& values) const;
  const Entry* EntryOf(SpacingField field) const;
  const Choice* ChoiceOf(SpacingField field) const;
  void cmdPrint_Click();
  void cmdSave_Click();
  void cmdClose_Click();
  // Calculates, so that the sheet is that of the fields. Nothing, and a message, if it can't be made.
  std::optional<Sheet> MakeSheet();
  std::vector<SheetRow> InputRows() const;
  std::vector<SheetRow> ResultRows() const;
  void WriteSheet(const Sheet& sheet, const std::string& path);
  void Tell(const std::string& text);

  App& app_;
  std::array<Entry, 6> entries_;
  std::array<Choice, 5> choices_;
  std::set<const Control*> entered_;       // whose content a person has typed or chosen
  int unit_flag_ = 0;                      // of all that the fields hold
  bool changing_ = false;                  // by the program, many at once
  std::optional<SpacingInputs> executed_;  // what the result was calculated from
};

}  // namespace vlt
