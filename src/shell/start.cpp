// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/start.h"

#include "calc/calc.h"
#include "compare/compare.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "files/whole_file.h"
#include "firmware/firmware.h"
#include "live/live.h"
#include "monitor/frm_line.h"
#include "pages/pages.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_files.h"
#include "shell/cset_devices.h"
#include "shell/cset_search.h"
#include "shell/found_runs.h"
#include "shell/frame_facts.h"
#include "shell/frm_about.h"
#include "shell/frm_cset.h"
#include "shell/frm_mssg.h"
#include "shell/mdi_form1.h"
#include "shell/port_watch.h"
#include "shell/splash.h"
#include "state/form_lock.h"
#include "state/register_window.h"

namespace vlt {
namespace {

StartResult End(App& app) {
  app.platform.events.EndProcess();
  return StartResult::kEnded;
}

// The settings of `path` and, from the file that they name, the units of the last session.
LoadResult ReadSettings(App& app, const std::string& path) {
  LoadResult result = LoadSettings(app, path, 0);
  LoadUnitCache(app, app.state.IniFilePath);
  GetShortPath(app, app.state.IniFilePath);
  return result;
}

struct SettingsRead {
  std::string path;
  LoadResult result;
};

// Why the settings that were read last name no hardware variant.
std::string WhyNoVariant(const App& app, const SettingsRead& last) {
  const std::string path = OneSeparator(CleanPath(last.path), app.platform.process.Separator());
  const LoadResult& result = last.result;
  if (result.file != FileError::kGood) return NotReadText(app, path, result.file);
  // Reading has ended ahead of the variant.
  const bool ahead = !result.Converted() && !result.stopped_at.starts_with("VERIFICATION/");
  if (ahead) return FormatText(app.Text(text::kStartBadKey), {path, result.stopped_at});
  std::string codes;
  for (const SplashVariant& variant : SplashVariants()) {
    codes += (codes.empty() ? "" : ", ") + std::string(variant.model_code);
  }
  return FormatText(app.Text(text::kStartBadModel), {path, "SYSTEM/VR", app.state.ModelCode, codes});
}

// Whose lock file stood in the way, and what has become of it.
std::string LockText(const App& app, const FoundLock& lock) {
  const int id = lock.state == FoundLock::State::kTakenOver   ? text::kLockTakenOver
                 : lock.state == FoundLock::State::kElsewhere ? text::kLockElsewhere
                                                              : text::kLockUnsure;
  const std::string owner = lock.process == 0 ? app.Text(text::kLockNoOwner)
                                              : FormatText(app.Text(text::kLockOwner),
                                                           {std::to_string(lock.process), lock.machine});
  return FormatText(app.Text(id), {lock.path, owner});
}

}  // namespace

void RegisterShellWindows(App& app) {
  RegisterWindow<MDIForm1>(app, "MDIForm1");
  RegisterWindow<frmMssg>(app, "frmMssg");
  RegisterWindow<frmAbout>(app, "frmAbout");
  RegisterWindow<FrmCSet>(app, "FrmCSet");
  RegisterWindow<frmLine>(app, "frmLine");
  RegisterWindow<frmFoundRuns>(app, "frmFoundRuns");
  RegisterPart<FrameFacts>(app, "MDIForm1");
  RegisterPart<PortWatch>(app, "MDIForm1");
  RegisterPart<FoundRuns>(app, "MDIForm1");
  RegisterPart<CSetDevices, FrmCSet>(app, "FrmCSet");
  RegisterPart<CSetSearch, FrmCSet>(app, "FrmCSet");
  for (const SplashVariant& variant : SplashVariants()) {
    app.windows.Register(variant.form,
                         [&app, &variant] { return std::make_unique<SplashForm>(app, variant); });
  }
}

void RegisterAllWindows(App& app) {
  RegisterShellWindows(app);
  RegisterPages(app);
  RegisterLiveWindows(app);
  RegisterCalcWindows(app);
  RegisterFirmwareWindows(app);
  RegisterCompareWindows(app);
}

bool ReadStartSettings(App& app) {
  SharedState& state = app.state;
  state.LocaleId = app.platform.process.LocaleId();
  state.PortIsOpen = false;
  state.PortNo.clear();  // unknown until a file or its default names it
  const std::string bootstrap = BootstrapPath(app);
  SettingsRead last{bootstrap, ReadSettings(app, bootstrap)};
  // What the bootstrap file names overrides all of it, mostly once more from the same file.
  if (const std::string named = state.IniFilePath; named != bootstrap) {
    const LoadResult result = ReadSettings(app, named);
    // Reading that stopped early has named no file.
    if (!named.empty()) last = {named, result};
  }
  state.LangOffset = state.LangFlag > 0 ? static_cast<int>(Language::kEnglish) : 0;
  LoadTiming(app);
  BuildCommSettings(state);
  state.RangeUnitTrack = state.UnitFlag;
  state.TotalUnitTrack = state.UnitFlag;
  state.PvRunning = 0;
  if (FindSplashVariant(state.ModelCode) != nullptr) return true;
  state.StartFaultReason = WhyNoVariant(app, last);
  return false;
}

StartResult StartUp(App& app) {
  const bool only_instance = app.platform.process.BecomeOnlyInstance();
  const FoundLock lock = app.platform.process.LockInTheWay();
  const bool told = lock.state != FoundLock::State::kNone;
  // A second instance ends without a word; where nobody can tell whether it is one, the file is named, in the
  // language of the settings.
  if (!only_instance && !told) return End(app);
  const bool may_start = ReadStartSettings(app);
  if (told) {
    app.state.StartRemark = LockText(app, lock);
    app.platform.process.PutError(app.state.StartRemark);
  }
  if (!only_instance) {
    app.Show(app.state.StartRemark);
    return End(app);
  }
  if (!may_start) {
    app.platform.process.PutError(app.state.StartFaultReason);
    app.Show(app.Text(text::kCanNotStart));
    return End(app);
  }
  const SplashVariant& variant = *FindSplashVariant(app.state.ModelCode);
  app.windows.Run([&] { app.windows.Load(variant.form).Show(); });
  return StartResult::kSplashRuns;
}

}  // namespace vlt
