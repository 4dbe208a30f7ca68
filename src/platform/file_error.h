// SPDX-License-Identifier: GPL-3.0-or-later
// How a file operation ended: good, or why not.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace vlt {

// Every kind but kGood has left the files as they were.
class FileError {
 public:
  enum Kind : std::uint8_t {
    kGood,
    kMissing,       // no such file or folder
    kNoPermission,  // reading or writing is not allowed
    kNotAFile,      // the path is a folder
    kDevice,        // the path is a device, a pipe or a socket
    kPipe,
    kSocket,
    kFull,      // no space is left
    kTooLarge,  // larger than what may be read whole
    kOther,
  };

  FileError(Kind kind = kGood) : kind_(kind) {}  // NOLINT(google-explicit-constructor)
  // The file is larger than so many bytes.
  static FileError LargerThan(std::uint64_t bytes) {
    FileError error(kTooLarge);
    error.most_ = bytes;
    return error;
  }
  // Another reason, by the number and in the words of the system.
  static FileError OfSystem(int number, std::string words) {
    FileError error(kOther);
    error.system_ = number;
    error.words_ = std::move(words);
    return error;
  }

  // The same reason, of a file other than the one that was asked for: a step on the way has failed.
  FileError Of(std::string path) const {
    FileError error = *this;
    if (kind_ != kGood && error.path_.empty()) error.path_ = std::move(path);
    return error;
  }
  // The same, and it was reading that failed, not writing.
  FileError OnReading() const {
    FileError error = *this;
    error.reading_ = true;
    return error;
  }

  Kind GetKind() const { return kind_; }
  // The file that failed; empty when it is the one that was asked for.
  const std::string& Path() const { return path_; }
  // Work that was to write a file has failed on reading.
  bool IsReading() const { return reading_; }
  // What may be read whole at most, of kTooLarge; 0 when it was not told.
  std::uint64_t Most() const { return most_; }
  // The system's number and words, of kOther; 0 when it has told none.
  int SystemNumber() const { return system_; }
  const std::string& SystemWords() const { return words_; }

  // Errors are equal by their kind.
  friend bool operator==(const FileError& a, const FileError& b) { return a.kind_ == b.kind_; }
  friend bool operator==(const FileError& a, Kind b) { return a.kind_ == b; }

 private:
  Kind kind_;
  bool reading_ = false;
  int system_ = 0;
  std::uint64_t most_ = 0;
  std::string path_;
  std::string words_;
};

}  // namespace vlt
