// SPDX-License-Identifier: GPL-3.0-or-later
// The parameter file: the saved picture of what the pages show, with the link settings and the user level.
// Values reach the meter only through the pages.
#pragma once

#include <string>

#include "files/settings_file.h"
#include "platform/file_system.h"
#include "state/app.h"

namespace vlt {

// True for the exact text of LoaderIniPath: that file is no parameter file and is never written as one. Files
// in the field depend on the text: a path with a doubled separator, as a file that nothing names has it,
// never equals that of a dialog. CSV files have the wider rule IsSettingsFile.
bool IsLoaderFile(const App& app, const std::string& path);

// Writes the application settings and all slots into one file, whole; keys and sections that are not ours
// survive, and the file that stood there is kept as BackupPath.
FileError SaveParameterFile(App& app, const std::string& path);

// Reads the slots. When the file can't be read (a missing one too) nothing changes. A channel or output
// number beyond 16 bits ends the loading; the keys before it are stored. The choice of a list, or the
// value of a register without decimals, that is no whole number is not taken; not_taken names it, and a
// channel that is no whole number and is read as far as its digits go. The result counts the slots.
LoadResult LoadParameterFile(App& app, const std::string& path);

// Opens a parameter file: settings (the program's language and its variant stay), slots, open pages, all from
// one reading. When the file can't be read nothing changes. An open port goes on as it is, and CommSettings
// with it. The result counts settings and slots together; stopped_at is that of the slots, and not_taken
// names the settings' keys too.
LoadResult OpenParameterFile(App& app, const std::string& path);

// Every page's controls into the slots: loads each page, runs its Taihi and unloads it; Form9 and Form11 are
// only hidden.
void SavePagesToSlots(App& app);
// The same by its other name.
inline void SaveAllPages(App& app) { SavePagesToSlots(app); }

// What the open pages show into the slots; the pages stay as they are, and so does what the others keep.
void OpenPagesToSlots(App& app);

// The slots into the controls of the pages that are open.
void RefreshOpenPages(App& app);

}  // namespace vlt
