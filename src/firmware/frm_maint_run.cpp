// SPDX-License-Identifier: GPL-3.0-or-later
// The runs of the firmware tool.
#include <algorithm>
#include <utility>

#include "files/file_report.h"
#include "firmware/frm_maint_main.h"
#include "link/modbus.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr const char* kSuccess = "SUCCESS";
constexpr const char* kNotGood = "NG";
constexpr const char* kVersionTitle = "VERSION CHECK";

constexpr int kStepPauseMs = 1000;
constexpr int kEndPauseMs = 6000;
constexpr int kAnswerGapMs = 1000;  // an answer is over when so long nothing has followed

constexpr std::uint32_t kVersionLength = 20;
constexpr std::size_t kShortFrame = 32;  // an open or close frame and its answer, about
constexpr std::size_t kAroundImage = 16;
constexpr std::size_t kDigestShown = 16;

// What each fault is called in the journal, and what the operator is told. The text gets the module and the
// link's own words.
struct FaultRow {
  FwFault fault;
  const char* word;
  int text_id;
};
constexpr FaultRow kFaults[] = {
    {FwFault::kPort, "port not open", text::kFwNextPort},
    {FwFault::kFile, "file not read", text::kFwNextChanged},
    {FwFault::kFileChanged, "file changed", text::kFwNextChanged},
    {FwFault::kWrite, "frame not sent", text::kFwNextLost},
    {FwFault::kRead, "line lost", text::kFwNextLost},
    {FwFault::kSilence, "no answer", text::kFwNextSilence},
    {FwFault::kNoLineEnd, "answer breaks off", text::kFwNextBroken},
    {FwFault::kDeviceError, "error answer", text::kFwNextDevice},
};

const FaultRow* RowOf(FwFault fault) {
  const auto* row = std::find_if(std::begin(kFaults), std::end(kFaults),
                                 [&](const FaultRow& r) { return r.fault == fault; });
  return row == std::end(kFaults) ? nullptr : row;
}

const FwModule& ModuleOf(int index) { return FwModules()[static_cast<std::size_t>(index)]; }

std::string FileNameOf(int module) { return std::string(ModuleOf(module).stem) + ".bin"; }

}  // namespace

frmMaint_Wait& frmMaint_MAIN::Wait() { return static_cast<frmMaint_Wait&>(List().Load("frmMaint_Wait")); }

void frmMaint_MAIN::Pause(int ms) {
  Wait().Expect(ms);
  WaitMs(app_, ms);
}

std::string frmMaint_MAIN::PathOf(const std::string& folder, int module) const {
  const bool separated = folder.ends_with('/') || folder.ends_with('\\');
  return folder + (separated ? "" : std::string(1, app_.platform.process.Separator())) + FileNameOf(module);
}

bool frmMaint_MAIN::FolderIsThere(const std::string& folder) {
  if (folder.empty()) {
    Tell("Please enter the folder", MessageIcon::kInformation);
    return false;
  }
  std::string content;
  if (app_.platform.files.Read(folder, content) == FileError::kNotAFile) return true;
  Tell("Folder does not exist", MessageIcon::kInformation);
  return false;
}

// Names the files of the ticked modules before the first frame leaves. What is sent later must be these.
void frmMaint_MAIN::Announce(const Side& side, const std::string& folder) {
  std::string names;
  for (int i = 0; i < kFwModules; ++i) {
    auto& facts = announced_[static_cast<std::size_t>(i)] = {};
    Label& label = side.images(i);
    label.SetCaption("");
    label.SetHint("");
    if (!side.ticks(i).Ticked()) continue;
    const std::string path = PathOf(folder, i);
    facts = Files.Look(path);
    if (facts.digest.empty()) continue;
    names += (names.empty() ? "" : ", ") + std::string(ModuleOf(i).stem);
    label.SetCaption(FormatText(app_.Text(text::kFwImage),
                                {std::to_string(facts.size), facts.digest.substr(0, kDigestShown)}));
    label.SetHint(path + "\nSHA-256 " + facts.digest);
  }
  if (!names.empty()) Note(FormatText(app_.Text(side.plan_text_id), {names}));
}

bool frmMaint_MAIN::BeginRun(const Side& side, std::string& folder) {
  folder = Trim(side.folder.Text());
  if (!FolderIsThere(folder)) return false;
  app_.state.FwCancelFlag = 0;
  Announce(side, folder);
  bool any = false;
  side.ticks.ForEach([&](const CheckBox& tick) { any = any || tick.Ticked(); });
  if (!any) return true;
  const FileError error = journal_.Begin(folder, side.journal_word);
  if (error != FileError::kGood) {
    Note(FormatText(app_.Text(text::kFwNoJournal), {app_.Text(NotWrittenReason(error))}));
  }
  return true;
}

void frmMaint_MAIN::EndRun() {
  const std::string path = journal_.Path();
  journal_.End();
  if (path.empty()) return;
  if (journal_.Lost() == FileError::kGood) {
    Note(FormatText(app_.Text(text::kFwJournal), {path}));
  } else {
    Note(FormatText(app_.Text(text::kFwNoJournal), {app_.Text(NotWrittenReason(journal_.Lost()))}));
  }
}

bool frmMaint_MAIN::Download() {
  txtDL_Result.ForEach([](TextBox& result) { result.SetText(""); });
  const Side side{chkModule, txtDL_Result, lblImage, txtDown, text::kFwToWrite, "download"};
  std::string folder;
  if (!BeginRun(side, folder)) return false;
  Link.FwDirection = kFwDownload;
  ForEachModule(side, folder, [this](int i, const std::string& path) { DownloadModule(i, path); });
  EndRun();
  return true;
}

bool frmMaint_MAIN::Upload() {
  Link.FwDirection = kFwUpload;
  if (optSEL_UP(0).Value()) {
    ReadVersion();
    return true;
  }
  if (optSEL_UP(1).Value()) return Verify();
  Tell("Please select a VERSION CHECK and VERIFICATION", MessageIcon::kInformation);
  return true;
}

bool frmMaint_MAIN::Verify() {
  txtResult.ForEach([](TextBox& result) { result.SetText(""); });
  const Side side{chkModule_up, txtResult, lblImage_up, txtUp, text::kFwToCompare, "verification"};
  std::string folder;
  if (!BeginRun(side, folder)) return false;
  bool any = false;
  chkModule_up.ForEach([&](const CheckBox& tick) { any = any || tick.Ticked(); });
  if (!any) Tell("Please check the verification module", MessageIcon::kInformation);
  ForEachModule(side, folder, [this](int i, const std::string& path) { VerifyModule(i, path); });
  EndRun();
  return true;
}

void frmMaint_MAIN::ForEachModule(const Side& side, const std::string& folder,
                                  const std::function<void(int, const std::string&)>& one) {
  for (int i = 0; i < kFwModules; ++i) {
    if (!side.ticks(i).Ticked()) continue;
    const std::string path = PathOf(folder, i);
    journal_.OfModule(&ModuleOf(i), announced_[static_cast<std::size_t>(i)]);
    if (!Prepare(i, path, side.results(i))) continue;
    if (app_.state.FwCancelFlag == 1) {
      journal_.Add("run", "cancelled");
      Note(app_.Text(text::kFwCancelled));
      return;
    }
    one(i, path);
  }
}

// The file is there, can be read, is the one that was announced, and is of this module.
bool frmMaint_MAIN::Prepare(int module, const std::string& path, TextBox& result) {
  const std::string name = FileNameOf(module);
  if (!app_.platform.files.Exists(path)) {
    Refuse(result, "No File", "",
           FormatText(app_.Text(text::kFileNotRead), {name, app_.Text(text::kFileMissing)}));
    return false;
  }
  bool ok = false;
  Files.FwLoadFile(path, Link.FwImageLength, ok);
  if (!ok) {
    Refuse(result, "File Error", "FILE ERROR : " + name,
           FormatText(app_.Text(text::kFileNotRead), {name, WhyNotLoaded(Files.Loaded())}));
    return false;
  }
  if (Files.Loaded().digest != announced_[static_cast<std::size_t>(module)].digest) {
    Refuse(result, "File Error", "FILE ERROR : " + name,
           FormatText(app_.Text(text::kFwNextChanged), {ModuleOf(module).stem}));
    return false;
  }
  Link.FwFileDigest = Files.Loaded().digest;
  Files.FwCompareId(ModuleOf(module).identification, ModuleOf(module).position, ok);
  if (ok) return true;
  Refuse(result, kNotGood, "FILE ERROR : Error of identification code",
         FormatText(app_.Text(text::kFwOtherModule), {name, ModuleOf(module).title}));
  return false;
}

void frmMaint_MAIN::Refuse(TextBox& result, const char* outcome, const std::string& message,
                           const std::string& note) {
  journal_.Add("file", outcome, message);
  Note(note);
  if (!message.empty()) Tell(message, MessageIcon::kStop);
  result.SetText(outcome);
}

std::string frmMaint_MAIN::WhyNotLoaded(const FwFileFacts& facts) const {
  if (facts.error == FileError::kGood) return app_.Text(text::kFwEmptyFile);
  if (facts.error == FileError::kTooLarge) {
    return FormatText(app_.Text(text::kFwTooLong), {std::to_string(kFwLargestImage)});
  }
  return app_.Text(NotReadReason(facts.error));
}

bool frmMaint_MAIN::Exchange(const char* step, std::size_t bytes, const std::string& subject,
                             const SendStep& send) {
  Wait().Expect(FwLineMs(bytes) + kAnswerGapMs);
  bool ok = false;
  send(ok);
  const FaultRow* row = ok ? nullptr : RowOf(Link.LastFault);
  const std::string words = row == nullptr ? "" : row->word;
  journal_.Add(step, ok ? "good" : "failed",
               Link.LastFaultText.empty() ? words : words + ": " + Link.LastFaultText);
  if (row != nullptr) Note(FormatText(app_.Text(row->text_id), {subject, Link.LastFaultText}));
  return ok;
}

void frmMaint_MAIN::DownloadModule(int module, const std::string& path) {
  const FwModule& m = ModuleOf(module);
  frmMaint_Wait& wait = Wait();
  wait.Begin(m.title, "Wait ...... DOWNLOAD Start", 4);
  bool ok = Exchange("open", kShortFrame, m.stem,
                     [&](bool& sent) { Link.FwSendOpen(m.download_code, m.number, m.address, sent); });
  if (ok) {
    Pause(kStepPauseMs);
    wait.Step(2, "Wait ...... DOWNLOAD");
    ok = Exchange("data", Link.FwImageLength + kAroundImage, m.stem,
                  [&](bool& sent) { Link.FwSendData(path, sent); });
    if (!ok && Link.FwCommand == 'B') Note(FormatText(app_.Text(text::kFwIncomplete), {m.stem}));
  }
  if (ok) {
    wait.Step(3, "Wait ...... DOWNLOAD End");
    Pause(kStepPauseMs);
    ok = Exchange("close", kShortFrame, m.stem, [&](bool& sent) { Link.FwSendClose(m.download_code, sent); });
    wait.Step(4, "Wait ...... FlashROM IS WRITING IN.");
    if (!ok) Note(FormatText(app_.Text(text::kFwIncomplete), {m.stem}));
  }
  txtDL_Result(module).SetText(ok ? kSuccess : kNotGood);
  journal_.Add("result", txtDL_Result(module).Text());
  Pause(kEndPauseMs);
  wait.End();
}

void frmMaint_MAIN::VerifyModule(int module, const std::string& path) {
  const FwModule& m = ModuleOf(module);
  frmMaint_Wait& wait = Wait();
  wait.Begin(m.title, "Wait ...... UPLOAD Start", 5);
  bool same = false;
  bool ok = Exchange("open", kShortFrame, m.stem,
                     [&](bool& sent) { Link.FwSendOpen(m.upload_code, m.number, m.address, sent); });
  if (ok) {
    Pause(kStepPauseMs);
    wait.Step(2, "Wait ...... UPLOAD");
    ok = Exchange("read", Link.FwImageLength + kAroundImage, m.stem,
                  [&](bool& sent) { Link.FwSendRead(sent); });
  }
  if (ok) {
    same = Compare(module, path);
    Pause(kStepPauseMs);
    wait.Step(4, "Wait ...... UPLOAD End");
    ok = Exchange("close", kShortFrame, m.stem, [&](bool& sent) { Link.FwSendClose(m.upload_code, sent); });
    wait.Step(5, "Wait ...... UPLOAD Save");
    SaveReadBack(path);
  }
  txtResult(module).SetText(ok && same ? kSuccess : kNotGood);
  journal_.Add("result", txtResult(module).Text());
  Pause(kEndPauseMs);
  wait.End();
}

// Takes the image out of the answer and compares it with the file, which must still be the announced one.
bool frmMaint_MAIN::Compare(int module, const std::string& path) {
  const char* stem = ModuleOf(module).stem;
  const bool whole = Files.TakeImage();
  Wait().Step(3, "Wait ...... VERIFICATION");
  bool same = false;
  Files.FwVerify(path, same);
  const bool changed = Files.Look(path).digest != announced_[static_cast<std::size_t>(module)].digest;
  if (changed) {
    Note(FormatText(app_.Text(text::kFwNextChanged), {stem}));
  } else if (!whole) {
    Note(FormatText(app_.Text(text::kFwShortImage),
                    {stem, std::to_string(Link.FwReceived), std::to_string(Link.FwImageLength)}));
  } else if (!same) {
    Note(FormatText(app_.Text(text::kFwDiffers),
                    {stem, FwAddressText(static_cast<std::int32_t>(Files.FwDifference))}));
  }
  const bool good = whole && same && !changed;
  journal_.Add("compare", good ? "good" : "failed",
               Files.FwDifference < 0
                   ? ""
                   : "differs at " + FwAddressText(static_cast<std::int32_t>(Files.FwDifference)) + "H");
  return good;
}

void frmMaint_MAIN::SaveReadBack(const std::string& path) {
  const std::string base = path.substr(0, path.rfind('.'));
  const FileError error = Files.FwSaveImage(base, Files.FwImage);
  journal_.Add("save", error == FileError::kGood ? "good" : "failed", Files.SavedPath);
  if (error == FileError::kGood) return;
  Note(NotWrittenText(app_, Files.SavedPath, error));
}

void frmMaint_MAIN::ReadVersion() {
  txtVer.SetText("");
  frmMaint_Wait& wait = Wait();
  app_.state.FwCancelFlag = 0;
  wait.Begin(kVersionTitle, "Wait ...... VERSION Start", 3);
  Link.FwImageLength = kVersionLength;
  std::string version;
  bool ok = Exchange("open", kShortFrame, kVersionTitle,
                     [&](bool& sent) { Link.FwSendOpen(kFwVersionCode, 0, 0, sent); });
  if (ok) {
    wait.Step(2, "Wait ...... UPLOAD");
    Pause(kStepPauseMs);
    ok = Exchange("read", kShortFrame, kVersionTitle, [&](bool& sent) { Link.FwSendRead(sent); });
  }
  if (ok) {
    version.assign(Link.RxBuffer.begin(), Link.RxBuffer.begin() + kVersionLength);
    wait.Step(3, "Wait ...... VERSION End");
    Pause(kStepPauseMs);
    ok = Exchange("close", kShortFrame, kVersionTitle,
                  [&](bool& sent) { Link.FwSendClose(kFwVersionCode, sent); });
  }
  wait.End();
  txtVer.SetText(ok ? FwDeviceText(version) : "Error");
}

}  // namespace vlt
