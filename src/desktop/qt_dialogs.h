// SPDX-License-Identifier: GPL-3.0-or-later
// Message boxes and file dialogs by Qt.
#pragma once

#include <QString>
#include <functional>
#include <string>

#include "platform/dialogs.h"

namespace vlt {

class QtDialogs : public Dialogs {
 public:
  // The words on the buttons come from the string table, which is only known later; without it Qt's own are
  // used.
  void SetTexts(std::function<QString(int id)> texts) { texts_ = std::move(texts); }

  MessageAnswer Ask(const Message& message) override;
  std::optional<std::string> AskOpenFile(const FileQuestion& question) override;
  std::optional<std::string> AskSaveFile(const FileQuestion& question) override;
  std::optional<std::string> AskFolder(const FolderQuestion& question) override;

 private:
  std::optional<std::string> AskFile(const FileQuestion& question, bool to_save);

  std::function<QString(int id)> texts_;
  // Where a dialog starts that nothing else tells.
  QString StartFolder(const std::string& asked);
  QString last_folder_;
};

// "name|pattern|name|pattern" as Qt's file dialogs take it: "name (pattern);;name (pattern)".
QString QtFilter(const std::string& filter);
// The suffix that a name without one gets: that of the first pattern ("*.ini" gives "ini"), else empty.
QString DefaultSuffix(const std::string& filter);

}  // namespace vlt
