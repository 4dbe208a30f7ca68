// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/script_dialogs.h"

#include <algorithm>
#include <filesystem>
#include <vector>

namespace vlt {
namespace {

struct AnswerRow {
  MessageAnswer answer;
  const char* name;
};
constexpr AnswerRow kAnswers[] = {{MessageAnswer::kOk, "ok"},
                                  {MessageAnswer::kCancel, "cancel"},
                                  {MessageAnswer::kYes, "yes"},
                                  {MessageAnswer::kNo, "no"}};

// The buttons of a box; the last one is what closing the box answers.
struct ButtonRow {
  MessageButtons buttons;
  std::vector<MessageAnswer> answers;
};
const ButtonRow kButtons[] = {{MessageButtons::kOk, {MessageAnswer::kOk}},
                              {MessageButtons::kOkCancel, {MessageAnswer::kOk, MessageAnswer::kCancel}},
                              {MessageButtons::kYesNo, {MessageAnswer::kYes, MessageAnswer::kNo}}};

const std::vector<MessageAnswer>& ButtonsOf(const Message& message) {
  return std::find_if(std::begin(kButtons), std::end(kButtons),
                      [&](const ButtonRow& row) { return row.buttons == message.buttons; })
      ->answers;
}

std::filesystem::path PathOf(const std::string& text) {
  return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string TextOfPath(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string Absolute(const std::string& path) {
  std::error_code fault;
  const auto absolute = std::filesystem::absolute(PathOf(path), fault);
  return fault ? path : TextOfPath(absolute);
}

// ".ini" of "Initial value(*.ini)|*.ini|..."; empty when the first pattern names no suffix.
std::string SuffixOf(const std::string& filter) {
  const std::size_t begin = filter.find("|*.");
  if (begin == std::string::npos || filter.find('|') != begin) return {};
  const std::string suffix = filter.substr(begin + 2, filter.find_first_of("|;", begin + 1) - begin - 2);
  return suffix.find('*') == std::string::npos ? suffix : std::string();
}

}  // namespace

std::string AnswerName(MessageAnswer answer) {
  return std::find_if(std::begin(kAnswers), std::end(kAnswers),
                      [&](const AnswerRow& row) { return row.answer == answer; })
      ->name;
}

std::optional<MessageAnswer> AnswerOf(std::string_view name) {
  const auto* row = std::find_if(std::begin(kAnswers), std::end(kAnswers),
                                 [&](const AnswerRow& r) { return r.name == name; });
  if (row == std::end(kAnswers)) return std::nullopt;
  return row->answer;
}

MessageAnswer ScriptDialogs::Ask(const Message& message) {
  const auto& possible = ButtonsOf(message);
  MessageAnswer answer = possible.back();
  std::string trouble;
  if (answers_.empty()) {
    trouble = "no answer was waiting for the box \"" + message.text + "\"";
  } else if (std::find(possible.begin(), possible.end(), answers_.front()) == possible.end()) {
    trouble = "the box \"" + message.text + "\" cannot be answered with " + AnswerName(answers_.front());
  } else {
    answer = answers_.front();
    answers_.pop_front();
  }
  if (observer_.message) observer_.message(message.text, AnswerName(answer));
  if (!trouble.empty() && observer_.unanswered) observer_.unanswered(trouble);
  return answer;
}

std::optional<std::string> ScriptDialogs::TakePath(const std::string& title) {
  if (paths_.empty()) {
    if (observer_.unanswered) observer_.unanswered("no file was waiting for the dialog " + title);
    return std::nullopt;
  }
  auto path = std::move(paths_.front());
  paths_.pop_front();
  if (path) path = Absolute(*path);
  return path;
}

std::optional<std::string> ScriptDialogs::TakeExisting(const std::string& title, const std::string& kind) {
  auto path = TakePath(title);
  if (path && !files_.Exists(*path)) {
    const std::string what = kind == "folder" ? "folder " : "file ";
    if (observer_.refused) observer_.refused("there is no " + what + *path);
    path.reset();
  }
  if (observer_.file) observer_.file(kind, path.value_or(""));
  return path;
}

std::optional<std::string> ScriptDialogs::AskOpenFile(const FileQuestion& question) {
  return TakeExisting(question.title, "open");
}

std::optional<std::string> ScriptDialogs::AskFolder(const FolderQuestion& question) {
  return TakeExisting(question.text, "folder");
}

std::optional<std::string> ScriptDialogs::AskSaveFile(const FileQuestion& question) {
  auto path = TakePath(question.title);
  if (path && !PathOf(*path).has_extension()) *path += SuffixOf(question.filter);
  if (observer_.file) observer_.file("save", path.value_or(""));
  return path;
}

}  // namespace vlt
