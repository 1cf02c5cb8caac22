#include "platform/linereader.h"

#include <cerrno>
#include <cstring>

namespace pv {

namespace {
constexpr size_t kReadSize = 256 * 1024;

void appendUtf8(std::string& out, unsigned cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}
} // namespace

LineReader::LineReader(std::FILE* file, bool utf16)
    : m_file(file), m_utf16(utf16), m_buffer(new char[kReadSize]), m_capacity(kReadSize) {}

bool LineReader::fillBuffer() {
    if (m_eof)
        return false;
    m_pos = 0;
    m_end = std::fread(m_buffer.get(), 1, m_capacity, m_file);
    if (m_end == 0) {
        m_eof = true;
        if (std::ferror(m_file)) {
            m_failed = true;
            m_error = errno ? errno : EIO;
        }
        return false;
    }
    return true;
}

bool LineReader::next(std::string& line) {
    line.clear();
    return m_utf16 ? nextUtf16(line) : nextBytes(line);
}

bool LineReader::nextBytes(std::string& line) {
    bool any = false;
    for (;;) {
        if (m_pos == m_end && !fillBuffer())
            return any;
        any = true;
        const char* start = m_buffer.get() + m_pos;
        size_t avail = m_end - m_pos;
        size_t room = kMaxLine - line.size();
        size_t scan = avail < room ? avail : room;
        const char* lf = static_cast<const char*>(std::memchr(start, '\n', scan));
        size_t upto = lf ? static_cast<size_t>(lf - start) : scan;
        const char* nul = static_cast<const char*>(std::memchr(start, '\0', upto));
        if (nul) {
            line.append(start, static_cast<size_t>(nul - start));
            m_pos += static_cast<size_t>(nul - start) + 1;
            return true;
        }
        if (lf) {
            line.append(start, upto);
            m_pos += upto + 1;
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            return true;
        }
        line.append(start, scan);
        m_pos += scan;
        if (line.size() >= kMaxLine)
            return true;
    }
}

bool LineReader::readUnit(unsigned& unit) {
    if (m_pendingUnit) {
        m_pendingUnit = false;
        unit = m_unit;
        return true;
    }
    unsigned char bytes[2];
    int got = 0;
    while (got < 2) {
        if (m_pos == m_end && !fillBuffer())
            break;
        bytes[got++] = static_cast<unsigned char>(m_buffer[m_pos++]);
    }
    if (got == 0)
        return false;
    if (got == 1) {
        unit = bytes[0]; // an odd last byte stands for itself
        return true;
    }
    unit = m_bigEndian ? (bytes[0] << 8 | bytes[1]) : (bytes[1] << 8 | bytes[0]);
    return true;
}

bool LineReader::nextUtf16(std::string& line) {
    unsigned unit = 0;
    if (!m_started) {
        m_started = true;
        if (!readUnit(unit))
            return false;
        if (unit == 0xFFFE) {
            m_bigEndian = true;
        } else if (unit != 0xFEFF) {
            m_pendingUnit = true;
            m_unit = unit;
        }
    }
    bool any = false;
    bool pendingCr = false;
    while (readUnit(unit)) {
        any = true;
        if (unit == '\n')
            return true; // a CR right before it was held back and is dropped
        if (pendingCr) {
            line += '\r';
            pendingCr = false;
        }
        if (unit == 0)
            return true;
        if (unit == '\r') {
            pendingCr = true;
            continue;
        }
        unsigned cp = unit;
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            unsigned low = 0;
            if (readUnit(low)) {
                if (low >= 0xDC00 && low <= 0xDFFF) {
                    cp = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
                } else {
                    cp = 0xFFFD;
                    m_pendingUnit = true;
                    m_unit = low;
                }
            } else {
                cp = 0xFFFD;
            }
        } else if (unit >= 0xDC00 && unit <= 0xDFFF) {
            cp = 0xFFFD;
        }
        appendUtf8(line, cp);
        if (line.size() >= kMaxLine)
            return true;
    }
    if (pendingCr)
        line += '\r';
    return any;
}

} // namespace pv
