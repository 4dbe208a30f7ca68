// SPDX-License-Identifier: GPL-3.0-or-later
// meter-sim: the simulated meter as a program on a pseudo-terminal or on a serial device.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>

#include "sim/scenario.h"

namespace {

constexpr const char* kUsage =
    "Usage: meter-sim [OPTION]... [WORD]...\n"
    "\n"
    "A simulated flow meter on a Modbus RTU line. Without --device it opens a pseudo-terminal, prints the "
    "name of\n"
    "the port that a program opens to reach the meter, and serves until SIGTERM, SIGINT or the command "
    "\"quit\".\n"
    "\n"
    "Options:\n"
    "  --link PATH      symbolic link to the pseudo-terminal, made anew whenever the terminal changes\n"
    "  --device PATH    serve on this serial device; speed, parity and stop bits by the words below\n"
    "  --log FILE       append every request and answer to FILE: seconds, kind, bytes, note (\"-\": standard "
    "error)\n"
    "  --control FIFO   read commands from this pipe, made when it is missing; otherwise from standard "
    "input\n"
    "  --WORD VALUE     the same as WORD=VALUE: --speed 19200\n"
    "  --help           this text\n"
    "\n"
    "Words that say what there is (what holds without them in parentheses):\n";

constexpr const char* kExamples =
    "\n"
    "Commands are the words of the second list, one or more a line, while the meter runs; \"quit\" ends it, "
    "\"help\"\n"
    "lists them. Each line is answered by \"ok\" or by what is wrong with it.\n"
    "\n"
    "Examples:\n"
    "  meter-sim --link /tmp/meter speed=19200 path=2 live=1:ramp:0:2:120 alarms=on\n"
    "  meter-sim stations=1-31 fleet=on 5:speed=19200 alarms=rare\n"
    "  meter-sim boot flash=3000 fault=loader-error/43\n"
    "  meter-sim model=single unit=english lang=japanese fault=crc@00D0H*2\n"
    "  meter-sim --device /dev/ttyUSB0 --speed 38400 --parity E --stop 1 stations=1,2,5 --log line.log\n";

struct Options {
  sim::Scenario scenario;
  std::string link, device, log, control;
  bool help = false;
};

std::string Trouble(const std::string& what) { return what + ": " + std::strerror(errno); }

// Empty text, or what is wrong.
std::string ParseOptions(int argc, char** argv, Options& options) {
  const std::pair<std::string_view, std::string*> own[] = {{"--link", &options.link},
                                                           {"--device", &options.device},
                                                           {"--log", &options.log},
                                                           {"--control", &options.control}};
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word == "--help" || word == "-h") {
      options.help = true;
      return "";
    }
    if (!word.starts_with("--")) {
      if (std::string error = ApplyWord(options.scenario, word); !error.empty()) return error;
      continue;
    }
    if (++i == argc) return "nothing stands behind " + word;
    std::string* target = nullptr;
    for (const auto& [name, place] : own) {
      if (name == word) target = place;
    }
    if (target) {
      *target = argv[i];
    } else if (std::string error = ApplyWord(options.scenario, word.substr(2) + "=" + argv[i]);
               !error.empty()) {
      return error;
    }
  }
  return "";
}

// One file descriptor that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Reset(); }
  void Reset(int fd = -1) {
    if (fd_ >= 0) close(fd_);
    fd_ = fd;
  }
  int get() const { return fd_; }

 private:
  int fd_;
};

bool MakeRaw(int fd, const sim::Scenario* scenario);

// The end of the line that the program holds. A pseudo-terminal can be unplugged and comes back under another
// name.
class Port {
 public:
  Port(std::string device, std::string link) : device_(std::move(device)), link_(std::move(link)) {}
  ~Port() { Close(); }
  Port(const Port&) = delete;
  Port& operator=(const Port&) = delete;

  std::string Open(const sim::Scenario& scenario) {
    return device_.empty() ? OpenTerminal() : OpenDevice(scenario);
  }
  void Close();
  bool IsOpen() const { return end_.get() >= 0; }
  // Gives a named device another speed and parity; a terminal has none.
  bool Retune(int baud, char parity);
  bool IsTerminal() const { return device_.empty(); }
  int get() const { return end_.get(); }

  // Speed that the program at the other end has set, 0 when it can't be told. A terminal doesn't tell parity.
  int Speed() const;
  // False when the port is gone.
  bool Read(sim::Bytes& bytes);
  bool Write(const sim::Bytes& bytes);

 private:
  std::string OpenTerminal();
  std::string OpenDevice(const sim::Scenario& scenario);
  std::string Link(const std::string& name);

  std::string device_, link_;
  bool linked_ = false;
  Descriptor end_;
  // Held so that a program that closes its end and opens it again finds the terminal as it was, and so that
  // poll() doesn't report a hang-up while nobody has it open.
  Descriptor other_end_;
};

std::string Port::OpenTerminal() {
  end_.Reset(posix_openpt(O_RDWR | O_NOCTTY));
  if (end_.get() < 0 || grantpt(end_.get()) != 0 || unlockpt(end_.get()) != 0) {
    return Trouble("no pseudo-terminal can be opened");
  }
  const char* slave = ptsname(end_.get());
  const std::string name = slave ? slave : "";
  other_end_.Reset(open(name.c_str(), O_RDWR | O_NOCTTY));
  if (other_end_.get() < 0 || !MakeRaw(other_end_.get(), nullptr)) return Trouble(name);
  fcntl(end_.get(), F_SETFL, O_NONBLOCK);
  if (std::string error = Link(name); !error.empty()) return error;
  std::cout << name << std::endl;
  return "";
}

std::string Port::Link(const std::string& name) {
  if (link_.empty()) return "";
  struct stat old {};
  if (lstat(link_.c_str(), &old) == 0) {
    if (!S_ISLNK(old.st_mode)) return link_ + " is there already and is no symbolic link";
    unlink(link_.c_str());
  }
  if (symlink(name.c_str(), link_.c_str()) != 0) return Trouble(link_);
  linked_ = true;
  return "";
}

std::string Port::OpenDevice(const sim::Scenario& scenario) {
  end_.Reset(open(device_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK));
  if (end_.get() < 0) return Trouble(device_);
  if (!MakeRaw(end_.get(), &scenario)) return Trouble(device_ + " doesn't take these settings");
  std::cout << device_ << std::endl;
  return "";
}

bool Port::Retune(int baud, char parity) {
  sim::Scenario settings;
  settings.line.baud = baud;
  settings.parity = parity;
  return IsTerminal() || MakeRaw(end_.get(), &settings);
}

void Port::Close() {
  end_.Reset();
  other_end_.Reset();
  if (linked_) unlink(link_.c_str());
  linked_ = false;
}

bool Port::Read(sim::Bytes& bytes) {
  std::uint8_t buffer[4096];
  const ssize_t count = read(end_.get(), buffer, sizeof buffer);
  if (count > 0) bytes.assign(buffer, buffer + count);
  return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

// What the terminal has no room for, because nobody reads it, is lost as it would be on a line.
bool Port::Write(const sim::Bytes& bytes) {
  const ssize_t count = write(end_.get(), bytes.data(), bytes.size());
  return count >= 0 || errno == EAGAIN || errno == EINTR;
}

constexpr std::pair<int, speed_t> kSpeeds[] = {{1200, B1200},   {2400, B2400},     {4800, B4800},
                                               {9600, B9600},   {19200, B19200},   {38400, B38400},
                                               {57600, B57600}, {115200, B115200}, {230400, B230400}};

std::optional<speed_t> SpeedOf(int baud) {
  for (const auto& [number, speed] : kSpeeds) {
    if (number == baud) return speed;
  }
  return std::nullopt;
}

int Port::Speed() const {
  termios settings{};
  if (tcgetattr(end_.get(), &settings) != 0) return 0;
  for (const auto& [number, speed] : kSpeeds) {
    if (speed == cfgetospeed(&settings)) return number;
  }
  return 0;
}

// Bytes as they are; with a scenario its speed, parity and stop bits too.
bool MakeRaw(int fd, const sim::Scenario* scenario) {
  termios settings{};
  if (tcgetattr(fd, &settings) != 0) return false;
  cfmakeraw(&settings);
  settings.c_cflag |= CLOCAL | CREAD;
  if (scenario) {
    const auto speed = SpeedOf(scenario->line.baud);
    if (!speed) {
      errno = EINVAL;
      return false;
    }
    cfsetispeed(&settings, *speed);
    cfsetospeed(&settings, *speed);
    settings.c_cflag &= ~(PARENB | PARODD | CSTOPB);
    if (scenario->parity != 'N') settings.c_cflag |= PARENB;
    if (scenario->parity == 'O') settings.c_cflag |= PARODD;
    if (scenario->stop_bits == 2) settings.c_cflag |= CSTOPB;
  }
  return tcsetattr(fd, TCSANOW, &settings) == 0;
}

volatile sig_atomic_t g_end = 0;

// SIGTERM and SIGINT get through only while ppoll() waits, so none is missed between a look at g_end and the
// wait.
sigset_t CatchSignals() {
  struct sigaction action {};
  action.sa_handler = [](int) { g_end = 1; };
  sigset_t blocked, before;
  sigemptyset(&blocked);
  for (int signal : {SIGTERM, SIGINT}) {
    sigaction(signal, &action, nullptr);
    sigaddset(&blocked, signal);
  }
  sigprocmask(SIG_BLOCK, &blocked, &before);
  signal(SIGPIPE, SIG_IGN);
  return before;
}

class Program {
 public:
  explicit Program(const Options& options) : options_(options), port_(options.device, options.link) {}
  int Run();

 private:
  std::string Start();
  sim::Micros Now() const;
  // False when the port is gone.
  bool Turn(const sigset_t& mask);
  bool Wait(const sigset_t& mask, pollfd (&waits)[2]);
  bool FollowPlug();
  bool FollowLoader();
  void ReadCommands();
  void DoCommand(const std::string& line);
  void WriteLog(const sim::LogEntry& entry);

  const Options& options_;
  Port port_;
  std::unique_ptr<sim::Line> line_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  bool loading_ = false;  // the port has the boot loader's speed
  Descriptor pipe_;
  int control_ = STDIN_FILENO;  // -1 when it has come to its end
  std::string unfinished_;      // of a command
  std::ofstream log_file_;
  std::ostream* log_ = nullptr;
};

sim::Micros Program::Now() const {
  return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start_)
      .count();
}

std::string Program::Start() {
  std::string error;
  line_ = Build(options_.scenario, Now(), error);
  if (!line_) return error;
  if (!options_.control.empty()) {
    if (mkfifo(options_.control.c_str(), 0600) != 0 && errno != EEXIST) return Trouble(options_.control);
    // Open for writing too: the pipe never comes to its end when a writer leaves.
    pipe_.Reset(open(options_.control.c_str(), O_RDWR | O_NONBLOCK));
    if (pipe_.get() < 0) return Trouble(options_.control);
    control_ = pipe_.get();
  }
  if (!options_.log.empty()) {
    if (options_.log != "-") log_file_.open(options_.log, std::ios::app);
    if (options_.log != "-" && !log_file_) return Trouble(options_.log);
    log_ = options_.log == "-" ? &std::cerr : &log_file_;
    line_->SetLogSink([this](const sim::LogEntry& entry) { WriteLog(entry); });
  }
  line_->SetLogLimit(0);  // nobody looks back here
  return port_.Open(options_.scenario);
}

void Program::WriteLog(const sim::LogEntry& entry) {
  static constexpr const char* kKinds[] = {"request", "reply", "dropped"};
  constexpr std::size_t kMost = 256;  // a module would fill the file
  char time[32];
  std::snprintf(time, sizeof time, "%.6f", static_cast<double>(entry.at) / 1e6);
  const std::span<const std::uint8_t> bytes(entry.bytes);
  *log_ << time << '\t' << kKinds[static_cast<int>(entry.kind)] << '\t'
        << sim::ToHex(bytes.first(std::min(bytes.size(), kMost)));
  if (bytes.size() > kMost) *log_ << " ... (" << bytes.size() << " bytes)";
  *log_ << '\t' << entry.note << std::endl;
}

int Program::Run() {
  const sigset_t mask = CatchSignals();
  if (const std::string error = Start(); !error.empty()) {
    std::cerr << "meter-sim: " << error << '\n';
    return 1;
  }
  while (!g_end) {
    if (Turn(mask)) continue;
    std::cerr << "meter-sim: " << Trouble("the port is gone") << '\n';
    return 1;
  }
  return 0;
}

bool Program::Wait(const sigset_t& mask, pollfd (&waits)[2]) {
  waits[0] = {port_.get(), POLLIN, 0};
  waits[1] = {control_, POLLIN, 0};
  timespec pause{};
  const auto next = line_->NextEvent();
  if (next) {
    const sim::Micros left = std::max<sim::Micros>(*next - Now(), 0);
    pause = {static_cast<time_t>(left / 1'000'000), static_cast<long>(left % 1'000'000 * 1000)};
  }
  return ppoll(waits, 2, next ? &pause : nullptr, &mask) >= 0 || errno == EINTR;
}

bool Program::Turn(const sigset_t& mask) {
  pollfd waits[2];
  if (!Wait(mask, waits)) return false;
  if (port_.IsOpen() && (waits[0].revents & (POLLIN | POLLHUP | POLLERR))) {
    sim::Bytes bytes;
    if (!port_.Read(bytes)) return false;
    // A device has carried the bytes at its pace; a pseudo-terminal hands them over at once.
    if (port_.IsTerminal()) {
      // Stations of their own speed have to know at which one the program speaks.
      if (!options_.scenario.own.empty()) line_->SetMaster({port_.Speed(), 0});
      line_->Transmit(bytes, Now());
    } else {
      line_->Receive(bytes, Now());
    }
  }
  if (waits[1].revents) ReadCommands();
  const sim::Bytes bytes = line_->Take(Now());
  if (!bytes.empty() && port_.IsOpen() && !port_.Write(bytes)) return false;
  return FollowLoader() && FollowPlug();
}

// The boot loader has a speed of its own. A device can only be at one, so that there an open frame at another
// speed wakes nobody: "loader=on" does.
bool Program::FollowLoader() {
  if (line_->IsLoading() == loading_) return true;
  loading_ = line_->IsLoading();
  const sim::Scenario& meter = options_.scenario;
  return loading_ ? port_.Retune(sim::kLoaderBaud, 'N') : port_.Retune(meter.line.baud, meter.parity);
}

// The plug of the line is the pseudo-terminal itself: a program that holds it sees it vanish.
bool Program::FollowPlug() {
  const bool plugged = line_->IsPlugged(Now());
  if (!port_.IsTerminal() || plugged == port_.IsOpen()) return true;
  if (!plugged) {
    port_.Close();
    return true;
  }
  const std::string error = port_.Open(options_.scenario);
  if (!error.empty()) std::cerr << "meter-sim: " << error << '\n';
  return error.empty();
}

void Program::ReadCommands() {
  char buffer[1024];
  const ssize_t count = read(control_, buffer, sizeof buffer);
  if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) control_ = -1;
  if (count <= 0) return;
  unfinished_.append(buffer, static_cast<std::size_t>(count));
  for (std::size_t end; (end = unfinished_.find('\n')) != std::string::npos;) {
    const std::string line = unfinished_.substr(0, end);
    unfinished_.erase(0, end + 1);
    DoCommand(line);
  }
}

void Program::DoCommand(const std::string& line) {
  std::string answer = "ok";
  std::size_t at = 0;
  while ((at = line.find_first_not_of(" \t\r", at)) != std::string::npos) {
    const std::string word = line.substr(at, line.find_first_of(" \t\r", at) - at);
    at += word.size();
    if (word == "quit") {
      g_end = 1;
    } else if (word == "help") {
      std::cout << sim::ActionHelp();
    } else if (const std::string error = ApplyAction(*line_, word, Now()); !error.empty()) {
      answer = "error: " + error;
      break;
    }
  }
  std::cout << answer << std::endl;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  if (const std::string error = ParseOptions(argc, argv, options); !error.empty()) {
    std::cerr << "meter-sim: " << error << "\nTry meter-sim --help\n";
    return 2;
  }
  if (options.help) {
    std::cout << kUsage << sim::ScenarioHelp()
              << "\nWords that act at once, as commands too (N: in front of one chooses station N):\n"
              << sim::ActionHelp() << "\nFaults (fault=NAME...):\n"
              << sim::FaultHelp() << kExamples;
    return 0;
  }
  return Program(options).Run();
}
