// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/csv_log.h"

#include <algorithm>

#include "files/whole_file.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr std::size_t kStampLength = 14;
constexpr std::string_view kExtension = ".csv";

std::string_view UpToFirstPoint(std::string_view path) { return path.substr(0, path.find('.')); }

}  // namespace

std::string StampedCsvPath(std::string_view chosen, const LocalTime& now) {
  return std::string(UpToFirstPoint(Trim(chosen))) + "_" + StampText(now) + std::string(kExtension);
}

std::string RestampedCsvPath(FileSystem& files, std::string_view path, const LocalTime& now) {
  std::string_view base = UpToFirstPoint(path);
  base.remove_suffix(std::min(base.size(), kStampLength));
  LocalTime stamp = now;
  for (;;) {
    std::string fresh = std::string(base) + StampText(stamp) + std::string(kExtension);
    if (!files.Exists(CleanPath(fresh))) return fresh;
    stamp = MovedBy(stamp, 1000);
  }
}

FileError AppendCsv(FileSystem& files, const std::string& path,
                    std::initializer_list<std::string_view> lines) {
  const std::string clean = CleanPath(path);
  std::string content;
  if (!files.Exists(clean)) content = kByteOrderMark;
  for (const std::string_view line : lines) content.append(line).append("\r\n");
  return files.Append(clean, content);
}

}  // namespace vlt
