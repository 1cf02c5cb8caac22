#include "platform/fileidentity.h"

#include <sys/stat.h>

namespace pv {

std::optional<FileIdentity> fileIdentity(const std::string& path) {
    struct stat st;
    if (::stat(path.c_str(), &st) != 0)
        return std::nullopt;
    return FileIdentity{static_cast<unsigned long long>(st.st_dev),
                        static_cast<unsigned long long>(st.st_ino)};
}

bool isSymbolicLink(const std::string& path) {
    struct stat st;
    return ::lstat(path.c_str(), &st) == 0 && S_ISLNK(st.st_mode);
}

} // namespace pv
