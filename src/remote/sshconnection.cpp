#include "remote/sshconnection.h"

#include "platform/runtimeerror.h"
#include "remote/answerwatch.h"

#include <libssh/callbacks.h>
#include <libssh/libssh.h>
#include <libssh/sftp.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace pv {

namespace {

// Connect and every single wait for the server end after this long.
constexpr long kTimeoutSeconds = 15;

// Pass-phrases are never asked: a key that needs one is passed over.
int refusePassphrase(const char*, char*, size_t, int, int, void*) {
    return -1;
}

RemoteEntry::Kind kindOf(std::uint32_t permissions) {
    switch (permissions & S_IFMT) {
    case S_IFREG:
        return RemoteEntry::Kind::File;
    case S_IFDIR:
        return RemoteEntry::Kind::Directory;
    default:
        return RemoteEntry::Kind::Other;
    }
}

RemoteEntry entryOf(const char* name, sftp_attributes a) {
    RemoteEntry e;
    e.name = name ? name : "";
    if (a->flags & SSH_FILEXFER_ATTR_PERMISSIONS) {
        e.permissions = a->permissions;
        e.kind = kindOf(a->permissions);
    }
    if (a->flags & SSH_FILEXFER_ATTR_SIZE)
        e.size = a->size;
    if (a->flags & SSH_FILEXFER_ATTR_ACMODTIME) {
        e.mtime = a->mtime;
        e.haveTime = true;
    } else if (a->flags & SSH_FILEXFER_ATTR_MODIFYTIME) {
        e.mtime = static_cast<std::int64_t>(a->mtime64);
        e.haveTime = true;
    }
    return e;
}

[[noreturn]] void hostFailure(const std::string& host, const std::string& what) {
    throw RuntimeError(0, host + ": " + what);
}

std::string joinRemote(const std::string& dir, const std::string& name) {
    return dir == "/" ? "/" + name : dir + "/" + name;
}

} // namespace

std::chrono::milliseconds answerLimit() {
    if (const char* text = std::getenv("PAIRVIEW_SSH_TIMEOUT"); text && *text) {
        char* end = nullptr;
        const double seconds = std::strtod(text, &end);
        if (*end == '\0' && seconds > 0 && seconds <= 3600)
            return std::chrono::milliseconds(static_cast<long>(seconds * 1000));
    }
    return std::chrono::seconds(kTimeoutSeconds);
}

std::string sshDirectory() {
    if (const char* dir = std::getenv("PAIRVIEW_SSH_DIR"); dir && *dir)
        return dir;
    return "~/.ssh";
}

struct SshConnection::Handles {
    explicit Handles(std::chrono::milliseconds limit) : watch(limit) {}
    AnswerWatch watch;
    ssh_session session = nullptr;
    sftp_session sftp = nullptr;
    ssh_callbacks_struct callbacks{};
    // False once the connection, or the SFTP server at its end, is gone.
    bool usable() const {
        return ssh_is_connected(session) && !ssh_channel_is_closed(sftp->channel) &&
               !ssh_channel_is_eof(sftp->channel);
    }
    // Runs a call that waits for the server, within the time allowed.
    template <typename F> auto timed(F&& call) {
        watch.begin(ssh_get_fd(session));
        auto result = call();
        watch.end();
        return result;
    }
    ~Handles() {
        if (sftp)
            sftp_free(sftp);
        if (session) {
            ssh_disconnect(session);
            ssh_free(session);
        }
    }
};

SshConnection::SshConnection(const RemoteUrl& where)
    : m_h(std::make_unique<Handles>(answerLimit())), m_hostText(remoteHostText(where)) {
    ssh_session s = m_h->session = ssh_new();
    if (!s)
        throw RuntimeError(0, "cannot start an SSH session for " + m_hostText);
    const std::string& hostText = m_hostText;
    auto failed = [&hostText](const std::string& what) { hostFailure(hostText, what); };
    // The host as typed goes through ~/.ssh/config (an alias may name another
    // host, user, port or key); what the URL says itself wins over the file.
    const long timeout = std::max(1L, static_cast<long>(m_h->watch.limit().count() / 1000));
    const int no = 0;
    ssh_options_set(s, SSH_OPTIONS_HOST, where.host.c_str());
    if (const char* dir = std::getenv("PAIRVIEW_SSH_DIR"); dir && *dir)
        ssh_options_set(s, SSH_OPTIONS_SSH_DIR, dir);
    if (ssh_options_parse_config(s, nullptr) != SSH_OK)
        failed("cannot read the SSH configuration: " + std::string(ssh_get_error(s)));
    if (!where.user.empty())
        ssh_options_set(s, SSH_OPTIONS_USER, where.user.c_str());
    if (where.port != 0)
        ssh_options_set(s, SSH_OPTIONS_PORT, &where.port);
    ssh_options_set(s, SSH_OPTIONS_TIMEOUT, &timeout);
    ssh_options_set(s, SSH_OPTIONS_PROCESS_CONFIG, &no); // read once, above
    m_h->callbacks.userdata = nullptr;
    m_h->callbacks.auth_function = refusePassphrase;
    ssh_callbacks_init(&m_h->callbacks);
    ssh_set_callbacks(s, &m_h->callbacks);

    if (ssh_connect(s) != SSH_OK)
        failed("cannot connect: " + std::string(ssh_get_error(s)));

    // The host key: known and the same, or no connection.
    ssh_key key = nullptr;
    if (ssh_get_server_publickey(s, &key) != SSH_OK)
        failed("the server sent no host key");
    unsigned char* hash = nullptr;
    size_t hashLength = 0;
    std::string fingerprint = "(unknown)";
    if (ssh_get_publickey_hash(key, SSH_PUBLICKEY_HASH_SHA256, &hash, &hashLength) == 0) {
        if (char* text = ssh_get_fingerprint_hash(SSH_PUBLICKEY_HASH_SHA256, hash, hashLength)) {
            fingerprint = text;
            ssh_string_free_char(text);
        }
        ssh_clean_pubkey_hash(&hash);
    }
    const std::string keyText =
        std::string(ssh_key_type_to_char(ssh_key_type(key))) + " key " + fingerprint;
    ssh_key_free(key);
    unsigned int port = 22;
    ssh_options_get_port(s, &port);
    std::string host = where.host;
    char* configured = nullptr;
    if (ssh_options_get(s, SSH_OPTIONS_HOST, &configured) == SSH_OK) {
        host = configured;
        ssh_string_free_char(configured);
    }
    const std::string knownHosts = sshDirectory() + "/known_hosts";
    switch (ssh_session_is_known_server(s)) {
    case SSH_KNOWN_HOSTS_OK:
        break;
    case SSH_KNOWN_HOSTS_CHANGED:
    case SSH_KNOWN_HOSTS_OTHER:
        hostFailure(
            m_hostText,
            "the host key has CHANGED (now " + keyText + ") and does not match " + knownHosts +
                "; someone may be intercepting the connection. Refused. If the "
                "server's key was really replaced, remove the old one with: ssh-keygen -R " +
                (port == 22 ? host : "'[" + host + "]:" + std::to_string(port) + "'") +
                " and connect again");
    case SSH_KNOWN_HOSTS_NOT_FOUND:
    case SSH_KNOWN_HOSTS_UNKNOWN:
        hostFailure(m_hostText, "the host key is not known (" + keyText +
                                    "). If that is the server's key, "
                                    "accept it by running once: ssh -p " +
                                    std::to_string(port) + " " + host + "  (or: ssh-keyscan -p " +
                                    std::to_string(port) + " " + host + " >> " + knownHosts + ")");
    default:
        failed("cannot check the host key against " + knownHosts + ": " +
               std::string(ssh_get_error(s)));
    }

    // Keys from the agent, the default files and IdentityFile; nothing typed.
    int auth = m_h->timed([s] { return ssh_userauth_publickey_auto(s, nullptr, nullptr); });
    if (auth != SSH_AUTH_SUCCESS) {
        char* user = nullptr;
        std::string userText = "the user";
        if (ssh_options_get(s, SSH_OPTIONS_USER, &user) == SSH_OK) {
            userText = "user " + std::string(user);
            ssh_string_free_char(user);
        }
        failed("authentication failed for " + userText + ": no key from ssh-agent or " +
               sshDirectory() + " was accepted (pass-phrases and passwords are not asked here)");
    }

    m_h->sftp = m_h->timed([s] { return sftp_new(s); });
    if (!m_h->sftp || m_h->timed([this] { return sftp_init(m_h->sftp); }) != SSH_OK)
        failed("cannot start SFTP: " +
               (m_h->watch.fired()
                    ? "no answer within " + std::to_string(m_h->watch.limit().count()) + " ms"
                    : std::string(ssh_get_error(s))));
}

SshConnection::~SshConnection() = default;

void SshConnection::checkAlive() const {
    if (!m_lostReason.empty())
        throw RuntimeError(0, m_lostReason);
}

void SshConnection::fail(const std::string& path, const std::string& what) {
    const int code = sftp_get_error(m_h->sftp);
    if (!m_h->usable() || code == SSH_FX_CONNECTION_LOST || code == SSH_FX_NO_CONNECTION ||
        code == SSH_FX_OK) {
        m_lostReason = "the connection to " + m_hostText + " was lost (" +
                       (m_h->watch.fired() ? "no answer within " +
                                                 std::to_string(m_h->watch.limit().count()) + " ms"
                                           : std::string(ssh_get_error(m_h->session))) +
                       ")";
        throw RuntimeError(0, m_lostReason);
    }
    int number = EIO;
    if (code == SSH_FX_NO_SUCH_FILE || code == SSH_FX_NO_SUCH_PATH)
        number = ENOENT;
    else if (code == SSH_FX_PERMISSION_DENIED)
        number = EACCES;
    throw RuntimeError::fromErrno(number, m_hostText + ":" + path + ": " + what);
}

std::vector<RemoteEntry> SshConnection::list(const std::string& path) {
    checkAlive();
    sftp_dir dir = m_h->timed([&] { return sftp_opendir(m_h->sftp, path.c_str()); });
    if (!dir) {
        // A plain file is "not a directory", as it is for a local path.
        // (OpenSSH reports that as "no such file".)
        const int code = sftp_get_error(m_h->sftp);
        if (m_h->usable() && (code == SSH_FX_FAILURE || code == SSH_FX_NO_SUCH_FILE))
            if (std::optional<RemoteEntry> e = stat(path);
                e && e->kind != RemoteEntry::Kind::Directory)
                throw RuntimeError::fromErrno(ENOTDIR, m_hostText + ":" + path);
        fail(path, "cannot open the directory");
    }
    std::vector<RemoteEntry> entries;
    std::vector<size_t> links;
    while (sftp_attributes a = m_h->timed([&] { return sftp_readdir(m_h->sftp, dir); })) {
        std::string_view name = a->name ? a->name : "";
        if (name != "." && name != "..") {
            entries.push_back(entryOf(a->name, a));
            if ((a->permissions & S_IFMT) == S_IFLNK)
                links.push_back(entries.size() - 1);
        }
        sftp_attributes_free(a);
    }
    const bool complete = sftp_dir_eof(dir) == 1;
    m_h->timed([&] { return sftp_closedir(dir); });
    if (!complete)
        fail(path, "cannot read the directory");
    // The names come with their lstat; a link is looked at once more, followed.
    for (size_t i : links) {
        RemoteEntry& e = entries[i];
        std::optional<RemoteEntry> target = stat(joinRemote(path, e.name));
        std::string name = std::move(e.name);
        e = target ? *target : RemoteEntry{};
        e.name = std::move(name);
    }
    return entries;
}

std::optional<RemoteEntry> SshConnection::stat(const std::string& path) {
    checkAlive();
    sftp_attributes a = m_h->timed([&] { return sftp_stat(m_h->sftp, path.c_str()); });
    if (!a) {
        const int code = sftp_get_error(m_h->sftp);
        if (m_h->usable() && (code == SSH_FX_NO_SUCH_FILE || code == SSH_FX_NO_SUCH_PATH ||
                              code == SSH_FX_PERMISSION_DENIED || code == SSH_FX_FAILURE))
            return std::nullopt;
        fail(path, "cannot look at the file");
    }
    RemoteEntry e = entryOf(nullptr, a);
    sftp_attributes_free(a);
    return e;
}

void SshConnection::copyTo(const std::string& path, std::FILE* out) {
    if (std::optional<RemoteEntry> e = stat(path); e && e->kind == RemoteEntry::Kind::Directory)
        throw RuntimeError::fromErrno(EISDIR, m_hostText + ":" + path);
    sftp_file f = m_h->timed([&] { return sftp_open(m_h->sftp, path.c_str(), O_RDONLY, 0); });
    if (!f)
        fail(path, "cannot open the file");
    std::vector<char> buffer(1 << 16);
    for (;;) {
        const ssize_t n = m_h->timed([&] { return sftp_read(f, buffer.data(), buffer.size()); });
        if (n < 0) {
            m_h->timed([&] { return sftp_close(f); });
            fail(path, "cannot read the file");
        }
        if (n == 0)
            break;
        if (std::fwrite(buffer.data(), 1, static_cast<size_t>(n), out) != static_cast<size_t>(n)) {
            const int err = errno;
            m_h->timed([&] { return sftp_close(f); });
            throw RuntimeError::fromErrno(err,
                                          "cannot keep the copy of " + m_hostText + ":" + path);
        }
    }
    m_h->timed([&] { return sftp_close(f); });
}

bool SshConnection::canRead(const std::string& path) {
    checkAlive();
    sftp_file f = m_h->timed([&] { return sftp_open(m_h->sftp, path.c_str(), O_RDONLY, 0); });
    if (!f) {
        if (!m_h->usable())
            fail(path, "cannot open the file");
        return false;
    }
    m_h->timed([&] { return sftp_close(f); });
    return true;
}

} // namespace pv
