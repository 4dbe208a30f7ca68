// The page slots: one text for each key of the parameter file. They carry what the pages show between the
// pages and the file, and outlive a page.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vlt {

struct SharedState;

// A row of the parameter file, in the order of the file.
struct SlotRow {
  const char* section;
  const char* key;
  // What a file without the key gives, or null for a key that is written and never read.
  const char* absent;
  // The number behind a key that holds the channel or output of a page, else null.
  int SharedState::*number = nullptr;
};

std::span<const SlotRow> SlotRows();

// Place of a key in SlotRows(). A key that is not there is a programming error and throws std::out_of_range.
std::size_t SlotIndex(std::string_view section, std::string_view key);

class PageSlots {
 public:
  PageSlots();
  // All slots start empty.
  std::string& At(std::string_view section, std::string_view key) { return texts_[SlotIndex(section, key)]; }
  std::string& operator[](std::size_t index) { return texts_.at(index); }
  const std::string& operator[](std::size_t index) const { return texts_.at(index); }

 private:
  std::vector<std::string> texts_;
};

}  // namespace vlt
