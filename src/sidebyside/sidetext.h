#pragma once
// One side of a side-by-side view: a file's lines as fc sees them (a line ends
// at LF with one CR before it dropped, or at a NUL byte), decoded to UTF-8 when
// the file starts with a UTF-16 byte-order mark, any other bytes kept as they
// are. A UTF-8 byte-order mark is not part of the first line.
//
// The lines sit in one buffer, each followed by "\n", so that the buffer is at
// the same time what the line diff reads: no second copy of a large file.

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace pv {

class SideText {
  public:
    // Reads an opened file from its start.
    static SideText read(std::FILE* file);
    // Opens and reads a file; throws RuntimeError naming the path when it cannot.
    static SideText readFile(const std::string& path);
    static SideText fromBytes(std::string_view bytes);

    size_t lineCount() const { return m_starts.size() - 1; }
    // Line i (0-based) without its end.
    std::string_view line(size_t i) const {
        return std::string_view(m_text).substr(m_starts[i], m_starts[i + 1] - m_starts[i] - 1);
    }
    // Every line followed by "\n".
    const std::string& buffer() const { return m_text; }
    // The length in bytes of the longest line.
    size_t longestLine() const { return m_longest; }
    bool decodedFromUtf16() const { return m_utf16; }

  private:
    std::string m_text;
    std::vector<size_t> m_starts{0};
    size_t m_longest = 0;
    bool m_utf16 = false;
};

} // namespace pv
