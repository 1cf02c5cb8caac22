#include "support/temptree.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/time.h>

namespace fs = std::filesystem;

namespace pvtest {

TempDir::TempDir() {
    std::string tmpl = (fs::temp_directory_path() / "pvtest-XXXXXX").string();
    if (!::mkdtemp(tmpl.data()))
        throw std::runtime_error("mkdtemp failed");
    m_path = tmpl;
}

TempDir::~TempDir() {
    std::error_code ec;
    // Tests may leave read-only directories behind; make them writable first.
    for (auto it = fs::recursive_directory_iterator(m_path, ec);
         !ec && it != fs::recursive_directory_iterator(); it.increment(ec)) {
        std::error_code ignored;
        if (it->is_directory(ignored))
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::permissions(m_path, fs::perms::owner_all, fs::perm_options::add, ec);
    fs::remove_all(m_path, ec);
}

std::string TempDir::operator/(std::string_view relative) const {
    return (m_path / relative).string();
}

std::string TempDir::write(std::string_view relative, std::string_view bytes) const {
    fs::path p = m_path / relative;
    fs::create_directories(p.parent_path());
    std::ofstream out(p, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out)
        throw std::runtime_error("cannot write " + p.string());
    return p.string();
}

std::string TempDir::mkdir(std::string_view relative) const {
    fs::path p = m_path / relative;
    fs::create_directories(p);
    return p.string();
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

void setMTime(const std::string& path, long long secondsSinceEpoch) {
    struct timeval times[2];
    times[0].tv_sec = static_cast<time_t>(secondsSinceEpoch);
    times[0].tv_usec = 0;
    times[1] = times[0];
    if (::utimes(path.c_str(), times) != 0)
        throw std::runtime_error("utimes failed for " + path);
}

} // namespace pvtest
