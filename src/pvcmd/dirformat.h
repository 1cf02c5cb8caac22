#pragma once
// The line formats of dir: entry lines, summary lines and the wide layouts.

#include <ctime>
#include <string>
#include <vector>

namespace pvcmd {

struct DirLineStyle {
    bool thousands = true;   // /c (default); /-c prints plain numbers
    bool shortNames = false; // /x: a blank 12-character short-name column
    bool owner = false;      // /q
};

class DirFormat {
  public:
    // "MM/DD/YYYY  hh:mm AM" in local time.
    static std::string dateTime(const timespec& when);
    // The 14-character size field: "<DIR>" left-aligned or the size right-aligned.
    static std::string sizeField(const std::string& tag, unsigned long long size, bool thousands);
    static std::string number(unsigned long long value, bool thousands);
    // "%16d File(s) %14s bytes" and "%16d Dir(s)  %14s bytes free".
    static std::string filesLine(unsigned long long files, unsigned long long bytes,
                                 bool thousands);
    static std::string dirsLine(unsigned long long dirs, unsigned long long freeBytes,
                                bool thousands);
    // The owner column: the name padded to 22 characters and a blank.
    static std::string ownerColumn(const std::string& owner);
    // Names in columns across an 80-column line, each column as wide as the longest
    // name plus two blanks; `byColumn` fills top to bottom first (/d), else left to
    // right (/w). Trailing blanks are left out.
    static std::vector<std::string> wide(const std::vector<std::string>& names, bool byColumn);
};

} // namespace pvcmd
