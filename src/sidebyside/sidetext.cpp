#include "sidebyside/sidetext.h"

#include "platform/linereader.h"
#include "platform/runtimeerror.h"

#include <cerrno>
#include <memory>
#include <sys/stat.h>

namespace pv {

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

} // namespace

SideText SideText::read(std::FILE* file) {
    unsigned char head[3] = {};
    const size_t got = std::fread(head, 1, 3, file);
    std::rewind(file);
    const bool utf16 =
        got >= 2 && ((head[0] == 0xFF && head[1] == 0xFE) || (head[0] == 0xFE && head[1] == 0xFF));
    const bool utf8Bom = got == 3 && head[0] == 0xEF && head[1] == 0xBB && head[2] == 0xBF;

    SideText text;
    text.m_utf16 = utf16;
    // Reserving the file's size up front keeps the one big buffer from being
    // copied while it grows (UTF-16 shrinks to at most 1.5 times as UTF-8).
    struct stat st {};
    if (fstat(fileno(file), &st) == 0 && st.st_size > 0)
        text.m_text.reserve(static_cast<size_t>(st.st_size) + static_cast<size_t>(st.st_size) / 2);

    LineReader reader(file, utf16);
    std::string line;
    bool first = true;
    while (reader.next(line)) {
        std::string_view kept = line;
        if (first && utf8Bom)
            kept.remove_prefix(3);
        first = false;
        text.m_text.append(kept);
        text.m_text += '\n';
        text.m_starts.push_back(text.m_text.size());
        if (kept.size() > text.m_longest)
            text.m_longest = kept.size();
    }
    if (reader.failed())
        throw RuntimeError::fromErrno(reader.error());
    text.m_text.shrink_to_fit();
    text.m_starts.shrink_to_fit();
    return text;
}

SideText SideText::readFile(const std::string& path) {
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file)
        throw RuntimeError::fromErrno(errno, path);
    try {
        return read(file.get());
    } catch (const RuntimeError& e) {
        throw RuntimeError(e.number(), path + ": " + e.description());
    }
}

SideText SideText::fromBytes(std::string_view bytes) {
    // An empty buffer cannot be opened as a memory stream.
    if (bytes.empty())
        return SideText();
    std::unique_ptr<std::FILE, FileCloser> file(
        fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "rb"));
    if (!file)
        throw RuntimeError::fromErrno(errno);
    return read(file.get());
}

} // namespace pv
