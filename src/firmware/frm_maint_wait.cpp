// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/frm_maint_wait.h"

#include <cstdio>

#include "resources/string_table.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

constexpr int kTickMs = 500;

// "4:16", seconds rounded up.
std::string MinutesText(std::int64_t ms) {
  const std::int64_t seconds = (ms + 999) / 1000;
  char text[24];
  std::snprintf(text, sizeof text, "%lld:%02d", static_cast<long long>(seconds / 60),
                static_cast<int>(seconds % 60));
  return text;
}

}  // namespace

frmMaint_Wait::frmMaint_Wait(App& app) : Form(app.windows, "frmMaint_Wait", FormPlace::kWindow), app_(app) {
  cmdCan.on_click = [this] { cmdCan_Click(); };
  tmTime.on_timer = [this] { tmTime_Timer(); };
}

void frmMaint_Wait::Form_Load() {
  SetCaption(app_.Text(1090));
  SetCloseCommand(false);
  cmdCan.SetCaption(app_.Text(text::kCancel));
  tmTime.SetInterval(kTickMs);
}

void frmMaint_Wait::Form_Unload(int& cancel) { cancel = Visible() ? -1 : 0; }

void frmMaint_Wait::cmdCan_Click() {
  app_.state.FwCancelFlag = 1;
  cmdCan.SetEnabled(false);
  lblStop.SetCaption(app_.Text(text::kFwWillStop));
}

void frmMaint_Wait::tmTime_Timer() {
  const std::int64_t elapsed = app_.platform.clock.NowMs() - begun_ms_;
  lblTime.SetCaption(
      FormatText(app_.Text(text::kFwElapsed), {MinutesText(elapsed), MinutesText(expected_ms_)}));
}

void frmMaint_Wait::Begin(const std::string& title, const std::string& message, int steps) {
  lblTitle.SetCaption(title);
  pbWait.SetMax(steps);
  Step(1, message);
  cmdCan.SetEnabled(true);
  lblStop.SetCaption("");
  tmTime.SetRunning(true);
  Show();
}

void frmMaint_Wait::Step(int value, const std::string& message) {
  pbWait.SetValue(value);
  lblMssg.SetCaption(message);
}

void frmMaint_Wait::Expect(std::int64_t ms) {
  begun_ms_ = app_.platform.clock.NowMs();
  expected_ms_ = ms;
  tmTime_Timer();
}

void frmMaint_Wait::End() {
  tmTime.SetRunning(false);
  Hide();
}

}  // namespace vlt
