#pragma once
// Text files as the program writes them: UTF-8 bytes, CR LF line ends.

#include <cstdio>
#include <string>
#include <string_view>

namespace pv {

inline constexpr std::string_view kLineEnd = "\r\n";

// Reads a whole file as bytes. Throws RuntimeError when it cannot be opened.
std::string readFileBytes(const std::string& path);

// Reads a whole file, or returns false when it does not exist or cannot be read.
bool tryReadFileBytes(const std::string& path, std::string& bytes);

// Replaces a file's contents in one step: the bytes go to a temporary file in the
// same directory, which is then renamed over the target, so a reader never sees a
// half-written file and a full disk leaves the old file intact.
// Throws RuntimeError on failure.
void writeFileAtomic(const std::string& path, std::string_view bytes);

// A sequential text file: every writeLine ends with CR LF. Opened for replace
// (truncate) or append; throws RuntimeError when the file cannot be opened or written.
class TextFileWriter {
public:
    enum class Mode { Replace, Append };

    TextFileWriter() = default;
    TextFileWriter(const std::string& path, Mode mode);
    ~TextFileWriter();
    TextFileWriter(const TextFileWriter&) = delete;
    TextFileWriter& operator=(const TextFileWriter&) = delete;
    TextFileWriter(TextFileWriter&& other) noexcept;
    TextFileWriter& operator=(TextFileWriter&& other) noexcept;

    void open(const std::string& path, Mode mode);
    bool isOpen() const { return m_file != nullptr; }
    void writeLine(std::string_view line = {});
    void write(std::string_view text);
    void close();
    const std::string& path() const { return m_path; }

private:
    std::FILE* m_file = nullptr;
    std::string m_path;
};

} // namespace pv
