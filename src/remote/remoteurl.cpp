#include "remote/remoteurl.h"

#include "platform/runtimeerror.h"

#include <cerrno>
#include <charconv>
#include <filesystem>

namespace pv {

namespace {

bool startsWithScheme(std::string_view text) {
    if (text.size() < kRemoteScheme.size())
        return false;
    for (size_t i = 0; i < kRemoteScheme.size(); ++i) {
        char c = text[i];
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
        if (c != kRemoteScheme[i])
            return false;
    }
    return true;
}

[[noreturn]] void refuse(std::string_view text, const std::string& why) {
    throw RuntimeError(EINVAL, "\"" + std::string(text) + "\" is not a remote path (" +
                                   kRemoteScheme.data() + "[user@]host[:port]/path): " + why);
}

bool isNameChar(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
           c == '-' || c == '_';
}

// Host names and user names: letters, digits, ".", "-", "_", not starting with
// "-" (which a tool would take for an option).
bool isPlainName(std::string_view s) {
    if (s.empty() || s.front() == '-')
        return false;
    for (char c : s)
        if (!isNameChar(c))
            return false;
    return true;
}

bool isIpv6(std::string_view s) {
    if (s.empty() || s.find(':') == std::string_view::npos)
        return false;
    for (char c : s)
        if (!((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F') ||
              c == ':' || c == '.'))
            return false;
    return true;
}

// As for a local directory: "." and ".." resolved, no repeated or trailing "/".
std::string normalAbsolute(std::string_view path) {
    std::string p = std::filesystem::path(path).lexically_normal().string();
    while (p.size() > 1 && p.back() == '/')
        p.pop_back();
    return p;
}

} // namespace

bool isRemotePath(std::string_view text) {
    return startsWithScheme(text);
}

RemoteUrl parseRemoteUrl(std::string_view text) {
    if (!startsWithScheme(text))
        refuse(text, "it does not start with " + std::string(kRemoteScheme));
    std::string_view rest = text.substr(kRemoteScheme.size());
    const size_t slash = rest.find('/');
    if (slash == std::string_view::npos)
        refuse(text, "no absolute path after the host");
    std::string_view authority = rest.substr(0, slash);
    RemoteUrl url;
    url.path = normalAbsolute(rest.substr(slash));

    if (const size_t at = authority.rfind('@'); at != std::string_view::npos) {
        url.user = std::string(authority.substr(0, at));
        if (!isPlainName(url.user))
            refuse(text, "the user name \"" + url.user + "\" is not a plain name");
        authority.remove_prefix(at + 1);
    }
    std::string_view portText;
    if (!authority.empty() && authority.front() == '[') {
        const size_t close = authority.find(']');
        if (close == std::string_view::npos)
            refuse(text, "the IPv6 address has no closing \"]\"");
        url.host = std::string(authority.substr(1, close - 1));
        if (!isIpv6(url.host))
            refuse(text, "\"" + url.host + "\" is not an IPv6 address");
        std::string_view after = authority.substr(close + 1);
        if (!after.empty()) {
            if (after.front() != ':')
                refuse(text, "unexpected text after the IPv6 address");
            portText = after.substr(1);
            if (portText.empty())
                refuse(text, "the port is empty");
        }
    } else {
        const size_t colon = authority.find(':');
        url.host = std::string(authority.substr(0, colon));
        if (url.host.empty())
            refuse(text, "no host");
        if (!isPlainName(url.host))
            refuse(text, "the host \"" + url.host + "\" is not a host name or address");
        if (colon != std::string_view::npos) {
            portText = authority.substr(colon + 1);
            if (portText.empty())
                refuse(text, "the port is empty");
        }
    }
    if (!portText.empty()) {
        int port = 0;
        auto [end, ec] = std::from_chars(portText.data(), portText.data() + portText.size(), port);
        if (ec != std::errc() || end != portText.data() + portText.size() || port < 1 ||
            port > 65535 || portText.front() == '+')
            refuse(text,
                   "the port \"" + std::string(portText) + "\" is not a number from 1 to 65535");
        url.port = port;
    }
    return url;
}

std::string remoteHostText(const RemoteUrl& url) {
    std::string s;
    if (!url.user.empty())
        s = url.user + "@";
    s += url.host.find(':') == std::string::npos ? url.host : "[" + url.host + "]";
    if (url.port != 0)
        s += ":" + std::to_string(url.port);
    return s;
}

std::string remoteUrlText(const RemoteUrl& url) {
    return std::string(kRemoteScheme) + remoteHostText(url) + url.path;
}

std::string normalizeRemotePath(std::string_view text) {
    return remoteUrlText(parseRemoteUrl(text));
}

} // namespace pv
