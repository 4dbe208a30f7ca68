// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/machine.h"

#include <cstdio>
#include <cstdlib>

namespace vlt::bench {
namespace {

constexpr int kPatienceMs = 10'000;

}  // namespace

MessageAnswer NoDialogs::Ask(const Message& message) {
  std::fprintf(stderr, "unexpected box: %s\n", message.text.c_str());
  std::exit(2);
}

MeterProcess::MeterProcess(const QStringList& words) {
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(METER_SIM, words);
  if (process_.waitForReadyRead(kPatienceMs)) device_ = process_.readLine().trimmed().toStdString();
}

MeterProcess::~MeterProcess() {
  process_.terminate();
  process_.waitForFinished(kPatienceMs);
}

}  // namespace vlt::bench
