#pragma once
// Two files that are not text are shown by what a byte compare says: where
// they first differ and how long each is.

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace pv {

struct BinarySummary {
    // The offset of the first byte that differs within the common length; none
    // when the shorter file is a prefix of the longer (or both are equal).
    std::optional<std::uint64_t> firstDifference;
    std::uint64_t leftSize = 0;
    std::uint64_t rightSize = 0;

    bool identical() const { return !firstDifference && leftSize == rightSize; }
};

// Compares two opened files from their current position to their ends.
BinarySummary compareBinary(std::FILE* left, std::FILE* right);
// Throws RuntimeError naming the path that cannot be read.
BinarySummary compareBinaryFiles(const std::string& leftPath, const std::string& rightPath);

// Whether a file is shown as binary: fc's binary extensions (".exe", ".com",
// ".sys", ".obj", ".lib", ".bin", any case), or a NUL byte among the first bytes
// (`head`) when they do not start with a UTF-16 byte-order mark.
bool looksBinary(std::string_view path, std::string_view head);
// The first bytes of a file for looksBinary (empty when it cannot be read).
std::string fileHead(const std::string& path);

} // namespace pv
