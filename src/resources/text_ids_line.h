// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts about the line: its statistics and its frames. They live in the block 4191 to 4279.
#pragma once

namespace vlt::text {

// The window. kLineSince: %1 date and time. kLineNow: %1 bytes a second, %2 per cent. kLineSpeed: %1 bits a
// second, %2 bits a byte, %3 bytes a second. kLineOutcomes: %1 whose. kLinePaused: %1 date and time.
inline constexpr int kLineTitle = 4191;
inline constexpr int kLineSince = 4192;
inline constexpr int kLineReset = 4193;
inline constexpr int kLineSaveFrames = 4194;
inline constexpr int kLinePause = 4195;
inline constexpr int kLineOutcomes = 4197;
inline constexpr int kLineFrames = 4198;
inline constexpr int kLineFrameFile = 4199;
inline constexpr int kLineNow = 4226;
inline constexpr int kLineSpeed = 4227;
inline constexpr int kLineNoPort = 4228;
inline constexpr int kLineAskedLater = 4229;
inline constexpr int kLinePaused = 4256;

// Heads of its tables.
inline constexpr int kLineStation = 4200;
inline constexpr int kLineAll = 4201;
inline constexpr int kLineExchanges = 4202;
inline constexpr int kLineRepeats = 4203;
inline constexpr int kLineFailed = 4204;
inline constexpr int kLineMedian = 4205;
inline constexpr int kLineHighest = 4206;
inline constexpr int kLineSent = 4207;
inline constexpr int kLineReceived = 4208;
inline constexpr int kLineRate = 4209;
inline constexpr int kLineLoad = 4210;
inline constexpr int kLineOutcome = 4220;
inline constexpr int kLineAttempts = 4221;
inline constexpr int kLineShare = 4222;
inline constexpr int kLineTime = 4223;
inline constexpr int kLineBytes = 4224;
inline constexpr int kLineMeaning = 4225;

// How an attempt ended.
inline constexpr int kEndAnswered = 4211;
inline constexpr int kEndSilence = 4212;
inline constexpr int kEndShort = 4213;
inline constexpr int kEndException = 4214;
inline constexpr int kEndFunction = 4215;
inline constexpr int kEndCheck = 4216;
inline constexpr int kEndStation = 4217;
inline constexpr int kEndPort = 4218;
inline constexpr int kEndEcho = 4219;

// What a frame says. Requests: %1 registers, %2 the first address. kFrameFunction: %1 the function.
// kFrameRepeat: %1 which one.
inline constexpr int kFrameReads = 4230;
inline constexpr int kFrameReadsInput = 4231;
inline constexpr int kFrameWrites = 4232;
inline constexpr int kFrameFunction = 4233;
inline constexpr int kFrameRepeat = 4234;
// Replies: %1 milliseconds since the request, %2 registers. kFrameNone and kFramePort: %1 milliseconds.
inline constexpr int kFrameBrings = 4235;
inline constexpr int kFrameConfirms = 4236;
inline constexpr int kFrameNone = 4237;
inline constexpr int kFramePort = 4238;
// %1 the code, %2 one of the reasons below it.
inline constexpr int kFrameRefuses = 4239;
inline constexpr int kRefusedFunction = 4240;
inline constexpr int kRefusedAddress = 4241;
inline constexpr int kRefusedCount = 4242;
inline constexpr int kRefusedOther = 4243;
// %1 what is there, %2 what should be.
inline constexpr int kFrameShort = 4244;
inline constexpr int kFrameCheck = 4245;
inline constexpr int kFrameOther = 4246;
inline constexpr int kFrameStation = 4247;
inline constexpr int kFrameEcho = 4248;
// %1 the first name, %2 the last one, %3 how many.
inline constexpr int kFrameNames = 4249;

}  // namespace vlt::text
