// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/form9.h"

#include "link/port.h"
#include "resources/text_ids.h"
#include "state/form_lock.h"

namespace vlt {

Form9::Form9(App& app)
    : MeasureControls(app),
      run_(app, *this, [this](bool may_ask) { RunStopped(may_ask); }),
      values_(app, *this),
      scale_(app, *this, values_, trend),
      meter_(app, values_, run_),
      file_(app, *this, run_, values_, scale_, trend) {
  run_.TellBy({.bar = StatusBar2, .behind = [this](int words) { return BehindState(words); }});
  run_.WaitBy({.prove = [this] { return meter_.Prove(); },
               .changed =
                   [this] {
                     failed_ = run_.Waiting();
                     run_.Say(text::kAcquiring);
                   },
               .meter = [this] { return meter_.Name(); }});
  Start.on_click = [this] { Start_Click(); };
  Stop.on_click = [this] { run_.RequestStop(); };
  SaveCSV.on_click = [this] { SaveCSV_Click(); };
  CycleTimer.on_timer = [this] { CycleTimer_Timer(); };
}

void Form9::C07_KEISOKU_FrmInit() {
  const struct {
    Control& control;
    int text_id;
  } rows[] = {
      {Start, 1230},
      {Stop, 1970},
      {SaveCSV, 180},
      {lblChannelSelect, 179},
      {lblFlowSelect, 2350},
      {Frame6, 680},
      {Frame5, 510},
      {lblMax, 1370},
      {lblMin, 1350},
      {Frame4, 500},
      {lblCycle, 1450},
      {lblCycleUnit, 100},
      {lblPoint, 1990},
      {Frame1, 1510},
      {Frame2, 450},
      {lblRyusoku, 2180},
      {lblRyuryo, 2220},
      {lblRyuryoPer, 2221},
      {lblPlusSekisan, 2360},
      {lblPlusSekisanPulse, 2380},
      {lblMinusSekisan, 2370},
      {lblMinusSekisanPulse, 2390},
      {lblTHERMAL_FLOW, 2391},
      {lblTHERMAL_FLOWPer, 2392},
      {lblTEMP_DIFFERENCE, 2393},
      {lblH_TOTAL, 2394},
      {lblHTotalPulse, 2395},
      {lblCTotal, 2396},
      {lblCTotalPulse, 2397},
      {lblSUPPLY_TEMP, 2398},
      {lblRETURN_TEMP, 2399},
      {lblHPerUnit, 10},
  };
  SetCaption(app().Text(text::kMeasure));
  for (const auto& row : rows) row.control.SetCaption(app().Text(row.text_id));
  lblRyuryoPerUnit.ForEach([this](Label& label) { label.SetCaption(app().Text(text::kPercentUnit)); });
  lblPulseUnit.ForEach([this](Label& label) { label.SetCaption(app().Text(text::kPulseUnit)); });
  lblHPulseUnit.ForEach([this](Label& label) { label.SetCaption(app().Text(text::kPulseUnit)); });
  scale_.NameLists();
  values_.ShowChannelNames(scale_.ChannelNames);
  for (Control* control : Controls()) control->SetFont({app().state.PageFont, 12, false});
}

void Form9::Form_Load() {
  scale_.Reset();
  C07_KEISOKU_FrmInit();
  SetRunButtons(0);
  RestoreMeasureScales();
  scale_.KeepAsTyped();
  Chart2D1.SetYTitle("[   ]");
  scale_.PrepareTrend();
  scale_.FillChannelList();
}

void Form9::Form_Activate() {
  // The last tick of a run that was stopped would be taken for a run.
  if (IsEnding()) EndTicks();
  const bool idle = IsLineFree(app()) && !run_.Busy();
  Start.SetEnabled(idle);
  SaveCSV.SetEnabled(idle);
  if (!idle || run_.Leaving()) return;
  run_.Ask([this] {
    OpenPort(app());
    AskChannelMode();
    scale_.FillChannelList();
  });
}

void Form9::Form_Unload(int&) {
  for (Control* control :
       std::initializer_list<Control*>{&Start, &SaveCSV, &Frame6, &CH_Combo, &Flow_Combo}) {
    control->SetEnabled(true);
  }
  CycleTimer.SetRunning(false);
  Text_Box_Enable();
  run_.Leave();
  Taihi_Form9();
  if (app().frame == nullptr) return;
  app().frame->Status().SetPanel(1, "");
  app().frame->SetPageButtonIdle(Name());
}

void Form9::SetRunButtons(int state) {
  if (state < 0 || state > 3) return;
  const bool running = state == 2;
  Start.SetEnabled(!running);
  SaveCSV.SetEnabled(!running);
  Stop.SetEnabled(running);
}

}  // namespace vlt
