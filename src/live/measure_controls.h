// SPDX-License-Identifier: GPL-3.0-or-later
// The controls of the measure page, as its parts know them.
#pragma once

#include "meter/live_fields.h"
#include "pages/page.h"
#include "window/chart.h"

namespace vlt {

class MeasureControls : public PageForm {
 public:
  explicit MeasureControls(App& app) : PageForm(app, "Form9") {}

  PushButton Start{*this, "Start"};
  PushButton Stop{*this, "Stop"};
  PushButton SaveCSV{*this, "SaveCSV"};
  Label lblChannelSelect{*this, "lblChannelSelect"};
  ComboBox CH_Combo{*this, "CH_Combo"};
  Label lblFlowSelect{*this, "lblFlowSelect"};
  ComboBox Flow_Combo{*this, "Flow_Combo"};

  FrameBox Frame6{*this, "Frame6"};  // scale
  FrameBox Frame5{*this, "Frame5"};  // Y
  Label lblMax{*this, "lblMax"};
  TextBox Max{*this, "Max"};
  Label lblMin{*this, "lblMin"};
  TextBox Min{*this, "Min"};
  FrameBox Frame4{*this, "Frame4"};  // X
  Label lblCycle{*this, "lblCycle"};
  TextBox Cycle{*this, "Cycle"};
  Label lblCycleUnit{*this, "lblCycleUnit"};
  Label lblPoint{*this, "lblPoint"};
  TextBox PointText{*this, "PointText"};

  FrameBox Frame1{*this, "Frame1"};  // moment value
  // Names of the channels: 0 over the measured values, 1 over the velocities, 2 over the heat values.
  ControlArray<Label> lblCh1{*this, "lblCh1", Indexes(3)};
  ControlArray<Label> lblCh2{*this, "lblCh2", Indexes(3)};
  ControlArray<Label> lblCh3{*this, "lblCh3", Indexes(3)};
  Label lblRyusoku{*this, "lblRyusoku"};
  ControlArray<TextBox> txtRyusoku{*this, "txtRyusoku", Indexes(kChannels)};
  ControlArray<Label> lblRyusokuUnit{*this, "lblRyusokuUnit", Indexes(kChannels)};
  Label lblRyuryo{*this, "lblRyuryo"};
  ControlArray<TextBox> txtRyuryo{*this, "txtRyuryo", Indexes(kChannels)};
  ControlArray<Label> lblRyuryoUnit{*this, "lblRyuryoUnit", Indexes(kChannels)};
  Label lblRyuryoPer{*this, "lblRyuryoPer"};
  ControlArray<TextBox> txtRyuryoPer{*this, "txtRyuryoPer", Indexes(kChannels)};
  ControlArray<Label> lblRyuryoPerUnit{*this, "lblRyuryoPerUnit", Indexes(kChannels)};
  Label lblPlusSekisan{*this, "lblPlusSekisan"};
  ControlArray<TextBox> txtPlusSekisan{*this, "txtPlusSekisan", Indexes(kChannels)};
  // Two for each channel: of the positive and of the negative total.
  ControlArray<Label> lblSekisanUnit{*this, "lblSekisanUnit", Indexes(2 * kChannels)};
  Label lblMinusSekisan{*this, "lblMinusSekisan"};
  ControlArray<TextBox> txtMinusSekisan{*this, "txtMinusSekisan", Indexes(kChannels)};
  Label lblPlusSekisanPulse{*this, "lblPlusSekisanPulse"};
  ControlArray<TextBox> txtPlusSekisanPulse{*this, "txtPlusSekisanPulse", Indexes(kChannels)};
  ControlArray<Label> lblPulseUnit{*this, "lblPulseUnit", Indexes(2 * kChannels)};
  Label lblMinusSekisanPulse{*this, "lblMinusSekisanPulse"};
  ControlArray<TextBox> txtMinusSekisanPulse{*this, "txtMinusSekisanPulse", Indexes(kChannels)};
  FrameBox Frame2{*this, "Frame2"};  // RAS
  ControlArray<TextBox> txtRAS{*this, "txtRAS", Indexes(kChannels)};

  Label lblTHERMAL_FLOW{*this, "lblTHERMAL_FLOW"};
  ControlArray<TextBox> txtThermalFlow{*this, "txtThermalFlow", Indexes(kChannels)};
  Label lblHRyuryoUnit{*this, "lblHRyuryoUnit"};
  Label lblTHERMAL_FLOWPer{*this, "lblTHERMAL_FLOWPer"};
  ControlArray<TextBox> txtThermalFlowPer{*this, "txtThermalFlowPer", Indexes(kChannels)};
  Label lblHPerUnit{*this, "lblHPerUnit"};
  Label lblH_TOTAL{*this, "lblH_TOTAL"};
  ControlArray<TextBox> txtHTotal{*this, "txtHTotal", Indexes(kChannels)};
  ControlArray<Label> lblHSekisanUnit{*this, "lblHSekisanUnit", Indexes(2)};
  Label lblHTotalPulse{*this, "lblHTotalPulse"};
  ControlArray<TextBox> txtHTotalPulse{*this, "txtHTotalPulse", Indexes(kChannels)};
  ControlArray<Label> lblHPulseUnit{*this, "lblHPulseUnit", Indexes(2)};
  Label lblCTotal{*this, "lblCTotal"};
  ControlArray<TextBox> txtCTotal{*this, "txtCTotal", Indexes(kChannels)};
  Label lblCTotalPulse{*this, "lblCTotalPulse"};
  ControlArray<TextBox> txtCTotalPulse{*this, "txtCTotalPulse", Indexes(kChannels)};
  Label lblSUPPLY_TEMP{*this, "lblSUPPLY_TEMP"};
  ControlArray<TextBox> txtSupplyTemp{*this, "txtSupplyTemp", Indexes(kChannels)};
  ControlArray<Label> lbldegreeCUnit{*this, "lbldegreeCUnit", Indexes(3)};
  Label lblRETURN_TEMP{*this, "lblRETURN_TEMP"};
  ControlArray<TextBox> txtReturnTemp{*this, "txtReturnTemp", Indexes(kChannels)};
  Label lblTEMP_DIFFERENCE{*this, "lblTEMP_DIFFERENCE"};
  ControlArray<TextBox> txtTempDifference{*this, "txtTempDifference", Indexes(kChannels)};

  Chart Chart2D1{*this, "Chart2D1"};
  StatusBar LogBar{*this, "LogBar", 1};          // the log: file, records in it, the next file
  StatusBar StatusBar2{*this, "StatusBar2", 2};  // state of the run, records that were lost
  Timer CycleTimer{*this, "CycleTimer"};
};

}  // namespace vlt
