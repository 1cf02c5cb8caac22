#pragma once
// A real OpenSSH server for tests: sshd on 127.0.0.1 and a free port, with a
// temporary host key, a temporary user key and the internal SFTP server, stopped
// when the object goes away. The client side gets its own directory in place of
// ~/.ssh (PAIRVIEW_SSH_DIR) with the key and a known_hosts that knows the server;
// the real user's ~/.ssh and ssh-agent are never used.

#include "support/temptree.h"

#include <atomic>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

namespace pvtest {

class SshServer {
  public:
    SshServer();
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
    // Adds the server's key for another port of 127.0.0.1 (a relay's).
    void knowAlsoAt(int port) const;
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

// A TCP relay in front of the server, for connections that fail in the middle:
// after `bytes` bytes from the client (or at freeze()), it either cuts the
// connection or stops passing anything on, as a far end that froze. No shell
// or other program runs on the server side.
class Relay {
  public:
    enum class After { Cut, Freeze };
    Relay(int targetPort, long bytes, After after);
    ~Relay();
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;
    int port() const { return m_port; }
    // From now on nothing passes (the connection stays open).
    void freeze() { m_frozen = true; }

  private:
    void run();

    int m_listen = -1;
    int m_port = 0;
    int m_target;
    long m_bytes;
    After m_after;
    int m_stop[2] = {-1, -1};
    std::atomic<bool> m_frozen{false};
    std::thread m_thread;
};

// Runs a program (no shell, argv[0] a full path) and waits for it.
struct ProgramOutput {
    int status = -1;
    std::string out, err;
};
ProgramOutput runProgram(const std::vector<std::string>& argv);

} // namespace pvtest
