#include "sidebyside/filepairdiff.h"

#include <cstdio>
#include <utility>

namespace pv {

FilePairDiff::FilePairDiff(std::string leftPath, std::string rightPath, const DiffOptions& options)
    : m_leftPath(std::move(leftPath)), m_rightPath(std::move(rightPath)), m_options(options) {
    m_binary = looksBinary(m_leftPath, fileHead(m_leftPath)) ||
               looksBinary(m_rightPath, fileHead(m_rightPath));
    if (m_binary) {
        m_summary = compareBinaryFiles(m_leftPath, m_rightPath);
        return;
    }
    m_left = SideText::readFile(m_leftPath);
    m_right = SideText::readFile(m_rightPath);
    m_diff = LineDiff(m_left, m_right, m_options);
}

void FilePairDiff::setOptions(const DiffOptions& options) {
    m_options = options;
    if (!m_binary)
        m_diff = LineDiff(m_left, m_right, m_options);
}

std::string changeStatusText(size_t current, size_t count) {
    if (count == 0)
        return "no differences";
    return "change " + std::to_string(current + 1) + " of " + std::to_string(count);
}

std::string binarySummaryText(const BinarySummary& s) {
    const std::string sizes = "left " + std::to_string(s.leftSize) + " bytes, right " +
                              std::to_string(s.rightSize) + " bytes";
    if (s.identical())
        return "Binary files, no differences (" + std::to_string(s.leftSize) + " bytes)";
    if (!s.firstDifference)
        return "Binary files, equal up to the end of the shorter one; " + sizes;
    char offset[32];
    std::snprintf(offset, sizeof offset, "%08llX",
                  static_cast<unsigned long long>(*s.firstDifference));
    return "Binary files, first difference at offset " + std::string(offset) + " (" +
           std::to_string(*s.firstDifference) + "); " + sizes;
}

} // namespace pv
