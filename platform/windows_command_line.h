// Pure string logic: a Windows command line split into its argument vector.
//
// A Windows program receives one line of text and splits it itself; the kernel writes its
// command lines for that splitting (paths in quotes, "%%" where a '%' is meant). Here the
// line is split once, by the rules of the system's own splitter, so that a program started
// on this platform receives exactly the arguments a Windows program would see.
#ifndef PLATFORM_WINDOWS_COMMAND_LINE_H_
#define PLATFORM_WINDOWS_COMMAND_LINE_H_

#include <string>
#include <vector>

namespace platform {

// The arguments of a whole command line, the program's name first.
//
// The program's name has rules of its own: in quotes it ends at the next quote, whatever
// comes before it (backslashes are plain characters there); without quotes it ends at the
// first blank or tab, and a quote inside it is a plain character. What follows the name
// is split as SplitWindowsArguments does. An empty line gives no argument at all.
std::vector<std::wstring> SplitWindowsCommandLine(const std::wstring& line);

// The arguments of a line that holds arguments only (a program's parameters):
//  - blanks and tabs outside quotes separate arguments; a quote pair may make an empty one;
//  - a quote toggles the quoted part, and inside it a doubled quote stands for one quote
//    character and ends the quoted part;
//  - 2n backslashes before a quote give n backslashes, and the quote works as a quote;
//    2n+1 backslashes before a quote give n backslashes and a quote character;
//  - backslashes anywhere else are plain characters.
std::vector<std::wstring> SplitWindowsArguments(const std::wstring& arguments);

}  // namespace platform

#endif  // PLATFORM_WINDOWS_COMMAND_LINE_H_
