// SPDX-License-Identifier: GPL-3.0-or-later
// Answers to message boxes and file dialogs, prepared by the test. A box that no answer waits for fails the
// test, and so does an answer that nobody asked for.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/dialogs.h"

namespace vlt::test {

class ScriptedDialogs : public Dialogs {
 public:
  ~ScriptedDialogs() override;

  // Answers to the next boxes, in order. `meanwhile` runs while the box is on screen.
  void Answer(MessageAnswer answer, std::function<void()> meanwhile = {}) {
    answers_.push_back({answer, std::move(meanwhile)});
  }
  // Paths for the next file dialogs; nothing is Cancel.
  void OpenFile(std::optional<std::string> path) { open_paths_.push_back(std::move(path)); }
  void SaveFile(std::optional<std::string> path) { save_paths_.push_back(std::move(path)); }
  void Folder(std::optional<std::string> path) { folder_paths_.push_back(std::move(path)); }

  MessageAnswer Ask(const Message& message) override;
  std::optional<std::string> AskOpenFile(const FileQuestion& question) override;
  std::optional<std::string> AskSaveFile(const FileQuestion& question) override;
  std::optional<std::string> AskFolder(const FolderQuestion& question) override;

  // From now on a box without a prepared answer is closed, and a file dialog cancelled.
  void CloseUnexpected() { closes_ = true; }
  // The same, but a box that asks is answered by OK or Yes.
  void AgreeToUnexpected() { closes_ = agrees_ = true; }

  // The texts shown since the last call.
  std::vector<std::string> TakeTexts();

  std::vector<Message> messages;        // all boxes shown
  std::vector<FileQuestion> questions;  // all file dialogs shown
  std::vector<FolderQuestion> folder_questions;

 private:
  struct Prepared {
    MessageAnswer answer;
    std::function<void()> meanwhile;
  };
  using Paths = std::deque<std::optional<std::string>>;
  std::optional<std::string> TakePath(Paths& paths, const std::string& asked);

  std::deque<Prepared> answers_;
  Paths open_paths_;
  Paths save_paths_;
  Paths folder_paths_;
  std::size_t taken_ = 0;
  bool closes_ = false;
  bool agrees_ = false;
};

}  // namespace vlt::test
