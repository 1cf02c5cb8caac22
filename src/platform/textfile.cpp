#include "platform/textfile.h"

#include "platform/runtimeerror.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace pv {

bool tryReadFileBytes(const std::string& path, std::string& bytes) {
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f)
        return false;
    bytes.clear();
    char buf[65536];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, f)) > 0)
        bytes.append(buf, n);
    bool ok = !std::ferror(f);
    std::fclose(f);
    return ok;
}

std::string readFileBytes(const std::string& path) {
    std::string bytes;
    errno = 0;
    if (!tryReadFileBytes(path, bytes))
        throw RuntimeError::fromErrno(errno ? errno : EIO, path);
    return bytes;
}

void writeFileAtomic(const std::string& path, std::string_view bytes) {
    TextFileWriter file(path, TextFileWriter::Mode::ReplaceOnClose);
    file.write(bytes);
    file.close();
}

TextFileWriter::TextFileWriter(const std::string& path, Mode mode) { open(path, mode); }

TextFileWriter::~TextFileWriter() {
    abandon();
    if (m_file)
        std::fclose(m_file);
}

TextFileWriter::TextFileWriter(TextFileWriter&& other) noexcept
    : m_file(std::exchange(other.m_file, nullptr)), m_path(std::move(other.m_path)),
      m_temporary(std::exchange(other.m_temporary, {})) {}

TextFileWriter& TextFileWriter::operator=(TextFileWriter&& other) noexcept {
    if (this != &other) {
        abandon();
        if (m_file)
            std::fclose(m_file);
        m_file = std::exchange(other.m_file, nullptr);
        m_path = std::move(other.m_path);
        m_temporary = std::exchange(other.m_temporary, {});
    }
    return *this;
}

void TextFileWriter::abandon() {
    if (m_temporary.empty())
        return;
    std::fclose(std::exchange(m_file, nullptr));
    ::unlink(m_temporary.c_str());
    m_temporary.clear();
}

void TextFileWriter::open(const std::string& path, Mode mode) {
    abandon();
    close();
    std::FILE* f = nullptr;
    if (mode == Mode::ReplaceOnClose) {
        std::string temporary = path + std::string(kTemporaryInfix) + "XXXXXX";
        int fd = ::mkstemp(temporary.data());
        if (fd < 0)
            throw RuntimeError::fromErrno(errno, path);
        // mkstemp creates the file 0600; a settings or script file should have
        // the usual permissions the user's umask gives.
        mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(fd, 0666 & ~mask);
        f = ::fdopen(fd, "wb");
        if (!f) {
            int err = errno;
            ::close(fd);
            ::unlink(temporary.c_str());
            throw RuntimeError::fromErrno(err, path);
        }
        m_temporary = std::move(temporary);
    } else {
        f = std::fopen(path.c_str(), mode == Mode::Replace ? "wb" : "ab");
        if (!f)
            throw RuntimeError::fromErrno(errno, path);
    }
    m_file = f;
    m_path = path;
}

void TextFileWriter::write(std::string_view text) {
    if (!m_file)
        throw RuntimeError(EBADF, "file not open: " + m_path);
    if (!text.empty() && std::fwrite(text.data(), 1, text.size(), m_file) != text.size())
        throw RuntimeError::fromErrno(errno ? errno : EIO, m_path);
}

void TextFileWriter::writeLine(std::string_view line) {
    write(line);
    write(kLineEnd);
}

void TextFileWriter::close() {
    if (!m_file)
        return;
    std::FILE* f = std::exchange(m_file, nullptr);
    const std::string temporary = std::exchange(m_temporary, {});
    int err = std::fclose(f) != 0 ? errno : 0;
    if (err == 0 && !temporary.empty() && ::rename(temporary.c_str(), m_path.c_str()) != 0)
        err = errno;
    if (err != 0) {
        if (!temporary.empty())
            ::unlink(temporary.c_str());
        throw RuntimeError::fromErrno(err, m_path);
    }
}

} // namespace pv
