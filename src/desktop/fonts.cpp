// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/fonts.h"

#include <QFontDatabase>
#include <QHash>
#include <QStringList>
#include <span>

#include "desktop/qt_text.h"

namespace vlt {
namespace {

constexpr double kBaseSize = 9.5;
constexpr double kHeadingSize = 12;
constexpr double kTitleSize = 17;
constexpr int kNarrowStretch = 75;   // per cent
constexpr int kLargestCaption = 12;  // sizes up to here are captions

// Fonts with Japanese characters and latin ones that go with them, best first.
constexpr const char* kJapaneseFonts[] = {"Noto Sans CJK JP", "Noto Sans JP", "Yu Gothic UI",
                                          "Meiryo UI",        "MS UI Gothic", "VL PGothic",
                                          "TakaoPGothic",     "IPAPGothic",   "IPAGothic"};

// Where the table's latin font is missing.
constexpr const char* kLatinFonts[] = {"Liberation Sans", "Arimo", "Noto Sans", "Segoe UI", "DejaVu Sans"};

QString FirstInstalled(std::span<const char* const> names) {
  const QStringList installed = QFontDatabase::families();
  for (const char* name : names) {
    if (installed.contains(QLatin1String(name))) return QLatin1String(name);
  }
  return {};
}

QString FirstInstalledJapanese() {
  const QString found = FirstInstalled(kJapaneseFonts);
  if (!found.isEmpty()) return found;
  const QStringList able = QFontDatabase::families(QFontDatabase::Japanese);
  return able.isEmpty() ? QString() : able.first();
}

// The family named, else one for its script, with a font for Japanese characters behind it.
QStringList Families(const QString& name) {
  static const QString japanese = FirstInstalledJapanese();
  static const QString latin = FirstInstalled(kLatinFonts);
  QStringList families;
  const bool wants_japanese = !name.isEmpty() && name.at(0).unicode() > 0xFF;
  if (!name.isEmpty() && QFontDatabase::hasFamily(name)) families << name;
  if (wants_japanese && !japanese.isEmpty()) families << japanese;
  if (!latin.isEmpty()) families << latin;
  families << QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
  if (!japanese.isEmpty()) families << japanese;
  families.removeDuplicates();
  return families;
}

}  // namespace

QFont DesktopFont(const Font& font) {
  static QHash<QString, QStringList> known;
  const QString name = ToQt(font.name);
  auto found = known.find(name);
  if (found == known.end()) found = known.insert(name, Families(name));
  QFont result;
  result.setFamilies(*found);
  result.setPointSizeF(font.size <= kLargestCaption ? kBaseSize : font.size);
  result.setBold(font.bold);
  return result;
}

QFont TitleFont(QFont font) {
  font.setPointSizeF(kTitleSize);
  font.setBold(true);
  return font;
}

QFont NarrowFont(QFont font) {
  font.setStretch(kNarrowStretch);
  return font;
}

QFont HeadingFont() {
  QFont font = BaseFont();
  font.setPointSizeF(kHeadingSize);
  font.setBold(true);
  return font;
}

QFont BaseFont() { return DesktopFont(Font{}); }

}  // namespace vlt
