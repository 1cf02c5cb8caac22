#pragma once
// What the attribute text of a file needs to know about it: whether it is an
// ordinary visible file, whether it can be opened for reading, its last-write
// time in calendar form (UTC, the file system's own time base) and its length.

#include <cstdint>
#include <string>
#include <vector>

namespace pv {

struct CalendarTime {
    int year = 0;
    int month = 0; // 1..12
    int day = 0;   // 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;
};

struct FileFacts {
    enum class Status {
        Ok,         // opened; time and length below are valid (time only when haveTime)
        NotFound,   // no ordinary visible file of that name
        CannotOpen, // exists but cannot be opened for reading
        NoTimes,    // opened, but its times cannot be read
    };
    Status status = Status::NotFound;
    bool haveTime = false; // false when neither the last-write nor the change time converts
    CalendarTime lastWrite;
    std::uint64_t length = 0;
};

// Looks at one file. A name that starts with "." counts as hidden and so as not
// found, as do directories, devices and other non-regular files. The time is the
// last-write time; when it cannot be converted, the status-change time.
FileFacts probeFile(const std::string& path);

// Who the process is, for reading permission bits: asked of the system once for
// many files, and only when a file's bits do not let everyone read it.
class ProcessIdentity {
  public:
    static ProcessIdentity current() { return {}; }
    unsigned uid() const;
    bool inGroup(unsigned gid) const;

  private:
    void load() const;
    mutable bool m_loaded = false;
    mutable unsigned m_uid = 0;
    mutable std::vector<unsigned> m_groups; // the effective group first, then the others
};

// The same for `name` (a name or a relative path) in the directory open as
// `dirFd`, with one stat. A file counts as unreadable when its permission bits
// deny `who` reading it and the kernel's access check agrees; it is not opened.
FileFacts probeFileAt(int dirFd, const std::string& name, const ProcessIdentity& who);

// Converts seconds since the epoch to calendar form in UTC; false when it cannot.
bool toCalendarUtc(std::int64_t secondsSinceEpoch, CalendarTime& out);

} // namespace pv
