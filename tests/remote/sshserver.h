#pragma once
// A real OpenSSH server for tests: sshd on 127.0.0.1 and a free port, with a
// temporary host key, a temporary user key and the internal SFTP server, stopped
// when the object goes away. The client side gets its own directory in place of
// ~/.ssh (PAIRVIEW_SSH_DIR) with the key and a known_hosts that knows the server;
// the real user's ~/.ssh and ssh-agent are never used.

#include "support/temptree.h"

#include <string>
#include <vector>
#include <sys/types.h>

namespace pvtest {

class SshServer {
  public:
    // `sftp` is the command line of the SFTP subsystem (a stand-in can stop or
    // freeze in the middle of a run).
    explicit SshServer(const std::string& sftp = "internal-sftp");
    ~SshServer();
    SshServer(const SshServer&) = delete;
    SshServer& operator=(const SshServer&) = delete;

    // Why the server could not be started; empty when it runs.
    const std::string& unavailable() const { return m_unavailable; }
    int port() const { return m_port; }
    // ssh://127.0.0.1:PORT + path.
    std::string url(const std::string& absolutePath) const;
    // The directory in place of ~/.ssh: id_ed25519 and known_hosts.
    std::string clientDir() const { return m_dir / "client"; }
    // The host key's SHA256 fingerprint as ssh-keygen -l shows it ("SHA256:...").
    const std::string& fingerprint() const { return m_fingerprint; }
    // Writes known_hosts: knowing the server's key, an other key for the same
    // address, or nothing.
    enum class Known { ServerKey, OtherKey, Nothing };
    void setKnownHosts(Known known) const;
    // Replaces the client's key with one the server does not accept.
    void useUnknownUserKey() const;
    // Stops the server and every session it runs (a connection lost to the client).
    void stop();

  private:
    TempDir m_dir;
    std::string m_unavailable;
    std::string m_fingerprint;
    int m_port = 0;
    pid_t m_pid = -1;
};

// An SFTP server that stops after reading `bytes` bytes of requests.
std::string sftpServerStoppingAfter(long bytes);

// Runs a program (no shell, argv[0] a full path) and waits for it.
struct ProgramOutput {
    int status = -1;
    std::string out, err;
};
ProgramOutput runProgram(const std::vector<std::string>& argv);

} // namespace pvtest
