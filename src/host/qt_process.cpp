// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_process.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <QStandardPaths>
#include <cstdio>

#include "host/left_lock.h"
#ifdef _WIN32
#include <windows.h>
#else
#include <QLocale>
#include <array>
#include <string_view>
#endif

namespace vlt {
namespace {

const QString kLockName = QStringLiteral("veltrano3.lock");

std::string Absolute(const std::string& folder) {
  const QString path =
      folder.empty() ? QCoreApplication::applicationDirPath() : QString::fromStdString(folder);
  std::string text = QDir::toNativeSeparators(QDir::cleanPath(QDir(path).absolutePath())).toStdString();
  if (text.back() == QDir::separator().toLatin1()) text.pop_back();  // only a root folder keeps its own
  return text;
}

// One file a program folder, by whatever way the folder is reached.
QString FallbackLock(const QString& folder) {
  const QString real = QFileInfo(folder + QLatin1Char('/')).canonicalFilePath();
  const QByteArray print = QCryptographicHash::hash(real.toUtf8(), QCryptographicHash::Sha1).toHex().left(16);
  QString place = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  if (place.isEmpty()) place = QDir::tempPath();
  return place + QStringLiteral("/veltrano3-") + QString::fromLatin1(print) + QStringLiteral(".lock");
}

// A lock that is there but not filled belongs to a process that is just making it, or to none.
constexpr int kFillingMs = 100;

}  // namespace

QtProcess::QtProcess(const std::string& folder) : folder_(Absolute(folder)) {}

std::string QtProcess::UserFolder() {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  if (data.isEmpty()) return folder_;
  return QDir::toNativeSeparators(data + QStringLiteral("/veltrano3")).toStdString();
}

char QtProcess::Separator() { return QDir::separator().toLatin1(); }

bool QtProcess::BecomeOnlyInstance() {
  if (guard_ && guard_->isLocked()) return true;
  const QString folder = QString::fromStdString(folder_);
  Guard guard = KeepGuard(folder + QLatin1Char('/') + kLockName);
  if (guard == Guard::kNone) guard = KeepGuard(FallbackLock(folder));
  // Where no guard can be kept at all, working without one beats not working.
  return guard != Guard::kOthers;
}

QtProcess::Guard QtProcess::KeepGuard(const QString& path) {
  const QFileInfo there(path);
  const bool is_there = there.exists() || there.isSymLink();
  if (is_there && !there.isFile()) {
    Note(FoundLock::State::kElsewhere, path);
    return Guard::kNone;
  }
  const FoundLock before = found_;
  if (is_there) Note(FoundLock::State::kTakenOver, path);
  guard_ = std::make_unique<QLockFile>(path);
  guard_->setStaleLockTime(0);  // age says nothing: only a process that is gone frees its lock
  if (guard_->tryLock(0)) return Guard::kOurs;
  if (guard_->error() == QLockFile::LockFailedError) return TakeOver(path);
  found_ = before;
  return Guard::kNone;
}

// The lock file names a process that runs, here or elsewhere, or none.
QtProcess::Guard QtProcess::TakeOver(const QString& path) {
  if (found_.process == 0 && guard_->tryLock(kFillingMs)) return Guard::kOurs;
  switch (RemoveLeftLock(path)) {
    case LeftLock::kGone:
      if (guard_->tryLock(0)) return Guard::kOurs;
      break;
    case LeftLock::kStuck:
      Note(FoundLock::State::kElsewhere, path);
      return Guard::kNone;
    case LeftLock::kUnsure:
      Note(FoundLock::State::kUnsure, path);
      return Guard::kOthers;
    case LeftLock::kHeld:
      break;
  }
  found_ = {};
  return Guard::kOthers;
}

// Keeps what the lock file tells of its owner, while it is there.
void QtProcess::Note(FoundLock::State state, const QString& path) {
  qint64 process = 0;
  QString machine;
  QString program;
  const bool told = QFileInfo(path).isFile() && QLockFile(path).getLockInfo(&process, &machine, &program);
  found_ = {.state = state,
            .path = QDir::toNativeSeparators(path).toStdString(),
            .process = told ? process : 0,
            .machine = told ? machine.toStdString() : ""};
}

#ifdef _WIN32

int QtProcess::LocaleId() { return static_cast<int>(GetUserDefaultLCID()); }

std::string QtProcess::ShortPath(const std::string& path) {
  const std::wstring wide = QString::fromStdString(path).toStdWString();
  std::wstring text(wide.size() + MAX_PATH, L'\0');
  const DWORD size = GetShortPathNameW(wide.c_str(), text.data(), static_cast<DWORD>(text.size()));
  if (size == 0 || size >= text.size()) return path;
  return QString::fromWCharArray(text.data(), static_cast<int>(size)).toStdString();
}

#else

// Language identifiers as [MS-LCID] lists them, for the languages that a meter or the program speaks, and
// those of their neighbours. English of the United States stands for the rest.
int QtProcess::LocaleId() {
  struct Row {
    std::string_view name;
    int id;
  };
  static constexpr int kEnglish = 0x0409;
  static constexpr std::array<Row, 20> kRows{{
      {"ja", 0x0411},    {"en", kEnglish},  {"en_GB", 0x0809}, {"de", 0x0407},    {"de_AT", 0x0C07},
      {"de_CH", 0x0807}, {"fr", 0x040C},    {"fr_BE", 0x080C}, {"fr_CA", 0x0C0C}, {"fr_CH", 0x100C},
      {"es", 0x0C0A},    {"es_MX", 0x080A}, {"it", 0x0410},    {"nl", 0x0413},    {"pt", 0x0816},
      {"pt_BR", 0x0416}, {"ko", 0x0412},    {"zh", 0x0804},    {"zh_TW", 0x0404}, {"ru", 0x0419},
  }};
  const std::string name = QLocale::system().name().toStdString();
  const std::string_view language = std::string_view(name).substr(0, name.find('_'));
  int id = kEnglish;
  for (const Row& row : kRows) {
    if (row.name == name) return row.id;
    if (row.name == language) id = row.id;
  }
  return id;
}

std::string QtProcess::ShortPath(const std::string& path) { return path; }

#endif

void QtProcess::PutError(const std::string& text) { std::fprintf(stderr, "veltrano3: %s\n", text.c_str()); }

std::vector<PortInfo> QtProcess::Ports() {
  std::vector<PortInfo> ports;
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
#ifdef _WIN32
    const QString device = info.portName();
#else
    const QString device = info.systemLocation();
#endif
    ports.push_back({device.toStdString(), info.description().toStdString(),
                     info.manufacturer().toStdString(), info.serialNumber().toStdString()});
  }
  return ports;
}

}  // namespace vlt
