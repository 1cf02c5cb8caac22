#include "editor/editorfile.h"

#include "platform/runtimeerror.h"
#include "platform/textfile.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>

namespace pv {

DecodedText loadEditorFile(const std::string& path) {
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec))
        throw RuntimeError::fromErrno(EISDIR, path);
    return decodeText(readFileBytes(path));
}

void saveEditorFile(const std::string& path, std::string_view text, TextFormat& format) {
    std::string target = path;
    std::error_code ec;
    if (std::filesystem::is_symlink(path, ec)) {
        auto resolved = std::filesystem::weakly_canonical(path, ec);
        if (!ec)
            target = resolved.string();
    }
    struct stat before {};
    const bool existed = ::stat(target.c_str(), &before) == 0;
    TextFormat written = format;
    writeFileAtomic(target, encodeText(text, written));
    format = written;
    if (existed)
        ::chmod(target.c_str(), before.st_mode & 07777);
}

} // namespace pv
