#include "pvcmd/dirformat.h"

#include "pvcmd/toolsupport.h"

#include <algorithm>
#include <cstdio>

namespace pvcmd {

namespace {

std::string padLeft(const std::string& text, size_t width) {
    return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}

} // namespace

std::string DirFormat::dateTime(const timespec& when) {
    std::tm local{};
    time_t seconds = when.tv_sec;
    localtime_r(&seconds, &local);
    int hour12 = local.tm_hour % 12 == 0 ? 12 : local.tm_hour % 12;
    char text[64];
    std::snprintf(text, sizeof text, "%02d/%02d/%04d  %02d:%02d %s", local.tm_mon + 1,
                  local.tm_mday, local.tm_year + 1900, hour12, local.tm_min,
                  local.tm_hour < 12 ? "AM" : "PM");
    return text;
}

std::string DirFormat::number(unsigned long long value, bool thousands) {
    return thousands ? withThousands(value) : std::to_string(value);
}

std::string DirFormat::sizeField(const std::string& tag, unsigned long long size, bool thousands) {
    if (!tag.empty())
        return tag.size() >= 14 ? tag : tag + std::string(14 - tag.size(), ' ');
    return padLeft(number(size, thousands), 14);
}

std::string DirFormat::filesLine(unsigned long long files, unsigned long long bytes,
                                 bool thousands) {
    return padLeft(std::to_string(files), 16) + " File(s) " +
           padLeft(number(bytes, thousands), 14) + " bytes";
}

std::string DirFormat::dirsLine(unsigned long long dirs, unsigned long long freeBytes,
                                bool thousands) {
    return padLeft(std::to_string(dirs), 16) + " Dir(s)  " +
           padLeft(number(freeBytes, thousands), 14) + " bytes free";
}

std::string DirFormat::ownerColumn(const std::string& owner) {
    std::string column = owner.size() > 22 ? owner.substr(0, 22) : owner;
    column.resize(22, ' ');
    return column + " ";
}

std::vector<std::string> DirFormat::wide(const std::vector<std::string>& names, bool byColumn) {
    std::vector<std::string> lines;
    if (names.empty())
        return lines;
    size_t longest = 0;
    for (const std::string& name : names)
        longest = std::max(longest, name.size());
    size_t width = longest + 2;
    size_t columns = std::max<size_t>(1, 80 / width);
    size_t rows = (names.size() + columns - 1) / columns;
    for (size_t r = 0; r < rows; ++r) {
        std::string line;
        for (size_t c = 0; c < columns; ++c) {
            size_t index = byColumn ? c * rows + r : r * columns + c;
            if (index >= names.size())
                break;
            line.resize(c * width, ' ');
            line += names[index];
        }
        lines.push_back(line);
    }
    return lines;
}

} // namespace pvcmd
