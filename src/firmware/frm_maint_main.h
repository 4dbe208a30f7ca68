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
  void SetPort(const std::string& name, FileError written);

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

  Label lblNote{*this, "lblNote"};  // what a run is about to do, and what to do next
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

  void Dress();
  void ShowPort();
  void ChooseFolder(TextBox& folder);
  void Tell(const std::string& text, MessageIcon icon);
  void Note(const std::string& text);

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
  void Refuse(TextBox& result, const char* outcome, const std::string& message, const std::string& note);
  std::string WhyNotLoaded(const FwFileFacts& facts) const;

  void DownloadModule(int module, const std::string& path);
  void VerifyModule(int module, const std::string& path);
  bool Compare(int module, const std::string& path);
  void SaveReadBack(const std::string& path);
  // One exchange of `bytes` on the line: times it, records it, and notes what to do next when it failed.
  bool Exchange(const char* step, std::size_t bytes, const std::string& subject, const SendStep& send);
  void Pause(int ms);
  std::string PathOf(const std::string& folder, int module) const;
  frmMaint_Wait& Wait();

  App& app_;
  FwJournal journal_;
  std::array<FwFileFacts, kFwModules> announced_;
  std::string notes_;
  bool running_ = false;
};

}  // namespace vlt
