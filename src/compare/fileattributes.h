#pragma once
// The attribute text of a file: its last-change date and time and/or its length,
// as the "LIST_DateTime" and "LIST_Length" switches say, or a failure text. Two
// same-named files compare equal when these texts are equal.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pv {

struct CalendarTime;
struct FileFacts;
class Settings;

inline constexpr std::string_view kCantFind = "Can't find the file";
inline constexpr std::string_view kCantOpen = "Can't open the file";
inline constexpr std::string_view kNotAvailable = "Not available";
inline constexpr std::string_view kTimeConversionFailed = "FileTimeToSystemTime Failed";
inline constexpr std::string_view kUnavailable = "unavailable";

// The text for facts already gathered (date as yyyy\mm\dd, time as h:m:s without
// leading zeros, " - " and the length).
std::string attributeText(const FileFacts& facts, bool listDateTime, bool listLength);

// Looks at the file (surrounding blanks of the path removed) and builds its text;
// any unexpected failure gives "unavailable".
std::string fileAttributeText(std::string_view path, bool listDateTime, bool listLength);

// The texts of the named files of one directory, in the order given: each is the
// text fileAttributeText gives for dir + "/" + name, from one stat per file
// relative to the directory opened once.
std::vector<std::string> directoryAttributeTexts(const std::string& dir,
                                                 const std::vector<std::string>& names,
                                                 bool listDateTime, bool listLength);

// A file's attribute text with the facts behind it, for the rules that look past
// the text: the time tolerances and the contents compare.
struct EntryAttributes {
    std::string text;
    bool found = true;    // false when the text is a failure text
    bool haveTime = false; // `time`: the last write, seconds since the epoch (UTC)
    std::int64_t time = 0;
    bool haveLength = false;
    std::uint64_t length = 0;
};

EntryAttributes entryAttributes(const FileFacts& facts, bool listDateTime, bool listLength);

// As directoryAttributeTexts, with the facts.
std::vector<EntryAttributes> directoryAttributeFacts(const std::string& dir,
                                                     const std::vector<std::string>& names,
                                                     bool listDateTime, bool listLength);

// Seconds since the epoch of a calendar time in UTC.
std::int64_t secondsSinceEpoch(const CalendarTime& t);

// As above, reading both switches from the settings at every call.
std::string GetFileAttributes(const Settings& settings, std::string_view path);

// The message the attributes command shows for an attribute text: the text alone
// when it has at most 15 characters; otherwise two empty lines and the date, time
// and length lines. `titled` tells whether the message box carries the path as
// its title (the long form) or the default title.
struct AttributesMessage {
    std::string text;
    bool titled = false;
};
AttributesMessage attributesMessage(const std::string& attr);

} // namespace pv
