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

// Always quoted. The shipped command file takes the quotes off its arguments and
// puts them back around the name in its fc line, where a trailing backslash would
// escape the closing quote: such a name is refused like one with a double quote.
std::string quoted(const std::string& path) {
    std::string refusal = scriptRefusal(path);
    if (refusal.empty() && !path.empty() && path.back() == '\\')
        refusal = "the name ends in a backslash";
    if (!refusal.empty())
        throw RuntimeError(EINVAL, "cannot compare \"" + path + "\": " + refusal);
    return scriptArgument(path);
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
