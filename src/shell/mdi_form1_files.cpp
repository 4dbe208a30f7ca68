// The main window's parameter files and its end.
#include "files/file_report.h"
#include "files/parameter_file.h"
#include "files/settings_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "shell/mdi_form1.h"
#include "shell/start.h"

namespace vlt {
namespace {

constexpr const char* kParameterFilter = "Initial value(*.ini)|*.ini";
// Shown by the menu in both languages.
constexpr const char* kLoaderFileRefused = "ローダー初期ファイルを更新することはできません";

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
  if (result.file != FileError::kGood) {
    ReportNotRead(app_, dialog_file_, result.file);
  } else if (!result.Converted()) {
    app_.Status(FormatText(app_.Text(text::kFileNotRead), {LastComponent(dialog_file_), result.stopped_at}));
  } else {
    ReportOpened(app_, dialog_file_);
  }
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

bool MDIForm1::WriteParameterFile(const std::string& path) {
  const FileError error = SaveParameterFile(app_, path);
  if (error == FileError::kGood) {
    ReportSaved(app_, path);
  } else {
    ReportNotWritten(app_, path, error);
  }
  return error == FileError::kGood;
}

// False when a file was to be written and could not be.
bool MDIForm1::SaveAtClosing() {
  // A cancelled dialog goes on with the name that an earlier one has left.
  AskParameterFile(true);
  const std::string path = dialog_file_;
  if (path.empty()) return true;
  if (IsLoaderFile(app_, path)) {
    app_.Show(app_.Text(4510));
    return true;
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

void MDIForm1::Form_Unload(int& cancel) {
  if (app_.state.UiLocked || closing_) {
    cancel = -1;
    return;
  }
  closing_ = true;
  if (app_.AskYesNo(app_.Text(4500), MessageIcon::kInformation) && !SaveAtClosing()) {
    closing_ = false;
    cancel = -1;
    return;
  }
  SaveLoaderFile();
  CloseAllForms(app_);
  app_.state.AppRunning = false;
  app_.platform.events.EndProcess();
}

}  // namespace vlt
