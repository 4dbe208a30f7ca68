// SPDX-License-Identifier: GPL-3.0-or-later
// The runs of the firmware tool.
#include <algorithm>
#include <utility>
#include <vector>

#include "files/file_report.h"
#include "firmware/frm_maint_main.h"
#include "link/modbus.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_firmware.h"
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

constexpr Language kJournalLanguage = Language::kEnglish;

// What each fault is called in the journal, what the operator is told, and what to do: while nothing of the
// module was sent, and once its data frame has left. `happened` gets the module and the link's own words.
struct FaultRow {
  FwFault fault;
  const char* word;
  int happened;
  int advice;
  int once_sent;
};
constexpr FaultRow kFaults[] = {
    {FwFault::kPort, "port not open", text::kFwPortRefused, text::kFwDoPort, text::kFwKeepPower},
    {FwFault::kFile, "file not read", text::kFwChanged, text::kFwDoWait, text::kFwKeepPower},
    {FwFault::kFileChanged, "file changed", text::kFwChanged, text::kFwDoWait, text::kFwKeepPower},
    {FwFault::kWrite, "frame not sent", text::kFwLineLost, text::kFwDoPlug, text::kFwKeepPower},
    {FwFault::kRead, "line lost", text::kFwLineLost, text::kFwDoPlug, text::kFwKeepPower},
    {FwFault::kSilence, "no answer", text::kFwSilent, text::kFwDoAnswer, text::kFwKeepPower},
    {FwFault::kNoLineEnd, "answer breaks off", text::kFwBreaksOff, text::kFwDoNoise, text::kFwKeepPower},
    {FwFault::kDeviceError, "error answer", text::kFwRefused, text::kFwDoFit, text::kFwKeepPowerFit},
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

bool frmMaint_MAIN::IsFolder(const std::string& path) const {
  std::vector<std::string> names;
  const FileError error = app_.platform.files.FilesIn(path, names);
  // What may not be listed can still be one.
  return error == FileError::kGood || (error == FileError::kNoPermission && app_.platform.files.Exists(path));
}

bool frmMaint_MAIN::FolderIsThere(const std::string& folder) {
  if (folder.empty()) {
    Tell("Please enter the folder", MessageIcon::kInformation);
    return false;
  }
  if (IsFolder(folder)) return true;
  std::string content;
  const FileError error = app_.platform.files.Read(folder, content);
  const bool shut = error == FileError::kNoPermission && !app_.platform.files.Exists(folder);
  Tell(shut ? FormatText(app_.Text(text::kFwFolderShut), {app_.Text(NotReadReason(error))})
            : "Folder does not exist",
       MessageIcon::kInformation);
  return false;
}

// Judges the files of the ticked modules before the first frame leaves, and names those that will be used.
// What is sent later must be these.
void frmMaint_MAIN::Announce(const Side& side, const std::string& folder) {
  std::string names;
  for (int i = 0; i < kFwModules; ++i) {
    auto& facts = announced_[static_cast<std::size_t>(i)] = {};
    Label& label = side.images(i);
    label.SetCaption("");
    label.SetHint("");
    if (!side.ticks(i).Ticked()) continue;
    const std::string path = PathOf(folder, i);
    const Verdict verdict = Judge(i, path, nullptr);
    facts = Files.Loaded();
    if (*verdict.result != '\0') {
      Note(verdict.note);
      continue;
    }
    names += (names.empty() ? "" : ", ") + std::string(ModuleOf(i).stem);
    label.SetCaption(FormatText(app_.Text(text::kFwImage),
                                {std::to_string(facts.size), facts.digest.substr(0, kDigestShown)}));
    label.SetHint(path + "\nSHA-256 " + facts.digest);
  }
  if (!names.empty()) notes_.Plan(FormatText(app_.Text(side.plan_text_id), {names}));
  ShowNotes();
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
    notes_.Journal(FormatText(app_.Text(text::kFwNoJournal), {app_.Text(NotWrittenReason(error))}));
    ShowNotes();
  }
  return true;
}

void frmMaint_MAIN::EndRun() {
  const std::string path = journal_.Path();
  journal_.End();
  if (path.empty()) return;
  notes_.Journal(
      journal_.Lost() == FileError::kGood
          ? FormatText(app_.Text(text::kFwJournal), {path})
          : FormatText(app_.Text(text::kFwNoJournal), {app_.Text(NotWrittenReason(journal_.Lost()))}));
  ShowNotes();
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
  const Verdict verdict = Judge(module, path, &announced_[static_cast<std::size_t>(module)]);
  if (*verdict.result == '\0') {
    Link.FwFileDigest = Files.Loaded().digest;
    return true;
  }
  const bool both = !verdict.box.empty() && !verdict.why.empty();
  journal_.Add("file", verdict.result, verdict.box + (both ? ": " : "") + verdict.why);
  notes_.Tell(verdict.note);
  Advise(FwAdvice::kFiles, app_.Text(verdict.advice));
  if (!verdict.box.empty()) Tell(verdict.box, MessageIcon::kStop);
  result.SetText(verdict.result);
  return false;
}

frmMaint_MAIN::Verdict frmMaint_MAIN::Judge(int module, const std::string& path,
                                            const FwFileFacts* announced) {
  const FwModule& m = ModuleOf(module);
  const std::string name = FileNameOf(module);
  const std::string unusable = "FILE ERROR : " + name;
  const bool was_there = app_.platform.files.Exists(path);
  bool ok = false;
  Files.FwLoadFile(path, Link.FwImageLength, ok);
  const FwFileFacts& loaded = Files.Loaded();
  if (!ok) {
    const bool missing = !was_there && loaded.error == FileError::kMissing;
    const std::string why = WhyNotLoaded(loaded, app_.state.Spoken());
    return {missing ? "No File" : "File Error", missing ? "" : unusable,
            FormatText(app_.Text(text::kFileNotRead), {name, why}), WhyNotLoaded(loaded, kJournalLanguage),
            text::kFwDoFiles};
  }
  if (announced != nullptr && loaded.digest != announced->digest) {
    return {"File Error", unusable, FormatText(app_.Text(text::kFwChanged), {m.stem}), "file changed",
            text::kFwDoWait};
  }
  Files.FwCompareId(m.identification, m.position, ok);
  if (ok) return {};
  return {kNotGood, "FILE ERROR : Error of identification code",
          FormatText(app_.Text(text::kFwOtherModule), {name, m.title}), "", text::kFwDoFiles};
}

std::string frmMaint_MAIN::WhyNotLoaded(const FwFileFacts& facts, Language language) const {
  if (facts.error == FileError::kGood) return LookupText(text::kFwEmptyFile, language);
  if (facts.error == FileError::kTooLarge) {
    return FormatText(LookupText(text::kFwTooLong, language), {std::to_string(kFwLargestImage)});
  }
  return WhyNotRead(facts.error, language);
}

void frmMaint_MAIN::MarkIncomplete(int module) {
  const FaultRow* row = RowOf(Link.LastFault);
  incomplete_[static_cast<std::size_t>(module)] = row == nullptr ? text::kFwKeepPower : row->once_sent;
  AdviseOfIncomplete();
}

// One instruction for all modules that may be incomplete, by the first of them.
void frmMaint_MAIN::AdviseOfIncomplete() {
  int text_id = 0;
  std::string names;
  for (int i = 0; i < kFwModules; ++i) {
    const int own = incomplete_[static_cast<std::size_t>(i)];
    if (own == 0) continue;
    if (text_id == 0) text_id = own;
    names += (names.empty() ? "" : ", ") + std::string(ModuleOf(i).stem);
  }
  if (text_id != 0) Advise(FwAdvice::kKeepPower, FormatText(app_.Text(text_id), {names}));
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
  if (row == nullptr) return ok;
  notes_.Tell(FormatText(app_.Text(row->happened), {subject, Link.LastFaultText}));
  Advise(FwAdvice::kAgain, app_.Text(row->advice));
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
    if (!ok && Link.FwCommand == 'B') MarkIncomplete(module);
  }
  if (ok) {
    wait.Step(3, "Wait ...... DOWNLOAD End");
    Pause(kStepPauseMs);
    ok = Exchange("close", kShortFrame, m.stem, [&](bool& sent) { Link.FwSendClose(m.download_code, sent); });
    wait.Step(4, "Wait ...... FlashROM IS WRITING IN.");
    if (!ok) MarkIncomplete(module);
  }
  if (ok) incomplete_[static_cast<std::size_t>(module)] = 0;
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
    SaveReadBack(path, same);
  }
  if (ok && same) incomplete_[static_cast<std::size_t>(module)] = 0;
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
  const FwFileFacts now = Files.Look(path);
  std::string why;
  if (now.error != FileError::kGood) {
    why = WhyNotLoaded(now, kJournalLanguage);
    notes_.Tell(FormatText(app_.Text(text::kFileNotRead),
                           {FileNameOf(module), WhyNotLoaded(now, app_.state.Spoken())}));
    Advise(FwAdvice::kFiles, app_.Text(text::kFwDoFiles));
  } else if (now.digest != announced_[static_cast<std::size_t>(module)].digest) {
    why = RowOf(FwFault::kFileChanged)->word;
    notes_.Tell(FormatText(app_.Text(text::kFwChanged), {stem}));
    Advise(FwAdvice::kAgain, app_.Text(text::kFwDoWait));
  } else if (!whole) {
    const std::string came = std::to_string(Link.FwReceived);
    const std::string asked = std::to_string(Link.FwImageLength);
    why = "only " + came + " of " + asked + " bytes came back";
    notes_.Tell(FormatText(app_.Text(text::kFwShortImage), {stem, came, asked}));
    Advise(FwAdvice::kAgain, app_.Text(text::kFwDoNoise));
  } else if (!same) {
    const std::string at = FwAddressText(static_cast<std::int32_t>(Files.FwDifference));
    why = "differs at " + at + "H";
    notes_.Tell(FormatText(app_.Text(text::kFwDiffers), {stem, at}));
    Advise(FwAdvice::kAgain, app_.Text(text::kFwDoDownload));
  }
  journal_.Add("compare", why.empty() ? "good" : "failed", why);
  return why.empty();
}

void frmMaint_MAIN::SaveReadBack(const std::string& path, bool is_proof) {
  const std::string base = path.substr(0, path.rfind('.'));
  const FileError error = Files.FwSaveImage(base, Files.FwImage);
  journal_.Add("save", error == FileError::kGood ? "good" : "failed", Files.SavedPath);
  if (error != FileError::kGood) return Note(NotWrittenText(app_, Files.SavedPath, error));
  if (!is_proof) Note(FormatText(app_.Text(text::kFwReadBack), {LastComponent(Files.SavedPath)}));
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
