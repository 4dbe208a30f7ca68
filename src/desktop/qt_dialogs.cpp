// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/qt_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QStringList>

#include "desktop/qt_text.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

struct Button {
  QMessageBox::StandardButton standard;
  MessageAnswer answer;
  int text_id;
};

constexpr Button kOk{QMessageBox::Ok, MessageAnswer::kOk, text::kOk};
constexpr Button kCancel{QMessageBox::Cancel, MessageAnswer::kCancel, text::kCancel};
constexpr Button kYes{QMessageBox::Yes, MessageAnswer::kYes, text::kYes};
constexpr Button kNo{QMessageBox::No, MessageAnswer::kNo, text::kNo};

// First and last button; the last one is what closing the box answers.
struct ButtonPair {
  const Button& first;
  const Button& last;
};

ButtonPair ButtonsOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::kOkCancel:
      return {kOk, kCancel};
    case MessageButtons::kYesNo:
      return {kYes, kNo};
    default:
      return {kOk, kOk};
  }
}

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kStop:
      return QMessageBox::Critical;
    case MessageIcon::kQuestion:
      return QMessageBox::Question;
    case MessageIcon::kInformation:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

// Pairs of name and pattern.
QStringList FilterParts(const std::string& filter) { return ToQt(filter).split('|', Qt::SkipEmptyParts); }

}  // namespace

QString QtFilter(const std::string& filter) {
  const QStringList parts = FilterParts(filter);
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    // The name often carries the pattern already: "Initial value(*.ini)".
    QString name = parts[i];
    const qsizetype bracket = name.indexOf('(');
    if (bracket >= 0) name.truncate(bracket);
    QString pattern = parts[i + 1];
    filters << name.trimmed() + " (" + pattern.replace(';', ' ') + ")";
  }
  return filters.join(";;");
}

QString DefaultSuffix(const std::string& filter) {
  const QStringList parts = FilterParts(filter);
  const QString pattern = parts.size() > 1 ? parts[1].section(';', 0, 0) : QString();
  const QString suffix = pattern.startsWith("*.") ? pattern.mid(2) : QString();
  return suffix.contains('*') ? QString() : suffix;
}

MessageAnswer QtDialogs::Ask(const Message& message) {
  QMessageBox box(QApplication::activeWindow());
  box.setIcon(IconOf(message.icon));
  box.setWindowTitle(ToQt(message.title));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(message.text));
  const auto [first, last] = ButtonsOf(message.buttons);
  for (const Button* button : {&first, &last}) {
    if (box.button(button->standard) != nullptr) continue;
    QPushButton* made = box.addButton(button->standard);
    if (texts_) made->setText(texts_(button->text_id));
  }
  box.setDefaultButton((message.second_is_default ? last : first).standard);
  box.setEscapeButton(last.standard);
  return box.exec() == first.standard ? first.answer : last.answer;
}

std::optional<std::string> QtDialogs::AskOpenFile(const FileQuestion& question) {
  return AskFile(question, false);
}

std::optional<std::string> QtDialogs::AskSaveFile(const FileQuestion& question) {
  return AskFile(question, true);
}

std::optional<std::string> QtDialogs::AskFile(const FileQuestion& question, bool to_save) {
  QFileDialog dialog(QApplication::activeWindow(), ToQt(question.title));
  dialog.setAcceptMode(to_save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(to_save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !question.ask_before_overwrite);
  dialog.setNameFilters(QtFilter(question.filter).split(";;", Qt::SkipEmptyParts));
  dialog.setDefaultSuffix(DefaultSuffix(question.filter));
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& chosen) {
    dialog.setDefaultSuffix(
        DefaultSuffix(FromQt(chosen.section(" (", 0, 0) + "|" + chosen.section('(', 1).chopped(1))));
  });
  dialog.setDirectory(StartFolder(question.folder));
  if (!question.name.empty()) dialog.selectFile(ToQt(question.name));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  const QString path = dialog.selectedFiles().first();
  last_folder_ = QFileInfo(path).absolutePath();
  return FromQt(path);
}

QString QtDialogs::StartFolder(const std::string& asked) {
  // A folder of the settings may be one that this machine does not have.
  const QString folder = ToQt(asked);
  if (!folder.isEmpty() && QFileInfo(folder).isDir()) return folder;
  if (last_folder_.isEmpty()) {
    last_folder_ = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  }
  return last_folder_;
}

std::optional<std::string> QtDialogs::AskFolder(const FolderQuestion& question) {
  QFileDialog dialog(QApplication::activeWindow(), ToQt(question.text));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setDirectory(StartFolder(question.folder));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  last_folder_ = dialog.selectedFiles().first();
  return FromQt(QDir::toNativeSeparators(last_folder_));
}

}  // namespace vlt
