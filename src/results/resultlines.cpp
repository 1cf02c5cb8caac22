#include "results/resultlines.h"

#include <algorithm>

namespace pv {

ResultLines::ResultLines(std::initializer_list<std::string_view> lines) {
    for (std::string_view line : lines)
        append(line);
}

ResultLines::ResultLines(const std::vector<std::string>& lines) {
    for (const std::string& line : lines)
        append(line);
}

namespace {
constexpr std::size_t kBlockSize = std::size_t{1} << 20;
} // namespace

void ResultLines::append(std::string_view line) {
    if (m_blocks.empty() || m_blocks.back().size() + line.size() > m_blocks.back().capacity()) {
        m_blocks.emplace_back();
        m_blocks.back().reserve(std::max(kBlockSize, line.size()));
    }
    std::string& block = m_blocks.back();
    m_starts.push_back((static_cast<std::uint64_t>(m_blocks.size() - 1) << 32) | block.size());
    block.append(line);
    m_longest = std::max(m_longest, line.size());
}

std::string_view ResultLines::operator[](long index) const {
    const auto n = static_cast<std::size_t>(index);
    const std::uint64_t start = m_starts[n];
    const std::string& block = m_blocks[start >> 32];
    const std::size_t begin = start & 0xffffffffu;
    std::size_t end = block.size();
    if (n + 1 < m_starts.size() && (m_starts[n + 1] >> 32) == (start >> 32))
        end = m_starts[n + 1] & 0xffffffffu;
    return std::string_view(block).substr(begin, end - begin);
}

std::vector<std::string> ResultLines::toVector() const {
    std::vector<std::string> out;
    out.reserve(m_starts.size());
    for (long n = 0; n < size(); ++n)
        out.emplace_back((*this)[n]);
    return out;
}

} // namespace pv
