// SPDX-License-Identifier: GPL-3.0-or-later
// What the comparison does on the line: reading the meter, sending ticked rows, restoring, storing.
#pragma once

#include <optional>
#include <string>

#include "compare/frm_compare.h"
#include "compare/sender.h"
#include "link/operation.h"

namespace vlt {

class CompareRows;

class CompareLine : public FormPart, public MeterTaken {
 public:
  // Of an open window.
  static CompareLine& Of(const Form& window) { return *window.Part<CompareLine>(); }
  CompareLine(App& app, frmCompare& window);

  void Form_Load() override;
  // The window stays while it works on the line, and stops that behind the exchange in hand. It goes then,
  // unless rows were sent: how these have ended is to be seen.
  void Form_Unload(int& cancel) override;
  const Control* StopButton() const override { return &cmdStop; }

  bool Busy() const override { return busy_; }
  void TakeMeter(int side) override;
  // Somebody else has the line; the window has said so.
  bool IsTaken();
  // The meter as it is now. Nothing, and the operation has ended, when the port can't be opened, the reading
  // was stopped, or nothing came.
  std::optional<Snapshot> ReadMeter(Operation& operation);
  // Behind work: the window goes if it was to be closed meanwhile, unless it `stays` to be looked at.
  void LeaveIfAsked(bool stays);

  PushButton cmdSend{Whole(), "cmdSend"};
  PushButton cmdRestore{Whole(), "cmdRestore"};
  PushButton SaveParameter{Whole(), "SaveParameter"};  // the meter keeps it over a power failure
  PushButton cmdStop{Whole(), "cmdStop"};

 private:
  class Work;
  CompareRows& Rows() const;
  // Of both sides, which must be there.
  const Comparison& Compared() const;
  WorkListener Listener(int started);
  SendListener Sender();
  void ShowStep(int doing, int number, int count, const std::string& what);
  void FocusWhatIsNext(int side);
  bool MayRestore();
  void cmdSend_Click();
  void cmdRestore_Click();
  // `send` does the work and gives the text of its end.
  void AskAndSend(const std::string& question, const std::string& command,
                  std::string (CompareLine::*send)());
  std::string SendChosen();
  std::string RestoreLeft();
  void LookAgain(const SendReport& report);
  std::string EndText(const SendReport& report, const std::string& outcome);
  void SaveParameter_Click();

  App& app_;
  frmCompare& window_;
  std::string halt_;  // why a sending has ended before its time, for a box
  bool busy_ = false;
  bool stop_ = false;
  bool leave_ = false;  // the window was to be closed while it was on the line
  bool sent_ = false;   // rows have gone to the meter in this work
};

}  // namespace vlt
