#pragma once
// Temporary directory trees for tests that touch the file system.

#include <filesystem>
#include <string>
#include <string_view>

namespace pvtest {

// A fresh directory under the system's temporary directory, removed with its
// contents when the object goes away.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::string str() const { return m_path.string(); }
    // Path of a relative name inside the directory.
    std::string operator/(std::string_view relative) const;

    // Writes a file (creating parent directories); returns its full path.
    std::string write(std::string_view relative, std::string_view bytes = {}) const;
    // Creates a directory (and parents); returns its full path.
    std::string mkdir(std::string_view relative) const;

private:
    std::filesystem::path m_path;
};

// Whole file as bytes; empty when missing.
std::string readFile(const std::string& path);

// Sets a file's last-write time, in seconds since the epoch (UTC).
void setMTime(const std::string& path, long long secondsSinceEpoch);

} // namespace pvtest
