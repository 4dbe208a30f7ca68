// SPDX-License-Identifier: GPL-3.0-or-later
// Message boxes and file dialogs answered by what a script has prepared.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/file_system.h"

namespace vlt {

// "ok", "cancel", "yes", "no" and back.
std::string AnswerName(MessageAnswer answer);
std::optional<MessageAnswer> AnswerOf(std::string_view name);

// A box or dialog that no fitting answer waits for is answered as closing it would.
class ScriptDialogs : public Dialogs {
 public:
  // Told of each box (its text and the answer) and of each file dialog ("open", "save" or "folder" and the
  // path, empty for Cancel), and of what a person could not have answered so.
  struct Observer {
    std::function<void(const std::string& text, const std::string& answer)> message;
    std::function<void(const std::string& kind, const std::string& path)> file;
    std::function<void(const std::string& what)> unanswered;
    std::function<void(const std::string& what)> refused;
  };

  explicit ScriptDialogs(FileSystem& files) : files_(files) {}
  void SetObserver(Observer observer) { observer_ = std::move(observer); }

  // Answers for the next boxes, in order.
  void Answer(MessageAnswer answer) { answers_.push_back(answer); }
  void DropAnswers() { answers_.clear(); }
  // Paths for the next file dialogs, in order; a relative one begins in the working folder. Nothing is
  // Cancel.
  void File(std::optional<std::string> path) { paths_.push_back(std::move(path)); }

  MessageAnswer Ask(const Message& message) override;
  // A path that is not there is refused: nobody could have chosen it.
  std::optional<std::string> AskOpenFile(const FileQuestion& question) override;
  // A name without a suffix gets that of the dialog's filter. A file that is there may be overwritten.
  std::optional<std::string> AskSaveFile(const FileQuestion& question) override;
  // Takes a prepared path likewise; one that is not there is refused.
  std::optional<std::string> AskFolder(const FolderQuestion& question) override;

 private:
  std::optional<std::string> TakePath(const std::string& title);
  std::optional<std::string> TakeExisting(const std::string& title, const std::string& kind);

  FileSystem& files_;
  Observer observer_;
  std::deque<MessageAnswer> answers_;
  std::deque<std::optional<std::string>> paths_;
};

}  // namespace vlt
