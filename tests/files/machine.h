// A machine of files only: no meter, no operator, time stands still.
#pragma once

#include <map>
#include <set>
#include <string>

#include "state/app.h"

namespace vlt::test {

// Thrown where the program is killed.
struct Killed {};

class MemoryFiles : public FileSystem {
 public:
  std::map<std::string, std::string> content;
  std::map<std::string, FileError> refused;  // reading these fails
  // The step of writing (1 is the first) that fails with `fault`, or at which the program is killed.
  int fail_at = 0;
  FileError fault = FileError::kFull;
  int kill_at = 0;
  int steps = 0;

  FileError Read(const std::string& path, std::string& text) override {
    if (refused.contains(path)) return refused[path];
    if (!content.contains(path)) return FileError::kMissing;
    text = content[path];
    return FileError::kGood;
  }
  FileError Create(const std::string& path, std::string_view text) override {
    // A step that fails or is cut short has written a part.
    content[path] = text.substr(0, text.size() / 2);
    if (Fails()) return fault;
    content[path] = text;
    return FileError::kGood;
  }
  FileError Rename(const std::string& from, const std::string& to) override {
    if (Fails()) return fault;
    if (refused.contains(to)) return refused[to];
    content[to] = content[from];
    content.erase(from);
    return FileError::kGood;
  }
  FileError Remove(const std::string& path) override {
    return content.erase(path) == 0 ? FileError::kMissing : FileError::kGood;
  }
  FileError Append(const std::string& path, std::string_view text) override {
    if (Fails()) return fault;
    content[path] += text;
    return FileError::kGood;
  }
  bool Exists(const std::string& path) override { return content.contains(path); }

 private:
  bool Fails() {
    ++steps;
    if (steps == kill_at) throw Killed{};
    return steps == fail_at;
  }
};

class Machine : private Clock, EventQueue, SerialPort, Dialogs, Process {
 public:
  explicit Machine(char separator = '/') : separator_(separator) {}

  MemoryFiles files;
  Platform platform{*this, *this, *this, *this, files, *this};
  App app{platform};

 private:
  std::int64_t NowMs() override { return 0; }
  LocalTime Now() override { return {2026, 11, 24, 2, 10, 0, 0, 0}; }
  void GiveWay(std::int64_t) override {}
  void Sleep(int) override {}
  TimerId StartTimer(int, std::function<void()>) override { return 1; }
  void StopTimer(TimerId) override {}
  void Post(std::function<void()>) override {}
  void EndProcess() override {}
  void Open(int, const std::string&) override {}
  void Close() override {}
  bool IsOpen() const override { return false; }
  void DiscardInput() override {}
  void DiscardOutput() override {}
  void Write(std::span<const std::uint8_t>) override {}
  int BytesOut() override { return 0; }
  int BytesIn() override { return 0; }
  std::uint8_t TakeByte() override { return 0; }
  void SetRts(bool) override {}
  void SetDtr(bool) override {}
  MessageAnswer Ask(const Message&) override { return MessageAnswer::kCancel; }
  std::optional<std::string> AskOpenFile(const FileQuestion&) override { return std::nullopt; }
  std::optional<std::string> AskSaveFile(const FileQuestion&) override { return std::nullopt; }
  std::string ProgramFolder() override { return separator_ == '/' ? "/opt/tool" : "C:\\Tool"; }
  char Separator() override { return separator_; }
  bool BecomeOnlyInstance() override { return true; }
  int LocaleId() override { return 0; }
  std::string ShortPath(const std::string& path) override { return path; }
  std::vector<PortInfo> Ports() override { return {}; }

  char separator_;
};

}  // namespace vlt::test
