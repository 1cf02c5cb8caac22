#pragma once
// The lines of the results list, kept as one block of text plus where each line
// starts: a million lines cost their characters and one offset each, and appending,
// reading a line and counting lines take the same time at any size.

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace pv {

class ResultLines {
  public:
    ResultLines() = default;
    ResultLines(std::initializer_list<std::string_view> lines);
    explicit ResultLines(const std::vector<std::string>& lines);

    void append(std::string_view line);
    long size() const { return static_cast<long>(m_starts.size()); }
    bool empty() const { return m_starts.empty(); }
    // The line at `index` (0 <= index < size()); valid until the next append.
    std::string_view operator[](long index) const;
    // The length of the longest line, in bytes.
    std::size_t longest() const { return m_longest; }
    std::vector<std::string> toVector() const;

  private:
    // The text lies in blocks of about a mebibyte that never move once filled, so
    // growing the list never copies it; a line never spans two blocks. A start is
    // the block's index in the upper 32 bits and the offset in the lower.
    std::vector<std::string> m_blocks;
    std::vector<std::uint64_t> m_starts;
    std::size_t m_longest = 0;
};

} // namespace pv
