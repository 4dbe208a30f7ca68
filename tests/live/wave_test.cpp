// SPDX-License-Identifier: GPL-3.0-or-later
// The wave tab: a capture as bytes and milliseconds, each fault, the stored captures and their file.
#include <algorithm>
#include <set>

#include "files/settings_file.h"
#include "state/form_lock.h"
#include "transit_fixture.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

TransitTest TwoPipes() { return TransitTest(TransitTest::Meter(kFullModel, 2)); }

void SetSpeed(TransitTest& t, const std::string& speed) {
  bool closed = false;
  ClosePort(t.app(), closed);
  t.app().state.Speed = speed;
  BuildCommSettings(t.app().state);
}

// Runs until so many captures are stored, and stops.
void Capture(TransitTest& t, int captures) {
  std::function<void()> look = [&] {
    if (t.waves().Captures >= captures) {
      t.waves().ProfileStopButton.Press();
    } else {
      t.time().After(5, look);
    }
  };
  t.time().After(5, look);
  ASSERT_TRUE(t.waves().ProfileStartButton.Press());
}

// Nothing of the run is left behind.
void ExpectIdle(TransitTest& t) {
  EXPECT_FALSE(t.app().state.UiLocked);
  EXPECT_EQ(t.app().state.PvRunning, 0);
  EXPECT_FALSE(t.page().IsLive());
  EXPECT_TRUE(t.waves().ProfileStartButton.Enabled() && t.waves().ProfileSaveButton.Enabled());
  EXPECT_FALSE(t.waves().ProfileStopButton.Enabled());
  EXPECT_TRUE(t.waves().Frame2.Enabled() && t.waves().Frame19.Enabled());
  EXPECT_TRUE(t.page().DetailChSelect(0).Enabled() && t.waves().WaveChSelect(0).Enabled());
  EXPECT_EQ(t.waves().prgWave.Value(), 0);
}

std::string HexWord(int word) {
  const std::uint8_t bytes[] = {static_cast<std::uint8_t>(word >> 8), static_cast<std::uint8_t>(word)};
  return Hex(bytes);
}

// The requests of a run of one capture; polls are left out.
Texts RunRequests(const char* method, const std::string& head, int code) {
  Texts requests = {method};
  if (!head.empty()) requests.push_back(head);
  requests.push_back("06 01 68 " + HexWord(code));
  for (int block = 0; block < 32; ++block) {
    requests.push_back("04 " + HexWord(0xC0 + 128 * block) + " 00 40");
  }
  return requests;
}

Texts WithoutPolls(Texts requests) {
  std::erase(requests, "03 01 68 00 01");
  return requests;
}

TEST(Waves, EachKindIsTheseBytes) {
  constexpr const char* kHeadReads[] = {"04 00 70 00 08", "04 13 F8 00 08"};
  constexpr const char* kMethods[] = {"03 01 14 00 01", "03 14 9C 00 01"};
  for (const int method : {0, 1, 2}) {
    for (int channel = 0; channel < 2; ++channel) {
      for (int kind = 0; kind < 5; ++kind) {
        if (method == 0 && kind >= 2) continue;  // not offered
        SCOPED_TRACE(testing::Message() << "method " << method << " channel " << channel << " kind " << kind);
        TransitTest t = TwoPipes();
        t.meter().holding().PutWord(0x019C, method);
        t.meter().holding().PutWord(0x149C, method);
        t.waves().WaveChSelect(channel).Choose();
        EXPECT_TRUE(t.page().DetailChSelect(channel).Value());
        OptionButton* options[] = {&t.waves().ForwardReceiveOption, &t.waves().ReverseReceiveOption,
                                   &t.waves().ForwardFilterOption, &t.waves().ReverseFilterOption,
                                   &t.waves().CorrelationCalOption};
        options[kind]->Choose();
        Capture(t, 1);
        const bool head = kind < 4 && !(kind < 2 && method != 0);
        Texts expected =
            RunRequests(kMethods[channel], head ? kHeadReads[channel] : "", 1 + kind + 5 * channel);
        Texts sent = WithoutPolls(t.Requests());
        ASSERT_GE(sent.size(), expected.size());
        EXPECT_EQ(sent.back(), "06 01 68 00 00") << "the capture mode is ended";
        sent.resize(expected.size());
        EXPECT_EQ(sent, expected);
        EXPECT_EQ(t.page().MeasureMethodCombo.ListIndex(), method);
        EXPECT_TRUE(options[kind]->Value());
        EXPECT_EQ(t.waves().DeltaChart2D1.Shown(WaveTab::kWaveSeries).size(), 1024u);
        EXPECT_EQ(t.State(), "The display of data was ended");
        ExpectIdle(t);
      }
    }
  }
}

TEST(Waves, AMethodWithoutComputedWavesCapturesTheReceivedOne) {
  TransitTest t = TwoPipes();
  t.meter().holding().PutWord(0x019C, 0);
  t.waves().CorrelationCalOption.Choose();
  const std::string told = "CORRELATION is not offered by METHOD 0, U:RECEIVED DATA is captured";
  std::set<std::string> states;
  for (int at = 0; at < 3'000; at += 10) t.time().After(at, [&] { states.insert(t.State()); });
  Capture(t, 1);
  EXPECT_EQ(t.test.StatusText(), told);
  EXPECT_TRUE(states.contains("The display of data was started " + told));
  t.dialogs().SaveFile("/logs/wave.csv");
  t.waves().ProfileSaveButton.Press();
  EXPECT_EQ(t.Lines("/logs/wave.csv")[0], "<Measurement result>,,\"" + told + "\"");
  EXPECT_EQ(t.Lines("/logs/wave.csv")[3], "KIND,U:RECEIVED DATA");
  const Texts sent = WithoutPolls(t.Requests());
  EXPECT_EQ(sent[2], "06 01 68 00 01");
  EXPECT_TRUE(t.waves().ForwardReceiveOption.Value());
  EXPECT_FALSE(t.waves().CorrelationCalOption.Enabled());
}

// Peaks 2000 and 3000, levels 25.00 % and -50.00 %, filtered 100000 and 70000.
TEST(Waves, TheScaleHeadGivesTheAxisOfEachKind) {
  const char kHead[] = "01 04 10 07 D0 0B B8 09 C4 EC 78 00 01 86 A0 00 01 11 70";
  const double axes[] = {500, -1500, 25000, -35000, 0};
  for (int kind = 0; kind < 5; ++kind) {
    SCOPED_TRACE(kind);
    TransitTest t({.port = PortKind::kScripted});
    ScriptedLine& line = t.test.platform.scripted;
    OptionButton* options[] = {&t.waves().ForwardReceiveOption, &t.waves().ReverseReceiveOption,
                               &t.waves().ForwardFilterOption, &t.waves().ReverseFilterOption,
                               &t.waves().CorrelationCalOption};
    t.page().MeasureMethodCombo.SetListIndex(1);
    t.page().Set_SyusyuSyubetu();
    options[kind]->Choose();
    line.ReplyChecked(kind < 2 ? "01 03 02 00 00" : "01 03 02 00 01");
    if (kind < 4) line.ReplyChecked(kHead);
    line.ReplyChecked("01 06 01 68 00 0A");
    line.ReplyChecked("01 03 02 00 14");
    std::string block = "01 04 80";
    for (int sample = 0; sample < 32; ++sample) block += sample == 7 ? " FF FF FF 00" : " 00 00 00 05";
    for (int i = 0; i < 32; ++i) line.ReplyChecked(block);
    // The second capture meets silence, and so does the end of the capture mode.
    t.app().state.RetryNo = 0;
    t.waves().ProfileStartButton.Press();
    EXPECT_EQ(t.waves().XOrigin, axes[kind]);
    EXPECT_EQ(t.waves().Captures, 1);
    EXPECT_EQ(t.waves().store.WaveSamples[0], 5);
    EXPECT_EQ(t.waves().store.WaveSamples[7 + 32 * 31], -256);
    const Chart& chart = t.waves().DeltaChart2D1;
    ASSERT_EQ(chart.Shown(WaveTab::kTriggerSeries).size(), kind < 4 ? 2u : 0u);
    if (kind < 4) {
      EXPECT_EQ(chart.Shown(WaveTab::kTriggerSeries)[1], (ChartPoint{1023, axes[kind]}));
    }
    ASSERT_EQ(chart.Marks().size(), 1u);
    EXPECT_EQ(chart.Marks()[0], (ChartMark{7, -256, "Peak -256 at 7"}));
    EXPECT_EQ(chart.X(), (ChartAxis{0, 1023, "Time [samples]"}));
    EXPECT_EQ(chart.Y(), (ChartAxis{-500, 500, "Amplitude [counts]"}));
  }
}

TEST(Waves, ALostBlockBeginsTheCaptureAnew) {
  TransitTest t = TwoPipes();
  t.app().state.RetryNo = 0;
  t.meter().holding().PutWord(0x019C, 0);
  t.test.platform.Arm("crc@02C0H");
  Capture(t, 1);
  Texts sent = WithoutPolls(t.Requests());
  const auto lost = std::ranges::find(sent, "04 02 C0 00 40");
  ASSERT_NE(lost, sent.end());
  EXPECT_EQ(*(lost + 1), "06 01 68 00 00");
  EXPECT_EQ(*(lost + 2), "04 00 70 00 08");
  EXPECT_EQ(*(lost + 3), "06 01 68 00 01");
  EXPECT_EQ(t.waves().store.Earlier(1), std::nullopt) << "half a capture was stored";
  ExpectIdle(t);
  // The meter does not leave its capture mode: that ends the run.
  t.test.platform.Arm("crc@02C0H");
  t.test.platform.Arm("wrong-echo@0168H/06#2*ever");
  ASSERT_TRUE(t.waves().ProfileStartButton.Press());
  EXPECT_NE(t.State().find("The display of data was ended "), std::string::npos);
  ExpectIdle(t);
}

TEST(Waves, WithoutPortOrMethodThereIsNoRun) {
  TransitTest t = TwoPipes();
  t.test.platform.Arm("silence@0114H*ever");
  ASSERT_TRUE(t.waves().ProfileStartButton.Press());
  EXPECT_EQ(t.State(), "The error occurred at the time of communication [NO RESPONSE ERROR]");
  for (const std::string& request : t.Requests()) EXPECT_EQ(request, "03 01 14 00 01");
  ExpectIdle(t);
  bool closed = false;
  ClosePort(t.app(), closed);
  t.app().state.PortNo = "7";
  t.dialogs().Answer(MessageAnswer::kOk);
  ASSERT_TRUE(t.waves().ProfileStartButton.Press());
  EXPECT_EQ(t.dialogs().TakeTexts(), Texts{"The error occurred at the time of communication"});
  ExpectIdle(t);
}

// Mode 2 waits 480 ms at 9600 baud before it looks for a block, 24 ms at 19200.
TEST(Waves, ACaptureTakesTheseMilliseconds) {
  const std::pair<const char*, std::int64_t> rows[] = {{"9600", 480}, {"19200", 24}};
  for (const auto& [speed, wait] : rows) {
    TransitTest t({.port = PortKind::kScripted});
    ScriptedLine& line = t.test.platform.scripted;
    SetSpeed(t, speed);
    t.app().state.RetryNo = 0;
    line.ReplyChecked("01 03 02 00 00");
    line.ReplyChecked("01 04 10 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
    line.ReplyChecked("01 06 01 68 00 0A");
    line.ReplyChecked("01 03 02 00 01");
    line.ReplyChecked("01 03 02 00 14");
    std::string block = "01 04 80";
    for (int byte = 0; byte < 128; ++byte) block += " 00";
    for (int i = 0; i < 32; ++i) line.ReplyChecked(block);
    line.write_times_ms.clear();
    ASSERT_TRUE(t.waves().ProfileStartButton.Press());
    const auto& sent = line.write_times_ms;
    ASSERT_GE(sent.size(), 38u);
    // Each wait lasts a millisecond more than it says; the gap between frames is 5 and 3 ms.
    const std::int64_t gap = std::string_view(speed) == "9600" ? 6 : 4;
    const std::int64_t ordinary = 25 + gap;
    const std::int64_t block_ms = wait + 1 + gap;
    EXPECT_EQ(sent[2] - sent[1], ordinary) << "head to command";
    EXPECT_EQ(sent[3] - sent[2], ordinary + 51) << "command to poll";
    EXPECT_EQ(sent[4] - sent[3], ordinary + 51) << "poll to poll";
    EXPECT_EQ(sent[5] - sent[4], ordinary) << "poll to block";
    for (std::size_t i = 6; i < 37; ++i) EXPECT_EQ(sent[i] - sent[i - 1], block_ms);
    EXPECT_EQ(t.page().StatusBar2.Panel(3),
              std::string("1 captured, the last one in ") + (wait == 480 ? "15.8 s" : "1.1 s"));
  }
}

TEST(Waves, StopsFromEveryState) {
  TransitTest t = TwoPipes();
  SetSpeed(t, "38400");
  t.meter().holding().PutWord(0x019C, 0);
  int stored = 0;
  for (std::int64_t at = 0; at < 3600 && !testing::Test::HasFailure(); at += 37) {
    SCOPED_TRACE(at);
    std::int64_t stopped_at = -1;
    t.time().After(at, [&] {
      stopped_at = t.time().NowMs();
      t.waves().ProfileStopButton.Press();
      t.waves().ProfileStopButton.Press();
    });
    t.test.platform.TakeRequests();
    ASSERT_TRUE(t.waves().ProfileStartButton.Press());
    // The exchange under way, the end of the capture mode.
    EXPECT_LE(t.time().NowMs() - stopped_at, 500);
    EXPECT_EQ(t.State(), "The display of data was ended");
    const Texts sent = t.Requests();
    const bool captured = std::ranges::find(sent, "06 01 68 00 01") != sent.end();
    EXPECT_EQ(sent.back() == "06 01 68 00 00", captured) << "a meter is left in its capture mode";
    stored += t.waves().Captures;
    ExpectIdle(t);
  }
  EXPECT_GT(stored, 0);
}

TEST(Waves, PageStaysUntilTheRunHasEnded) {
  TransitTest t = TwoPipes();
  t.meter().holding().PutWord(0x019C, 0);
  bool refused = false;
  std::set<std::pair<int, std::string>> blocks;
  const auto look = [&] { blocks.insert({t.waves().prgWave.Value(), t.page().StatusBar2.Panel(2)}); };
  for (int at = 0; at < 20'000; at += 10) t.time().After(at, look);
  t.time().After(19'000, [&] {
    EXPECT_TRUE(t.page().IsLive());
    EXPECT_FALSE(IsMonitorIdle(t.app()));
    EXPECT_FALSE(t.waves().Frame19.Enabled() || t.waves().Frame2.Enabled());
    refused = !t.app().windows.Unload("Form11");
  });
  ASSERT_TRUE(t.waves().ProfileStartButton.Press());
  EXPECT_TRUE(refused);
  ExpectIdle(t);
  for (const int block : {1, 2, 32}) {
    EXPECT_TRUE(blocks.contains({block, "Block " + std::to_string(block) + " of 32"})) << block;
  }
  EXPECT_TRUE(blocks.contains({0, "Waiting for the wave"})) << blocks.begin()->second;
  EXPECT_TRUE(t.app().windows.Unload("Form11"));
}

TEST(Waves, AnotherPageThatClosesDoesNotEndTheRun) {
  TransitTest t = TwoPipes();
  t.meter().holding().PutWord(0x019C, 0);
  for (const char* page : {"Form9", "Form12"}) t.app().windows.Load(page);
  for (const char* page : {"Form9", "Form12"}) {
    t.time().After(700, [&t, page] { EXPECT_TRUE(t.app().windows.Unload(page)); });
  }
  Capture(t, 1);
  EXPECT_EQ(t.waves().Captures, 1);
}

TEST(Waves, LeavingWithoutARunEndsNothing) {
  TransitTest t = TwoPipes();
  t.app().state.AppRunning = false;
  EXPECT_TRUE(t.app().windows.Unload("Form11"));
  EXPECT_FALSE(t.time().Ended());
}

TEST(Waves, TheEndOfTheProgramEndsTheRunFirst) {
  TransitTest t = TwoPipes();
  t.meter().holding().PutWord(0x019C, 0);
  t.time().After(700, [&] {
    t.app().state.AppRunning = false;
    t.app().state.StopRequest = 1;
  });
  t.waves().ProfileStartButton.Press();
  EXPECT_TRUE(t.time().Ended());
  ExpectIdle(t);
}

TEST(Waves, FileHoldsTheSamplesOfTheMeter) {
  TransitTest t = TwoPipes();
  t.meter().holding().PutWord(0x149C, 1);
  t.page().DetailChSelect(1).Choose();
  EXPECT_TRUE(t.waves().WaveChSelect(1).Value());
  t.waves().ForwardFilterOption.Choose();
  t.dialogs().Answer(MessageAnswer::kOk);
  t.waves().ProfileSaveButton.Press();
  EXPECT_EQ(t.dialogs().TakeTexts(), Texts{"Since there is no measurement data, it cannot save"});

  t.test.platform.time.SetWall({.year = 2026, .month = 1, .day = 2, .hour = 3, .minute = 4, .second = 5});
  Capture(t, 2);
  // Another choice behind the run does not change what was captured.
  t.waves().WaveChSelect(0).Choose();
  t.waves().ReverseReceiveOption.Choose();
  t.app().state.MeasureDir = "/logs";
  t.dialogs().SaveFile("/logs/wave.csv");
  t.waves().ProfileSaveButton.Press();
  EXPECT_EQ(t.dialogs().questions.back().title, "Specify a saving file name");
  EXPECT_EQ(t.dialogs().questions.back().folder, "/logs/");
  EXPECT_TRUE(t.dialogs().questions.back().ask_before_overwrite);

  const Texts lines = t.Lines("/logs/wave.csv");
  ASSERT_EQ(lines.size(), 1028u);
  EXPECT_EQ(lines[0], "<Measurement result>,,");
  EXPECT_EQ(lines[1], "<CH2>,,");
  EXPECT_EQ(lines[2].substr(0, 33), "Measurement time,2026/1/2 3:04:21");
  EXPECT_EQ(std::ranges::count(lines[2], ','), 2);
  EXPECT_EQ(lines[3], "KIND,U:FILTER,U:FILTER");
  for (int n = 1; n <= 1024; ++n) {
    const auto i = static_cast<std::size_t>(n - 1);
    const std::string samples = "," + std::to_string(t.waves().store.WaveHistory[i][0]) + "," +
                                std::to_string(t.meter().input().Long(0xC0 + 4 * (n - 1)));
    EXPECT_EQ(lines[i + 4], (n == 1 ? "FIFO COUNTER[1]" : "[" + std::to_string(n) + "]") + samples);
  }
  EXPECT_GT(*std::ranges::max_element(t.waves().store.WaveSamples), 10000);
}

TEST(Waves, StoreStartsAgainBehindTheLastSlot) {
  WaveStore store;
  const auto keep = [&](int capture) {
    store.WaveSamples.fill(capture);
    store.Keep({.year = 2000 + capture, .month = 1, .day = 1});
  };
  EXPECT_EQ(store.Earlier(0), std::nullopt);
  for (int capture = 1; capture <= 254; ++capture) keep(capture);
  EXPECT_EQ(store.WaveIndex, 0);
  EXPECT_EQ(store.WaveHistory[1023][253], 254);
  EXPECT_EQ(store.Earlier(0), 253);
  EXPECT_EQ(store.Earlier(253), 0);
  keep(255);
  EXPECT_EQ(store.WaveIndex, 1);
  EXPECT_EQ(store.WaveHistory[0][0], 255);
  EXPECT_EQ(store.WaveStamps[0].year, 2255);
  EXPECT_EQ(store.WaveFirstStamp.year, 2001);
  EXPECT_EQ(store.Earlier(0), 0);
  EXPECT_EQ(store.Earlier(1), 253);
  EXPECT_EQ(store.Earlier(254), std::nullopt);
  EXPECT_EQ(store.WaveStamps[254].year, 0) << "the last slot stays free";
  store.Clear();
  EXPECT_FALSE(store.WaveSaved);
  EXPECT_EQ(store.WaveFirstStamp.year, 0);
}

TEST(Waves, ALongRunWrapsAndSavesAllSlots) {
  TransitTest t = TwoPipes();
  SetSpeed(t, "38400");
  t.meter().holding().PutWord(0x019C, 0);
  Capture(t, 255);
  EXPECT_EQ(t.waves().store.WaveIndex, 1);
  t.dialogs().SaveFile("/logs/wave.csv");
  t.waves().ProfileSaveButton.Press();
  const Texts lines = t.Lines("/logs/wave.csv");
  ASSERT_EQ(lines.size(), 1028u);
  for (std::size_t i = 2; i < lines.size(); ++i) ASSERT_EQ(std::ranges::count(lines[i], ','), 254);
  EXPECT_TRUE(
      lines[4].starts_with("FIFO COUNTER[1]," + std::to_string(t.waves().store.WaveSamples[0]) + ","));
  EXPECT_EQ(t.waves().store.WaveHistory[0][0], t.waves().store.WaveSamples[0]);
}

TEST(Waves, EarlierOnesLieBehindAsManyAsAreAskedFor) {
  TransitTest t = TwoPipes();
  SetSpeed(t, "38400");
  t.meter().holding().PutWord(0x019C, 0);
  Capture(t, 3);
  const Chart& chart = t.waves().DeltaChart2D1;
  const auto shown = [&] {
    int lines = 0;
    for (int series = WaveTab::kTrailSeries; series < chart.SeriesCount(); ++series) {
      EXPECT_EQ(chart.Style(series), SeriesStyle::kFaint);
      lines += chart.Shown(series).empty() ? 0 : 1;
    }
    return lines;
  };
  EXPECT_EQ(t.waves().cmbWaveTrail.Text(), "3");
  EXPECT_EQ(shown(), 2) << "there are no more yet";
  EXPECT_EQ(chart.Shown(WaveTab::kTrailSeries)[5].y, t.waves().store.WaveHistory[5][1]);
  EXPECT_EQ(chart.Shown(WaveTab::kTrailSeries + 1)[5].y, t.waves().store.WaveHistory[5][0]);
  t.waves().cmbWaveTrail.Choose(1);
  EXPECT_EQ(shown(), 1);
  t.waves().cmbWaveTrail.Choose(0);
  EXPECT_EQ(shown(), 0);
  // The choice is kept for the next opening.
  EXPECT_EQ(GetWaveTrail(t.app(), WaveTab::kMostTrail, 3), 0);
}

}  // namespace
}  // namespace vlt::test
