#include "platform/filecopy.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace pv {

namespace {

std::string directoryOf(const std::string& path) {
    size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool writeAll(int fd, const char* data, size_t size) {
    while (size > 0) {
        ssize_t n = ::write(fd, data, size);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += n;
        size -= static_cast<size_t>(n);
    }
    return true;
}

// Compares the file behind `fd` (rewound) with the source behind `in` (rewound).
bool sameContents(int in, int fd) {
    if (::lseek(in, 0, SEEK_SET) != 0 || ::lseek(fd, 0, SEEK_SET) != 0)
        return false;
    std::vector<char> a(1 << 16), b(1 << 16);
    for (;;) {
        ssize_t na = ::read(in, a.data(), a.size());
        if (na < 0)
            return false;
        size_t got = 0;
        while (got < static_cast<size_t>(na)) {
            ssize_t nb = ::read(fd, b.data() + got, static_cast<size_t>(na) - got);
            if (nb <= 0)
                return false;
            got += static_cast<size_t>(nb);
        }
        if (std::memcmp(a.data(), b.data(), got) != 0)
            return false;
        if (na == 0) {
            char extra;
            return ::read(fd, &extra, 1) == 0;
        }
    }
}

} // namespace

FileCopyResult copyFileAtomic(const std::string& source, const std::string& destination,
                              bool keepMode, bool verify) {
    FileCopyResult result;
    int in = ::open(source.c_str(), O_RDONLY | O_CLOEXEC);
    if (in < 0) {
        result.error = errno;
        return result;
    }
    struct stat st;
    if (::fstat(in, &st) != 0) {
        result.error = errno;
        ::close(in);
        return result;
    }
    std::string temp = directoryOf(destination) + "/.pvcopy-XXXXXX";
    int out = ::mkostemp(temp.data(), O_CLOEXEC);
    if (out < 0) {
        result.error = errno;
        ::close(in);
        return result;
    }
    auto fail = [&](int err) {
        result.error = err;
        ::close(in);
        ::close(out);
        ::unlink(temp.c_str());
        return result;
    };
    std::vector<char> buffer(1 << 17);
    for (;;) {
        ssize_t n = ::read(in, buffer.data(), buffer.size());
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return fail(errno);
        }
        if (n == 0)
            break;
        if (!writeAll(out, buffer.data(), static_cast<size_t>(n)))
            return fail(errno);
    }
    if (verify && !sameContents(in, out))
        return fail(EIO);
    mode_t mode = st.st_mode & 07777;
    if (!keepMode)
        mode |= S_IWUSR;
    timespec times[2] = {st.st_atim, st.st_mtim};
    if (::fchmod(out, mode) != 0 || ::futimens(out, times) != 0)
        return fail(errno);
    // close() is where some file systems report a full disk.
    if (::close(out) != 0) {
        result.error = errno;
        ::close(in);
        ::unlink(temp.c_str());
        return result;
    }
    ::close(in);
    if (::rename(temp.c_str(), destination.c_str()) != 0) {
        result.error = errno;
        ::unlink(temp.c_str());
        return result;
    }
    result.ok = true;
    return result;
}

FileCopyResult copyFileReplacing(const std::string& source, const std::string& destination) {
    // A rename replaces a read-only file as well; the system's copy refuses to.
    struct stat st;
    if (::stat(destination.c_str(), &st) == 0 && ::access(destination.c_str(), W_OK) != 0)
        return FileCopyResult{false, errno};
    return copyFileAtomic(source, destination, true, false);
}

} // namespace pv
