#pragma once
// Remote directories and files as the lists and the compare read them: one SSH
// connection per host for the whole run of the program, reused for every
// directory. A host that cannot be reached, or whose connection is lost, fails
// every later request at once with the same message, so a walk over thousands
// of directories never waits more than once.

#include "platform/filetimes.h"

#include <cstdio>
#include <string>
#include <vector>

namespace pv {

// A remote directory's visible (non-dot) ordinary files and sub-directories,
// links followed, in the order the server gave them.
struct RemoteDirectory {
    std::vector<std::string> files;
    std::vector<std::string> subdirectories;
};

// Reads a directory given as ssh://...; throws RuntimeError as a local read does
// (ENOENT, ENOTDIR, EACCES), and with number 0 for a connection failure.
RemoteDirectory readRemoteDirectory(const std::string& url);

// The facts of the named files of a remote directory, in the order given, as
// probeFileAt gives them for a local one: taken from the directory's listing
// (the one just read, if any), so a whole directory costs one read.
std::vector<FileFacts> remoteFileFacts(const std::string& dirUrl,
                                       const std::vector<std::string>& names);

// The facts of one remote file given as ssh://...
FileFacts probeRemoteFile(const std::string& url);

// A copy of a remote file given as ssh://..., in an anonymous temporary file
// positioned at its start, for the tools that read files (fc). On failure:
// nullptr, `err` as for a local open (ENOENT, EACCES, EISDIR, ...) and `why`
// the message when the host itself failed (empty otherwise).
std::FILE* openRemoteCopy(const std::string& url, int& err, std::string& why);

// The connections of this run that failed or were lost, one message each.
std::vector<std::string> remoteConnectionFailures();

// Closes every connection and forgets every failure (the next request connects
// again).
void closeRemoteConnections();

} // namespace pv
