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

// What a file replaced in one step is first written as, beside it: the file's
// name, this infix and six random characters ("Pairview.cmd.new-Ab12cD").
inline constexpr std::string_view kTemporaryInfix = ".new-";

// Replaces a file's contents in one step: the bytes go to a temporary file in the
// same directory, which is then renamed over the target, so a reader never sees a
// half-written file and a full disk leaves the old file intact.
// Throws RuntimeError on failure.
void writeFileAtomic(const std::string& path, std::string_view bytes);

// A sequential text file: every writeLine ends with CR LF. Opened for replace
// (truncate) or append; throws RuntimeError when the file cannot be opened or written.
// ReplaceOnClose writes to a temporary file beside the target and renames it over
// the target at close(): until then, and for good when the writer is dropped or
// opened again without close(), the target keeps its old contents.
class TextFileWriter {
public:
    enum class Mode { Replace, Append, ReplaceOnClose };

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
    // Drops a ReplaceOnClose file that was not closed: the target stays as it was.
    void abandon();

    std::FILE* m_file = nullptr;
    std::string m_path;
    std::string m_temporary; // the ReplaceOnClose file until close() renames it
};

} // namespace pv
