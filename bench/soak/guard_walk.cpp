// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/soak/guard_walk.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <random>

#include "compare/sender.h"
#include "link/operation.h"
#include "link/port.h"
#include "meter/facts.h"
#include "meter/process_table.h"
#include "meter/units.h"
#include "pages/parameter_page.h"
#include "resources/string_table.h"
#include "shell/mdi_form1.h"
#include "shell/start.h"
#include "state/device_facts.h"
#include "state/form_lock.h"
#include "support/virtual_platform.h"
#include "values/codecs.h"
#include "values/number_text.h"

namespace vlt::test {
namespace {

constexpr const char* kIni =
    "[SYSTEM]\r\nINI_FILENAME=VLT.ini\r\nVR=M627\r\nLANG_FLAG=1\r\n"
    "[COMM]\r\nPORT=1\r\nTRANS_METHOD=RS485\r\nSTATION_NO=01\r\n";
constexpr const char* kParameterFile = "/data/plant.ini";

struct MeterShape {
  int specification;
  int path_mode;
  int unit_system;
};
constexpr MeterShape kShapes[] = {{81, 0, 0}, {81, 1, 1}, {81, 2, 0}, {81, 2, 1}, {182, 0, 0}, {182, 0, 1}};

sim::MeterConfig ConfigOf(unsigned number) {
  const MeterShape& shape = kShapes[number % std::size(kShapes)];
  sim::MeterConfig config;
  config.specification = shape.specification;
  config.path_mode = shape.path_mode;
  config.unit_system = shape.unit_system;
  config.id_number = static_cast<int>(number) + 1;
  return config;
}

// What is true of a meter, by its memory.
MeterFacts TruthOf(sim::Meter& meter) {
  MeterFacts facts;
  LearnAll(facts, [&](const ParameterPlace& place) -> std::optional<int> {
    const auto address = static_cast<std::uint32_t>(place.Address());
    if (!meter.holding().Has(address, 2)) return {};
    return meter.holding().Word(address);
  });
  return facts;
}

// What a person saw of a field when Setting was pressed.
struct Seen {
  const Field* field = nullptr;
  ParameterPlace place;
  int unit_channel = 0;
  std::string text;
  std::string unit;
};

bool SameNumber(const std::string& shown, const std::string& held) {
  const auto a = ParseNumber(shown);
  const auto b = ParseNumber(held);
  if (!a || !b) return shown == held;
  // An entry shows eight digits, or the register's step.
  const double step = std::max(std::abs(*a) * 1e-6, 0.0);
  const std::size_t point = held.find('.');
  const double last =
      point == std::string::npos ? 1 : std::pow(10.0, -static_cast<double>(held.size() - point - 1));
  return std::abs(*a - *b) <= step + last;
}

class Walker {
 public:
  explicit Walker(unsigned seed) {
    machine_.line = sim::Line({.paced = false, .turnaround = 1'000});
    for (int station = 1; station <= 2; ++station) {
      sim::Meter& meter =
          machine_.line.AddStation(station, ConfigOf(seed * 2 + static_cast<unsigned>(station)));
      meter.Fill(seed + static_cast<unsigned>(station), 0);
      KeepCodes(meter);
    }
    machine_.line.SetLogLimit(4);
    machine_.line.SetLogSink([this](const sim::LogEntry& entry) { Hear(entry); });
    machine_.files.files["/app/VLT.ini"] = kIni;
    machine_.dialogs.AgreeToUnexpected();
    RegisterAllWindows(app_);
    StartUp(app_);
    MDIForm1& window = MainWindow(app_);
    window.Dress();
    window.Show();
    app_.windows.Unload("frmSplash");
    machine_.time.RunFor(1000);
  }

  WalkResult Go(const std::vector<WalkStep>& steps) {
    for (const WalkStep& step : steps) {
      random_.seed(step.dice);
      (this->*kKinds[static_cast<std::size_t>(step.kind)])();
      machine_.time.RunFor(50);
      LookAtCaptions();
      if (!result_.fault.empty()) break;
    }
    return result_;
  }

  static int Kinds() { return static_cast<int>(std::size(kKinds)); }

 private:
  using Step = void (Walker::*)();
  static const Step kKinds[22];

  int Pick(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }
  void Say(const std::string& line) { result_.script.push_back(line); }
  void Fail(const std::string& fault) {
    if (result_.fault.empty()) result_.fault = fault;
  }

  // A register of units or kinds that holds what a real meter would.
  static void KeepCodes(sim::Meter& meter) {
    for (int fact = 0; fact < kFactKinds; ++fact) {
      for (int channel = 0; channel < kChannels; ++channel) {
        const FactPlace place{static_cast<Fact>(fact), channel};
        const auto address = static_cast<std::uint32_t>(PlaceOfFact(place).Address());
        if (!meter.holding().Has(address, 2) || IsUnderstood(place, meter.holding().Word(address))) continue;
        meter.holding().PutWord(address, 1);
      }
    }
  }

  sim::Meter& MeterOnLine() {
    sim::Meter* meter =
        machine_.line.Station(static_cast<int>(ParseNumber(app_.state.StationNo).value_or(1)));
    return meter != nullptr ? *meter : *machine_.line.Station(1);
  }

  // --- what reaches the meters ---------------------------------------------------------------------------

  void Hear(const sim::LogEntry& entry) {
    constexpr std::size_t kShortest = 6;
    if (entry.kind == sim::LogEntry::Kind::Request) {
      request_ = entry.bytes;
      return;
    }
    if (entry.kind != sim::LogEntry::Kind::Reply || request_.size() < kShortest) return;
    const int function = request_[1];
    if ((function != 6 && function != 16) || entry.bytes.size() < 2 || entry.bytes[1] != function) return;
    const int address = BytesToUInt16(request_[2], request_[3]);
    const std::size_t data_at = function == 6 ? 4 : 7;
    const std::size_t size = function == 6 ? 2 : request_[6];
    const std::vector<std::uint8_t> data(request_.begin() + static_cast<std::ptrdiff_t>(data_at),
                                         request_.begin() + static_cast<std::ptrdiff_t>(data_at + size));
    if (sim::Meter* meter = machine_.line.Station(request_[0])) Judge(*meter, address, data);
  }

  void Judge(sim::Meter& meter, int address, const std::vector<std::uint8_t>& data) {
    const MeterFacts truth = TruthOf(meter);
    if (address == kZeroAdjustRegister + LocationOffset(Location::kPipe, 1)) {
      if (!IsInUse({&ProcessRow("outer_diameter"), 1}, truth)) Fail("zero of CH2, which the meter has not");
      return;
    }
    for (const Seen& seen : seen_) {
      const int offset = seen.place.Address() - address;
      const int bytes = 2 * seen.place.row->Words();
      if (offset < 0 || offset + bytes > static_cast<int>(data.size())) continue;
      ++result_.writes;
      JudgeValue(seen, truth,
                 std::span(data).subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(bytes)));
    }
  }

  void JudgeValue(const Seen& seen, const MeterFacts& truth, std::span<const std::uint8_t> data) {
    const Parameter& row = *seen.place.row;
    const std::string name = PlaceTitle(seen.place, app_.state.Spoken());
    SharedState facts;
    static_cast<MeterFacts&>(facts) = truth;
    facts.LangOffset = app_.state.LangOffset;
    if (!HasPlace(seen.place, facts) || !IsInUse(seen.place, facts)) {
      return Fail("written, and the meter has it not: " + name);
    }
    if (NamesUnit(row)) {
      const int code = CodeAt(row, data, 0);
      const std::string meant = UnitName(*NamesUnit(row), code, truth.UnitFlag, app_.state.Spoken());
      if (meant != seen.text) Fail(name + " was " + seen.text + " on the page and is " + meant);
      return;
    }
    if (seen.field->unit == nullptr || IsFixedUnit(row.unit)) return;
    const std::string held = ShowValue(row, facts, data, 0);
    if (!SameNumber(seen.text, held))
      Fail(name + ": " + seen.text + " on the page, " + held + " in the meter");
    if (unit_goes_along_) return;
    const std::string unit = UnitText(facts, row.unit, seen.unit_channel);
    if (unit != seen.unit) {
      Fail(name + ": " + seen.text + " [" + seen.unit + "] on the page, the meter has [" + unit + "]");
    }
  }

  // --- what a person sees --------------------------------------------------------------------------------

  ParameterPage* PageInFront() {
    const std::vector<Form*> pages = app_.windows.VisiblePages();
    return pages.empty() ? nullptr : dynamic_cast<ParameterPage*>(pages.back());
  }

  // A caption in another unit than the value beside it, and nothing says so.
  void LookAtCaptions() {
    ParameterPage* page = PageInFront();
    if (page == nullptr || app_.state.UiLocked) return;
    for (const auto& column : page->Columns()) {
      for (const Field& field : column->Fields()) {
        if (field.unit == nullptr || IsFixedUnit(field.parameter->unit) || ValueText(field).empty()) continue;
        const Control& entry = field.Entry();
        const bool told =
            entry.Origin() == ValueOrigin::kOutdated || !entry.Mark().empty() ||
            (entry.Origin() == ValueOrigin::kTyped && entry.OriginText().find("Typed for") == 0);
        const std::string shown = FieldOrigins::UnitShown(field);
        const std::string meant = column->Origins().UnitOfValue(field);
        if (!told && shown != meant) {
          Fail(FormatText("%1 %2 of [%3] stands beside [%4], origin %5 %6",
                          {page->Name(), entry.FullName(), meant, shown,
                           std::to_string(static_cast<int>(entry.Origin())), entry.OriginText()}));
        }
      }
    }
  }

  void See(const ParameterPage& page) {
    seen_.clear();
    unit_goes_along_ = false;
    for (const auto& column : page.Columns()) {
      ColumnRules& rules = column->Rules();
      for (const Field& field : column->Fields()) {
        const Parameter& row = *field.parameter;
        const int index = row.location == Location::kMeter ? 0 : rules.IndexOf(row.location);
        seen_.push_back({&field,
                         {&row, index},
                         rules.UnitChannel(field),
                         field.ShownText(),
                         FieldOrigins::UnitShown(field)});
        unit_goes_along_ =
            unit_goes_along_ || (field.Ticked() && FactToldBy(row) && !ValueText(field).empty());
      }
    }
  }

  // --- steps ---------------------------------------------------------------------------------------------

  void PressPage() {
    const auto buttons = MDIForm1::PageButtons();
    const auto& row = buttons[static_cast<std::size_t>(Pick(static_cast<int>(buttons.size())))];
    if (std::string_view(row.page) == "Form12" || std::string_view(row.page) == "Form8") return;
    Say("open " + std::string(row.page));
    (MainWindow(app_).*row.button).Press();
  }

  // A gesture on something of the page in front that a person can reach.
  template <class T>
  T* Any(
      ControlKind kind, const std::function<bool(const T&)>& fits = [](const T&) { return true; }) {
    Form* page = PageInFront();
    if (page == nullptr) return nullptr;
    std::vector<T*> found;
    for (Control* control : page->Controls()) {
      if (control->Kind() != kind || !control->Enabled() || !control->Visible()) continue;
      auto* typed = static_cast<T*>(control);
      if (fits(*typed)) found.push_back(typed);
    }
    return found.empty() ? nullptr : found[static_cast<std::size_t>(Pick(static_cast<int>(found.size())))];
  }

  void Tick() {
    auto* box = Any<CheckBox>(ControlKind::kCheckBox, [](const CheckBox& b) { return b.Name() != "SPEC"; });
    if (box == nullptr) return;
    Say((box->Ticked() ? "untick " : "tick ") + box->FullName());
    box->Ticked() ? box->Untick() : box->Tick();
  }
  void TickAll() {
    ParameterPage* page = PageInFront();
    if (page == nullptr) return;
    Say("tick chkCheck");
    page->chkCheck.Tick();
  }
  void Type() {
    auto* text = Any<TextBox>(ControlKind::kTextBox,
                              [](const TextBox& t) { return !t.Locked() && t.Name() != "SPEC_Text"; });
    if (text == nullptr) return;
    constexpr const char* kNumbers[] = {"60.5", "4.5", "12", "0.75", "100", "1", "250", "7.25"};
    const std::string number = kNumbers[Pick(std::size(kNumbers))];
    Say("type " + text->FullName() + " " + number);
    text->Type(number);
    text->LoseFocus();
  }
  void ChooseEntry() {
    auto* list = Any<ComboBox>(ControlKind::kComboBox, [](const ComboBox& l) { return l.Count() > 0; });
    if (list == nullptr) return;
    const int index = Pick(list->Count());
    Say("choose " + list->FullName() + " " + std::to_string(index));
    list->Choose(index);
  }
  void ChooseOption() {
    auto* option = Any<OptionButton>(ControlKind::kOptionButton);
    if (option == nullptr) return;
    Say("choose " + option->FullName());
    option->Choose();
  }
  void PressButton(const std::string& name) {
    ParameterPage* page = PageInFront();
    auto* button = page == nullptr ? nullptr : dynamic_cast<PushButton*>(page->Find(name));
    if (button == nullptr) return;
    Say("press " + button->FullName());
    button->Press();
  }
  void Read() { PressButton("ReadParameter"); }
  void ReadHeat() { PressButton("ReadParameterHeat"); }
  void SetBy(const std::string& button) {
    ParameterPage* page = PageInFront();
    if (page == nullptr) return;
    See(*page);
    std::string refused;
    app_.on_operation = [&](const OperationReport& report) { refused = report.refused; };
    PressButton(button);
    app_.on_operation = nullptr;
    seen_.clear();
    if (!refused.empty()) {
      ++result_.refusals;
      Say("# " + refused);
    }
  }
  void Set() { SetBy("SetParameter"); }
  void SetHeat() { SetBy("SetParameterHeat"); }
  void AdjustZero() { PressButton("CmdBtnAdjust"); }
  void Initialise() {
    if (Pick(3) == 0) PressButton("CommandMemoryInit");
  }

  // Units and modes as the system page sets them.
  void SystemSet() {
    if (app_.windows.MousePointer() == kHourglassPointer || app_.state.UiLocked) return;
    auto& main = MainWindow(app_);
    const std::vector<Form*> pages = app_.windows.VisiblePages();
    if (pages.empty() || pages.back()->Name() != "Form6") {
      if (Form* system = app_.windows.Find("Form6"); system != nullptr && system->Visible())
        main.Command6.Press();
      Say("open Form6");
      main.Command6.Press();
    }
    ParameterPage* page = PageInFront();
    if (page == nullptr || page->Name() != "Form6") return;
    constexpr std::array<std::pair<const char*, const char*>, 3> kWhat = {
        {{"UNIT_SYSTEM", "UNIT_SYSTEMCombo"},
         {"MEASUREMENT_MODECheck", "MEASUREMENT_MODECombo"},
         {"SYSTEM_MODECheck", "SYSTEM_MODECombo"}}};
    const auto& [box_name, list_name] = kWhat[static_cast<std::size_t>(Pick(3))];
    auto* box = dynamic_cast<CheckBox*>(page->Find(box_name));
    auto* list = dynamic_cast<ComboBox*>(page->Find(list_name));
    box->Tick();
    const int index = Pick(std::max(list->Count(), 1));
    list->Choose(index);
    Say("tick " + box->FullName());
    Say("choose " + list->FullName() + " " + std::to_string(index));
    Set();
    if (Pick(2) != 0) return;
    Say("open Form6");
    main.Command6.Press();
  }

  // Somebody at the meter.
  void MeterKeys() {
    struct Key {
      int address;
      int count;
    };
    constexpr Key kKeysOfMeter[] = {{0x0100, 2}, {0x03E8, 3}, {0x003E, 2}, {0x0004, 18}, {0x138C, 18},
                                    {0x0002, 2}, {0x0040, 8}, {0x04B4, 2}, {0x04B6, 7}};
    const Key& key = kKeysOfMeter[Pick(std::size(kKeysOfMeter))];
    const int value = Pick(key.count);
    const int station = Pick(4) == 0 ? 1 + Pick(2) : 0;
    sim::Meter& meter = station == 0 ? MeterOnLine() : *machine_.line.Station(station);
    Say("# at the meter: register " + std::to_string(key.address) + " becomes " + std::to_string(value));
    const std::array<std::uint8_t, 5> request = {6, static_cast<std::uint8_t>(key.address >> 8),
                                                 static_cast<std::uint8_t>(key.address), 0,
                                                 static_cast<std::uint8_t>(value)};
    meter.Serve(request, machine_.time.NowMs() * 1000);
    // Nobody is at the meter and at the program at once.
    machine_.time.RunFor(kFactHoldsMs + 100);
  }

  void OtherStation() {
    if (app_.state.UiLocked) return;
    MainWindow(app_).ComPort.Press();
    Form* form = app_.windows.Find("FrmCSet");
    if (form == nullptr || !form->Visible()) return;
    const std::string station = Pick(2) == 0 ? "01" : "02";
    Say("open FrmCSet");
    Say("type StaitionNo " + station);
    Say("press Command1");
    dynamic_cast<ComboBox&>(*form->Find("TransMethod")).Choose(1);
    auto& text = dynamic_cast<TextBox&>(*form->Find("StaitionNo"));
    text.Type(station);
    text.LoseFocus();
    dynamic_cast<PushButton&>(*form->Find("Command1")).Press();
    if (app_.windows.Find("FrmCSet") != nullptr) app_.windows.Unload("FrmCSet");
  }

  // Another meter is hung on the line under the same number.
  void ExchangeMeter() {
    const int station = static_cast<int>(ParseNumber(app_.state.StationNo).value_or(1));
    const unsigned number = random_() % 1000;
    Say("# another meter is put on the line as station " + std::to_string(station));
    machine_.line.Unplug(machine_.time.NowMs() * 1000);
    sim::Meter& meter = machine_.line.AddStation(station, ConfigOf(number));
    meter.Fill(number, machine_.time.NowMs() * 1000);
    KeepCodes(meter);
    machine_.time.RunFor(2000);
    machine_.line.Plug(machine_.time.NowMs() * 1000);
    machine_.time.RunFor(2000);
  }
  void LoseLine() {
    Say("# the line is pulled out and put in again");
    machine_.line.Unplug(machine_.time.NowMs() * 1000);
    if (Pick(2) == 0) Read();
    machine_.time.RunFor(3000);
    machine_.line.Plug(machine_.time.NowMs() * 1000);
    machine_.time.RunFor(2000);
  }
  void Wait() {
    const int ms = 100 + Pick(15'000);
    Say("wait " + std::to_string(ms));
    machine_.time.RunFor(ms);
  }
  void Faults() {
    constexpr const char* kWords[] = {"silence*1", "silence*4",     "crc*2",
                                      "short*1",   "exception=4*1", "ignore-write*1"};
    const char* words = kWords[Pick(std::size(kWords))];
    Say(std::string("# fault ") + words);
    try {
      machine_.Arm(words);
    } catch (const std::exception&) {
      Fail(std::string("no such fault: ") + words);
    }
  }
  void Run() {
    if (app_.state.UiLocked) return;
    MainWindow(app_).Command7.Press();
    Form* form = app_.windows.Find("Form9");
    auto* start = form == nullptr ? nullptr : dynamic_cast<PushButton*>(form->Find("Start"));
    auto* stop = form == nullptr ? nullptr : dynamic_cast<PushButton*>(form->Find("StopBtn"));
    if (start == nullptr) return;
    Say("open Form9");
    Say("press Start");
    start->Press();
    machine_.time.RunFor(1500);
    PressPage();
    machine_.time.RunFor(500);
    if (stop == nullptr) stop = dynamic_cast<PushButton*>(form->Find("Stop"));
    if (stop != nullptr) stop->Press();
    machine_.time.RunFor(3000);
  }
  void Keep() {
    if (app_.state.UiLocked || !OpenPort(app_)) return;
    if (!kept_) {
      kept_ = ReadSnapshot(app_, {}).snapshot;
      return;
    }
    Say("# restore");
    app_.windows.Run([&] {
      const Operation operation(app_, MainWindow(app_), Operation::kUnnamed);
      RestoreMeter(app_, SideOfMeter(*kept_), {});
    });
    kept_.reset();
  }
  // Saved once, and opened on whatever meter there is then.
  void ParameterFile() {
    if (app_.state.UiLocked) return;
    MDIForm1& main = MainWindow(app_);
    if (!machine_.files.files.contains(kParameterFile)) {
      Say(std::string("file ") + kParameterFile);
      Say("open setParam");
      machine_.dialogs.SaveFile(kParameterFile);
      main.setParam.Press();
    } else {
      Say(std::string("file ") + kParameterFile);
      Say("open readparam");
      machine_.dialogs.OpenFile(kParameterFile);
      main.readparam.Press();
    }
  }

  VirtualPlatform machine_{PortKind::kSimulated};
  App app_{machine_.machine};
  std::mt19937 random_;
  sim::Bytes request_;
  std::vector<Seen> seen_;
  bool unit_goes_along_ = false;
  std::optional<Snapshot> kept_;
  WalkResult result_;
};

// The more often a step stands here, the likelier it is.
const Walker::Step Walker::kKinds[22] = {
    &Walker::PressPage,     &Walker::PressPage,    &Walker::Tick,      &Walker::TickAll,
    &Walker::Type,          &Walker::Type,         &Walker::Type,      &Walker::ChooseEntry,
    &Walker::ChooseOption,  &Walker::Read,         &Walker::Set,       &Walker::Set,
    &Walker::SetHeat,       &Walker::SystemSet,    &Walker::MeterKeys, &Walker::OtherStation,
    &Walker::ExchangeMeter, &Walker::Wait,         &Walker::Faults,    &Walker::Run,
    &Walker::Keep,          &Walker::ParameterFile};

}  // namespace

std::vector<WalkStep> RandomWalk(unsigned seed, int steps) {
  std::mt19937 random(seed);
  std::vector<WalkStep> walk;
  for (int i = 0; i < steps; ++i) {
    const int kind = std::uniform_int_distribution(0, Walker::Kinds() - 1)(random);
    walk.push_back({kind, static_cast<unsigned>(random())});
  }
  return walk;
}

WalkResult Walk(unsigned seed, const std::vector<WalkStep>& steps) { return Walker(seed).Go(steps); }

std::vector<WalkStep> Shortened(unsigned seed, std::vector<WalkStep> steps) {
  for (std::size_t size = steps.size() / 2; size > 0; size /= 2) {
    for (std::size_t at = 0; at + size <= steps.size();) {
      std::vector<WalkStep> fewer = steps;
      fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(at),
                  fewer.begin() + static_cast<std::ptrdiff_t>(at + size));
      if (!Walk(seed, fewer).fault.empty()) {
        steps = std::move(fewer);
      } else {
        at += size;
      }
    }
  }
  return steps;
}

}  // namespace vlt::test
