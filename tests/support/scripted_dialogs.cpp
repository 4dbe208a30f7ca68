// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vlt::test {
namespace {

// What closing the box answers, and what else it may answer.
std::vector<MessageAnswer> AnswersOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::kOkCancel:
      return {MessageAnswer::kCancel, MessageAnswer::kOk};
    case MessageButtons::kYesNo:
      return {MessageAnswer::kNo, MessageAnswer::kYes};
    default:
      return {MessageAnswer::kOk};
  }
}

}  // namespace

ScriptedDialogs::~ScriptedDialogs() {
  const std::size_t left = answers_.size() + open_paths_.size() + save_paths_.size() + folder_paths_.size();
  if (left != 0) ADD_FAILURE() << left << " prepared answers were never asked for";
}

MessageAnswer ScriptedDialogs::Ask(const Message& message) {
  messages.push_back(message);
  const auto possible = AnswersOf(message.buttons);
  if (answers_.empty()) {
    if (!closes_) ADD_FAILURE() << "unexpected box: " << message.text;
    return agrees_ ? possible.back() : possible.front();
  }
  const Prepared prepared = std::move(answers_.front());
  answers_.pop_front();
  if (prepared.meanwhile) prepared.meanwhile();
  if (std::find(possible.begin(), possible.end(), prepared.answer) == possible.end()) {
    ADD_FAILURE() << "the box has no such button: " << message.text;
    return possible.front();
  }
  return prepared.answer;
}

std::optional<std::string> ScriptedDialogs::TakePath(Paths& paths, const std::string& asked) {
  if (paths.empty()) {
    if (!closes_) ADD_FAILURE() << "unexpected file or folder dialog: " << asked;
    return std::nullopt;
  }
  auto path = std::move(paths.front());
  paths.pop_front();
  return path;
}

std::optional<std::string> ScriptedDialogs::AskOpenFile(const FileQuestion& question) {
  questions.push_back(question);
  return TakePath(open_paths_, question.title);
}

std::optional<std::string> ScriptedDialogs::AskSaveFile(const FileQuestion& question) {
  questions.push_back(question);
  return TakePath(save_paths_, question.title);
}

std::optional<std::string> ScriptedDialogs::AskFolder(const FolderQuestion& question) {
  folder_questions.push_back(question);
  return TakePath(folder_paths_, question.text);
}

std::vector<std::string> ScriptedDialogs::TakeTexts() {
  std::vector<std::string> texts;
  for (; taken_ < messages.size(); ++taken_) texts.push_back(messages[taken_].text);
  return texts;
}

}  // namespace vlt::test
