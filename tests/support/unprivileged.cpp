#include "unprivileged.h"

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pvtest {

namespace {
constexpr uid_t kNobody = 65534;
}

int runUnprivileged(const std::function<int()>& body) {
    const bool root = ::geteuid() == 0;
    pid_t pid = ::fork();
    if (pid < 0)
        return kCannotDropPrivileges;
    if (pid == 0) {
        if (root && (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 ||
                     ::setuid(kNobody) != 0))
            ::_exit(kCannotDropPrivileges);
        int code = kCannotDropPrivileges;
        try {
            code = body();
        } catch (...) {
            code = kCannotDropPrivileges - 1;
        }
        ::_exit(code);
    }
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : kCannotDropPrivileges;
}

void handToUnprivileged(const std::filesystem::path& tree) {
    if (::geteuid() != 0)
        return;
    std::error_code ec;
    (void)::lchown(tree.c_str(), kNobody, kNobody);
    for (auto it = std::filesystem::recursive_directory_iterator(tree, ec);
         !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec))
        (void)::lchown(it->path().c_str(), kNobody, kNobody);
}

} // namespace pvtest
