// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's parameter files and its end.
#include "files/file_report.h"
#include "files/parameter_file.h"
#include "files/settings_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "shell/closing.h"
#include "shell/mdi_form1.h"

namespace vlt {
namespace {

constexpr const char* kParameterFilter = "Initial value(*.ini)|*.ini";
// Shown by the menu in both languages.
constexpr const char* kLoaderFileRefused = "ローダー初期ファイルを更新することはできません";

// A flag that is set while this lives, also when an exception ends it.
class Flagged {
 public:
  explicit Flagged(bool& flag) : flag_(flag) { flag_ = true; }
  ~Flagged() { flag_ = false; }
  Flagged(const Flagged&) = delete;
  Flagged& operator=(const Flagged&) = delete;

 private:
  bool& flag_;
};

}  // namespace

void MDIForm1::UnloadOthers() {
  for (Form* form : List().Open()) {
    if (form != this && List().Exists(form)) List().Unload(form->Name());
  }
}

bool MDIForm1::AskParameterFile(bool to_save) {
  FileQuestion question;
  question.filter = kParameterFilter;
  question.name = LastComponent(dialog_file_);
  Dialogs& dialogs = app_.platform.dialogs;
  const auto chosen = to_save ? dialogs.AskSaveFile(question) : dialogs.AskOpenFile(question);
  if (!chosen.has_value()) return false;
  dialog_file_ = *chosen;
  return !dialog_file_.empty();
}

void MDIForm1::readparam_Click() {
  UnloadOthers();
  if (!AskParameterFile(false)) return;
  const LoadResult result = OpenParameterFile(app_, dialog_file_);
  ShowUnitSystem();
  ShowPvButton();
  ShowFacts();
  ReportOpened(app_, dialog_file_, result);
}

void MDIForm1::setParam_Click() {
  UnloadOthers();
  if (!AskParameterFile(true)) return;
  const std::string path = dialog_file_;
  SavePagesToSlots(app_);
  if (IsLoaderFile(app_, path)) {
    app_.Show(kLoaderFileRefused);
  } else {
    WriteParameterFile(path);
  }
}

FileError MDIForm1::WriteParameterFile(const std::string& path) {
  const FileError error = SaveParameterFile(app_, path);
  ReportWritten(app_, path, error);
  return error;
}

FileError MDIForm1::SaveAtClosing() {
  // A cancelled dialog goes on with the name that an earlier one has left.
  AskParameterFile(true);
  const std::string path = dialog_file_;
  if (path.empty()) return FileError::kGood;
  if (IsLoaderFile(app_, path)) {
    app_.Show(app_.Text(text::kIsLoaderFile));
    return FileError::kGood;
  }
  SavePagesToSlots(app_);
  return WriteParameterFile(path);
}

void MDIForm1::SaveLoaderFile() {
  const std::string path = app_.state.IniFilePath;
  FileError error = SaveSystemSettings(app_, path);
  if (error == FileError::kGood) error = SaveUnitCache(app_, path);
  if (error != FileError::kGood) ReportNotWritten(app_, path, error);
}

bool MDIForm1::MayEnd() {
  const bool save = app_.AskYesNo(app_.Text(text::kSaveQuestion), MessageIcon::kInformation);
  const FileError saved = save ? SaveAtClosing() : FileError::kGood;
  SaveLoaderFile();
  if (saved == FileError::kGood) return true;
  const std::string why = WhyNotWritten(saved, app_.state.Spoken());
  return app_.AskYesNo(FormatText(app_.Text(text::kEndWithoutFile), {FailedName(dialog_file_, saved), why}),
                       MessageIcon::kStop);
}

void MDIForm1::Form_Unload(int& cancel) {
  if (app_.state.UiLocked || closing_) {
    cancel = -1;
    return;
  }
  const Flagged closing(closing_);
  if (!MayEnd()) {
    cancel = -1;
    return;
  }
  CloseAllForms(app_);
  app_.state.AppRunning = false;
  app_.platform.events.EndProcess();
}

}  // namespace vlt
