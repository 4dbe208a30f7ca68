// SPDX-License-Identifier: GPL-3.0-or-later
// Walks through the windows, as a text: what a person does, and indented beneath it what came of it. Running
// the tests with VELTRANO3_RENEW=1 writes the indented lines anew.
//
// clang-format off
//   == two pipes, English: a title          a new part: a program and a meter of this shape; also "single",
//                                           "two paths", "Japanese", "factory"; "unknown": nothing is known of it
//   == program: a title                     no port and no page yet: "start:PORT=1,STATION_NO=01" begins
//   begin fill open:frmCompare              each part behind it begins so
//   # ...                                   a remark; behind a line, too
// A person:
//   +chkCheck -chkKind Start SPANText=7     ticks, unticks, presses or chooses, types, chooses an entry
//   SPANText~ Spin+ Spin-                   leaves the field, presses an arrow
//   Grid#KIND +Grid#KIND -Grid#3            chooses and ticks a row by how it begins, or by its number
//   box:ok box:no@WORD file:/a pick:/a.csv  answers the next boxes (doing WORD before) and file dialogs ("file:"
//                                           cancels)
// The program and its surroundings:
//   open:Form2 on:Form2 show unload         opens a window, goes back to one; also `leave`, `init` (captions
//                                           anew), `keep` and `bring` (slots)
//   SPANText:=7 Kind:=-1                    the program puts a value
//   state:RangeChannel=2 slot:RANGE/X=3     what the program knows; `sent`: settings were sent
//   *1B60=12.5d *1B5E=2 in:0086=00FF        registers of the meter: a double, a word (l: a long); input bytes
//   fill break:001C=4 mended                a value of its own in every register; one that answers an exception
//   key:0100=1 station:2=English act:...    set at the meter itself; another station; what a meter does by itself
//   fault:silence@0148H*4 mend hear:9=38400,E    what the line does wrong; how a station hears
//   close unplug plug "no ports"            the port and its adapter
//   put:/a.ini=X load:/a.ini write:/a.ini edit:/a.ini=OLD=>NEW rm:/a.ini    files
//   fail:1=full fail:/a.csv=missing         the next change of a file fails, or all of its changes
//   print:none                              what becomes of sheets
//   wait:500 after:60 WORDS                 lets time pass; the rest of the line, so many ms from now
// What is asked for:
//   Label2(0)? Grid#KIND? Grid?? ?          what a control, a row, all rows, or the window hold
//   values? slots? slot?RANGE/X origin?X windows? files? asked? printed? pages? took?
//   grep:/a.ini=^PORT                       lines of a file, or the first group in them
// How much is told:
//   . X=7                                   nothing but what was refused
//   > Start   w Start   n Start             also boxes and what is asked for; requests with >, writes with w
//   s Start                                 also what the window's own lines say
//   = Start                                 also what the controls hold
//   X=7 ;; Start                            nothing of what stands before
//   each:7,ok|8,no X=%1 box:%2              the line for each case ("&" is a space, ";" a comma); `fresh` begins
//                                           it with a new program
// clang-format on
//
// A text with spaces stands in quotes. What a person cannot do is told as "refused". Moments are "DATE".
#pragma once

#include <string>

namespace vlt::test {

// Walks what the file says and looks that it came as it tells.
void ExpectWalk(const std::string& path);

}  // namespace vlt::test
