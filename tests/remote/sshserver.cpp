#include "remote/sshserver.h"

#include "platform/process.h"

#include <arpa/inet.h>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <poll.h>
#include <sstream>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace pvtest {

namespace {

int freePort() {
    int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t len = sizeof a;
    int port = 0;
    if (::bind(fd, reinterpret_cast<sockaddr*>(&a), sizeof a) == 0 &&
        ::getsockname(fd, reinterpret_cast<sockaddr*>(&a), &len) == 0)
        port = ntohs(a.sin_port);
    ::close(fd);
    return port;
}

bool accepts(int port) {
    int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_port = htons(static_cast<uint16_t>(port));
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bool ok = ::connect(fd, reinterpret_cast<sockaddr*>(&a), sizeof a) == 0;
    ::close(fd);
    return ok;
}

bool makeKey(const std::string& file) {
    std::filesystem::remove(file);
    std::filesystem::remove(file + ".pub");
    return pv::runAndWait(
               {"/usr/bin/ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-C", "pvtest", "-f", file},
               -1, -1) == 0;
}

std::string firstLine(const std::string& path) {
    std::ifstream in(path);
    std::string line;
    std::getline(in, line);
    return line;
}

// The processes below `root` (sshd's sessions), deepest last.
std::vector<pid_t> descendants(pid_t root) {
    std::vector<pid_t> found{root};
    for (size_t i = 0; i < found.size(); ++i)
        for (const auto& e : std::filesystem::directory_iterator("/proc")) {
            const std::string name = e.path().filename();
            if (name.find_first_not_of("0123456789") != std::string::npos)
                continue;
            std::ifstream stat(e.path() / "stat");
            std::string all((std::istreambuf_iterator<char>(stat)), {});
            size_t close = all.rfind(')');
            if (close == std::string::npos)
                continue;
            std::istringstream rest(all.substr(close + 2));
            char state;
            pid_t parent = 0;
            rest >> state >> parent;
            if (parent == found[i])
                found.push_back(static_cast<pid_t>(std::stol(name)));
        }
    return found;
}

} // namespace

ProgramOutput runProgram(const std::vector<std::string>& argv) {
    TempDir tmp;
    const std::string outFile = tmp / "out", errFile = tmp / "err";
    int out = ::open(outFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    int err = ::open(errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    ProgramOutput r;
    r.status = pv::runAndWait(argv, out, err);
    ::close(out);
    ::close(err);
    r.out = readFile(outFile);
    r.err = readFile(errFile);
    return r;
}

SshServer::SshServer() {
    if (::access("/usr/sbin/sshd", X_OK) != 0) {
        m_unavailable = "/usr/sbin/sshd is not installed (Debian package openssh-server)";
        return;
    }
    // Privilege separation needs its empty directory, which only root can make.
    if (::access("/run/sshd", F_OK) != 0 && ::mkdir("/run/sshd", 0755) != 0 && errno != EEXIST) {
        m_unavailable = "/run/sshd is missing and cannot be made (not root)";
        return;
    }
    m_dir.mkdir("client");
    const std::string hostKey = m_dir / "host_key";
    if (!makeKey(hostKey) || !makeKey(clientDir() + "/id_ed25519")) {
        m_unavailable = "ssh-keygen failed";
        return;
    }
    std::filesystem::copy_file(clientDir() + "/id_ed25519.pub", m_dir / "authorized_keys");
    // sshd reads the keys as the user who logs in, who may be another one.
    ::chmod(m_dir.str().c_str(), 0755);
    ::chmod((m_dir / "authorized_keys").c_str(), 0644);
    // "256 SHA256:... comment (ED25519)"
    std::istringstream listed(
        runProgram({"/usr/bin/ssh-keygen", "-l", "-f", hostKey + ".pub"}).out);
    std::string bits;
    listed >> bits >> m_fingerprint;
    m_port = freePort();
    const std::string config = m_dir.write(
        "sshd_config", "Port " + std::to_string(m_port) + "\nListenAddress 127.0.0.1\nHostKey " +
                           hostKey + "\nPidFile " + (m_dir / "sshd.pid") + "\nAuthorizedKeysFile " +
                           (m_dir / "authorized_keys") +
                           "\nStrictModes no\nUsePAM no\nPasswordAuthentication no\n"
                           "KbdInteractiveAuthentication no\nPubkeyAuthentication yes\n"
                           "PermitRootLogin prohibit-password\nLogLevel ERROR\n"
                           "Subsystem sftp internal-sftp\n");
    setKnownHosts(Known::ServerKey);

    const std::string log = m_dir / "sshd.log";
    m_pid = ::fork();
    if (m_pid == 0) {
        int fd = ::open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        ::dup2(fd, STDERR_FILENO);
        ::dup2(fd, STDOUT_FILENO);
        ::execl("/usr/sbin/sshd", "/usr/sbin/sshd", "-D", "-e", "-f", config.c_str(),
                (char*)nullptr);
        ::_exit(127);
    }
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!accepts(m_port)) {
        int status = 0;
        if (::waitpid(m_pid, &status, WNOHANG) == m_pid) {
            m_pid = -1;
            m_unavailable = "sshd did not start: " + readFile(log);
            return;
        }
        if (std::chrono::steady_clock::now() > deadline) {
            stop();
            m_unavailable = "sshd did not listen within 10 s: " + readFile(log);
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

SshServer::~SshServer() {
    stop();
}

void SshServer::stop() {
    if (m_pid <= 0)
        return;
    for (pid_t p : descendants(m_pid))
        ::kill(p, SIGKILL);
    ::waitpid(m_pid, nullptr, 0);
    m_pid = -1;
}

std::string SshServer::url(const std::string& absolutePath) const {
    return "ssh://127.0.0.1:" + std::to_string(m_port) + absolutePath;
}

void SshServer::setKnownHosts(Known known) const {
    std::string line;
    const std::string host = "[127.0.0.1]:" + std::to_string(m_port) + " ";
    if (known == Known::ServerKey) {
        line = host + firstLine(m_dir / "host_key.pub") + "\n";
    } else if (known == Known::OtherKey) {
        makeKey(m_dir / "other_host_key");
        line = host + firstLine(m_dir / "other_host_key.pub") + "\n";
    }
    m_dir.write("client/known_hosts", line);
}

void SshServer::knowAlsoAt(int port) const {
    std::ofstream(clientDir() + "/known_hosts", std::ios::app)
        << "[127.0.0.1]:" << port << " " << firstLine(m_dir / "host_key.pub") << "\n";
}

Relay::Relay(int targetPort, long bytes, After after)
    : m_target(targetPort), m_bytes(bytes), m_after(after) {
    m_listen = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t len = sizeof a;
    ::bind(m_listen, reinterpret_cast<sockaddr*>(&a), sizeof a);
    ::listen(m_listen, 4);
    ::getsockname(m_listen, reinterpret_cast<sockaddr*>(&a), &len);
    m_port = ntohs(a.sin_port);
    if (::pipe2(m_stop, O_CLOEXEC) == 0)
        m_thread = std::thread([this] { run(); });
}

Relay::~Relay() {
    if (m_thread.joinable()) {
        (void)!::write(m_stop[1], "x", 1);
        m_thread.join();
    }
    for (int fd : {m_listen, m_stop[0], m_stop[1]})
        if (fd >= 0)
            ::close(fd);
}

void Relay::run() {
    for (;;) {
        pollfd wait[2] = {{m_stop[0], POLLIN, 0}, {m_listen, POLLIN, 0}};
        ::poll(wait, 2, -1);
        if (wait[0].revents)
            return;
        const int client = ::accept4(m_listen, nullptr, nullptr, SOCK_CLOEXEC);
        const int server = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_port = htons(static_cast<uint16_t>(m_target));
        a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        long fromClient = 0;
        bool open = ::connect(server, reinterpret_cast<sockaddr*>(&a), sizeof a) == 0;
        while (open) {
            const bool passing = !m_frozen;
            pollfd fds[3] = {{m_stop[0], POLLIN, 0},
                             {client, short(passing ? POLLIN : 0), 0},
                             {server, short(passing ? POLLIN : 0), 0}};
            ::poll(fds, 3, passing ? -1 : 50);
            if (fds[0].revents) {
                ::close(client);
                ::close(server);
                return;
            }
            char buffer[16384];
            for (int side : {1, 2}) {
                if (!open || !(fds[side].revents & (POLLIN | POLLHUP | POLLERR)))
                    continue;
                const ssize_t n = ::read(fds[side].fd, buffer, sizeof buffer);
                if (n <= 0 || ::write(side == 1 ? server : client, buffer, size_t(n)) != n) {
                    open = false;
                    break;
                }
                if (side == 1 && (fromClient += n) >= m_bytes) {
                    if (m_after == After::Cut)
                        open = false;
                    else
                        m_frozen = true;
                }
            }
        }
        ::close(client);
        ::close(server);
    }
}

void SshServer::useUnknownUserKey() const {
    makeKey(clientDir() + "/id_ed25519");
}

} // namespace pvtest
