// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/line.h"

#include <bit>
#include <set>

#include "line_drive.h"

namespace sim {
namespace {

constexpr const char* kReadSpec = "01 03 01 48 00 01 05 E0";
constexpr const char* kSpecReply = "01 03 02 00 51 79 B8";
constexpr const char* kReadUnits = "01 03 01 00 00 02 C5 F7";
constexpr const char* kUnitsReply = "01 03 04 00 00 00 00 FA 33";

TEST(Frame, CheckIsThatOfTheProtocol) {
  EXPECT_EQ(FrameCheck(Hex("01 03 00 00 00 0A")), 0xCDC5);  // goes out as C5 CD
  EXPECT_EQ(FrameCheck(Hex("31 32 33 34 35 36 37 38 39")), 0x4B37);
  Bytes out;
  EXPECT_FALSE(FromHex("0", out) || FromHex("0G", out) || FromHex("01 2", out));
}

// Moments in microseconds, worked out by hand: 11 bits a character, 5 ms of turnaround.
TEST(Line, KeepsThePaceOfItsSpeed) {
  struct Case {
    const char* words;
    Micros request_over, first, last;
  };
  const Case cases[] = {
      {"speed=9600", 9'167, 15'313, 22'188}, {"speed=19200", 4'584, 10'157, 13'595},
      {"speed=38400", 2'292, 7'579, 9'298},  {"speed=9600 turnaround=20", 9'167, 30'313, 37'188},
      {"pace=off", 0, 5'000, 5'000},         {"pace=off turnaround=0", 0, 0, 0},
  };
  for (const Case& c : cases) {
    auto line = Make(c.words);
    line->Transmit(Hex(kReadSpec), 0);
    if (c.request_over > 0) {
      EXPECT_EQ(line->Outgoing(0), 8u) << c.words;
      EXPECT_EQ(line->Outgoing(c.request_over - 1), 1u) << c.words;
    }
    EXPECT_EQ(line->Outgoing(c.request_over), 0u) << c.words;
    ASSERT_EQ(line->Pending().size(), 7u) << c.words;
    EXPECT_EQ(line->Pending().front().at, c.first) << c.words;
    EXPECT_TRUE(c.first == 0 || line->Take(c.first - 1).empty()) << c.words;
    EXPECT_EQ(line->NextEvent(), c.first) << c.words;
    EXPECT_EQ(ToHex(line->Take(c.last)), kSpecReply) << c.words;
    EXPECT_EQ(line->NextEvent(), std::nullopt) << c.words;
  }
}

TEST(Line, EndsAFrameByItsLengthOrBySilence) {
  auto line = Make("speed=9600");  // 3.5 characters are 4011 us
  // In pieces, with pauses below the silence.
  line->Receive(Hex("01 03 01"), 0);
  line->Receive(Hex("48 00"), 4'000);
  line->Receive(Hex("01 05 E0"), 8'000);
  EXPECT_EQ(Drain(*line).bytes, kSpecReply);
  // A piece that nothing follows is dropped; so is a frame whose check is wrong, and one behind noise.
  line->Receive(Hex("01 03 01"), 100'000);
  EXPECT_EQ(line->NextEvent(), 104'011);
  line->Receive(Hex("48 00 01 05 E0"), 104'011);
  EXPECT_EQ(Drain(*line).bytes, "");
  EXPECT_EQ(Exchange(*line, "01 03 01 48 00 01 05 E1", 200'000).bytes, "");
  EXPECT_EQ(Exchange(*line, "FF 01 03 01 48 00 01 05 E0", 300'000).bytes, "");
  // An unknown function has no length; its frame ends by silence and is refused.
  const Arrival refused = Exchange(*line, "01 05 01 40 FF 00 8C 12", 400'000);
  EXPECT_EQ(refused.bytes, "01 85 01 83 50");
  EXPECT_EQ(refused.last, 400'000 + 9'167 + 4'011 + 5'000 + 5'730);
  EXPECT_EQ(Exchange(*line, kReadSpec, 500'000).bytes, kSpecReply);
  const std::vector<LogEntry::Kind> kinds = [&] {
    std::vector<LogEntry::Kind> result;
    for (const LogEntry& entry : line->Log()) result.push_back(entry.kind);
    return result;
  }();
  using enum LogEntry::Kind;
  EXPECT_EQ(kinds, (std::vector{Request, Reply, Dropped, Dropped, Dropped, Dropped, Request, Reply, Request,
                                Reply}));
}

TEST(Line, WritesAndReadsBack) {
  auto line = Make("");
  EXPECT_EQ(Exchange(*line, "01 10 00 D2 00 02 04 00 00 30 39 AB 38").bytes, "01 10 00 D2 00 02 E1 F1");
  EXPECT_EQ(Exchange(*line, "01 03 00 D2 00 02 64 32", 100'000).bytes, "01 03 04 00 00 30 39 2E 21");
  EXPECT_EQ(Exchange(*line, "01 06 01 40 00 01 48 22", 200'000).bytes, "01 06 01 40 00 01 48 22");
}

TEST(Line, SeveralStationsShareIt) {
  auto line = Make("stations=1,2,5 2:poke=0104:0007 5:ras=1:8000");
  EXPECT_EQ(line->Stations(), (std::vector{1, 2, 5}));
  EXPECT_EQ(Exchange(*line, "02 03 01 04 00 01 C4 04").bytes, "02 03 02 00 07 BD 86");
  EXPECT_EQ(Exchange(*line, "05 04 00 24 00 01 70 45", 100'000).bytes, "05 04 02 80 00 29 30");
  EXPECT_EQ(Exchange(*line, "03 03 01 04 00 01 C5 D5", 200'000).bytes, "");
  EXPECT_EQ(line->Log().back().note, "no such station");
  // To all of them at once: done by each, answered by none.
  Bytes broadcast = Hex("00 06 01 04 00 63");
  AppendCheck(broadcast);
  EXPECT_EQ(Exchange(*line, ToHex(broadcast), 300'000).bytes, "");
  for (int station : {1, 2, 5}) EXPECT_EQ(line->Station(station)->holding().Word(0x0104), 99) << station;
  // The only meter of a line answers to it, whatever its number.
  auto alone = Make("stations=7 poke=0104:0007");
  Bytes request = Hex("00 03 01 04 00 01");
  AppendCheck(request);
  EXPECT_EQ(Exchange(*alone, ToHex(request)).bytes.substr(0, 14), "00 03 02 00 07");
}

TEST(Line, ItsStationsDiffer) {
  auto line = Make("stations=1-31 fleet=on pace=off");
  std::set<std::string> seen;
  int english = 0, single = 0;
  for (int station = 1; station <= 31; ++station) {
    Bytes request{static_cast<std::uint8_t>(station), 4, 0, 0, 0, 19};
    AppendCheck(request);
    seen.insert(Exchange(*line, ToHex(request), station * 1'000'000).bytes.substr(6));
    Memory& memory = line->Station(station)->holding();
    english += memory.Word(0x0100);
    single += IsSingleChannel(memory.Word(0x0148)) ? 1 : 0;
    const double percent =
        std::bit_cast<float>(static_cast<std::uint32_t>(line->Station(station)->input().Long(8)));
    EXPECT_TRUE(percent > 25 && percent < 95) << station << ": " << percent;
  }
  EXPECT_EQ(seen.size(), 31u);
  EXPECT_TRUE(english > 3 && single > 3) << english << " " << single;
  auto alike = Make("stations=1,2 pace=off 2:unit=english 2:model=single 2:id=77");
  EXPECT_EQ(alike->Station(1)->holding().Word(0x0148), kFullSpecification);
  EXPECT_EQ(alike->Station(2)->holding().Word(0x0148), kSingleSpecification);
  EXPECT_EQ(alike->Station(2)->holding().Word(0x0100), 1);
  EXPECT_EQ(alike->Station(2)->holding().Word(0x0104), 77);
}

TEST(Line, MetersAnswerAtTheirSpeedAndParityAlone) {
  const auto ask = [](Line& line, int station, Micros now) {
    Bytes request{static_cast<std::uint8_t>(station), 3, 1, 0x48, 0, 1};
    AppendCheck(request);
    return !Exchange(line, ToHex(request), now).bytes.empty();
  };
  auto line = Make("stations=1-3 speed=9600 parity=O 2:speed=19200 3:parity=E 3:speed=38400");
  struct Case {
    Hearing master;
    const char* answer;  // stations 1 to 3
  };
  Micros now = 0;
  for (const Case& c :
       {Case{{0, 0}, "xxx"}, Case{{9600, 'O'}, "x.."}, Case{{19200, 'O'}, ".x."}, Case{{19200, 0}, ".x."},
        Case{{38400, 'E'}, "..x"}, Case{{38400, 'O'}, "..."}, Case{{9600, 'N'}, "..."}}) {
    line->SetMaster(c.master);
    std::string answer;
    for (int station : {1, 2, 3}) answer += ask(*line, station, now += 1'000'000) ? 'x' : '.';
    EXPECT_EQ(answer, c.answer) << c.master.speed;
  }
  EXPECT_EQ(line->Log().back().note, "other speed or parity");
  // Without a word of them they follow whoever asks.
  auto any = Make("stations=1-3");
  any->SetMaster({38400, 'E'});
  EXPECT_TRUE(ask(*any, 3, 0));
}

struct FaultCase {
  const char* fault;
  const char* request;
  const char* reply;
  Micros last;  // with pacing off and no turnaround
};

TEST(Faults, LookOnTheWireAsTheyAreCalled) {
  const char* write = "01 10 00 D2 00 02 04 00 00 30 39 AB 38";
  const FaultCase cases[] = {
      {"silence", kReadSpec, "", -1},
      {"late=40", kReadSpec, kSpecReply, 40'000},
      {"one-byte", kReadSpec, "01", 0},
      {"short", kReadSpec, "01 03 02 00", 0},
      {"short=1", kReadSpec, "01 03 02 00 51 79", 0},
      {"short=99", kReadSpec, "01 03", 0},
      {"crc", kReadSpec, "01 03 02 00 51 79 ED", 0},
      {"function", kReadSpec, "01 11 02 00 51 7C C0", 0},
      {"exception=1", kReadSpec, "01 83 01 80 F0", 0},
      {"exception", kReadSpec, "01 83 02 C0 F1", 0},
      {"exception=3", write, "01 90 03 0C 01", 0},
      {"exception=6", kReadSpec, "01 83 06 C1 32", 0},
      {"station", kReadSpec, "02 03 02 00 51 3D B8", 0},
      {"noise=2", kReadSpec, "FF 00 01 03 02 00 51 79 B8", 0},
      {"extra=4", kReadSpec, "01 03 02 00 51 79 B8 FF 00 F7 FF", 0},
      {"trickle=5", kReadSpec, kSpecReply, 35'000},
      {"unplug=3", kReadSpec, "01 03 02", 0},
      {"wrong-echo", write, "01 10 00 D2 00 03 20 31", 0},
      {"wrong-echo", "01 06 01 40 00 01 48 22", "01 06 01 40 00 02 08 23", 0},
      {"refuse-capture", "01 06 01 68 00 01 C8 2A", "01 06 01 68 00 00 09 EA", 0},
      {"stuck-capture", "01 06 01 68 00 01 C8 2A", "01 06 01 68 00 0A 89 ED", 0},
      {"slow-store", "01 06 01 50 00 01 49 E7", "01 06 01 50 00 01 49 E7", 0},
      {"ignore-write", write, "01 10 00 D2 00 02 E1 F1", 0},
  };
  for (const FaultCase& c : cases) {
    auto line = Make("pace=off turnaround=0");
    ASSERT_EQ(ApplyAction(*line, std::string("fault=") + c.fault, 0), "");
    const Arrival arrival = Exchange(*line, c.request);
    EXPECT_EQ(arrival.bytes, c.reply) << c.fault;
    EXPECT_EQ(arrival.last, c.last) << c.fault;
    EXPECT_EQ(line->faults().Waiting(), 0u) << c.fault;
  }
}

TEST(Faults, InsideTheMeterLastAsLongAsTheyShould) {
  auto line = Make("pace=off turnaround=0 store=10 capture=10");
  const auto word = [&](int address) { return line->Station(1)->holding().Word(address); };
  // request.
  auto strike = [&](std::string_view fault, std::string_view request, Micros now) {
    line->faults().Clear();
    ApplyAction(*line, "fault=" + std::string(fault), now);
    Exchange(*line, request, now);
  };
  strike("slow-store=700", "01 06 01 50 00 01 49 E7", 0);
  Exchange(*line, kReadSpec, 699'999);
  EXPECT_EQ(word(0x0150), 1);
  Exchange(*line, kReadSpec, 700'000);
  EXPECT_EQ(word(0x0150), 0);
  strike("stuck-capture", "01 06 01 68 00 01 C8 2A", 800'000);
  Exchange(*line, kReadSpec, 60'000'000);
  EXPECT_EQ(word(0x0168), 10);
  strike("slow-capture=900", "01 06 01 68 00 01 C8 2A", 60'100'000);
  Exchange(*line, kReadSpec, 60'999'999);
  EXPECT_EQ(word(0x0168), 10);
  Exchange(*line, kReadSpec, 61'000'000);
  EXPECT_EQ(word(0x0168), 20);
  strike("fail-capture", "01 06 01 68 00 01 C8 2A", 61'000'000);
  EXPECT_EQ(word(0x0168), 10);
  Exchange(*line, kReadSpec, 61'010'000);
  EXPECT_EQ(word(0x0168), 0);
  strike("ignore-write", "01 10 00 D2 00 02 04 00 00 30 39 AB 38", 62'000'000);
  EXPECT_EQ(line->Station(1)->holding().Long(0x00D2), 6050);
  strike("silence", "01 10 00 D2 00 02 04 00 00 30 39 AB 38", 62'500'000);
  EXPECT_EQ(line->Station(1)->holding().Long(0x00D2), 6050);
  strike("crc", "01 10 00 D2 00 02 04 00 00 30 39 AB 38", 63'000'000);
  EXPECT_EQ(line->Station(1)->holding().Long(0x00D2), 12345);
}

TEST(Faults, StrikeTheRequestsTheyAreArmedFor) {
  struct Case {
    const char* fault;
    const char* struck;  // for spec, units, spec, units, spec, units
  };
  const Case cases[] = {{"crc", "x....."},       {"crc*2", "xx...."},       {"crc*ever", "xxxxxx"},
                        {"crc@0148H", "x....."}, {"crc@0100#2", "...x.."},  {"crc@0148#2*ever", "..x.x."},
                        {"crc#3*2", "..xx.."},   {"crc/06*ever", "......"}, {"crc/03H:1*3", "xxx..."},
                        {"crc:2*ever", "......"}};
  for (const Case& c : cases) {
    auto line = Make(std::string("pace=off fault=") + c.fault);
    std::string struck;
    for (int i = 0; i < 6; ++i) {
      const std::string reply = Exchange(*line, i % 2 ? kReadUnits : kReadSpec, i * 100'000).bytes;
      struck += reply == (i % 2 ? kUnitsReply : kSpecReply) ? '.' : 'x';
    }
    EXPECT_EQ(struck, c.struck) << c.fault;
  }
}

TEST(Faults, HaveTheirOwnWords) {
  for (const FaultInfo& info : Faults()) {
    std::string error;
    const auto fault = ParseFault(info.name, error);
    ASSERT_TRUE(fault) << info.name;
    EXPECT_EQ(fault->fault, info.fault);
    EXPECT_EQ(&InfoOf(info.fault), &info) << info.name;
    EXPECT_FALSE(info.must.empty()) << info.name;
  }
  for (const char* bad : {"", "croc", "crc@", "crc@XYZ", "crc@10000", "crc=5", "late=", "late=1x", "crc#0",
                          "crc*-1", "crc/100", "crc:300", "crc@0148@"}) {
    std::string error;
    EXPECT_FALSE(ParseFault(bad, error)) << bad;
    EXPECT_NE(error, "") << bad;
  }
}

TEST(Line, AnswersOneRequestAfterTheOther) {
  auto line = Make("speed=9600 fault=late=100");
  line->Transmit(Hex(kReadSpec), 0);
  line->Transmit(Hex(kReadUnits), 50'000);  // while the first answer is still to come
  EXPECT_EQ(Drain(*line).bytes, std::string(kSpecReply) + " " + kUnitsReply);
  // What is thrown away before it left never arrives.
  line->Transmit(Hex(kReadSpec), 300'000);
  line->DiscardOutgoing(304'000);
  EXPECT_EQ(Drain(*line).bytes, "");
}

TEST(Line, LosesWhatIsUnderWayWhenItIsUnplugged) {
  auto line = Make("speed=9600");
  line->Transmit(Hex(kReadSpec), 0);
  line->Unplug(17'000);  // two bytes have arrived
  EXPECT_FALSE(line->IsPlugged(17'000));
  line->Transmit(Hex(kReadSpec), 50'000);
  EXPECT_EQ(ToHex(line->Take(60'000)), "01 03");
  EXPECT_EQ(line->NextEvent(), std::nullopt);
  line->Plug(70'000);
  EXPECT_EQ(ToHex(line->Take(100'000)), "");
  EXPECT_EQ(Exchange(*line, kReadSpec, 100'000).bytes, kSpecReply);
  // Pulled while a request goes out: the meter never sees it.
  line->Transmit(Hex("01 10 00 D2 00 02 04 00 00 30 39 AB 38"), 200'000);
  line->Unplug(205'000);
  line->Plug(300'000);
  Drain(*line);
  EXPECT_EQ(line->Station(1)->holding().Long(0x00D2), 6050);
}

TEST(Line, KeepsItsLogWithinBounds) {
  auto line = Make("pace=off");
  std::size_t told = 0;
  line->SetLogSink([&](const LogEntry&) { ++told; });
  line->SetLogLimit(4);
  for (int i = 0; i < 10; ++i) Exchange(*line, kReadSpec, i * 100'000);
  EXPECT_EQ(told, 20u);
  ASSERT_EQ(line->Log().size(), 4u);
  EXPECT_EQ(ToHex(line->Log()[0].bytes), kReadSpec);
  EXPECT_EQ(line->Log()[1].at, 805'000);
}

// Whatever comes in, only a whole frame with a good check is answered, and every answer has one.
TEST(Line, StandsRubbish) {
  auto line = Make("pace=off stations=1,2 store=1");
  std::uint32_t random = 12345;
  const auto next = [&random] { return random = random * 1664525u + 1013904223u, random >> 16; };
  Micros now = 0;
  for (int round = 0; round < 20'000; ++round) {
    Bytes frame;
    const std::uint8_t functions[] = {3, 4, 6, 16, 16, static_cast<std::uint8_t>(next())};
    frame.push_back(static_cast<std::uint8_t>(next() % 3));
    frame.push_back(functions[next() % 6]);
    const std::size_t length = next() % 4 == 0 ? next() % 300 : 6;
    while (frame.size() < length)
      frame.push_back(static_cast<std::uint8_t>(next() % 3 ? next() % 8 : next()));
    if (next() % 8) AppendCheck(frame);
    line->Receive(frame, now);
    now += 10'000 + next() % 100;
    const Bytes reply = line->Take(now);
    if (reply.empty()) continue;
    ASSERT_GE(reply.size(), 5u);
    Bytes checked(reply.begin(), reply.end() - 2);
    AppendCheck(checked);
    ASSERT_EQ(checked, reply);
  }
}

TEST(Scenario, BuildsWhatItSays) {
  auto line = Make(
      "model=single unit=english lang=japanese id=12 speed=19200 store=50 live=1:still:2 value=1:percent:nan "
      "fault=crc@0148");
  EXPECT_EQ(line->config().baud, 19200);
  Meter& meter = *line->Station(1);
  EXPECT_EQ(meter.holding().Word(0x0148), kSingleSpecification);
  EXPECT_EQ(meter.holding().Word(0x0100), 1);
  EXPECT_EQ(meter.holding().Word(0x0102), 1);
  EXPECT_EQ(meter.holding().Word(0x0104), 12);
  EXPECT_EQ(line->faults().Waiting(), 1u);
  EXPECT_EQ(Make("path=2")->Station(1)->holding().Word(0x03E8), 2);
  EXPECT_EQ(ApplyAction(*line, "calm", 0), "");
  EXPECT_EQ(line->faults().Waiting(), 0u);
  // Totals start when the meter does, however late the clock is.
  Scenario late;
  std::string error;
  auto started = Build(late, 1'000'000'000'000, error);
  started->Receive(Hex("01 04 00 00 00 13 B1 C7"), 1'000'000'000'000);
  EXPECT_EQ(started->Station(1)->input().Double(0x000C), 0);
}

TEST(Scenario, TellsWhatIsWrongWithAWord) {
  for (const char* bad : {"model",         "model=double", "path=3",     "speed=fast",   "stations=0",
                          "stations=1,,2", "stations=248", "parity=X",   "stop=3",       "spec=10000",
                          "store=-1",      "colour=blue",  "pace=maybe", "stations=5-1", "stations=1-",
                          "fleet=2",       "2:stations=1", "2:pace=on",  "2:unit=x",     "999:unit=metric"}) {
    Scenario scenario;
    EXPECT_NE(ApplyWord(scenario, bad), "") << bad;
  }
  for (const char* bad :
       {"fault=",         "live=3:sine:1", "live=1:saw:1",   "live=1:sine:nan", "live=1:sine:1:1:0",
        "live=1:sine",    "value=1:flow",  "value=4:flow:1", "value=1:mass:1",  "ras=1:10000",
        "ras=0:1",        "fill=x",        "bad=0",          "bad=0:300",       "bad=5-1:2",
        "bad=0:2:here",   "input=0086",    "input=3F00:00",  "poke=FFFF:00 01", "poke=00D0:0",
        "poke=2000:0001", "9:ras=1:1",     "release=1",      "alarms=some",     "restart=5",
        "nothing"}) {
    auto line = Make("stations=1");
    EXPECT_NE(ApplyAction(*line, bad, 0), "") << bad;
    Scenario scenario;
    scenario.actions = {bad};
    std::string error;
    EXPECT_EQ(Build(scenario, 0, error), nullptr) << bad;
  }
}

}  // namespace
}  // namespace sim
