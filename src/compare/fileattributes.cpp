#include "compare/fileattributes.h"

#include "compare/compareoptions.h"
#include "compare/filelisting.h"
#include "platform/textutil.h"
#include "platform/filetimes.h"
#include "remote/remotefiles.h"
#include "remote/remoteurl.h"
#include "settings/settings.h"

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <unistd.h>

namespace pv {

std::string attributeText(const FileFacts& facts, bool listDateTime, bool listLength) {
    switch (facts.status) {
    case FileFacts::Status::NotFound:
        return std::string(kCantFind);
    case FileFacts::Status::CannotOpen:
        return std::string(kCantOpen);
    case FileFacts::Status::NoTimes:
        return std::string(kNotAvailable);
    case FileFacts::Status::Ok:
        break;
    }
    std::string s;
    if (listDateTime) {
        if (facts.haveTime) {
            // yyyy\mm\dd h:m:s, built by hand: this runs once per file of a compare.
            const CalendarTime& t = facts.lastWrite;
            auto number = [&s](int v, int width) {
                char digits[12];
                int n = 0;
                do {
                    digits[n++] = static_cast<char>('0' + v % 10);
                    v /= 10;
                } while (v > 0);
                for (; n < width; --width)
                    s += '0';
                while (n > 0)
                    s += digits[--n];
            };
            number(t.year, 1);
            s += '\\';
            number(t.month, 2);
            s += '\\';
            number(t.day, 2);
            s += ' ';
            number(t.hour, 1);
            s += ':';
            number(t.minute, 1);
            s += ':';
            number(t.second, 1);
        } else {
            s = kTimeConversionFailed;
        }
    }
    if (listLength)
        s += " - " + std::to_string(facts.length);
    return s;
}

std::string fileAttributeText(std::string_view path, bool listDateTime, bool listLength) {
    try {
        const std::string trimmed(trimBlanks(path));
        return attributeText(isRemotePath(trimmed) ? probeRemoteFile(trimmed) : probeFile(trimmed),
                             listDateTime, listLength);
    } catch (const std::exception&) {
        return std::string(kUnavailable);
    }
}

std::int64_t secondsSinceEpoch(const CalendarTime& t) {
    // Days from the civil date (proleptic Gregorian), counted from 1970-01-01.
    const std::int64_t y = t.year - (t.month <= 2 ? 1 : 0);
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const std::int64_t yoe = y - era * 400;
    const std::int64_t mp = (t.month + 9) % 12;
    const std::int64_t doy = (153 * mp + 2) / 5 + t.day - 1;
    const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    const std::int64_t days = era * 146097 + doe - 719468;
    return days * 86400 + t.hour * 3600 + t.minute * 60 + t.second;
}

EntryAttributes entryAttributes(const FileFacts& facts, bool listDateTime, bool listLength) {
    EntryAttributes e;
    e.text = attributeText(facts, listDateTime, listLength);
    e.found = facts.status == FileFacts::Status::Ok;
    if (e.found) {
        e.haveTime = facts.haveTime;
        if (e.haveTime)
            e.time = secondsSinceEpoch(facts.lastWrite);
        e.haveLength = true;
        e.length = facts.length;
    }
    return e;
}

std::vector<EntryAttributes> directoryAttributeFacts(const std::string& dir,
                                                     const std::vector<std::string>& names,
                                                     bool listDateTime, bool listLength) {
    std::vector<EntryAttributes> entries;
    entries.reserve(names.size());
    if (isRemotePath(dir)) {
        for (const FileFacts& facts : remoteFileFacts(dir, names))
            entries.push_back(entryAttributes(facts, listDateTime, listLength));
        return entries;
    }
    int fd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    // The whole path loses its surrounding blanks; relative to the directory that
    // is the name without its trailing ones, unless the directory itself starts
    // with a blank or the name is a path: those go the long way.
    const bool direct = fd >= 0 && !dir.empty() && dir.front() != ' ';
    const ProcessIdentity who = ProcessIdentity::current();
    std::string name;
    for (const std::string& entry : names) {
        try {
            if (!direct || entry.find('/') != std::string::npos) {
                entries.push_back(entryAttributes(
                    probeFile(std::string(trimBlanks(joinPath(dir, entry)))), listDateTime,
                    listLength));
                continue;
            }
            name.assign(entry, 0, entry.find_last_not_of(' ') + 1);
            entries.push_back(entryAttributes(probeFileAt(fd, name, who), listDateTime, listLength));
        } catch (const std::exception&) {
            EntryAttributes failed;
            failed.text = kUnavailable;
            failed.found = false;
            entries.push_back(std::move(failed));
        }
    }
    if (fd >= 0)
        ::close(fd);
    return entries;
}

std::vector<std::string> directoryAttributeTexts(const std::string& dir,
                                                 const std::vector<std::string>& names,
                                                 bool listDateTime, bool listLength) {
    std::vector<std::string> texts;
    texts.reserve(names.size());
    for (EntryAttributes& e : directoryAttributeFacts(dir, names, listDateTime, listLength))
        texts.push_back(std::move(e.text));
    return texts;
}

std::string GetFileAttributes(const Settings& settings, std::string_view path) {
    bool dateTime = IniBool(settings.GetIniValue("COMPARECONTROL", "LIST_DateTime", "False"));
    bool length = IniBool(settings.GetIniValue("COMPARECONTROL", "LIST_Length", "False"));
    return fileAttributeText(path, dateTime, length);
}

AttributesMessage attributesMessage(const std::string& attr) {
    if (attr.size() <= 15)
        return {attr, false};
    // date: up to and including the first blank; length: after the first "-";
    // time: what lies between, counted from date's last character (the blank).
    size_t blank = attr.find(' ');
    std::string date = blank == std::string::npos ? attr : attr.substr(0, blank + 1);
    size_t dash = attr.find('-');
    // Without a length part (date and time alone) the whole rest is the time.
    std::string lengthText = dash == std::string::npos ? std::string() : attr.substr(dash + 1);
    size_t timeStart = date.empty() ? 0 : date.size() - 1;
    size_t timeLength = dash == std::string::npos ? std::string::npos
                                                  : attr.size() - date.size() - lengthText.size();
    std::string time = timeStart < attr.size() ? attr.substr(timeStart, timeLength) : std::string();
    std::string text = "\r\n\r\nDate Last changed (yyyy/mm/dd): " + date +
                       "\r\nTime Last changed: " + time + "\r\nLength: " + lengthText + "\r\n\r\n";
    return {text, true};
}

} // namespace pv
