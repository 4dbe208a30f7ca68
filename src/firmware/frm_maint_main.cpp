// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/frm_maint_main.h"

#include <vector>

#include "files/file_report.h"
#include "files/settings_file.h"
#include "platform/serial_firmware_port.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_firmware.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr int kJapaneseLocale = 1041;
constexpr int kJapaneseGothic = 1;  // id of the name of the Japanese system's font
constexpr const char* kOtherFont = "Times New Roman";
constexpr int kFontSize = 9;

constexpr const char* kToolWindows[] = {"frmMaint_COMM", "frmMaint_Wait", "frmMaint_MAIN"};

bool TakesInput(ControlKind kind) {
  switch (kind) {
    case ControlKind::kCheckBox:
    case ControlKind::kOptionButton:
    case ControlKind::kTextBox:
    case ControlKind::kPushButton:
    case ControlKind::kMenuItem:
    case ControlKind::kTab:
      return true;
    default:
      return false;
  }
}

}  // namespace

// The tool is busy while this lives: nothing of its main window can be worked, and it can't be closed.
class frmMaint_MAIN::Busy {
 public:
  explicit Busy(frmMaint_MAIN& tool) : tool_(tool), locked_(tool.app_.state.UiLocked) {
    tool_.running_ = true;
    tool_.app_.state.UiLocked = true;  // nor can the main window, where there is one
    tool_.List().Unload("frmMaint_COMM");
    tool_.List().SetMousePointer(kHourglassPointer);
    for (Control* control : tool_.Controls()) {
      if (!TakesInput(control->Kind()) || !control->Enabled()) continue;
      disabled_.push_back(control);
      control->SetEnabled(false);
    }
  }
  ~Busy() {
    tool_.notes_.Notice("");
    tool_.ShowNotes();
    for (Control* control : disabled_) control->SetEnabled(true);
    tool_.List().SetMousePointer(kNormalPointer);
    tool_.app_.state.UiLocked = locked_;
    tool_.running_ = false;
  }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  frmMaint_MAIN& tool_;
  bool locked_;
  std::vector<Control*> disabled_;
};

frmMaint_MAIN::frmMaint_MAIN(App& app)
    : Form(app.windows, "frmMaint_MAIN", FormPlace::kWindow),
      Link(app),
      Files(app, Link),
      app_(app),
      journal_(app) {
  cmdEXE.on_click = [this] { cmdEXE_Click(); };
  cmdQuit.on_click = [this] { cmdQuit_Click(); };
  cmdFolder.on_click = [this] { cmdFolder_Click(); };
  cmdUP.on_click = [this] { cmdUP_Click(); };
  MENU_COMM.on_click = [this] { MENU_COMM_Click(); };
}

void frmMaint_MAIN::Form_Load() {
  Dress();
  SSTab1.SetTab(0);
  for (int i = 1; i < kFwModules; ++i) {
    chkModule(i).SetVisible(true);
    Label1(i).SetVisible(true);
  }
  txtVer.SetLocked(true);
  Link.FwPortName = "COM" + app_.state.PortNo;
  ShowPort();
}

void frmMaint_MAIN::Dress() {
  SetCaption(app_.Text(1090));
  const struct {
    Control& control;
    int text_id;
  } captions[] = {
      {MENU_COMM, 1920},
      {lblFolder, text::kFwFolder},
      {lblFolder_up, text::kFwFolder},
      {cmdFolder, text::kFwBrowse},
      {cmdUP, text::kFwBrowse},
      {lblBoot, text::kFwBootMeans},
      {lblAfterNg, text::kFwAfterNg},
      {cmdEXE, text::kFwExecute},
      {cmdQuit, 400},
  };
  for (const auto& row : captions) row.control.SetCaption(app_.Text(row.text_id));
  SSTab1.SetTabCaption(0, app_.Text(text::kFwDownloadTab));
  SSTab1.SetTabCaption(1, app_.Text(text::kFwUploadTab));
  optSEL_UP(0).SetCaption("VERSION CHECK");
  optSEL_UP(1).SetCaption("VERIFICATION");
  for (int i = 0; i < kFwModules; ++i) {
    const FwModule& module = FwModules()[static_cast<std::size_t>(i)];
    chkModule(i).SetCaption(module.stem);
    chkModule_up(i).SetCaption(module.stem);
    Label1(i).SetCaption(module.title);
    Label2(i).SetCaption(module.title);
    txtDL_Result(i).SetLocked(true);
    txtResult(i).SetLocked(true);
  }
  const bool japanese = app_.state.LocaleId == kJapaneseLocale;
  const Font font{japanese ? LookupText(kJapaneseGothic) : kOtherFont, kFontSize, false};
  for (Control* control : Controls()) control->SetFont(font);
}

void frmMaint_MAIN::Form_Unload(int& cancel) {
  if (running_) {
    cancel = -1;
    notes_.Notice(app_.Text(text::kFwNotNow));
    ShowNotes();
    return;
  }
  List().Unload("frmMaint_COMM");
  List().Unload("frmMaint_Wait");
  app_.state.FwEndFlag = 1;
}

void frmMaint_MAIN::FORM_AllEnd() {
  for (const char* window : kToolWindows) List().Unload(window);
}

void frmMaint_MAIN::cmdQuit_Click() { FORM_AllEnd(); }

void frmMaint_MAIN::cmdFolder_Click() { ChooseFolder(txtDown); }

void frmMaint_MAIN::cmdUP_Click() { ChooseFolder(txtUp); }

void frmMaint_MAIN::ChooseFolder(TextBox& folder) {
  const auto chosen = app_.platform.dialogs.AskFolder({"Please choose a folder.", folder.Text()});
  if (chosen) folder.SetText(CutAtNul(*chosen));
}

void frmMaint_MAIN::MENU_COMM_Click() { List().Load("frmMaint_COMM").Show(); }

void frmMaint_MAIN::SetPort(const std::string& name, const FileError& written) {
  Link.FwPortName = name;
  ShowPort();
  if (written == FileError::kGood) return;
  notes_.Begin();
  Note(NotWrittenText(app_, CommPath(app_), written));
}

// "COM3   /dev/ttyUSB0".
void frmMaint_MAIN::ShowPort() {
  const int number = ComNumber(Link.FwPortName);
  const std::string name = number > 0 ? Link.FwPortName : app_.Text(text::kPortNotChosen);
  const std::string device = number > 0 ? PortDeviceInForce(app_, number) : "";
  StatusBar1.SetPanel(1, device.empty() ? name : name + "   " + device);
}

void frmMaint_MAIN::Tell(const std::string& text, MessageIcon icon) {
  app_.platform.dialogs.Ask({.text = text, .title = kDownloadToolTitle, .icon = icon});
}

void frmMaint_MAIN::Note(const std::string& text) {
  notes_.Tell(text);
  ShowNotes();
}

void frmMaint_MAIN::Advise(FwAdvice weight, const std::string& text) {
  notes_.Advise(weight, text);
  ShowNotes();
}

void frmMaint_MAIN::StopSoon() {
  if (running_) Wait().cmdCan_Click();
}

void frmMaint_MAIN::cmdEXE_Click() {
  if (running_) return;
  const Busy busy(*this);
  notes_.Begin();
  ShowNotes();
  const bool ran = SSTab1.Tab() == 0 ? Download() : Upload();
  AdviseOfIncomplete();
  if (ran) Tell("Processing has been completed.", MessageIcon::kInformation);
}

}  // namespace vlt
