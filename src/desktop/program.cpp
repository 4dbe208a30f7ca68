// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/program.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QStyleFactory>

#include "desktop/application.h"
#include "desktop/art.h"
#include "desktop/fonts.h"
#include "desktop/qt_text.h"
#include "files/settings_file.h"
#include "shell/closing.h"
#include "shell/handler_fault.h"
#include "shell/start.h"

namespace vlt {

namespace {

void TellFailures(std::function<void(const std::string&)> tell) {
  if (auto* application = dynamic_cast<Application*>(QCoreApplication::instance())) {
    application->on_failure = std::move(tell);
  }
}

}  // namespace

void DressApplication() {
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QApplication::setFont(BaseFont());
  QApplication::setWindowIcon(ApplicationIcon());
  // The logic decides when the program ends; between two of its windows there may be none.
  QApplication::setQuitOnLastWindowClosed(false);
}

Program::Program(const std::string& folder)
    : host_(folder, [this](int number) { return PortDeviceInForce(app_, number); }),
      platform_(host_.With(dialogs_)),
      app_(platform_),
      desktop_(app_.windows, [this](int id) { return ToQt(app_.Text(id)); }) {
  dialogs_.SetTexts([this](int id) { return ToQt(app_.Text(id)); });
  desktop_.SetPlaceKeeper(PlaceInSettings(app_));
  desktop_.on_failure = [this](const std::string& what) { TellHandlerFault(app_, what); };
  platform_.printer = &printer_;
  RegisterAllWindows(app_);
  TellFailures([this](const std::string& what) { desktop_.TellFailure(what); });
}

Program::~Program() { TellFailures({}); }

bool Program::Start() {
  const bool runs = StartUp(app_) == StartResult::kSplashRuns && !IsEnding();
  // The words of Qt's own dialogs, where the system has them.
  const QLocale locale(app_.state.LangFlag == 0 ? QLocale::Japanese : QLocale::English);
  if (qt_words_.load(locale, "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&qt_words_);
  }
  return runs;
}

int Program::Run() { return QApplication::exec(); }

void Program::EndBehindWork() {
  constexpr int kLookMs = 50;
  if (end_.isActive()) return;
  QObject::connect(&end_, &QTimer::timeout, [this] {
    if (app_.state.UiLocked) return;
    end_.stop();
    host_.events.EndProcess();
  });
  end_.start(kLookMs);
  app_.windows.Run([this] { StopWork(app_); });
}

}  // namespace vlt
