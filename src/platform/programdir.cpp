#include "platform/programdir.h"

#include "platform/textfile.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace pv {

namespace {

const char* const kShippedFiles[] = {"CompareSelectedFile.cmd"};

std::string withoutTrailingSeparator(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

// The program directory becomes the current directory at start, so a relative
// name would point somewhere else afterwards: every path is made absolute first.
std::string absoluteDirectory(const std::string& path) {
    std::error_code ec;
    fs::path absolute = fs::absolute(path, ec);
    if (ec)
        return withoutTrailingSeparator(path);
    return withoutTrailingSeparator(absolute.lexically_normal().string());
}

void copyShippedFilesInto(const std::string& dir) {
    std::string from = sharedFilesDirectory();
    if (from != dir)
        installShippedFiles(from, dir);
}

} // namespace

void installShippedFiles(const std::string& from, const std::string& dir) {
    for (const char* name : kShippedFiles) {
        std::string shipped, copy;
        if (!tryReadFileBytes((fs::path(from) / name).string(), shipped))
            continue;
        std::string target = (fs::path(dir) / name).string();
        if (tryReadFileBytes(target, copy) && copy == shipped)
            continue;
        // Through a temporary file and a rename: a full disk leaves the old copy (or
        // none), never a short one, and the next start tries again.
        try {
            writeFileAtomic(target, shipped);
        } catch (const std::exception&) {
        }
    }
}

std::string executableDirectory() {
    std::error_code ec;
    fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    if (ec)
        return withoutTrailingSeparator(fs::current_path(ec).string());
    return withoutTrailingSeparator(exe.parent_path().string());
}

std::string sharedFilesDirectory() {
    std::string exeDir = executableDirectory();
    std::error_code ec;
    if (fs::exists(fs::path(exeDir) / kShippedFiles[0], ec))
        return exeDir;
    fs::path installed = fs::path(exeDir).parent_path() / "share" / "pairview";
    return withoutTrailingSeparator(installed.lexically_normal().string());
}

std::string resolveProgramDirectory() {
    if (const char* home = std::getenv("PAIRVIEW_HOME"); home && *home) {
        std::error_code ec;
        std::string dir = absoluteDirectory(home);
        fs::create_directories(dir, ec);
        copyShippedFilesInto(dir);
        return dir;
    }
    // A build tree (or a copied folder) keeps the shipped files beside the programs
    // and works in place; an installed program keeps them in ../share/pairview and
    // must not write into bin, even when it could (as root it always can).
    std::string exeDir = executableDirectory();
    if (sharedFilesDirectory() == exeDir && ::access(exeDir.c_str(), W_OK) == 0)
        return exeDir;
    std::string data;
    // A relative XDG_DATA_HOME is invalid and ignored, as the desktop rules say.
    if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg == '/')
        data = xdg;
    else if (const char* userHome = std::getenv("HOME"); userHome && *userHome)
        data = std::string(userHome) + "/.local/share";
    else
        data = "/tmp";
    std::string dir = withoutTrailingSeparator(data) + "/pairview";
    std::error_code ec;
    fs::create_directories(dir, ec);
    copyShippedFilesInto(dir);
    return dir;
}

} // namespace pv
