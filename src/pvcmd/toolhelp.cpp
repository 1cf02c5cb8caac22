#include "pvcmd/toolhelp.h"

#include <algorithm>

namespace pvcmd {

const char* const kFindstrHelp =
    "Searches for strings in files.\r\n"
    "\r\n"
    "FINDSTR [/B] [/E] [/L] [/R] [/S] [/I] [/X] [/V] [/N] [/M] [/O] [/P] [/OFF[LINE]]\r\n"
    "        [/A:color] [/F:file] [/C:string] [/G:file] [/D:dir list]\r\n"
    "        [strings] [[drive:][path]filename[ ...]]\r\n"
    "\r\n"
    "  /B         Matches pattern if at the beginning of a line.\r\n"
    "  /E         Matches pattern if at the end of a line.\r\n"
    "  /L         Uses search strings literally.\r\n"
    "  /R         Uses search strings as regular expressions.\r\n"
    "  /S         Searches the current directory and all subdirectories.\r\n"
    "  /I         Ignores the case of letters.\r\n"
    "  /X         Prints lines that match exactly.\r\n"
    "  /V         Prints only lines that do not contain a match.\r\n"
    "  /N         Prints the line number before each line that matches.\r\n"
    "  /M         Prints only the file name if a file contains a match.\r\n"
    "  /O         Prints the byte offset of each matching line.\r\n"
    "  /P         Skips files with non-printable characters.\r\n"
    "  /OFF[LINE] Accepted for compatibility; has no effect here.\r\n"
    "  /A:color   Accepted; the prefix is not coloured.\r\n"
    "  /F:file    Reads the file list from the file (/ stands for the console).\r\n"
    "  /C:string  Uses the string as a literal search string (several allowed).\r\n"
    "  /G:file    Gets the search strings from the file (/ stands for the console).\r\n"
    "  /D:dirs    Searches a semicolon-separated list of directories.\r\n"
    "  strings    Text to be searched for; blanks separate strings, any of which\r\n"
    "             may match.\r\n"
    "  filename   Files to search; \"*\" and \"?\" allowed.\r\n"
    "\r\n"
    "Regular expressions: . any character, * repeat, ^ line start, $ line end,\r\n"
    "[class], [^class], [x-y] (code-point ranges), \\x literal x, \\< and \\> word\r\n"
    "start and end.\r\n"
    "\r\n"
    "Exit code: 0 a match, 1 no match, 2 error.\r\n";

const char* const kXcopyHelp =
    "Copies files and directory trees.\r\n"
    "\r\n"
    "XCOPY source [destination] [/A | /M] [/D[:date]] [/P] [/S [/E]] [/V] [/W]\r\n"
    "      [/C] [/I] [/Q] [/F] [/L] [/H] [/R] [/T] [/U] [/K] [/Y | /-Y]\r\n"
    "      [/EXCLUDE:file1[+file2][+file3]...]\r\n"
    "\r\n"
    "  /A         Copies only files with the archive attribute (every file here).\r\n"
    "  /M         As /A; no attribute is cleared on this system.\r\n"
    "  /D:m-d-y   Copies files changed on or after the date; without a date, only\r\n"
    "             files newer than the destination.\r\n"
    "  /EXCLUDE:  Files of strings; a source path holding one is not copied.\r\n"
    "  /P         Prompts before creating each destination file.\r\n"
    "  /S         Copies directories and subdirectories except empty ones.\r\n"
    "  /E         Copies empty subdirectories too.\r\n"
    "  /V         Verifies each new file.\r\n"
    "  /W         Asks for a key press before copying.\r\n"
    "  /C         Continues copying even if errors occur.\r\n"
    "  /I         Assumes the destination is a directory when copying more than\r\n"
    "             one file.\r\n"
    "  /Q         Does not list file names while copying.\r\n"
    "  /F         Lists full source and destination names while copying.\r\n"
    "  /L         Lists the files that would be copied.\r\n"
    "  /H         Copies hidden files too.\r\n"
    "  /R         Overwrites read-only files.\r\n"
    "  /T         Creates the directory structure without copying files.\r\n"
    "  /U         Copies only files that already exist in the destination.\r\n"
    "  /K         Keeps the read-only attribute.\r\n"
    "  /Y         Overwrites existing files without asking.\r\n"
    "  /-Y        Asks before overwriting an existing file.\r\n"
    "  /Z /B /J /G /N /O /X  Accepted; no effect here.\r\n"
    "\r\n"
    "Exit code: 0 copied, 1 nothing to copy, 2 interrupted, 4 bad switch or path,\r\n"
    "5 write error.\r\n";

bool asksForHelp(const ToolArgs& args) {
    return std::find(args.begin(), args.end(), "/?") != args.end();
}

} // namespace pvcmd
