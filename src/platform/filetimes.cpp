#include "platform/filetimes.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pv {

bool toCalendarUtc(std::int64_t secondsSinceEpoch, CalendarTime& out) {
    std::time_t t = static_cast<std::time_t>(secondsSinceEpoch);
    if (static_cast<std::int64_t>(t) != secondsSinceEpoch)
        return false;
    std::tm tm{};
    if (!::gmtime_r(&t, &tm))
        return false;
    out.year = tm.tm_year + 1900;
    out.month = tm.tm_mon + 1;
    out.day = tm.tm_mday;
    out.hour = tm.tm_hour;
    out.minute = tm.tm_min;
    out.second = tm.tm_sec;
    // The calendar form has four-digit years; anything outside does not convert.
    return out.year >= 1601 && out.year <= 30827;
}

namespace {

bool isHiddenName(const std::string& path) {
    auto slash = path.find_last_of('/');
    std::string_view name = slash == std::string::npos ? std::string_view(path)
                                                       : std::string_view(path).substr(slash + 1);
    return !name.empty() && name.front() == '.';
}

} // namespace

FileFacts probeFile(const std::string& path) {
    FileFacts facts;
    if (path.empty() || isHiddenName(path))
        return facts; // NotFound
    // Opened first and examined through the handle: one look at the file instead
    // of two. O_NONBLOCK: opening a FIFO for reading would otherwise wait for a
    // writer.
    int fd;
    do {
        fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    } while (fd < 0 && errno == EINTR);
    if (fd < 0) {
        // Only an ordinary file that exists but refuses to open counts as such.
        struct stat st {};
        if (errno != ENOENT && errno != ENOTDIR && ::stat(path.c_str(), &st) == 0 &&
            S_ISREG(st.st_mode))
            facts.status = FileFacts::Status::CannotOpen;
        return facts;
    }
    struct stat open {};
    if (::fstat(fd, &open) != 0) {
        facts.status = FileFacts::Status::NoTimes;
    } else if (!S_ISREG(open.st_mode)) {
        facts.status = FileFacts::Status::NotFound;
    } else {
        facts.status = FileFacts::Status::Ok;
        facts.length = static_cast<std::uint64_t>(open.st_size);
        facts.haveTime = toCalendarUtc(open.st_mtim.tv_sec, facts.lastWrite) ||
                         toCalendarUtc(open.st_ctim.tv_sec, facts.lastWrite);
    }
    ::close(fd);
    return facts;
}

} // namespace pv
