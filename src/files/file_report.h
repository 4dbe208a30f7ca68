// What the operator is told about a file, in status panel 1: its name and the reason.
#pragma once

#include <string>

#include "platform/file_system.h"
#include "state/app.h"

namespace vlt {

void ReportOpened(App& app, const std::string& path);
void ReportSaved(App& app, const std::string& path);
void ReportNotRead(App& app, const std::string& path, FileError error);
void ReportNotWritten(App& app, const std::string& path, FileError error);

// Text id of why a file could not be read, for the middle of a sentence. `error` is not kGood.
int NotReadReason(FileError error);

// Text id of why a file could not be written, for the middle of a sentence. `error` is not kGood.
int NotWrittenReason(FileError error);

}  // namespace vlt
