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
    std::string tmpl = path + ".XXXXXX";
    int fd = ::mkstemp(tmpl.data());
    if (fd < 0)
        throw RuntimeError::fromErrno(errno, path);
    const char* p = bytes.data();
    size_t left = bytes.size();
    while (left > 0) {
        ssize_t w = ::write(fd, p, left);
        if (w < 0) {
            if (errno == EINTR)
                continue;
            int err = errno;
            ::close(fd);
            ::unlink(tmpl.c_str());
            throw RuntimeError::fromErrno(err, path);
        }
        p += w;
        left -= static_cast<size_t>(w);
    }
    // mkstemp creates the file 0600; a settings or script file should have the
    // usual permissions the user's umask gives.
    mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(fd, 0666 & ~mask);
    if (::close(fd) != 0) {
        int err = errno;
        ::unlink(tmpl.c_str());
        throw RuntimeError::fromErrno(err, path);
    }
    if (::rename(tmpl.c_str(), path.c_str()) != 0) {
        int err = errno;
        ::unlink(tmpl.c_str());
        throw RuntimeError::fromErrno(err, path);
    }
}

TextFileWriter::TextFileWriter(const std::string& path, Mode mode) { open(path, mode); }

TextFileWriter::~TextFileWriter() {
    if (m_file)
        std::fclose(m_file);
}

TextFileWriter::TextFileWriter(TextFileWriter&& other) noexcept
    : m_file(std::exchange(other.m_file, nullptr)), m_path(std::move(other.m_path)) {}

TextFileWriter& TextFileWriter::operator=(TextFileWriter&& other) noexcept {
    if (this != &other) {
        if (m_file)
            std::fclose(m_file);
        m_file = std::exchange(other.m_file, nullptr);
        m_path = std::move(other.m_path);
    }
    return *this;
}

void TextFileWriter::open(const std::string& path, Mode mode) {
    close();
    std::FILE* f = std::fopen(path.c_str(), mode == Mode::Replace ? "wb" : "ab");
    if (!f)
        throw RuntimeError::fromErrno(errno, path);
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
    if (std::fclose(f) != 0)
        throw RuntimeError::fromErrno(errno, m_path);
}

} // namespace pv
