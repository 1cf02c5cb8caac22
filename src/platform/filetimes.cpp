#include "platform/filetimes.h"

#include <algorithm>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace pv {

bool toCalendarUtc(std::int64_t secondsSinceEpoch, CalendarTime& out) {
    // Days and seconds of the day, rounded towards the past; then the civil date
    // of the day count in the proleptic Gregorian calendar (eras of 400 years).
    constexpr std::int64_t kDay = 86400;
    constexpr std::int64_t kLimit = 400LL * 1000 * 1000 * 1000 * kDay; // far beyond any year kept
    if (secondsSinceEpoch > kLimit || secondsSinceEpoch < -kLimit)
        return false;
    std::int64_t days = secondsSinceEpoch / kDay;
    std::int64_t rest = secondsSinceEpoch % kDay;
    if (rest < 0) {
        rest += kDay;
        --days;
    }
    const std::int64_t z = days + 719468;
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const std::int64_t doe = z - era * 146097;                                      // [0, 146096]
    const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365; // [0, 399]
    const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);               // [0, 365]
    const std::int64_t mp = (5 * doy + 2) / 153;                                    // [0, 11]
    const std::int64_t month = mp < 10 ? mp + 3 : mp - 9;
    const std::int64_t year = yoe + era * 400 + (month <= 2 ? 1 : 0);
    // The calendar form has four-digit years; anything outside does not convert.
    if (year < 1601 || year > 30827)
        return false;
    out.year = static_cast<int>(year);
    out.month = static_cast<int>(month);
    out.day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    out.hour = static_cast<int>(rest / 3600);
    out.minute = static_cast<int>(rest / 60 % 60);
    out.second = static_cast<int>(rest % 60);
    return true;
}

namespace {

bool isHiddenName(const std::string& path) {
    auto slash = path.find_last_of('/');
    std::string_view name = slash == std::string::npos ? std::string_view(path)
                                                       : std::string_view(path).substr(slash + 1);
    return !name.empty() && name.front() == '.';
}

bool bitsGrantRead(const struct stat& st, const ProcessIdentity& who) {
    constexpr mode_t kEveryone = S_IRUSR | S_IRGRP | S_IROTH;
    if ((st.st_mode & kEveryone) == kEveryone)
        return true; // whoever the process is
    if (st.st_uid == who.uid())
        return (st.st_mode & S_IRUSR) != 0;
    if (who.inGroup(st.st_gid))
        return (st.st_mode & S_IRGRP) != 0;
    return (st.st_mode & S_IROTH) != 0;
}

} // namespace

void ProcessIdentity::load() const {
    if (m_loaded)
        return;
    m_loaded = true;
    m_uid = ::geteuid();
    m_groups.assign(1, ::getegid());
    int n = ::getgroups(0, nullptr);
    if (n > 0) {
        std::vector<gid_t> more(static_cast<size_t>(n));
        n = ::getgroups(n, more.data());
        for (int k = 0; k < n; ++k)
            m_groups.push_back(more[static_cast<size_t>(k)]);
    }
}

unsigned ProcessIdentity::uid() const {
    load();
    return m_uid;
}

bool ProcessIdentity::inGroup(unsigned gid) const {
    load();
    return std::find(m_groups.begin(), m_groups.end(), gid) != m_groups.end();
}

FileFacts probeFile(const std::string& path) {
    return probeFileAt(AT_FDCWD, path, ProcessIdentity::current());
}

FileFacts probeFileAt(int dirFd, const std::string& name, const ProcessIdentity& who) {
    FileFacts facts;
    if (name.empty() || isHiddenName(name))
        return facts; // NotFound
    struct stat st {};
    if (::fstatat(dirFd, name.c_str(), &st, 0) != 0 || !S_ISREG(st.st_mode))
        return facts; // NotFound: missing, vanished, a directory, a device
    // The bits decide for nearly every file; when they say no, the kernel's own
    // check has the last word (it knows about privileges and access lists).
    if (!bitsGrantRead(st, who) && ::faccessat(dirFd, name.c_str(), R_OK, AT_EACCESS) != 0) {
        facts.status = FileFacts::Status::CannotOpen;
        return facts;
    }
    facts.status = FileFacts::Status::Ok;
    facts.length = static_cast<std::uint64_t>(st.st_size);
    facts.haveTime = toCalendarUtc(st.st_mtim.tv_sec, facts.lastWrite) ||
                     toCalendarUtc(st.st_ctim.tv_sec, facts.lastWrite);
    return facts;
}

} // namespace pv
