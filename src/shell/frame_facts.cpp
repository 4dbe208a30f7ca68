// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/frame_facts.h"

#include <array>

#include "link/operation.h"
#include "link/port.h"
#include "meter/identification.h"
#include "meter/system_table.h"
#include "meter/units.h"
#include "meter/value_text.h"
#include "platform/port_settings.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_heal.h"
#include "shell/frm_cset.h"
#include "state/device_facts.h"
#include "state/form_lock.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr int kFacts = 7;
constexpr std::size_t kLinkChars = 18;  // that have room beside the page buttons
constexpr const char* kComPortMenu = "ComPort";

// By the places of PortParity.
constexpr std::array kParityLetters = {"N", "E", "O"};

std::string Cut(const std::string& text) {
  if (CharCount(text) <= kLinkChars) return text;
  // The end of a path tells more than its start.
  const std::size_t name = text.find_last_of('/');
  const std::string last = name == std::string::npos ? text : text.substr(name + 1);
  return CharCount(last) <= kLinkChars ? last : std::string(FirstChars(last, kLinkChars - 1)) + "…";
}

}  // namespace

FrameFacts::FrameFacts(App& app, Form& frame)
    : FormPart(frame),
      cmdLink(frame, "cmdLink"),
      lblMeter(frame, "lblMeter"),
      lblState(frame, "lblState"),
      lblFact(frame, "lblFact", Indexes(kFacts)),
      valFact(frame, "valFact", Indexes(kFacts)),
      cmdReadMeter(frame, "cmdReadMeter"),
      lblFirstSteps(frame, "lblFirstSteps"),
      lblSteps(frame, "lblSteps"),
      app_(app) {
  cmdLink.on_click = [this] { cmdLink_Click(); };
  cmdReadMeter.on_click = [this] { cmdReadMeter_Click(); };
}

void FrameFacts::Show() {
  const SharedState& state = app_.state;
  const Link link = LinkInForce();
  ShowLink(link);
  lblMeter.SetCaption(app_.Text(text::kMeter));
  const bool identified = !state.IdentifiedAt.empty();
  lblState.SetCaption(identified ? FormatText(app_.Text(text::kIdentifiedAt), {state.IdentifiedAt})
                                 : app_.Text(text::kNotIdentified));
  const struct {
    int caption_id;
    std::string value;
  } facts[kFacts] = {
      {text::kLink, LinkText(link)},           {text::kVersionInfo, TypeText()},
      {text::kIdNumber, KnownIdNumber(state)}, {text::kSpecification, SpecificationText()},
      {text::kMeasurementMode, PathText()},    {text::kUnit, UnitText()},
      {text::kLanguage, LanguageText()},
  };
  for (int i = 0; i < kFacts; ++i) {
    lblFact(i).SetCaption(app_.Text(facts[i].caption_id));
    valFact(i).SetCaption(facts[i].value.empty() ? app_.Text(text::kNotKnown) : facts[i].value);
  }
  cmdReadMeter.SetCaption(app_.Text(text::kReadMeter));
  const std::string steps = app_.Text(text::kFirstSteps);
  const std::size_t title_end = steps.find('\n');
  lblFirstSteps.SetCaption(steps.substr(0, title_end));
  lblSteps.SetCaption(steps.substr(title_end + 1));
  for (Control* control : {static_cast<Control*>(&cmdLink), static_cast<Control*>(&lblMeter),
                           static_cast<Control*>(&lblState), static_cast<Control*>(&cmdReadMeter),
                           static_cast<Control*>(&lblFirstSteps), static_cast<Control*>(&lblSteps)}) {
    control->SetFont({state.PageFont, 8, false});
  }
}

FrameFacts::Link FrameFacts::LinkInForce() const {
  const SharedState& state = app_.state;
  if (app_.platform.port.IsOpen()) return {state.OpenedPort, state.OpenedDevice, state.OpenedSettings, true};
  const int port = PortNumber(app_);
  return {port, port > 0 ? app_.platform.port.DeviceBehind(port) : "", state.CommSettings, false};
}

void FrameFacts::ShowLink(const Link& link) {
  const Control* menu = Whole().Find(kComPortMenu);
  cmdLink.SetEnabled(menu == nullptr || menu->Enabled());
  cmdLink.SetHint(LinkText(link));
  if (link.port <= 0) {
    cmdLink.SetCaption(app_.Text(text::kLink) + "\n-");
    return;
  }
  const auto settings = ParsePortSettings(link.settings);
  std::string shape = link.settings;
  if (settings) {
    shape = std::to_string(settings->speed) + ", " +
            FrmCSet::ParityText(app_, kParityLetters[static_cast<std::size_t>(settings->parity)]) + ", " +
            std::to_string(settings->stop_bits);
  }
  cmdLink.SetCaption("COM" + std::to_string(link.port) + '\n' + Cut(FrmCSet::DeviceText(app_, link.device)) +
                     '\n' + (IsLost(link) ? app_.Text(text::kLinkLost) : shape) + '\n' +
                     FormatText(app_.Text(text::kLinkStation), {app_.state.StationNo}));
}

std::string FrameFacts::LinkText(const Link& link) const {
  if (link.port <= 0) return app_.Text(text::kPortNotChosen);
  std::string line = "COM" + std::to_string(link.port);
  if (!link.device.empty()) line += ": " + FrmCSet::DeviceText(app_, link.device);
  line += ", " + link.settings + ", " + FormatText(app_.Text(text::kLinkStation), {app_.state.StationNo});
  return link.open ? line : line + " (" + app_.Text(IsLost(link) ? text::kLinkLost : text::kLinkClosed) + ')';
}

bool FrameFacts::IsLost(const Link& link) const {
  return !link.open && app_.state.Lost.away && app_.state.Lost.port == link.port;
}

std::string FrameFacts::TypeText() const {
  const SharedState& state = app_.state;
  if (state.MeterType.empty() || state.MeterVersion.empty()) return state.MeterType + state.MeterVersion;
  return state.MeterType + ", " + state.MeterVersion;
}

std::string FrameFacts::SpecificationText() const {
  if (app_.state.IdentifiedAt.empty()) return {};
  const MeterModel* known = ModelOf(app_.state);
  const std::string model = known == nullptr ? "" : app_.Text(known->title);
  const std::string& number = app_.state.MeterSpecNo;
  return number.empty() || model.empty() ? number + model : number + ", " + model;
}

std::string FrameFacts::PathText() const {
  if (!app_.state.PathModeKnown) return {};
  return CodeWord(SystemRow("measurement_mode"), app_.state, app_.state.PathMode);
}

std::string FrameFacts::UnitText() const {
  const int system = app_.state.UnitFlag != 0 ? 1 : 0;
  return CodeWord(SystemRow("unit"), app_.state, system) + ", " +
         vlt::UnitText(app_.state, UnitKind::kFlow, 0) + ", " +
         vlt::UnitText(app_.state, UnitKind::kTotal, 0);
}

std::string FrameFacts::LanguageText() const {
  return CodeWord(SystemRow("language"), app_.state, app_.state.SystemLangFlag);
}

void FrameFacts::cmdLink_Click() {
  if (auto* menu = dynamic_cast<MenuItem*>(Whole().Find(kComPortMenu))) menu->Press();
}

void FrameFacts::cmdReadMeter_Click() {
  if (!IsLineFree(app_)) return;
  Operation operation(app_, Whole(), "cmdReadMeter");
  if (!operation.OpenPortOrTell()) return;
  std::string ended = app_.Text(text::kMeter) + ": " + app_.Text(text::kLinkProved);
  if (ReadIdentification(app_)) {
    ReadUnits(app_, {});
    if (!ReadIdentity(app_)) ended = app_.Text(text::kCommunicationError) + ' ' + app_.state.LastErrorText;
  } else {
    ended = app_.Text(text::kCommunicationError) + ' ' + app_.state.LastErrorText;
    app_.Show(app_.Text(text::kCommunicationError), MessageIcon::kStop);
  }
  if (app_.frame != nullptr) app_.frame->ShowMeter();
  operation.End(ended);
}

}  // namespace vlt
