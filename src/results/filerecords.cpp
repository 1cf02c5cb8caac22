#include "results/filerecords.h"
#include "results/linekind.h"

#include "platform/textutil.h"

#include <cstdio>
#include <vector>

namespace pv {

namespace {

struct Side {
    std::string time;   // "2026-05-07 09:05:07", empty when the text holds none
    std::string length; // decimal, empty when the text holds none
    std::string marker; // "contents", "length", "not read" or empty
};

// "2026\5\7 9:5:7" as "2026-05-07 09:05:07".
std::string isoTime(std::string_view date, std::string_view time) {
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0;
    const std::string dt(date), tm(time);
    if (std::sscanf(dt.c_str(), "%d\\%d\\%d", &y, &mo, &d) != 3 ||
        std::sscanf(tm.c_str(), "%d:%d:%d", &h, &mi, &s) != 3)
        return dt + " " + tm;
    char buf[32];
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d %02d:%02d:%02d", y, mo, d, h, mi, s);
    return buf;
}

Side sideOf(std::string_view attributes) {
    Side side;
    if (size_t open = attributes.find('['); open != std::string_view::npos) {
        size_t close = attributes.find(']', open);
        side.marker = attributes.substr(open + 1, close == std::string_view::npos
                                                      ? std::string_view::npos
                                                      : close - open - 1);
        attributes = attributes.substr(0, open);
    }
    std::vector<std::string_view> words;
    for (size_t i = 0; i < attributes.size();) {
        size_t end = attributes.find(' ', i);
        if (end == std::string_view::npos)
            end = attributes.size();
        if (end > i)
            words.push_back(attributes.substr(i, end - i));
        i = end + 1;
    }
    size_t n = 0;
    if (words.size() >= 2 && words[0].find('\\') != std::string_view::npos) {
        side.time = isoTime(words[0], words[1]);
        n = 2;
    }
    if (n + 2 == words.size() && words[n] == "-")
        side.length = words[n + 1];
    return side;
}

// `path` below `base`, "/"-separated; the path itself when it is not below.
std::string relative(std::string_view base, std::string_view path) {
    if (path == base)
        return "";
    if (!base.empty() && path.substr(0, base.size()) == base) {
        std::string_view rest = path.substr(base.size());
        if (base.back() == '/')
            return std::string(rest);
        if (!rest.empty() && rest.front() == '/')
            return std::string(rest.substr(1));
    }
    return std::string(path);
}

std::string joinRelative(const std::string& dir, std::string_view name) {
    return dir.empty() ? std::string(name) : dir + "/" + std::string(name);
}

} // namespace

std::string csvField(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos)
        return std::string(text);
    std::string out = "\"";
    for (char c : text) {
        if (c == '"')
            out += '"';
        out += c;
    }
    return out + '"';
}

std::string jsonString(std::string_view bytes) {
    std::string out = "\"";
    static const char* hex = "0123456789abcdef";
    for (size_t i = 0; i < bytes.size();) {
        const unsigned char c = static_cast<unsigned char>(bytes[i]);
        if (c < 0x80) {
            switch (c) {
            case '"': out += "\\\""; break;
            case '\\': out += "\\\\"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            case '\t': out += "\\t"; break;
            default:
                if (c < 0x20) {
                    out += "\\u00";
                    out += hex[c >> 4];
                    out += hex[c & 15];
                } else {
                    out += static_cast<char>(c);
                }
            }
            ++i;
            continue;
        }
        const size_t len = utf8SequenceLength(bytes, i);
        const bool valid = len != 0;
        if (valid) {
            out.append(bytes.substr(i, len));
            i += len;
        } else {
            out += "\\udc";
            out += hex[c >> 4];
            out += hex[c & 15];
            ++i;
        }
    }
    return out + '"';
}

FileRecords::FileRecords(RecordFormat format, std::string left, std::string right,
                         bool contentsCompared)
    : m_format(format), m_left(std::move(left)), m_right(std::move(right)),
      m_contents(contentsCompared) {}

std::string FileRecords::header() const {
    return m_format == RecordFormat::Csv ? "path,status,time 1,length 1,time 2,length 2,contents\n"
                                         : std::string();
}

std::string FileRecords::add(std::string_view line) {
    if (line.substr(0, 13) == "Directory 1: ") {
        m_dir1 = relative(m_left, trimBlanks(line.substr(13)));
        return {};
    }
    if (line.substr(0, 13) == "Directory 2: ") {
        m_dir2 = relative(m_right, trimBlanks(line.substr(13)));
        return {};
    }
    const LineKind kind = lineKind(line);
    if (kind == LineKind::Plain)
        return {};
    std::string path;
    Side one, two;
    std::string contents;
    if (kind == LineKind::UnmatchedDirectory || kind == LineKind::UnreadableDirectory) {
        const std::string_view dir = directoryOfWalkLine(line);
        const std::string fromLeft = relative(m_left, dir);
        path = fromLeft != dir ? fromLeft : relative(m_right, dir);
    } else {
        const EntryFields fields = entryFields(line);
        if (fields.kind == LineKind::Plain)
            return {};
        path = joinRelative(kind == LineKind::TwoOnly ? m_dir2 : m_dir1, fields.name);
        one = sideOf(fields.attributes1);
        two = sideOf(fields.attributes2);
        if (m_contents && (kind == LineKind::Matched || kind == LineKind::Different))
            contents = !one.marker.empty() ? one.marker : kind == LineKind::Matched ? "same" : "";
    }
    const std::string status(kindName(kind));
    if (m_format == RecordFormat::Csv)
        return csvField(path) + ',' + status + ',' + one.time + ',' + one.length + ',' + two.time +
               ',' + two.length + ',' + contents + '\n';
    auto stringOrNull = [](const std::string& s) { return s.empty() ? "null" : jsonString(s); };
    auto numberOrNull = [](const std::string& s) { return s.empty() ? std::string("null") : s; };
    return "{\"path\":" + jsonString(path) + ",\"status\":" + jsonString(status) +
           ",\"time1\":" + stringOrNull(one.time) + ",\"length1\":" + numberOrNull(one.length) +
           ",\"time2\":" + stringOrNull(two.time) + ",\"length2\":" + numberOrNull(two.length) +
           ",\"contents\":" + stringOrNull(contents) + "}\n";
}

} // namespace pv
