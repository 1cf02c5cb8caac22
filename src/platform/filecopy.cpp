#include "platform/filecopy.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
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

// Errors that mean "this file system (or kernel) cannot do that", not a failure.
bool unsupported(int error) {
    return error == EOPNOTSUPP || error == EISDIR || error == EINVAL || error == ENOSYS ||
           error == EXDEV || error == EBADF || error == EPERM;
}

// Gives the nameless file `fd` the name `target`; fails with EEXIST when taken.
int linkAnonymous(int fd, const std::string& target) {
    char self[64];
    std::snprintf(self, sizeof self, "/proc/self/fd/%d", fd);
    if (::linkat(AT_FDCWD, self, AT_FDCWD, target.c_str(), AT_SYMLINK_FOLLOW) == 0)
        return 0;
    if (errno != ENOENT) // without /proc, the descriptor itself (needs privileges)
        return errno;
    return ::linkat(fd, "", AT_FDCWD, target.c_str(), AT_EMPTY_PATH) == 0 ? 0 : errno;
}

} // namespace

FileCopier::FileCopier(Methods methods) : m_methods(methods) {
    auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    char tag[64];
    std::snprintf(tag, sizeof tag, "%ld-%llx", static_cast<long>(::getpid()),
                  static_cast<unsigned long long>(now) & 0xFFFFFFFFFFull);
    m_runTag = tag;
}

std::string FileCopier::nextTempName(const std::string& dir) {
    return dir + "/.pvcopy-" + m_runTag + "-" + std::to_string(++m_counter);
}

// Opens the temporary file in `dir`: nameless when allowed, else under the next
// free name of this run. Returns the descriptor or -1 with errno set.
int FileCopier::openTemp(const std::string& dir, std::string& name, bool& anonymous) {
    if (m_methods.anonymousTemp) {
        int fd = ::open(dir.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
        if (fd >= 0) {
            anonymous = true;
            return fd;
        }
        if (!unsupported(errno))
            return -1;
        m_methods.anonymousTemp = false; // this file system has none: named from now on
    }
    anonymous = false;
    m_usedNamedTemp = true;
    for (int attempt = 0; attempt < 100; ++attempt) {
        name = nextTempName(dir);
        int fd = ::open(name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0600);
        if (fd >= 0 || errno != EEXIST)
            return fd;
    }
    return -1;
}

bool FileCopier::copyBytes(int in, int out, long long size, int& error) {
    // An empty size may hide content (files of pseudo file systems): read those.
    if (m_methods.kernelCopy && size > 0) {
        bool first = true;
        for (;;) {
            ssize_t n = ::copy_file_range(in, nullptr, out, nullptr, 1 << 30, 0);
            if (n > 0) {
                first = false;
                continue;
            }
            if (n == 0)
                return true;
            if (errno == EINTR)
                continue;
            if (!first || !unsupported(errno)) {
                error = errno;
                return false;
            }
            break; // not between these two files: read and write instead
        }
    }
    m_usedReadWrite = true;
    std::vector<char> buffer(1 << 17);
    for (;;) {
        ssize_t n = ::read(in, buffer.data(), buffer.size());
        if (n < 0) {
            if (errno == EINTR)
                continue;
            error = errno;
            return false;
        }
        if (n == 0)
            return true;
        if (!writeAll(out, buffer.data(), static_cast<size_t>(n))) {
            error = errno;
            return false;
        }
    }
}

FileCopyResult FileCopier::copy(const std::string& source, const std::string& destination,
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
    std::string temp;
    bool anonymous = false;
    int out = openTemp(directoryOf(destination), temp, anonymous);
    if (out < 0) {
        result.error = errno;
        ::close(in);
        return result;
    }
    auto fail = [&](int err) {
        result.error = err;
        ::close(in);
        ::close(out);
        if (!anonymous)
            ::unlink(temp.c_str());
        return result;
    };
    int error = 0;
    if (!copyBytes(in, out, static_cast<long long>(st.st_size), error))
        return fail(error);
    if (verify && !sameContents(in, out))
        return fail(EIO);
    mode_t mode = st.st_mode & 07777;
    if (!keepMode)
        mode |= S_IWUSR;
    timespec times[2] = {st.st_atim, st.st_mtim};
    if (::fchmod(out, mode) != 0 || ::futimens(out, times) != 0)
        return fail(errno);
    ::close(in);
    bool linkedAsDestination = false;
    if (anonymous) {
        // A free destination gets the complete file in one step; an existing one
        // is replaced through a name of this run and a rename, as below.
        int linked = linkAnonymous(out, destination);
        if (linked == 0) {
            linkedAsDestination = true;
        } else {
            temp = nextTempName(directoryOf(destination));
            if (linked != EEXIST || (linked = linkAnonymous(out, temp)) != 0) {
                result.error = linked;
                ::close(out);
                return result;
            }
            anonymous = false;
        }
    }
    // close() is where some file systems report a full disk.
    if (::close(out) != 0) {
        result.error = errno;
        ::unlink(linkedAsDestination ? destination.c_str() : temp.c_str());
        return result;
    }
    if (linkedAsDestination) {
        result.ok = true;
        return result;
    }
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
    return FileCopier().copy(source, destination, true, false);
}

} // namespace pv
