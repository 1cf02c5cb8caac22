#pragma once
// One SSH connection to one host with its SFTP channel, through libssh. The
// user's own SSH set-up decides how to connect: ~/.ssh/config (host aliases,
// user, port, identity files), ssh-agent and the default keys; the host key must
// already be in ~/.ssh/known_hosts. Nothing is asked and nothing is stored:
// a key that needs a pass-phrase only works through the agent.

#include "remote/remoteurl.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pv {

// What a directory entry on the remote side is, links followed.
struct RemoteEntry {
    enum class Kind { File, Directory, Other };
    std::string name;
    Kind kind = Kind::Other;
    std::uint64_t size = 0;
    std::int64_t mtime = 0; // seconds since the epoch
    bool haveTime = false;
    std::uint32_t permissions = 0;
};

// The directory that takes the place of ~/.ssh: $PAIRVIEW_SSH_DIR when set.
std::string sshDirectory();

class SshConnection {
  public:
    // Connects, checks the host key, logs in and starts SFTP. Throws RuntimeError
    // (number 0) with a message that names the host and the reason.
    explicit SshConnection(const RemoteUrl& where);
    ~SshConnection();
    SshConnection(const SshConnection&) = delete;
    SshConnection& operator=(const SshConnection&) = delete;

    // The entries of a directory, "." and ".." left out, links followed (a link
    // that leads nowhere is Other). Throws RuntimeError: ENOENT, ENOTDIR or EACCES
    // for the directory, number 0 when the connection is lost.
    std::vector<RemoteEntry> list(const std::string& path);

    // One file or directory, links followed; nullopt when there is none.
    std::optional<RemoteEntry> stat(const std::string& path);

    // Writes the file's bytes to `out`. Throws as list does (EISDIR for a
    // directory).
    void copyTo(const std::string& path, std::FILE* out);

    // True when the file can be opened for reading.
    bool canRead(const std::string& path);

    // False once the connection has been lost; every call then throws at once.
    bool alive() const { return m_lostReason.empty(); }
    const std::string& lostReason() const { return m_lostReason; }

    // [user@]host[:port] as the user named it.
    const std::string& hostText() const { return m_hostText; }

  private:
    struct Handles;
    [[noreturn]] void fail(const std::string& path, const std::string& what);
    void checkAlive() const;

    std::unique_ptr<Handles> m_h;
    std::string m_hostText;
    std::string m_lostReason;
};

} // namespace pv
