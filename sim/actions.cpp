// SPDX-License-Identifier: GPL-3.0-or-later
// The words that do something to a running line.
#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iterator>

#include "sim/scenario.h"
#include "sim/words.h"

namespace sim {

namespace {

using namespace words;

// The stations that an action goes to, and its value.
struct Action {
  Line& line;
  std::vector<Meter*> meters;
  std::string_view value;
  Micros now;
};

constexpr std::string_view kBad = "is not of the form";  // ApplyAction completes it

std::string ArmFault(const Action& action) {
  std::string error;
  const auto fault = ParseFault(action.value, error);
  if (fault) action.line.faults().Arm(*fault);
  return error;
}

std::string SetMotion(const Action& action) {
  const auto parts = Split(action.value, ':');
  Motion motion;
  const auto channel = Integer(parts[0], 1, 2);
  if (!channel || parts.size() < 3 || parts.size() > 5 || !ParseWave(parts[1], motion.wave))
    return std::string(kBad);
  double* const places[] = {&motion.base, &motion.amplitude, &motion.period_s};
  for (std::size_t i = 2; i < parts.size(); ++i) {
    const auto number = Real(parts[i]);
    if (!number || !std::isfinite(*number)) return std::string(kBad);
    *places[i - 2] = *number;
  }
  if (motion.wave == Wave::Process && parts.size() < 5) motion.period_s = 3600;
  if (!(motion.period_s >= 0.001)) return std::string(kBad);
  for (Meter* meter : action.meters) meter->SetMotion(*channel - 1, motion, action.now);
  return "";
}

std::string PinValue(const Action& action) {
  const auto parts = Split(action.value, ':');
  if (parts.size() != 3) return std::string(kBad);
  const auto channel = Integer(parts[0], 1, kChannels);
  const auto quantity = ParseQuantity(parts[1]);
  const auto number = Real(parts[2]);
  if (!channel || !quantity || !number) return std::string(kBad);
  for (Meter* meter : action.meters) meter->SetLive(*channel - 1, *quantity, *number);
  return "";
}

std::string ReleaseValue(const Action& action) {
  const auto parts = Split(action.value, ':');
  if (parts.size() != 2) return std::string(kBad);
  const auto channel = Integer(parts[0], 1, kChannels);
  const auto quantity = ParseQuantity(parts[1]);
  if (!channel || !quantity) return std::string(kBad);
  for (Meter* meter : action.meters) meter->ReleaseLive(*channel - 1, *quantity);
  return "";
}

std::string SetRas(const Action& action) {
  const auto parts = Split(action.value, ':');
  if (parts.size() != 2) return std::string(kBad);
  const auto channel = Integer(parts[0], 1, kChannels);
  const auto word = Integer(parts[1], 0, 0xFFFF, 16);
  if (!channel || !word) return std::string(kBad);
  for (Meter* meter : action.meters) meter->SetRas(*channel - 1, static_cast<std::uint16_t>(*word));
  return "";
}

std::string SwitchAlarms(const Action& action) {
  static constexpr std::string_view kHow[] = {"off", "on", "rare"};
  const auto how = Choice(action.value, kHow);
  if (!how) return std::string(kBad);
  for (Meter* meter : action.meters) {
    for (int channel = 0; channel < kChannels; ++channel) meter->SetRasSchedule(channel, {});
    if (*how == 1) meter->RunAlarms();
    if (*how == 2) meter->RunRareAlarms();
  }
  return "";
}

std::string Poke(const Action& action) {
  const auto parts = Split(action.value, ':');
  Bytes data;
  if (parts.size() != 2 || !FromHex(parts[1], data) || data.empty()) return std::string(kBad);
  const auto address = Integer(parts[0], 0, 0xFFFF, 16);
  if (!address) return std::string(kBad);
  const auto size = static_cast<std::uint32_t>(data.size());
  for (Meter* meter : action.meters) {
    if (!meter->holding().Has(*address, size)) return "names a register that the meter doesn't have";
  }
  for (Meter* meter : action.meters) meter->holding().Write(*address, data);
  return "";
}

std::string FillMemory(const Action& action) {
  const auto seed = Integer(action.value, 0, 1'000'000);
  if (!seed) return std::string(kBad);
  for (Meter* meter : action.meters) meter->Fill(static_cast<unsigned>(*seed), action.now);
  return "";
}

std::string BreakMemory(const Action& action) {
  const auto parts = Split(action.value, ':');
  if (parts.size() < 2 || parts.size() > 3) return std::string(kBad);
  const auto range = ReadRange(parts[0], 0, 0xFFFF, 16);
  const auto code = parts[1] == "silence" ? std::optional(0) : Integer(parts[1], 1, 255);
  static constexpr std::string_view kSpaces[] = {"holding", "input"};
  const auto space = parts.size() == 3 ? Choice(parts[2], kSpaces) : std::optional(0);
  if (!range || !code || !space) return std::string(kBad);
  for (Meter* meter : action.meters) {
    meter->BreakMemory(static_cast<Space>(*space), static_cast<std::uint32_t>(range->first),
                       static_cast<std::uint32_t>(range->last), *code);
  }
  return "";
}

std::string PinInput(const Action& action) {
  const auto parts = Split(action.value, ':');
  Bytes data;
  if (parts.size() != 2 || !FromHex(parts[1], data)) return std::string(kBad);
  const auto address = Integer(parts[0], 0, 0xFFFF, 16);
  if (!address) return std::string(kBad);
  for (Meter* meter : action.meters) {
    if (!meter->PinInput(static_cast<std::uint32_t>(*address), data))
      return "names a register that the meter doesn't have";
  }
  return "";
}

std::string SwitchLoader(const Action& action) {
  static constexpr std::string_view kHow[] = {"off", "on", "once", "never"};
  const auto how = Choice(action.value, kHow);
  if (!how) return std::string(kBad);
  action.line.SetWakeable(*how != 3);
  if (*how == 1) action.line.EnterLoader(Line::Hold::UntilTold);
  if (*how == 2) action.line.EnterLoader(Line::Hold::UntilDownload);
  if (*how == 0 || *how == 3) action.line.LeaveLoader();
  return "";
}

// The place of a module by its name or number, and what stands behind the colon.
std::optional<int> CutModule(std::string_view& value) {
  const std::size_t colon = value.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  std::array<std::string_view, kModules> names;
  std::ranges::transform(Modules(), names.begin(), &ModuleInfo::name);
  const auto module = Choice(value.substr(0, colon), names);
  value.remove_prefix(colon + 1);
  return module;
}

std::string LoadModule(const Action& action) {
  std::string_view path = action.value;
  const auto module = CutModule(path);
  if (!module || path.empty()) return std::string(kBad);
  std::ifstream file(std::string(path), std::ios::binary);
  const Bytes image((std::istreambuf_iterator<char>(file)), {});
  if (!file || image.empty()) return "can't be read";
  if (image.size() > kLargestModule) return "is longer than a module";
  action.line.loader().SetImage(*module, image);
  return "";
}

std::string DumpModule(const Action& action) {
  std::string_view path = action.value;
  const auto module = CutModule(path);
  if (!module || path.empty()) return std::string(kBad);
  const Bytes& image = action.line.loader().Image(*module);
  std::ofstream file(std::string(path), std::ios::binary);
  file.write(reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
  return file.flush() ? "" : "can't be written";
}

std::string LimitModule(const Action& action) {
  std::string_view value = action.value;
  const auto module = CutModule(value);
  const auto bytes = Integer(value, 0, kLargestModule);
  if (!module || !bytes) return std::string(kBad);
  action.line.loader().SetLimit(*module, static_cast<std::size_t>(*bytes));
  return "";
}

std::string SetFlashTime(const Action& action) {
  const auto ms = Integer(action.value, 0, 300'000);
  if (!ms) return std::string(kBad);
  action.line.loader().config().flash_time = *ms * Micros{1000};
  return "";
}

std::string CutLine(const Action& action) {
  const auto bytes = Integer(action.value, 0, 10'000'000);
  if (!bytes) return std::string(kBad);
  action.line.CutAfter(static_cast<std::size_t>(*bytes));
  return "";
}

struct ActionWord {
  std::string_view name;
  std::string_view form;  // of its value; empty for a word without one
  std::string_view help;
  std::string (*act)(const Action&);
};

constexpr ActionWord kActionWords[] = {
    {"fault", "NAME[=VALUE][@ADDRESS][/FUNCTION][:STATION][#FIRST][*COUNT|*ever]",
     "arms a fault: late=300@0148H/03#2*3 delays the 2nd to 4th read of 0148H", ArmFault},
    {"calm", "", "disarms all faults",
     [](const Action& action) {
       action.line.faults().Clear();
       return std::string();
     }},
    {"live", "CH:still|ramp|step|sine|process:BASE[:AMPLITUDE[:SECONDS]]",
     "how the velocity of CH1 or CH2 moves, in m/s (a process: with the pipe that the meter comes with)",
     SetMotion},
    {"value", "CH:QUANTITY:NUMBER", "pins a live value; NUMBER may be nan, inf, -inf, -0", PinValue},
    {"release", "CH:QUANTITY", "lets it move again", ReleaseValue},
    {"ras", "CH:HEX", "pins the RAS word", SetRas},
    {"alarms", "on|off|rare", "lets alarms come and go; rare: one or two in ten minutes", SwitchAlarms},
    {"poke", "ADDRESS:HEX", "puts bytes into a holding register, past all rules", Poke},
    {"input", "ADDRESS:HEX", "pins bytes of the input registers; no bytes behind the colon let them go",
     PinInput},
    {"fill", "SEED", "puts another value into every register that an operator sets", FillMemory},
    {"bad", "ADDRESS[-ADDRESS]:CODE|silence[:holding|input]",
     "registers that fail: a request that touches one gets this exception, or no answer", BreakMemory},
    {"mend", "", "the registers are good again",
     [](const Action& action) {
       for (Meter* meter : action.meters) meter->MendMemory();
       return std::string();
     }},
    {"restart", "", "power off and on: what wasn't stored is lost",
     [](const Action& action) {
       for (Meter* meter : action.meters) meter->Restart(action.now);
       return std::string();
     }},
    {"boot", "", "the same as loader=on",
     [](const Action& action) {
       action.line.EnterLoader(Line::Hold::UntilTold);
       return std::string();
     }},
    {"loader", "on|once|off|never",
     "who has the line: the boot loader, the same until a download has ended, a meter that an open frame "
     "turns into it, a meter that nothing wakes (off)",
     SwitchLoader},
    {"module", "NAME:PATH", "puts a file into the flash as this module (KRT_CNTL, ... or 0 to 3)",
     LoadModule},
    {"dump", "NAME:PATH", "writes what the flash has of a module into a file", DumpModule},
    {"module-limit", "NAME:BYTES", "a longer module is refused (983040)", LimitModule},
    {"flash", "MS", "time in which a module is written into the flash (2000)", SetFlashTime},
    {"cut", "BYTES", "the cable breaks when so many more bytes have passed; \"plug\" mends it", CutLine},
    {"unplug", "", "pulls the plug",
     [](const Action& action) {
       action.line.Unplug(action.now);
       return std::string();
     }},
    {"plug", "", "puts it back",
     [](const Action& action) {
       action.line.Plug(action.now);
       return std::string();
     }},
};

}  // namespace

bool IsAction(std::string_view word) { return Find(kActionWords, Part(word).name) != nullptr; }

std::string ApplyAction(Line& line, std::string_view word, Micros now) {
  std::optional<int> station;
  const auto [name, value] = Part(CutStation(word, station));
  const ActionWord* action = Find(kActionWords, name);
  if (!action) return "there is no word " + Quoted(name);
  if (action->form.empty() && !value.empty()) return Quoted(name) + " takes no value";
  if (station && !line.Station(*station)) return "there is no station " + std::to_string(*station);
  std::vector<Meter*> meters;
  for (int number : line.Stations()) {
    if (!station || number == *station) meters.push_back(line.Station(number));
  }
  const std::string error = action->act({line, meters, value, now});
  if (error == kBad) return WrongForm(word, name, action->form);
  return error.empty() || action->act == ArmFault ? error : Quoted(word) + " " + error;
}

std::string ActionHelp() {
  std::string text;
  for (const ActionWord& word : kActionWords) AddHelp(text, word.name, word.form, word.help);
  text += "  QUANTITY is one of: " + QuantityWords() + "\n";
  return text;
}

}  // namespace sim
