#include "compare/fileattributes.h"

#include "compare/compareoptions.h"
#include "platform/textutil.h"
#include "platform/filetimes.h"
#include "settings/settings.h"

#include <cstdio>
#include <exception>

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
            const CalendarTime& t = facts.lastWrite;
            char buf[64];
            std::snprintf(buf, sizeof buf, "%d\\%02d\\%02d %d:%d:%d", t.year, t.month, t.day,
                          t.hour, t.minute, t.second);
            s = buf;
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
        return attributeText(probeFile(std::string(trimBlanks(path))), listDateTime, listLength);
    } catch (const std::exception&) {
        return std::string(kUnavailable);
    }
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
