#include "remote/remotefiles.h"

#include "platform/runtimeerror.h"
#include "remote/remoteurl.h"
#include "remote/sshconnection.h"

#include <cerrno>
#include <cstdlib>
#include <deque>
#include <map>
#include <memory>
#include <utility>

namespace pv {

namespace {

// How many listings wait for their attribute texts: a compare reads the two
// sides' listings and then asks for the files' facts.
constexpr size_t kKeptListings = 8;

void closeAtExit();

class RemoteFiles {
  public:
    SshConnection& connection(const RemoteUrl& url) {
        const std::string key = remoteHostText(url);
        if (auto failed = m_failures.find(key); failed != m_failures.end())
            throw RuntimeError(0, failed->second);
        auto& slot = m_connections[key];
        if (!slot) {
            try {
                slot = std::make_unique<SshConnection>(url);
                closeAtExit();
            } catch (const std::exception& e) {
                m_connections.erase(key);
                m_failures.emplace(key, e.what());
                throw;
            }
        }
        return *slot;
    }

    // Runs a request; a lost connection is remembered as the host's failure.
    template <typename F> auto onHost(const RemoteUrl& url, F&& request) {
        SshConnection& c = connection(url);
        try {
            return request(c);
        } catch (...) {
            if (!c.alive())
                m_failures.emplace(c.hostText(), c.lostReason());
            throw;
        }
    }

    std::vector<RemoteEntry> list(const std::string& dirUrl) {
        const RemoteUrl url = parseRemoteUrl(dirUrl);
        std::vector<RemoteEntry> entries =
            onHost(url, [&](SshConnection& c) { return c.list(url.path); });
        m_kept.emplace_back(dirUrl, entries);
        if (m_kept.size() > kKeptListings)
            m_kept.pop_front();
        return entries;
    }

    // The listing read last for the directory, taken out of the kept ones, or a
    // fresh one.
    std::vector<RemoteEntry> takeListing(const std::string& dirUrl) {
        for (auto it = m_kept.rbegin(); it != m_kept.rend(); ++it)
            if (it->first == dirUrl) {
                std::vector<RemoteEntry> entries = std::move(it->second);
                m_kept.erase(std::next(it).base());
                return entries;
            }
        const RemoteUrl url = parseRemoteUrl(dirUrl);
        return onHost(url, [&](SshConnection& c) { return c.list(url.path); });
    }

    FileFacts facts(const RemoteUrl& url, const std::string& path, const RemoteEntry* e) {
        FileFacts f;
        if (!e || e->kind != RemoteEntry::Kind::File || e->name.empty() || e->name.front() == '.')
            return f; // NotFound, as for a local directory, device or hidden name
        // The bits decide when they let everyone read; otherwise an open does.
        constexpr std::uint32_t kEveryone = 0444;
        if ((e->permissions & kEveryone) != kEveryone &&
            !onHost(url, [&](SshConnection& c) { return c.canRead(path); })) {
            f.status = FileFacts::Status::CannotOpen;
            return f;
        }
        f.status = FileFacts::Status::Ok;
        f.length = e->size;
        f.haveTime = e->haveTime && toCalendarUtc(e->mtime, f.lastWrite);
        return f;
    }

    std::vector<std::string> failures() const {
        std::vector<std::string> out;
        for (const auto& [host, message] : m_failures)
            out.push_back(message);
        return out;
    }

    void closeAll() {
        m_kept.clear();
        m_connections.clear();
        m_failures.clear();
    }

  private:
    std::map<std::string, std::unique_ptr<SshConnection>> m_connections;
    std::map<std::string, std::string> m_failures;
    std::deque<std::pair<std::string, std::vector<RemoteEntry>>> m_kept;
};

// Kept to the end: the connections are closed by an exit handler of their own,
// registered after the crypto library's (which would leave them unusable).
RemoteFiles& remoteFiles() {
    static RemoteFiles* files = new RemoteFiles;
    return *files;
}

void closeAtExit() {
    static const bool registered = std::atexit([] { remoteFiles().closeAll(); }) == 0;
    (void)registered;
}

std::string lastName(const std::string& path) {
    return path.substr(path.find_last_of('/') + 1);
}

} // namespace

RemoteDirectory readRemoteDirectory(const std::string& url) {
    RemoteDirectory dir;
    for (const RemoteEntry& e : remoteFiles().list(url)) {
        if (e.name.empty() || e.name.front() == '.')
            continue; // hidden
        if (e.kind == RemoteEntry::Kind::File)
            dir.files.push_back(e.name);
        else if (e.kind == RemoteEntry::Kind::Directory)
            dir.subdirectories.push_back(e.name);
    }
    return dir;
}

std::vector<FileFacts> remoteFileFacts(const std::string& dirUrl,
                                       const std::vector<std::string>& names) {
    RemoteFiles& files = remoteFiles();
    const RemoteUrl url = parseRemoteUrl(dirUrl);
    std::map<std::string, RemoteEntry> byName;
    for (RemoteEntry& e : files.takeListing(dirUrl))
        byName.emplace(e.name, std::move(e));
    std::vector<FileFacts> out;
    out.reserve(names.size());
    for (const std::string& entry : names) {
        // As for a local directory, a name is looked up without its trailing blanks.
        const std::string name = entry.substr(0, entry.find_last_not_of(' ') + 1);
        auto it = byName.find(name);
        const std::string path = url.path == "/" ? "/" + name : url.path + "/" + name;
        out.push_back(files.facts(url, path, it == byName.end() ? nullptr : &it->second));
    }
    return out;
}

FileFacts probeRemoteFile(const std::string& text) {
    RemoteFiles& files = remoteFiles();
    const RemoteUrl url = parseRemoteUrl(text);
    std::optional<RemoteEntry> e =
        files.onHost(url, [&](SshConnection& c) { return c.stat(url.path); });
    if (e)
        e->name = lastName(url.path);
    return files.facts(url, url.path, e ? &*e : nullptr);
}

std::FILE* openRemoteCopy(const std::string& text, int& err, std::string& why) {
    std::FILE* copy = nullptr;
    try {
        const RemoteUrl url = parseRemoteUrl(text);
        copy = std::tmpfile();
        if (!copy)
            throw RuntimeError::fromErrno(errno, "cannot make a temporary file");
        remoteFiles().onHost(url, [&](SshConnection& c) {
            c.copyTo(url.path, copy);
            return 0;
        });
        std::rewind(copy);
        return copy;
    } catch (const RuntimeError& e) {
        if (copy)
            std::fclose(copy);
        err = e.number() > 0 && e.number() != EINVAL ? e.number() : EIO;
        why = e.number() > 0 && e.number() != EINVAL ? std::string() : e.what();
        return nullptr;
    }
}

std::vector<std::string> remoteConnectionFailures() {
    return remoteFiles().failures();
}

void closeRemoteConnections() {
    remoteFiles().closeAll();
}

} // namespace pv
