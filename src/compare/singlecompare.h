#pragma once
// The single-file compare: the command line that hands two files, the window's
// single result file and the fc switches to "CompareSelectedFile.cmd".

#include "compare/compareoptions.h"

#include <string>

namespace pv {

inline constexpr std::string_view kSingleCompareScript = "CompareSelectedFile.cmd";

// programDir + "/PairviewSingle" + tag + ".txt".
std::string singleResultFile(const std::string& programDir, const std::string& tag);

// programDir/CompareSelectedFile.cmd "dir1/file1" "dir2/file2" "result" switches.
// Throws RuntimeError (EINVAL) for a path holding a double quote or a line break,
// or ending in a backslash: the command file would receive it inside its own lines.
std::string compareSinglesCommand(const std::string& programDir, const std::string& fileName1,
                                  const std::string& dirPath1, const std::string& fileName2,
                                  const std::string& dirPath2, const std::string& resultFile,
                                  const CompareOptions& options);

} // namespace pv
