#pragma once
// Reads a file line by line the way fc sees lines: a line ends at LF (one CR
// before it is dropped) or at a NUL byte, and a final line end adds no empty
// line. In UTF-16 mode the file is decoded (little-endian unless a big-endian
// byte-order mark says otherwise) and lines come back as UTF-8.
//
// Memory stays bounded whatever the file holds: a line longer than kMaxLine
// bytes comes back in pieces of kMaxLine bytes, each counting as a line.

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace pv {

class LineReader {
  public:
    static constexpr size_t kMaxLine = 64 * 1024;

    LineReader(std::FILE* file, bool utf16);

    // The next line without its end, or false at end of file (or on a read
    // error; see failed()).
    bool next(std::string& line);
    bool failed() const { return m_failed; }
    int error() const { return m_error; }

  private:
    bool fillBuffer();
    bool nextBytes(std::string& line);
    bool nextUtf16(std::string& line);
    bool readUnit(unsigned& unit);

    std::FILE* m_file;
    bool m_utf16;
    bool m_bigEndian = false;
    bool m_started = false;
    bool m_eof = false;
    bool m_failed = false;
    int m_error = 0;
    // Not zero-filled: for a small file only the pages that are read get touched.
    std::unique_ptr<char[]> m_buffer;
    size_t m_capacity;
    size_t m_pos = 0;
    size_t m_end = 0;
    bool m_pendingUnit = false;
    unsigned m_unit = 0;
};

} // namespace pv
