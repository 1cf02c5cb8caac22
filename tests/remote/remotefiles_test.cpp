// Remote directories through a real OpenSSH server: the listing and attribute
// texts equal the local ones, and every failure is a clear message, never a hang.

#include "remote/sshservertest.h"

#include "compare/fileattributes.h"
#include "compare/filelisting.h"
#include "platform/runtimeerror.h"
#include "remote/remotefiles.h"
#include "support/envguard.h"
#include "support/temptree.h"
#include "support/unprivileged.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class RemoteFiles : public pvtest::SshServerTest {};

TEST_F(RemoteFiles, ListingAndAttributeTextsEqualTheLocalOnes) {
    tree.write("d/a b.txt", "blanks");
    tree.write("d/ünïcødé.txt", "non-ASCII");
    tree.write("d/back\\", "trailing backslash");
    tree.write("d/trail ", "trailing blank: looked up without it, as locally");
    tree.write("d/private.txt", "owner only");
    fs::permissions(tree / "d/private.txt", fs::perms::owner_read | fs::perms::owner_write);
    tree.write("d/.hidden", "left out");
    tree.mkdir("d/sub dir");
    tree.mkdir("d/.hiddendir");
    fs::create_symlink("a b.txt", tree / "d/link.txt");
    fs::create_symlink("sub dir", tree / "d/linkdir");
    fs::create_symlink("nowhere", tree / "d/dangling");
    ::mkfifo((tree / "d/fifo").c_str(), 0644);
    pvtest::setMTime(tree / "d/a b.txt", 1700000000);

    const std::string local = tree / "d";
    const std::string remote = server->url(local);
    const pv::DirectoryListing expected = pv::readDirectory(local);
    const pv::DirectoryListing got = pv::readDirectory(remote);
    EXPECT_EQ(got.files, expected.files);
    EXPECT_EQ(got.subdirectories, expected.subdirectories);
    ASSERT_EQ(expected.files.size(), 6u); // the test's own tree is what it thinks
    EXPECT_EQ(pv::listSubdirectories(remote), expected.subdirectories);
    EXPECT_EQ(pv::listFiles(remote, "*.txt"), pv::listFiles(local, "*.txt"));

    std::vector<std::string> names = expected.files;
    names.push_back("missing.txt");
    names.push_back("sub dir");
    names.push_back(".hidden");
    for (bool date : {false, true})
        for (bool length : {false, true})
            EXPECT_EQ(pv::directoryAttributeTexts(remote, names, date, length),
                      pv::directoryAttributeTexts(local, names, date, length))
                << date << length;
    EXPECT_EQ(pv::fileAttributeText(server->url(local + "/a b.txt"), true, true),
              "2023\\11\\14 22:13:20 - 6");
    EXPECT_EQ(pv::fileAttributeText(server->url(local + "/nothing"), true, true), pv::kCantFind);
    // One connection served all of it.
    EXPECT_TRUE(pv::remoteConnectionFailures().empty());
}

TEST_F(RemoteFiles, DirectoryErrorsCarryTheirNumbers) {
    tree.write("file.txt");
    auto number = [](const std::string& url) {
        try {
            pv::readDirectory(url);
        } catch (const pv::RuntimeError& e) {
            return e.number();
        }
        return 0;
    };
    EXPECT_EQ(number(server->url(tree / "missing")), ENOENT);
    EXPECT_EQ(number(server->url(tree / "file.txt")), ENOTDIR);
    EXPECT_NE(failure([&] {
                  pv::readDirectory(server->url(tree / "missing"));
              }).find("127.0.0.1:" + std::to_string(server->port())),
              std::string::npos);
    // A directory that is missing does not end the connection.
    EXPECT_TRUE(pv::remoteConnectionFailures().empty());
}

TEST_F(RemoteFiles, UnreadableDirectoryAndFileAsForALocalUser) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "logging in as another user needs root";
    tree.write("d/mine.txt", "x");
    tree.mkdir("d/closed");
    pvtest::handToUnprivileged(tree.path());
    tree.write("d/secret.txt", "x"); // root's own
    ::chmod((tree / "d/secret.txt").c_str(), 0600);
    ::chmod((tree / "d/closed").c_str(), 0);
    const std::string base =
        "ssh://nobody@127.0.0.1:" + std::to_string(server->port()) + (tree / "d");
    try {
        pv::readDirectory(base + "/closed");
        ADD_FAILURE() << "read an unreadable directory";
    } catch (const pv::RuntimeError& e) {
        EXPECT_EQ(e.number(), EACCES) << e.what();
    }
    EXPECT_EQ(pv::directoryAttributeTexts(base, {"mine.txt", "secret.txt"}, false, true),
              (std::vector<std::string>{" - 1", std::string(pv::kCantOpen)}));
}

TEST_F(RemoteFiles, UnknownHostKeyIsRefusedWithItsFingerprint) {
    server->setKnownHosts(pvtest::SshServer::Known::Nothing);
    const std::string message = failure([&] { pv::readDirectory(server->url(tree.str())); });
    EXPECT_NE(message.find("not known"), std::string::npos) << message;
    EXPECT_NE(message.find(server->fingerprint()), std::string::npos) << message;
    EXPECT_NE(message.find("ssh-keyscan -p " + std::to_string(server->port()) + " 127.0.0.1 >> " +
                           server->clientDir() + "/known_hosts"),
              std::string::npos)
        << message;
    // Refused once, then at once for every later directory of the run.
    EXPECT_EQ(pv::remoteConnectionFailures(), std::vector<std::string>{message});
    server->setKnownHosts(pvtest::SshServer::Known::ServerKey);
    EXPECT_EQ(failure([&] { pv::readDirectory(server->url(tree.str())); }), message);
}

TEST_F(RemoteFiles, ChangedHostKeyIsRefused) {
    server->setKnownHosts(pvtest::SshServer::Known::OtherKey);
    const std::string message = failure([&] { pv::readDirectory(server->url(tree.str())); });
    EXPECT_NE(message.find("host key has CHANGED"), std::string::npos) << message;
    EXPECT_NE(message.find(server->fingerprint()), std::string::npos) << message;
}

TEST_F(RemoteFiles, WrongUserKeyFailsAuthentication) {
    server->useUnknownUserKey();
    const std::string message = failure([&] { pv::readDirectory(server->url(tree.str())); });
    EXPECT_NE(message.find("authentication failed"), std::string::npos) << message;
    restartServer(); // with the accepted key, for the tests after this one
}

TEST_F(RemoteFiles, RefusedAndUnknownHostsNameTheHost) {
    const std::string refused = failure([&] { pv::readDirectory("ssh://127.0.0.1:1/tmp"); });
    EXPECT_NE(refused.find("127.0.0.1:1: cannot connect"), std::string::npos) << refused;
    const std::string unknown =
        failure([&] { pv::readDirectory("ssh://pairview-no-such-host.invalid/tmp"); });
    EXPECT_NE(unknown.find("pairview-no-such-host.invalid: cannot connect"), std::string::npos)
        << unknown;
    EXPECT_EQ(pv::remoteConnectionFailures().size(), 2u);
}

TEST_F(RemoteFiles, LostConnectionEndsEveryLaterRequestAtOnce) {
    tree.mkdir("a");
    tree.mkdir("b");
    pv::readDirectory(server->url(tree / "a"));
    server->stop();
    const std::string message = failure([&] { pv::readDirectory(server->url(tree / "b")); });
    EXPECT_NE(
        message.find("the connection to 127.0.0.1:" + std::to_string(server->port()) + " was lost"),
        std::string::npos)
        << message;
    EXPECT_EQ(failure([&] { pv::readDirectory(server->url(tree / "a")); }), message);
    EXPECT_EQ(pv::remoteConnectionFailures(), std::vector<std::string>{message});
    restartServer();
}

TEST_F(RemoteFiles, ServerThatStopsAnsweringIsGivenUpAfterTheTimeAllowed) {
    pvtest::EnvGuard limit("PAIRVIEW_SSH_TIMEOUT", "0.5");
    pvtest::Relay relay(server->port(), 1L << 30, pvtest::Relay::After::Freeze);
    server->knowAlsoAt(relay.port());
    const std::string base = "ssh://127.0.0.1:" + std::to_string(relay.port());
    pv::readDirectory(base + tree.str());
    relay.freeze();
    const std::string message = failure([&] { pv::readDirectory(base + tree.str()); });
    EXPECT_EQ(message, "the connection to 127.0.0.1:" + std::to_string(relay.port()) +
                           " was lost (no answer within 500 ms)");
}

} // namespace
