// SPDX-License-Identifier: GPL-3.0-or-later
// The firmware tool: loads program modules into the device, reads them back and compares them, reads the
// version. A run blocks its handler from the first frame to the last pause; events run in all its waits, and
// of the tool's controls only the wait window's Cancel can be worked then.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "firmware/frm_maint_wait.h"
#include "firmware/fw_journal.h"
#include "firmware/fw_link.h"
#include "firmware/fw_modules.h"
#include "firmware/fw_notes.h"
#include "state/app.h"

namespace vlt {

class frmMaint_MAIN : public Form {
 public:
  explicit frmMaint_MAIN(App& app);

  void Form_Load() override;
  // Refused during a run, with the reason in the window. Else sets FwEndFlag.
  void Form_Unload(int& cancel) override;

  void cmdEXE_Click();
  // FORM_AllEnd.
  void cmdQuit_Click();
  void cmdFolder_Click();
  void cmdUP_Click();
  void MENU_COMM_Click();
  // Closes all windows of the tool.
  void FORM_AllEnd();
  // "COM3" from frmMaint_COMM, and how keeping it went.
  void SetPort(const std::string& name, const FileError& written);

  // A run goes on. Nothing may end the program meanwhile: a module could be left incomplete in the device.
  bool Running() const { return running_; }
  // The run is to end as soon as it may: behind the module in hand. Nothing happens while none goes on.
  void StopSoon();

  MenuItem MENU_COMM{*this, "MENU_COMM"};
  TabControl SSTab1{*this, "SSTab1", 2};  // download, upload

  // Download.
  Label lblFolder{*this, "lblFolder"};
  TextBox txtDown{*this, "txtDown"};
  PushButton cmdFolder{*this, "cmdFolder"};
  ControlArray<CheckBox> chkModule{*this, "chkModule", Indexes(kFwModules)};
  ControlArray<Label> Label1{*this, "Label1", Indexes(kFwModules)};
  ControlArray<TextBox> txtDL_Result{*this, "txtDL_Result", Indexes(kFwModules)};
  ControlArray<Label> lblImage{*this, "lblImage", Indexes(kFwModules)};  // size and checksum of the file

  Label lblBoot{*this, "lblBoot"};        // what it means when the boot module's download breaks off
  Label lblAfterNg{*this, "lblAfterNg"};  // what to do after NG, in this order

  // Upload: the version, or verification.
  ControlArray<OptionButton> optSEL_UP{*this, "optSEL_UP", Indexes(2)};
  TextBox txtVer{*this, "txtVer"};
  Label lblFolder_up{*this, "lblFolder_up"};
  TextBox txtUp{*this, "txtUp"};
  PushButton cmdUP{*this, "cmdUP"};
  ControlArray<CheckBox> chkModule_up{*this, "chkModule_up", Indexes(kFwModules)};
  ControlArray<Label> Label2{*this, "Label2", Indexes(kFwModules)};
  ControlArray<TextBox> txtResult{*this, "txtResult", Indexes(kFwModules)};
  ControlArray<Label> lblImage_up{*this, "lblImage_up", Indexes(kFwModules)};

  Label lblNote{*this, "lblNote"};  // FwNotes
  PushButton cmdEXE{*this, "cmdEXE"};
  PushButton cmdQuit{*this, "cmdQuit"};
  StatusBar StatusBar1{*this, "StatusBar1", 1};  // the port

  FwLink Link;
  FwFiles Files;

 private:
  class Busy;
  // A tab's controls of its modules, and what its runs are called in the journal.
  struct Side {
    const ControlArray<CheckBox>& ticks;
    const ControlArray<TextBox>& results;
    const ControlArray<Label>& images;
    const TextBox& folder;
    int plan_text_id;
    const char* journal_word;
  };
  using SendStep = std::function<void(bool& ok)>;
  // What is wrong with a module's file. No result: nothing.
  struct Verdict {
    const char* result = "";
    std::string box;   // empty: none is shown
    std::string note;  // in the window
    std::string why;   // in the journal
    int advice = 0;    // text id of what to do
  };

  void Dress();
  void ShowPort();
  void ChooseFolder(TextBox& folder);
  void Tell(const std::string& text, MessageIcon icon);
  void ShowNotes() { lblNote.SetCaption(notes_.Text()); }
  void Note(const std::string& text);
  void Advise(FwAdvice weight, const std::string& text);
  // The module's data frame has left, and the last step has failed.
  void MarkIncomplete(int module);
  void AdviseOfIncomplete();

  // False when the run was refused before it began.
  bool Download();
  bool Upload();
  void ReadVersion();
  bool Verify();
  bool BeginRun(const Side& side, std::string& folder);
  void EndRun();
  bool FolderIsThere(const std::string& folder);
  void Announce(const Side& side, const std::string& folder);
  // Runs `one` for each ticked module whose file is good, until Cancel.
  void ForEachModule(const Side& side, const std::string& folder,
                     const std::function<void(int module, const std::string& path)>& one);
  bool Prepare(int module, const std::string& path, TextBox& result);
  // Loads the file and holds it against the module. `announced` is what it was before; null: not yet known.
  Verdict Judge(int module, const std::string& path, const FwFileFacts* announced);
  // Why a file could not be loaded, in the language of this offset.
  std::string WhyNotLoaded(const FwFileFacts& facts, Language language) const;
  bool IsFolder(const std::string& path) const;

  void DownloadModule(int module, const std::string& path);
  void VerifyModule(int module, const std::string& path);
  bool Compare(int module, const std::string& path);
  void SaveReadBack(const std::string& path, bool is_proof);
  // One exchange of `bytes` on the line: times it, records it, and notes what to do next when it failed.
  bool Exchange(const char* step, std::size_t bytes, const std::string& subject, const SendStep& send);
  void Pause(int ms);
  std::string PathOf(const std::string& folder, int module) const;
  frmMaint_Wait& Wait();

  App& app_;
  FwJournal journal_;
  std::array<FwFileFacts, kFwModules> announced_;
  // Modules that may be incomplete in the device: the text id of the instruction, else 0. They stay so from
  // run to run, until the module is downloaded or found equal.
  std::array<int, kFwModules> incomplete_{};
  FwNotes notes_;
  bool running_ = false;
};

}  // namespace vlt
