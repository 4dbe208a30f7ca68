// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/nearest.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace vlt {
namespace {

constexpr std::size_t kMostOffered = 3;

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// How many letters must be put in, taken out or replaced to make `b` of `a`.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), 0U);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t corner = row[0]++;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = corner + (a[i - 1] == b[j - 1] ? 0 : 1);
      corner = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
    }
  }
  return row.back();
}

// A name's own part, behind the last ".".
std::string_view OwnPart(std::string_view name) { return name.substr(name.rfind('.') + 1); }

// A third of the letters may be wrong.
bool IsNear(std::size_t distance, std::string_view name) { return distance <= 1 + name.size() / 3; }

}  // namespace

std::string LowerText(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), Lower);
  return lower;
}

std::vector<std::string_view> NearestNames(std::string_view name, std::span<const std::string_view> names) {
  struct Candidate {
    std::string_view name;
    std::size_t distance;
  };
  std::vector<Candidate> near;
  const std::string wanted = LowerText(name);
  if (wanted.empty()) return {};
  for (const std::string_view candidate : names) {
    const std::size_t distance =
        std::min(Distance(wanted, candidate), Distance(OwnPart(wanted), OwnPart(candidate)) + 1);
    if (candidate.find(wanted) != std::string_view::npos) {
      near.push_back({candidate, 1});
    } else if (IsNear(distance, OwnPart(wanted))) {
      near.push_back({candidate, distance});
    }
  }
  std::stable_sort(near.begin(), near.end(),
                   [](const Candidate& a, const Candidate& b) { return a.distance < b.distance; });
  std::vector<std::string_view> offered;
  for (const Candidate& candidate : near) {
    if (offered.size() < kMostOffered) offered.push_back(candidate.name);
  }
  return offered;
}

std::string Listed(std::span<const std::string> names, std::string_view between) {
  std::string text;
  for (const std::string& name : names) {
    if (!text.empty()) text += between;
    text += name;
  }
  return text;
}

std::string Listed(std::span<const std::string_view> names) {
  return Listed(std::vector<std::string>(names.begin(), names.end()));
}

}  // namespace vlt
