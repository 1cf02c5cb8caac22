#pragma once
// Directories on another machine, named as ssh://[user@]host[:port]/absolute/path.
// The path is taken byte for byte as the remote system names it (no %-decoding),
// so blanks, "%", quotes and backslashes stay what they are; host, user and port
// are checked so that none of them can be mistaken for an option or a command.

#include <string>
#include <string_view>

namespace pv {

inline constexpr std::string_view kRemoteScheme = "ssh://";

struct RemoteUrl {
    std::string user; // empty: as ~/.ssh/config or the local user name says
    std::string host; // a name, an IPv4 address, or an IPv6 address without brackets
    int port = 0;     // 0: as ~/.ssh/config says, else 22
    std::string path; // absolute, normalised, no trailing "/" except at the root
};

// True when the text names a remote directory or file (starts with "ssh://").
bool isRemotePath(std::string_view text);

// Parses a remote path; throws RuntimeError (EINVAL) with a message naming the
// text and what is wrong with it.
RemoteUrl parseRemoteUrl(std::string_view text);

// The URL text of a parsed remote path (the form parseRemoteUrl reads back).
std::string remoteUrlText(const RemoteUrl& url);

// The host as messages name it: [user@]host[:port].
std::string remoteHostText(const RemoteUrl& url);

// The URL with its path normalised ("." and ".." resolved, repeated and trailing
// separators dropped); throws as parseRemoteUrl does.
std::string normalizeRemotePath(std::string_view text);

} // namespace pv
