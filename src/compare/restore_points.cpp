// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/restore_points.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace vlt {
namespace {

// "20261125080000_00_0001.txt": the moment, a number for points of one second, the meter's ID number.
constexpr std::size_t kStampDigits = 14;
constexpr std::size_t kIdAt = kStampDigits + 4;
constexpr std::string_view kEnding = ".txt";
constexpr int kMostInASecond = 100;

std::string Folder(App& app) {
  return app.platform.process.UserFolder() + app.platform.process.Separator() + "restore";
}

bool IsPoint(const std::string& name) {
  const auto digit = [](unsigned char c) { return std::isdigit(c) != 0; };
  return name.size() >= kIdAt + kEnding.size() && name.ends_with(kEnding) && name[kStampDigits] == '_' &&
         name[kIdAt - 1] == '_' && std::all_of(name.begin(), name.begin() + kStampDigits, digit);
}

std::string DateOf(const std::string& name) {
  return name.substr(0, 4) + "/" + name.substr(4, 2) + "/" + name.substr(6, 2) + " " + name.substr(8, 2) +
         ":" + name.substr(10, 2) + ":" + name.substr(12, 2);
}

// What a file name can hold of it.
std::string IdPart(const std::string& id_number) {
  std::string part;
  for (const char c : id_number) {
    if (std::isalnum(static_cast<unsigned char>(c)) != 0) part += c;
  }
  return part;
}

std::string TwoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

std::string InFolder(App& app, const std::string& name) {
  std::string path = Folder(app);
  path += app.platform.process.Separator();
  return path.append(name);
}

// A path in the folder that nothing has yet.
std::string FreePath(App& app, const std::string& id) {
  const std::string stamp = StampText(app.platform.clock.Now());
  std::string path;
  for (int number = 0; number < kMostInASecond; ++number) {
    std::string name = stamp;
    name.append("_").append(TwoDigits(number)).append("_").append(id).append(kEnding);
    path = InFolder(app, name);
    if (!app.platform.files.Exists(path)) break;
  }
  return path;
}

bool Differ(const std::string& a, const std::string& b) { return !a.empty() && !b.empty() && a != b; }

// A point under the same ID number that tells of another meter. One that can't be read goes by its number.
bool IsOfOther(App& app, const RestorePoint& point, const MeterIdentity& meter) {
  const MeterIdentity other = ReadSnapshotFile(app, point.path).snapshot.identity;
  return Differ(other.specification, meter.specification) || Differ(other.type, meter.type);
}

// The points of the meter but for the new one, newest first.
std::vector<RestorePoint> EarlierPoints(App& app, const MeterIdentity& meter, const std::string& newest) {
  std::vector<RestorePoint> points = RestorePoints(app);
  std::erase_if(points, [&](const RestorePoint& point) {
    return point.path == newest || point.id_number != IdPart(meter.id_number);
  });
  if (points.size() < kKeptRestorePoints) return points;
  std::erase_if(points, [&](const RestorePoint& point) { return IsOfOther(app, point, meter); });
  return points;
}

}  // namespace

std::vector<RestorePoint> RestorePoints(App& app) {
  std::vector<std::string> names;
  if (app.platform.files.FilesIn(Folder(app), names) != FileError::kGood) return {};
  std::erase_if(names, [](const std::string& name) { return !IsPoint(name); });
  std::sort(names.rbegin(), names.rend());
  std::vector<RestorePoint> points;
  for (const std::string& name : names) {
    points.push_back({.path = InFolder(app, name),
                      .date = DateOf(name),
                      .id_number = name.substr(kIdAt, name.size() - kIdAt - kEnding.size())});
  }
  return points;
}

KeptPoint KeepRestorePoint(App& app, const Snapshot& snapshot) {
  KeptPoint kept;
  kept.error = app.platform.files.MakeFolder(Folder(app));
  if (kept.error != FileError::kGood) return kept;
  const std::string path = FreePath(app, IdPart(snapshot.identity.id_number));
  kept.error = WriteSnapshotFile(app, path, snapshot);
  if (kept.error != FileError::kGood) return kept;
  kept.path = path;
  // The new one stays, whatever the clock says of the others.
  const std::vector<RestorePoint> points = EarlierPoints(app, snapshot.identity, path);
  for (std::size_t i = kKeptRestorePoints - 1; i < points.size(); ++i) {
    if (app.platform.files.Remove(points[i].path) != FileError::kGood)
      kept.left_over.push_back(points[i].path);
  }
  return kept;
}

}  // namespace vlt
