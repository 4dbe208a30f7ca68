// SPDX-License-Identifier: GPL-3.0-or-later
// What the program may be doing when its port goes away: the same eight states for the tests on virtual time
// and for those on a pseudo-terminal.
#pragma once

#include <ostream>
#include <string>

#include "firmware/frm_maint_main.h"
#include "live/form12.h"
#include "live/form9.h"
#include "live/wave_tab.h"
#include "pages/form10.h"
#include "pages/form6.h"
#include "shell/mdi_form1.h"

namespace vlt::test {

struct LossState {
  const char* name;
  // The fault that pulls the plug in the middle of the work; empty: it is pulled while nothing runs.
  const char* fault;
  // The window as it stands before; files go to the folder.
  void (*open)(App& app, const std::string& folder);
  // Begins the work; returns when it has ended, or when a run is on.
  void (*act)(App& app);
  int boxes;    // that come up; a read tells in the status line
  bool is_run;  // goes on when the port is back
  bool own_port = false;
};

// How a test names the state.
inline void PrintTo(const LossState& state, std::ostream* out) { *out << state.name; }

template <class Page>
Page& PageOf(App& app, const char* name) {
  return static_cast<Page&>(app.windows.Load(name));
}

template <class Page>
Page& OpenPage(App& app, const char* name) {
  auto& page = PageOf<Page>(app, name);
  app.windows.Run([&page] {
    page.RunHook(&FormHooks::FrmInit);
    page.Show();
  });
  return page;
}

inline void OpenMeasure(App& app, const std::string& folder) {
  auto& page = OpenPage<Form9>(app, "Form9");
  page.MeasureFilePath = folder + "/run_20261124100000.csv";
}

// The question for the file is answered by the test's dialogs.
inline void OpenStations(App& app, const std::string& /*folder*/) {
  auto& page = OpenPage<Form12>(app, "Form12");
  page.chkStationNo(0).Tick();
  page.CH_Combo1.Choose(0);
  page.CH_Combo2.Choose(0);
  page.cmbDisp1.Choose(kFlowPlace);
  page.txtCycle.Type("1");
}

inline void OpenReport(App& app, const std::string& folder) {
  auto& page = OpenPage<Form6>(app, "Form6");
  page.Read_All_Set_Data.Tick();
  page.FileName.SetText(folder + "/report.csv");
}

inline void SetDiameter(App& app) {
  auto& page = PageOf<Form10>(app, "Form10");
  page.OUTER_DIAMETERText.box.Tick();
  page.OUTER_DIAMETERText.Type("114.3");
  page.SetParameter.Press();
}

inline void ReadVersion(App& app) {
  auto& tool = PageOf<frmMaint_MAIN>(app, "frmMaint_MAIN");
  tool.SSTab1.SetTab(1);
  tool.optSEL_UP(0).SetValue(true);
  tool.cmdEXE.Press();
}

// Whichever run is on.
inline void StopRun(App& app) {
  if (Form* page = app.windows.Find("Form9")) static_cast<Form9*>(page)->Stop.Press();
  if (Form* page = app.windows.Find("Form12")) static_cast<Form12*>(page)->cmdStop.Press();
}

inline constexpr LossState kLossStates[] = {
    {"idle", "", [](App&, const std::string&) {}, [](App&) {}, 0, false},
    {"page read", "unplug=3@00D0",
     [](App& app, const std::string&) { OpenPage<Form10>(app, "Form10").chkCheck.Tick(); },
     [](App& app) { PageOf<Form10>(app, "Form10").ReadParameter.Press(); }, 0, false},
    {"page set", "unplug=3@00D2", [](App& app, const std::string&) { OpenPage<Form10>(app, "Form10"); },
     SetDiameter, 1, false},
    {"measure run", "unplug=3@0000/04#2", OpenMeasure,
     [](App& app) { PageOf<Form9>(app, "Form9").Start.Press(); }, 0, true},
    {"stations run", "unplug=3@0000/04#2", OpenStations,
     [](App& app) { PageOf<Form12>(app, "Form12").cmdStart.Press(); }, 0, true},
    {"capture", "unplug=3@00C0/04", [](App& app, const std::string&) { OpenPage<Form11>(app, "Form11"); },
     [](App& app) { PageOf<Form11>(app, "Form11").Part<WaveTab>()->ProfileStartButton.Press(); }, 0, false},
    {"read-out", "unplug=3@04A8", OpenReport,
     [](App& app) { PageOf<Form6>(app, "Form6").ReadParameter.Press(); }, 1, false},
    {"firmware step", "unplug=3/41",
     [](App& app, const std::string&) { OpenPage<frmMaint_MAIN>(app, "frmMaint_MAIN"); }, ReadVersion, 1,
     false, true},
};

}  // namespace vlt::test
