// SPDX-License-Identifier: GPL-3.0-or-later
// An operator at the screen: finds widgets by the names of their controls and works them with mouse and keys.
#pragma once

#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "desktop/desktop.h"

class QMessageBox;

namespace vlt::test {

// What an operator finds wrong, in words.
class Trouble : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Runs events until `condition` holds; false when it does not within `ms`.
bool WaitFor(const std::function<bool()>& condition, int ms = 5000);

// Qt remembers that the process was asked to end, and no box would wait for its answer any more. Tests that
// come after such an end call this.
void ForgetEnd();

// Every call throws Trouble when the widget is not there or can't be worked.
class Hands {
 public:
  explicit Hands(Desktop& desktop) : desktop_(desktop) {}

  // The window of a form on the screen.
  QWidget& Window(const std::string& form);
  QWidget& Widget(const std::string& form, const std::string& control);

  void Click(const std::string& form, const std::string& control);
  void Tick(const std::string& form, const std::string& control, bool on = true);
  // Marks what the field holds and types over it; the field keeps the focus.
  void Type(const std::string& form, const std::string& control, const std::string& text);
  // Opens the list and clicks the entry.
  void Choose(const std::string& form, const std::string& control, int index);
  void SelectTab(const std::string& form, const std::string& control, int tab);
  // Opens the menus of the path one after the other and triggers the last one.
  void Menu(const std::string& form, const std::string& item);
  void Key(const std::string& form, const std::string& keys);

  // The text that the widget of a field, list, label, button or box shows.
  std::string Text(const std::string& form, const std::string& control);
  bool Ticked(const std::string& form, const std::string& control);
  bool Enabled(const std::string& form, const std::string& control);
  // Panel of a status bar, counted from 1.
  std::string Panel(const std::string& form, const std::string& control, int number);

 private:
  QWidget& Reachable(const std::string& form, const std::string& control);

  Desktop& desktop_;
};

// Acts while a handler of the program waits and lets nothing else wait: each action runs once, when its
// condition first holds, one after the other.
class Lookout : public QObject {
 public:
  Lookout();
  void When(std::function<bool()> condition, std::function<void()> action) {
    watches_.push_back({std::move(condition), std::move(action)});
  }
  bool AllDone() const { return watches_.empty(); }

 private:
  struct Watch {
    std::function<bool()> condition;
    std::function<void()> action;
  };
  void Look();

  QTimer timer_;
  std::deque<Watch> watches_;
};

// Answers message boxes and file dialogs in the order in which answers were laid out.
class BoxAnswers : public QObject {
 public:
  BoxAnswers();

  // Which button of the next box to press: "first" or "last"; what the box must say, or empty for anything.
  void Lay(const std::string& text, bool first);
  // The path to choose in the next file dialog; empty cancels it.
  void LayFile(const std::string& path) { files_.push_back(path); }
  bool AllGiven() const { return laid_.empty() && files_.empty(); }
  // Texts of the boxes that were shown, in order.
  std::vector<std::string> seen;
  // What did not go as laid out, in words.
  std::vector<std::string> trouble;
  // Called with each box before it is answered.
  std::function<void(QWidget&)> on_box;

 private:
  struct LaidAnswer {
    std::string text;
    bool first;
  };
  void Look();
  void Answer(QWidget* modal);
  void AnswerBox(QMessageBox& box);
  void AnswerFileDialog(QWidget& dialog);

  QTimer timer_;
  std::deque<LaidAnswer> laid_;
  bool answering_ = false;
  std::deque<std::string> files_;
};

}  // namespace vlt::test
