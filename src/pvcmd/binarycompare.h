#pragma once
// fc's byte-by-byte compare: one line per differing byte over the common length,
// then which file is longer. Streams both files in blocks.

#include <cstddef>
#include <cstdio>
#include <ostream>
#include <string>

namespace pvcmd {

// The index of the first byte in [from, n) where a and b differ, or n.
size_t firstDifference(const char* a, const char* b, size_t from, size_t n);

class BinaryCompare {
  public:
    explicit BinaryCompare(std::ostream& out) : m_out(out) {}

    // Writes the report (not the header). Returns 0 when the files are equal,
    // 1 when they differ, 2 when reading failed (errorFile names the file).
    int run(std::FILE* file1, const std::string& name1, std::FILE* file2, const std::string& name2);
    const std::string& errorFile() const { return m_errorFile; }
    int error() const { return m_error; }

  private:
    std::ostream& m_out;
    std::string m_errorFile;
    int m_error = 0;
};

} // namespace pvcmd
