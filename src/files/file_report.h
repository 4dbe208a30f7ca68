// SPDX-License-Identifier: GPL-3.0-or-later
// What the operator is told about a file, in status panel 1: its name and the reason.
#pragma once

#include <string>

#include "files/settings_file.h"
#include "platform/file_system.h"
#include "state/app.h"

namespace vlt {

// What a parameter file brought: how many of the keys that it may hold, and which values were not taken. A
// file that could not be read at all says why.
void ReportOpened(App& app, const std::string& path, const LoadResult& result);
void ReportSaved(App& app, const std::string& path);
void ReportNotRead(App& app, const std::string& path, const FileError& error);
void ReportNotWritten(App& app, const std::string& path, const FileError& error);
// ReportSaved, or for another error than kGood ReportNotWritten.
void ReportWritten(App& app, const std::string& path, const FileError& error);

// Text id of why a file could not be read, for the middle of a sentence. `error` is not kGood.
int NotReadReason(const FileError& error);

// Text id of why a file could not be written, for the middle of a sentence. `error` is not kGood.
int NotWrittenReason(const FileError& error);

// The same in words, with what the error knows beyond its kind: the greatest length, the system's words. The
// language is that of the offset.
std::string WhyNotRead(const FileError& error, Language language);
std::string WhyNotWritten(const FileError& error, Language language);

// "VLT.ini could not be read: there is no such file", with the name as it is given. `error` is not kGood.
std::string NotReadText(const App& app, const std::string& name, const FileError& error);
// "report.csv could not be written: the disk is full", with the last component of the path. Where another
// file on the way has failed, that one is named ("VLT.ini.tmp"); where reading it has failed, that is said.
std::string NotWrittenText(const App& app, const std::string& path, const FileError& error);
// The name that NotWrittenText gives.
std::string FailedName(const std::string& path, const FileError& error);

}  // namespace vlt
