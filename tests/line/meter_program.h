// SPDX-License-Identifier: GPL-3.0-or-later
// What the sessions with the simulated meter share: the program on its line, and who answers the boxes.
#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QStringList>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "platform/dialogs.h"

namespace vlt {

class AnsweringDialogs : public Dialogs {
 public:
  MessageAnswer Ask(const Message& message) override {
    texts.push_back(message.text);
    if (answers.empty()) return MessageAnswer::kCancel;
    const MessageAnswer answer = answers.front();
    answers.pop_front();
    return answer;
  }
  std::optional<std::string> AskOpenFile(const FileQuestion&) override { return std::nullopt; }
  std::optional<std::string> AskSaveFile(const FileQuestion&) override { return save_path; }
  std::optional<std::string> AskFolder(const FolderQuestion&) override { return std::nullopt; }

  std::optional<std::string> save_path;
  std::deque<MessageAnswer> answers;
  std::vector<std::string> texts;
};

// meter-sim on a pseudo-terminal of its own, with options and words of its command line.
class MeterProgram {
 public:
  explicit MeterProgram(const QStringList& words) {
    process_.start(METER_SIM_PATH, words);
    if (!process_.waitForReadyRead(10000)) ADD_FAILURE() << "meter-sim says nothing";
    port_ = process_.readLine().trimmed().toStdString();
  }
  ~MeterProgram() {
    process_.terminate();
    process_.waitForFinished(10000);
  }
  const std::string& Port() const { return port_; }

  // Says a word to the running program, which has acted on it then: "fault=unplug=3@00D0".
  void Do(const std::string& word) {
    process_.write((word + "\n").c_str());
    EXPECT_EQ(NextLine(), "ok") << word;
  }
  // Puts the plug back: the port has another name then.
  void Plug() {
    Do("plug");
    port_ = NextLine();
  }

 private:
  std::string NextLine() {
    while (!process_.canReadLine()) {
      if (process_.waitForReadyRead(10000)) continue;
      ADD_FAILURE() << "meter-sim says nothing";
      return {};
    }
    return process_.readLine().trimmed().toStdString();
  }

  QProcess process_;
  std::string port_;
};

}  // namespace vlt
