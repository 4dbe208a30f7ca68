// SPDX-License-Identifier: GPL-3.0-or-later
// The serial settings: changes the link, proves it by reading the meter, and only then writes it to the
// settings file. After a failure the dialog stays and the new values stay in force in memory, not in the
// file.
#pragma once

#include <functional>
#include <string>

#include "meter/meter_search.h"
#include "state/app.h"

namespace vlt {

class FrmCSet : public Form {
 public:
  explicit FrmCSet(App& app);

  void FrmInit() override;
  void Form_Load() override;
  void Form_Activate() override;

  // Fills the lists and selects the settings in force. A setting that its list does not offer leaves nothing
  // selected and is told.
  void table_setup();
  // Reads unit system and display language of the meter and shows both in the status bar. False without an
  // answer.
  bool ReadSytem();

  void TransMethod_Click();
  void StaitionNo_LostFocus();
  void Command1_Click();
  void Command2_Click();

  // n of the COMn that is chosen, 0 while none is.
  int ChosenPort() const { return PortNo.ListIndex() + 1; }
  bool IsRs485() const;
  // Speed and parity that are chosen, as the settings write them; empty while none is.
  LinkTry ChosenLink() const;
  // Takes what a search has found into the fields.
  void Fill(const FoundMeter& meter);
  // The caption of a parity as the settings write it, or the letter itself.
  static std::string ParityText(const App& app, const std::string& letter);
  // "simulated meter" for one, else the device as it is.
  static std::string DeviceText(const App& app, const std::string& device);
  // True, and told in the status line, while a live read has the line.
  bool IsLineTaken();

  // Told when another port is chosen.
  std::function<void()> on_port;

  Label lblPortNo{*this, "lblPortNo"};
  Label lblTransMethod{*this, "lblTransMethod"};
  Label lblStaitionNo{*this, "lblStaitionNo"};
  Label lblSpeed{*this, "lblSpeed"};
  Label lblParity{*this, "lblParity"};
  Label lblStopBit{*this, "lblStopBit"};
  Label lblRetryNo{*this, "lblRetryNo"};
  ComboBox PortNo{*this, "PortNo"};
  ComboBox TransMethod{*this, "TransMethod"};
  TextBox StaitionNo{*this, "StaitionNo"};
  UpDown StaitionNoUpDown{*this, "StaitionNoUpDown"};
  ComboBox Speed{*this, "Speed"};
  ComboBox Parity{*this, "Parity"};
  ComboBox StopBit{*this, "StopBit"};
  ComboBox RetryNo{*this, "RetryNo"};
  CheckBox chkTiming{*this, "chkTiming"};  // event-driven timing
  PushButton Command1{*this, "Command1"};  // OK
  PushButton Command2{*this, "Command2"};  // Cancel

 private:
  void FillLists();
  void Step(int by);
  bool CheckFields();
  bool CheckStation();
  void TakeFields();
  bool Prove(std::string& failure);

  App& app_;
};

}  // namespace vlt
