// SPDX-License-Identifier: GPL-3.0-or-later
// The process and where it lives.
#pragma once

#include <string>
#include <vector>

namespace vlt {

// A serial device that the machine has now.
struct PortInfo {
  std::string device;  // "/dev/ttyUSB0", "COM3"
  // What the adapter tells of itself; each may be empty.
  std::string product{};
  std::string maker{};
  std::string serial_number{};
  bool operator==(const PortInfo&) const = default;
};

// A lock file of the program folder that another instance has left, or may still use.
struct FoundLock {
  enum class State : unsigned char {
    kNone,
    kTakenOver,  // no process held it; it is this instance's now
    kElsewhere,  // no process held it, and it could not be removed: this instance has its guard elsewhere
    kUnsure,     // this system can't tell whether a process holds it: this instance must not run
  };
  State state = State::kNone;
  std::string path{};
  // The process that it names, and its machine; 0 and empty when it names none.
  long long process = 0;
  std::string machine{};
};

class Process {
 public:
  virtual ~Process() = default;
  // The folder that holds VLT.ini, without a trailing separator.
  virtual std::string ProgramFolder() = 0;
  // The folder for what the program keeps for this user beside his own files, without a trailing separator.
  // It need not be there yet.
  virtual std::string UserFolder() { return ProgramFolder(); }
  // '/' or '\\': what stands between a folder and a file name here.
  virtual char Separator() = 0;
  // False when another instance of the program runs from the same folder. A guard that no process holds does
  // not count, whatever it says: it is taken over.
  virtual bool BecomeOnlyInstance() = 0;
  // What BecomeOnlyInstance has found.
  virtual FoundLock LockInTheWay() { return {}; }
  // The user's locale as a number; the firmware tool reads it.
  virtual int LocaleId() = 0;
  // The 8.3 form of a path where the system has one, else the path itself.
  virtual std::string ShortPath(const std::string& path) = 0;
  // A line for who started the program without looking at its windows; it goes to the error output.
  virtual void PutError(const std::string& text) { (void)text; }
  // Serial devices present now.
  virtual std::vector<PortInfo> Ports() = 0;
};

}  // namespace vlt
