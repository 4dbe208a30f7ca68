// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/input.h"

#include <QSocketNotifier>
#include <array>
#include <iostream>
#include <iterator>
#include <utility>
#ifndef _WIN32
#include <unistd.h>

#include <cerrno>
#endif

namespace vlt {

StandardInput::StandardInput(std::function<void(ScriptLine)> line, std::function<void()> end)
    : line_(std::move(line)), end_(std::move(end)) {
#ifdef _WIN32
  QMetaObject::invokeMethod(
      this, [this] { Read(); }, Qt::QueuedConnection);
#else
  notifier_ = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { Read(); });
#endif
}

StandardInput::~StandardInput() = default;

#ifdef _WIN32

void StandardInput::Read() {
  reader_.Add(std::string(std::istreambuf_iterator<char>(std::cin), {}));
  reader_.End();
  HandOn();
  end_();
}

#else

void StandardInput::Read() {
  std::array<char, 4096> bytes{};
  const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
  if (count > 0) {
    reader_.Add({bytes.data(), static_cast<std::size_t>(count)});
    HandOn();
    return;
  }
  notifier_->setEnabled(false);
  reader_.End();
  HandOn();
  end_();
}

#endif

void StandardInput::HandOn() {
  while (auto line = reader_.Next()) line_(std::move(*line));
}

}  // namespace vlt
