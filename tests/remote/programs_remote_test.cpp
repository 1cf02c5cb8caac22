// The programs with a side on another machine: pvcompare and pvcmd's fc give the
// same lines and exit status as for the same files on this machine; a refusal
// ends pvcompare with status 2.

#include "remote/sshservertest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace {

using Output = pvtest::ProgramOutput;

class RemotePrograms : public pvtest::SshServerTest {
  protected:
    void SetUp() override {
        pvtest::SshServerTest::SetUp();
        if (IsSkipped())
            return;
        for (const char* program : {"pvcompare", "pvcmd"})
            if (!std::filesystem::exists(std::string(PV_BINARY_DIR) + "/" + program))
                GTEST_SKIP() << program << " is not built";
    }

    Output run(const char* program, std::vector<std::string> args) {
        pvtest::EnvGuard programHome("PAIRVIEW_HOME", home.str());
        pvtest::EnvGuard editor("PAIRVIEW_EDITOR", "true");
        args.insert(args.begin(), std::string(PV_BINARY_DIR) + "/" + program);
        return pvtest::runProgram(args);
    }
    Output pvcompare(std::vector<std::string> args) { return run("pvcompare", std::move(args)); }

    // The output without the run's times and with the server's part of the
    // remote paths taken out (the remote path is the same absolute path).
    std::string comparable(const std::string& out) const {
        const std::string prefix = server->url("");
        std::istringstream in(out);
        std::string line, result;
        while (std::getline(in, line)) {
            for (size_t at; (at = line.find(prefix)) != std::string::npos;)
                line.erase(at, prefix.size());
            if (line.rfind("Start\t", 0) == 0 || line.rfind("end of ", 0) == 0)
                line = line.substr(0, line.find('\t'));
            result += line + "\n";
        }
        return result;
    }

    pvtest::TempDir home;
};

TEST_F(RemotePrograms, EitherSideRemoteGivesTheLocalLinesAndStatus) {
    tree.write("l/same.txt", "abc");
    tree.write("r/same.txt", "abc");
    tree.write("l/len.txt", "abc");
    tree.write("r/len.txt", "abcd");
    tree.write("l/only left.txt", "1");
    tree.write("r/only right ü.txt", "1");
    tree.write("l/sub dir/deep/x.txt", "1");
    tree.write("r/sub dir/deep/x.txt", "22");
    tree.write("l/left only dir/y.txt", "1");
    tree.write("r/right only dir/y.txt", "1");
    for (const char* f : {"same.txt", "len.txt", "sub dir/deep/x.txt"}) {
        pvtest::setMTime(tree / (std::string("l/") + f), 1600000000);
        pvtest::setMTime(tree / (std::string("r/") + f), 1600000000);
    }
    const std::string l = tree / "l", r = tree / "r";
    const Output local = pvcompare({"-s", l, r});
    ASSERT_EQ(local.status, 1) << local.out << local.err;
    ASSERT_NE(local.out.find("-different-"), std::string::npos) << local.out;

    const Output rightRemote = pvcompare({"-s", l, server->url(r)});
    EXPECT_EQ(rightRemote.status, local.status) << rightRemote.err;
    EXPECT_EQ(comparable(rightRemote.out), comparable(local.out));
    EXPECT_EQ(rightRemote.err, "");
    EXPECT_NE(rightRemote.out.find("Directory 2: " + server->url(r) + " \n"), std::string::npos);

    const Output leftRemote = pvcompare({server->url(l), r});
    EXPECT_EQ(leftRemote.status, pvcompare({l, r}).status);
    EXPECT_EQ(comparable(leftRemote.out), comparable(pvcompare({l, r}).out));

    // Equal trees: status 0 on both sides of the network.
    EXPECT_EQ(pvcompare({"-s", server->url(l), l}).status, 0);
}

TEST_F(RemotePrograms, UnknownHostKeyEndsTheRunWithStatusTwo) {
    server->setKnownHosts(pvtest::SshServer::Known::Nothing);
    const Output run = pvcompare({"-s", tree.str(), server->url(tree.str())});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("pvcompare: 127.0.0.1:" + std::to_string(server->port()) +
                           ": the host key is not known"),
              std::string::npos)
        << run.err;
    EXPECT_NE(run.err.find(server->fingerprint()), std::string::npos) << run.err;
}

TEST_F(RemotePrograms, ConnectionLostInTheWalkEndsItWithItsLinesSoFar) {
    for (int n = 0; n < 60; ++n)
        tree.write("l/dir" + std::to_string(n) + "/f.txt", "1");
    // The connection is cut after the client has sent this much: the set-up and
    // some directories.
    pvtest::Relay cut(server->port(), 9000, pvtest::Relay::After::Cut);
    server->knowAlsoAt(cut.port());
    const Output run = pvcompare(
        {"-s", tree / "l", "ssh://127.0.0.1:" + std::to_string(cut.port()) + (tree / "l")});
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.err.find("pvcompare: the connection to 127.0.0.1:" + std::to_string(cut.port()) +
                           " was lost"),
              std::string::npos)
        << run.err;
    // The pairs compared before stand; the walk stopped instead of failing on
    // every directory left.
    EXPECT_NE(run.out.find("-matched-"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("\nCompare stopped after "), std::string::npos) << run.out;
    EXPECT_LE(std::count(run.out.begin(), run.out.end(), '\n'), 60 * 13) << run.out;
}

TEST_F(RemotePrograms, FcReadsRemoteFiles) {
    tree.write("a.txt", "one\ntwo\nthree\n");
    tree.write("b c.txt", "one\n2\nthree\n");
    tree.write("a.bin", "\x01\x02");
    tree.write("b.bin", "\x01\x03");
    for (auto [one, two] : {std::pair{"a.txt", "b c.txt"}, std::pair{"a.bin", "b.bin"},
                            std::pair{"a.txt", "a.txt"}}) {
        const Output local = run("pvcmd", {"fc", tree / one, tree / two});
        const Output remote = run("pvcmd", {"fc", server->url(tree / one), tree / two});
        EXPECT_EQ(remote.status, local.status) << one << remote.err;
        EXPECT_EQ(comparable(remote.out), comparable(local.out)) << one;
        EXPECT_EQ(remote.err, local.err);
    }
    const Output missing = run("pvcmd", {"fc", server->url(tree / "none.txt"), tree / "a.txt"});
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(missing.out, "FC: cannot open " + server->url(tree / "none.txt") +
                               " - No such file or folder\r\n");
    // A host that cannot be reached is named with the reason.
    const Output refused = run("pvcmd", {"fc", "ssh://127.0.0.1:1/x", tree / "a.txt"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_NE(refused.out.find("FC: cannot open ssh://127.0.0.1:1/x - 127.0.0.1:1: cannot connect"),
              std::string::npos)
        << refused.out;
}

} // namespace
