// Remote paths: what is read from ssh://[user@]host[:port]/path and what is refused.

#include "platform/runtimeerror.h"
#include "remote/remoteurl.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>

namespace {

struct UrlCase {
    const char* name;
    const char* text;
    // Expected parts, or nullopt when the text must be refused.
    std::optional<pv::RemoteUrl> parts;
    const char* roundTrip = nullptr; // the normalised URL text, when accepted
};

void PrintTo(const UrlCase& row, std::ostream* os) {
    *os << row.name;
}

pv::RemoteUrl parts(std::string user, std::string host, int port, std::string path) {
    return {std::move(user), std::move(host), port, std::move(path)};
}

class RemoteUrlParse : public ::testing::TestWithParam<UrlCase> {};

TEST_P(RemoteUrlParse, ReadsOrRefuses) {
    const UrlCase& c = GetParam();
    if (!c.parts) {
        try {
            pv::parseRemoteUrl(c.text);
            FAIL() << "accepted " << c.text;
        } catch (const pv::RuntimeError& e) {
            // The message quotes the text, so the user sees what was refused.
            EXPECT_NE(std::string(e.what()).find(std::string("\"") + c.text + "\""),
                      std::string::npos)
                << e.what();
        }
        return;
    }
    const pv::RemoteUrl url = pv::parseRemoteUrl(c.text);
    EXPECT_EQ(url.user, c.parts->user);
    EXPECT_EQ(url.host, c.parts->host);
    EXPECT_EQ(url.port, c.parts->port);
    EXPECT_EQ(url.path, c.parts->path);
    EXPECT_EQ(pv::normalizeRemotePath(c.text), c.roundTrip);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RemoteUrlParse,
    ::testing::Values(
        UrlCase{"host_and_path", "ssh://web1/srv/site", parts("", "web1", 0, "/srv/site"),
                "ssh://web1/srv/site"},
        UrlCase{"user_port", "ssh://deploy@web1:2222/srv", parts("deploy", "web1", 2222, "/srv"),
                "ssh://deploy@web1:2222/srv"},
        UrlCase{"scheme_any_case", "SSH://web1/", parts("", "web1", 0, "/"), "ssh://web1/"},
        UrlCase{"root_only", "ssh://h/", parts("", "h", 0, "/"), "ssh://h/"},
        UrlCase{"trailing_and_double_separators", "ssh://h//srv//a/", parts("", "h", 0, "/srv/a"),
                "ssh://h/srv/a"},
        UrlCase{"dot_segments", "ssh://h/srv/./a/../b", parts("", "h", 0, "/srv/b"),
                "ssh://h/srv/b"},
        UrlCase{"dotdot_above_root", "ssh://h/../x", parts("", "h", 0, "/x"), "ssh://h/x"},
        // The path is the remote system's bytes: no %-decoding, nothing special.
        UrlCase{"path_with_blanks", "ssh://h/my dir/a b", parts("", "h", 0, "/my dir/a b"),
                "ssh://h/my dir/a b"},
        UrlCase{"path_with_percent", "ssh://h/100%20/%PATH%", parts("", "h", 0, "/100%20/%PATH%"),
                "ssh://h/100%20/%PATH%"},
        UrlCase{"path_with_quote_and_shell_chars", "ssh://h/a\"b/&|>^",
                parts("", "h", 0, "/a\"b/&|>^"), "ssh://h/a\"b/&|>^"},
        UrlCase{"path_trailing_backslash", "ssh://h/dir\\", parts("", "h", 0, "/dir\\"),
                "ssh://h/dir\\"},
        UrlCase{"path_with_at_and_colon", "ssh://u@h/a@b:c", parts("u", "h", 0, "/a@b:c"),
                "ssh://u@h/a@b:c"},
        UrlCase{"ipv6", "ssh://[::1]:2200/tmp", parts("", "::1", 2200, "/tmp"),
                "ssh://[::1]:2200/tmp"},
        UrlCase{"ipv6_user_no_port", "ssh://me@[fe80::1]/", parts("me", "fe80::1", 0, "/"),
                "ssh://me@[fe80::1]/"},
        UrlCase{"port_bounds", "ssh://h:65535/", parts("", "h", 65535, "/"), "ssh://h:65535/"},
        UrlCase{"no_scheme", "/srv/site", std::nullopt},
        UrlCase{"missing_path", "ssh://web1", std::nullopt},
        UrlCase{"missing_host", "ssh:///srv", std::nullopt},
        UrlCase{"user_without_host", "ssh://u@/srv", std::nullopt},
        UrlCase{"empty_user", "ssh://@h/srv", std::nullopt},
        UrlCase{"port_zero", "ssh://h:0/", std::nullopt},
        UrlCase{"port_too_big", "ssh://h:65536/", std::nullopt},
        UrlCase{"port_not_number", "ssh://h:22x/", std::nullopt},
        UrlCase{"port_signed", "ssh://h:+22/", std::nullopt},
        UrlCase{"port_empty", "ssh://h:/", std::nullopt},
        UrlCase{"host_as_option", "ssh://-oProxyCommand=x/", std::nullopt},
        UrlCase{"user_as_option", "ssh://-l@h/", std::nullopt},
        UrlCase{"host_with_blank", "ssh://a b/", std::nullopt},
        UrlCase{"host_with_semicolon", "ssh://h;rm/", std::nullopt},
        UrlCase{"user_with_quote", "ssh://a\"b@h/", std::nullopt},
        UrlCase{"ipv6_unclosed", "ssh://[::1/x", std::nullopt},
        UrlCase{"ipv6_not_hex", "ssh://[::g]/x", std::nullopt},
        UrlCase{"ipv6_junk_after", "ssh://[::1]x/", std::nullopt}),
    [](const ::testing::TestParamInfo<UrlCase>& info) { return std::string(info.param.name); });

TEST(RemoteUrl, OnlyTheSchemeMakesAPathRemote) {
    EXPECT_TRUE(pv::isRemotePath("ssh://h/"));
    EXPECT_TRUE(pv::isRemotePath("Ssh://h/"));
    EXPECT_FALSE(pv::isRemotePath("ssh:/h/"));
    EXPECT_FALSE(pv::isRemotePath("./ssh://h/"));
    EXPECT_FALSE(pv::isRemotePath("ssh:"));
}

TEST(RemoteUrl, HostTextForMessages) {
    EXPECT_EQ(pv::remoteHostText(pv::parseRemoteUrl("ssh://u@[::1]:22/x")), "u@[::1]:22");
    EXPECT_EQ(pv::remoteHostText(pv::parseRemoteUrl("ssh://h/x")), "h");
}

} // namespace
