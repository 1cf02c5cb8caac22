#include "compare/singlecompare.h"
#include "compare/filelisting.h"

#include "compare/scripttext.h"
#include "platform/runtimeerror.h"

#include <cerrno>

namespace pv {

std::string singleResultFile(const std::string& programDir, const std::string& tag) {
    return joinPath(programDir, "PairviewSingle" + tag + ".txt");
}

namespace {

// Always quoted. Backslashes only need doubling where they would run into the
// closing quote (a POSIX name may end in one); otherwise they stay as they are.
std::string quoted(const std::string& path) {
    std::string refusal = scriptRefusal(path);
    if (!refusal.empty())
        throw RuntimeError(EINVAL, "cannot compare \"" + path + "\": " + refusal);
    size_t trailing = 0;
    while (trailing < path.size() && path[path.size() - 1 - trailing] == '\\')
        ++trailing;
    return "\"" + path + std::string(trailing, '\\') + "\"";
}

} // namespace

std::string compareSinglesCommand(const std::string& programDir, const std::string& fileName1,
                                  const std::string& dirPath1, const std::string& fileName2,
                                  const std::string& dirPath2, const std::string& resultFile,
                                  const CompareOptions& options) {
    std::string args = quoted(joinPath(dirPath1, fileName1)) + " " +
                       quoted(joinPath(dirPath2, fileName2)) + " " + quoted(resultFile) + " " +
                       singleFcSwitches(options);
    std::string command = joinPath(programDir, std::string(kSingleCompareScript));
    // The program directory is ours, but it may hold blanks.
    if (command.find(' ') != std::string::npos)
        command = "\"" + command + "\"";
    return command + " " + args;
}

} // namespace pv
