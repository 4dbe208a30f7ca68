#include "sim/scenario.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace sim {

namespace {

std::vector<std::string_view> Split(std::string_view text, char mark) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t end = text.find(mark);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::optional<int> Integer(std::string_view text, int least, int most, int base = 10) {
  if (base == 16 && (text.ends_with('H') || text.ends_with('h'))) text.remove_suffix(1);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  const bool good =
      error == std::errc() && end == text.data() + text.size() && number >= least && number <= most;
  return good ? std::optional(number) : std::nullopt;
}

// Also "nan", "inf", "-inf", "-0".
std::optional<double> Real(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool good = error == std::errc() && end == text.data() + text.size();
  return good ? std::optional(number) : std::nullopt;
}

template <typename T>
bool Set(T& target, std::optional<int> number) {
  if (number) target = static_cast<T>(*number);
  return number.has_value();
}

bool SetMilliseconds(Micros& target, std::string_view value) {
  const auto number = Integer(value, 0, 3'600'000);
  if (number) target = *number * Micros{1000};
  return number.has_value();
}

// The place of `value` in `names`, or the number that it is.
std::optional<int> Choice(std::string_view value, std::span<const std::string_view> names) {
  const auto found = std::ranges::find(names, value);
  if (found != names.end()) return static_cast<int>(found - names.begin());
  return Integer(value, 0, static_cast<int>(names.size()) - 1);
}

bool SetStations(Scenario& scenario, std::string_view value) {
  std::vector<int> stations;
  for (std::string_view part : Split(value, ',')) {
    const auto number = Integer(part, 1, 247);
    if (!number) return false;
    stations.push_back(*number);
  }
  scenario.stations = stations;
  return true;
}

struct SetupWord {
  std::string_view name;
  std::string_view form;
  std::string_view help;
  bool (*set)(Scenario&, std::string_view value);
};

constexpr std::string_view kModels[] = {"full", "single"};
constexpr std::string_view kUnits[] = {"metric", "english"};
constexpr std::string_view kLanguages[] = {"english", "japanese", "german", "french", "spanish"};
constexpr std::string_view kSwitch[] = {"off", "on"};

constexpr SetupWord kSetupWords[] = {
    {"model", "full|single", "two measuring channels with heat, or one channel (full)",
     [](Scenario& s, std::string_view value) {
       const auto model = Choice(value, kModels);
       if (model) s.meter.specification = *model == 1 ? kSingleSpecification : kFullSpecification;
       return model.has_value();
     }},
    {"spec", "NUMBER", "specification number 0..9999, which decides the model too (81)",
     [](Scenario& s, std::string_view value) { return Set(s.meter.specification, Integer(value, 0, 9999)); }},
    {"path", "0|1|2", "one path, two paths on one pipe, two pipes (0)",
     [](Scenario& s, std::string_view value) { return Set(s.meter.path_mode, Integer(value, 0, 2)); }},
    {"unit", "metric|english", "unit system (metric)",
     [](Scenario& s, std::string_view value) { return Set(s.meter.unit_system, Choice(value, kUnits)); }},
    {"lang", "english|japanese|german|french|spanish", "language of the meter's own display (english)",
     [](Scenario& s, std::string_view value) { return Set(s.meter.language, Choice(value, kLanguages)); }},
    {"id", "NUMBER", "ID number 0..9999 (1)",
     [](Scenario& s, std::string_view value) { return Set(s.meter.id_number, Integer(value, 0, 9999)); }},
    {"stations", "N,N,...", "station numbers on the line, 1..247 (1)", SetStations},
    {"speed", "BAUD", "speed of the line (9600)",
     [](Scenario& s, std::string_view value) { return Set(s.line.baud, Integer(value, 50, 4'000'000)); }},
    {"parity", "N|E|O", "parity of a named device (N)",
     [](Scenario& s, std::string_view value) {
       const bool good =
           value.size() == 1 && std::string_view("NEO").find(value[0]) != std::string_view::npos;
       if (good) s.parity = value[0];
       return good;
     }},
    {"stop", "1|2", "stop bits of a named device (1)",
     [](Scenario& s, std::string_view value) { return Set(s.stop_bits, Integer(value, 1, 2)); }},
    {"pace", "on|off", "bytes take their time on the line, 11 bits each (on)",
     [](Scenario& s, std::string_view value) { return Set(s.line.paced, Choice(value, kSwitch)); }},
    {"turnaround", "MS", "from the end of a request to the start of the answer (5)",
     [](Scenario& s, std::string_view value) { return SetMilliseconds(s.line.turnaround, value); }},
    {"store", "MS", "time of a store (120)",
     [](Scenario& s, std::string_view value) { return SetMilliseconds(s.meter.store_time, value); }},
    {"capture", "MS", "time of a wave capture (120)",
     [](Scenario& s, std::string_view value) { return SetMilliseconds(s.meter.capture_time, value); }},
    {"boot", "MS", "silence after power on, memory initialisation, new specification (2000)",
     [](Scenario& s, std::string_view value) { return SetMilliseconds(s.meter.restart_time, value); }},
    {"seed", "NUMBER", "noise on captured waves (1)",
     [](Scenario& s, std::string_view value) {
       return Set(s.meter.seed, Integer(value, 0, std::numeric_limits<int>::max()));
     }},
};

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
    {"restart", "", "power off and on: what wasn't stored is lost",
     [](const Action& action) {
       for (Meter* meter : action.meters) meter->Restart(action.now);
       return std::string();
     }},
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

struct NameAndValue {
  std::string_view name, value;
};

NameAndValue Part(std::string_view word) {
  const std::size_t equals = word.find('=');
  if (equals == std::string_view::npos) return {word, {}};
  return {word.substr(0, equals), word.substr(equals + 1)};
}

// Cuts a station number and its colon off the front of a word.
std::string_view CutStation(std::string_view word, std::optional<int>& station) {
  const std::size_t colon = word.find(':');
  if (colon == std::string_view::npos || colon > word.find('=')) return word;
  station = Integer(word.substr(0, colon), 1, 247);
  return station ? word.substr(colon + 1) : word;
}

template <typename Words>
const auto* Find(const Words& words, std::string_view name) {
  for (const auto& word : words) {
    if (word.name == name) return &word;
  }
  return static_cast<decltype(&words[0])>(nullptr);
}

std::string Quoted(std::string_view word) { return "\"" + std::string(word) + "\""; }

std::string WrongForm(std::string_view word, std::string_view name, std::string_view form) {
  return Quoted(word) + " is not of the form " + std::string(name) + "=" + std::string(form);
}

void AddHelp(std::string& text, std::string_view name, std::string_view form, std::string_view help) {
  std::string head = "  " + std::string(name);
  if (!form.empty()) head += "=" + std::string(form);
  head += head.size() < 30 ? std::string(30 - head.size(), ' ') : "\n" + std::string(30, ' ');
  text += head + std::string(help) + "\n";
}

}  // namespace

std::string ApplyWord(Scenario& scenario, std::string_view word) {
  const auto [name, value] = Part(word);
  if (const SetupWord* setup = Find(kSetupWords, name)) {
    return setup->set(scenario, value) ? "" : WrongForm(word, name, setup->form);
  }
  std::optional<int> station;
  if (!Find(kActionWords, Part(CutStation(word, station)).name)) return "there is no word " + Quoted(name);
  scenario.actions.emplace_back(word);
  return "";
}

std::string ApplyWords(Scenario& scenario, std::span<const std::string> words) {
  for (const std::string& word : words) {
    if (std::string error = ApplyWord(scenario, word); !error.empty()) return error;
  }
  return "";
}

std::string ApplyWords(Scenario& scenario, std::string_view text) {
  for (std::string_view word : Split(text, ' ')) {
    if (word.empty()) continue;
    if (std::string error = ApplyWord(scenario, word); !error.empty()) return error;
  }
  return "";
}

std::unique_ptr<Line> Build(const Scenario& scenario, Micros now, std::string& error) {
  auto line = std::make_unique<Line>(scenario.line);
  MeterConfig meter = scenario.meter;
  meter.started = now;
  for (int station : scenario.stations) line->AddStation(station, meter);
  for (const std::string& action : scenario.actions) {
    error = ApplyAction(*line, action, now);
    if (!error.empty()) return nullptr;
  }
  return line;
}

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

std::string ScenarioHelp() {
  std::string text;
  for (const SetupWord& word : kSetupWords) AddHelp(text, word.name, word.form, word.help);
  return text;
}

std::string ActionHelp() {
  std::string text;
  for (const ActionWord& word : kActionWords) AddHelp(text, word.name, word.form, word.help);
  text += "  QUANTITY is one of: " + QuantityWords() + "\n";
  return text;
}

std::string FaultHelp() {
  std::string text;
  for (const FaultInfo& fault : Faults()) {
    std::string help(fault.does);
    if (!fault.value.empty()) {
      help += " (" + std::string(fault.value) + "; " + std::to_string(fault.preset) + ")";
    }
    AddHelp(text, fault.name, fault.value.empty() ? "" : "N", help);
    text += std::string(32, ' ') + "the program must " + std::string(fault.must) + "\n";
  }
  return text;
}

}  // namespace sim
