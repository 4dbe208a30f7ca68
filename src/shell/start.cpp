#include "shell/start.h"

#include "files/settings_file.h"
#include "firmware/firmware.h"
#include "link/port.h"
#include "live/live.h"
#include "pages/pages.h"
#include "shell/frm_about.h"
#include "shell/frm_mssg.h"
#include "shell/frm_wait.h"
#include "shell/mdi_form1.h"
#include "shell/splash.h"
#include "state/form_lock.h"

namespace vlt {
namespace {

constexpr int kEnglishOffset = 5000;

StartResult End(App& app) {
  app.platform.events.EndProcess();
  return StartResult::kEnded;
}

// The settings of `path` and, from the file that they name, the units of the last session.
void ReadSettings(App& app, const std::string& path) {
  LoadSettings(app, path, 0);
  LoadUnitCache(app, app.state.IniFilePath);
  GetShortPath(app, app.state.IniFilePath);
}

template <class T>
void RegisterWindow(App& app, const char* name) {
  app.windows.Register(name, [&app] { return std::make_unique<T>(app); });
}

}  // namespace

void RegisterShellWindows(App& app) {
  RegisterWindow<MDIForm1>(app, "MDIForm1");
  RegisterWindow<frmMssg>(app, "frmMssg");
  RegisterWindow<frmAbout>(app, "frmAbout");
  RegisterWindow<frmWait>(app, "frmWait");
  for (const SplashVariant& variant : SplashVariants()) {
    app.windows.Register(variant.form,
                         [&app, &variant] { return std::make_unique<SplashForm>(app, variant); });
  }
}

void RegisterAllWindows(App& app) {
  RegisterShellWindows(app);
  RegisterPages(app);
  RegisterLiveWindows(app);
  RegisterFirmwareWindows(app);
}

StartResult StartUp(App& app) {
  SharedState& state = app.state;
  if (!app.platform.process.BecomeOnlyInstance()) return End(app);
  state.LocaleId = app.platform.process.LocaleId();
  state.PortIsOpen = false;
  state.PortNo.clear();  // unknown until a file or its default names it
  const std::string bootstrap = BootstrapPath(app);
  ReadSettings(app, bootstrap);
  // What the bootstrap file names overrides all of it, mostly once more from the same file.
  const std::string named = state.IniFilePath;
  if (named != bootstrap) ReadSettings(app, named);
  state.LangOffset = state.LangFlag > 0 ? kEnglishOffset : 0;
  BuildCommSettings(state);
  state.RangeUnitTrack = state.UnitFlag;
  state.TotalUnitTrack = state.UnitFlag;
  state.PvRunning = 0;
  const SplashVariant* variant = FindSplashVariant(state.ModelCode);
  if (variant == nullptr) {
    app.Show(app.Text(4960));
    return End(app);
  }
  app.windows.Run([&] { app.windows.Load(variant->form).Show(); });
  return StartResult::kSplashRuns;
}

void CloseAllForms(App& app) {
  for (Form* form : app.windows.Open()) {
    if (app.windows.Exists(form)) app.windows.Unload(form->Name());
  }
  bool closed = false;
  ClosePort(app, closed);
  app.state.PortIsOpen = closed;
}

}  // namespace vlt
