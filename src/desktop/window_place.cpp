// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/window_place.h"

#include <algorithm>
#include <string>

#include "files/profile_file.h"
#include "files/settings_file.h"
#include "state/app.h"

namespace vlt {
namespace {

constexpr const char* kSection = "WINDOW";
constexpr const char* kX = "X";
constexpr const char* kY = "Y";
constexpr const char* kWidth = "WIDTH";
constexpr const char* kHeight = "HEIGHT";
constexpr const char* kMaximised = "MAXIMIZED";
// So much of a window has to be on a screen for it to be found there.
constexpr QSize kSeen(160, 48);

bool IsSeenOn(const QRect& area, const QRect& screen) {
  const QRect seen = area.intersected(screen);
  return seen.width() >= kSeen.width() && seen.height() >= kSeen.height();
}

std::optional<WindowPlace> Read(const ProfileFile& profile) {
  const auto number = [&](const char* key) { return profile.GetInt(kSection, key, 0); };
  const WindowPlace place{QRect(number(kX), number(kY), number(kWidth), number(kHeight)),
                          number(kMaximised) != 0};
  if (place.area.isEmpty()) return std::nullopt;
  return place;
}

void Write(ProfileFile& profile, const WindowPlace& place) {
  const std::pair<const char*, int> values[] = {{kX, place.area.x()},
                                                {kY, place.area.y()},
                                                {kWidth, place.area.width()},
                                                {kHeight, place.area.height()},
                                                {kMaximised, place.maximised ? 1 : 0}};
  for (const auto& [key, value] : values) profile.SetString(kSection, key, std::to_string(value));
}

}  // namespace

QRect FitInto(QRect wanted, const QRect& available, const QMargins& frame) {
  const QRect room = available.marginsRemoved(frame);
  wanted.setSize(wanted.size().boundedTo(room.size()));
  wanted.moveLeft(std::clamp(wanted.left(), room.left(), room.right() - wanted.width() + 1));
  wanted.moveTop(std::clamp(wanted.top(), room.top(), room.bottom() - wanted.height() + 1));
  return wanted;
}

WindowPlace StartPlace(const std::optional<WindowPlace>& last, QSize size, const QList<QRect>& screens) {
  if (last) {
    for (const QRect& screen : screens) {
      if (IsSeenOn(last->area, screen)) return {FitInto(last->area, screen, kUsualFrame), last->maximised};
    }
  }
  QRect middle(QPoint(), size);
  middle.moveCenter(screens.first().center());
  return {FitInto(middle, screens.first(), kUsualFrame), last && last->maximised};
}

PlaceKeeper PlaceInSettings(App& app) {
  const auto last = [&app]() -> std::optional<WindowPlace> {
    ProfileFile profile;
    if (ReadProfile(app.platform.files, CommPath(app), profile) != FileError::kGood) return std::nullopt;
    return Read(profile);
  };
  const auto keep = [&app, last](const WindowPlace& place) {
    if (last() == place) return;
    ChangeProfile(app.platform.files, CommPath(app), false,
                  [&](ProfileFile& profile) { Write(profile, place); });
  };
  return {last, keep};
}

}  // namespace vlt
