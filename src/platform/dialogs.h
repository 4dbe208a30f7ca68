// SPDX-License-Identifier: GPL-3.0-or-later
// What the program asks the operator outside its own windows.
#pragma once

#include <optional>
#include <string>

namespace vlt {

enum class MessageIcon { kNone, kStop, kQuestion, kInformation };
enum class MessageButtons { kOk, kOkCancel, kYesNo };
enum class MessageAnswer { kOk, kCancel, kYes, kNo };

struct Message {
  std::string text;  // may hold line breaks
  std::string title;
  MessageButtons buttons = MessageButtons::kOk;
  MessageIcon icon = MessageIcon::kNone;
  bool second_is_default = false;  // Cancel or No answers the enter key
};

struct FileQuestion {
  std::string title;   // empty: the platform's own
  std::string filter;  // "name|pattern|name|pattern", the first one is chosen
  std::string folder;  // where the dialog starts; empty: the last folder used
  std::string name;    // the name shown at first
  bool ask_before_overwrite = false;
};

struct FolderQuestion {
  std::string text;    // what the operator is asked
  std::string folder;  // where the dialog starts; empty: the last folder used
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // Shows a box and waits for its answer; events run meanwhile. Closing the box answers Cancel, No, or the
  // only button.
  virtual MessageAnswer Ask(const Message& message) = 0;
  // The full path of an existing file, or nothing when the operator cancels.
  virtual std::optional<std::string> AskOpenFile(const FileQuestion& question) = 0;
  // The full path of a file to write, or nothing when the operator cancels.
  virtual std::optional<std::string> AskSaveFile(const FileQuestion& question) = 0;
  // The full path of an existing folder, or nothing when the operator cancels.
  virtual std::optional<std::string> AskFolder(const FolderQuestion& question) = 0;
};

}  // namespace vlt
