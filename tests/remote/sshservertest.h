#pragma once
// The base of the tests that need an SSH server: one server per test program,
// a clean set of connections for every test, the fixture's ~/.ssh in place of
// the user's, and no ssh-agent.

#include "remote/sshserver.h"

#include "remote/remotefiles.h"
#include "support/envguard.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace pvtest {

class SshServerTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        ::unsetenv("SSH_AUTH_SOCK");
        server = new SshServer;
    }
    static void TearDownTestSuite() {
        delete server;
        server = nullptr;
    }
    void SetUp() override {
        if (!server->unavailable().empty())
            GTEST_SKIP() << "no SSH server for the test: " << server->unavailable();
        server->setKnownHosts(SshServer::Known::ServerKey);
        pv::closeRemoteConnections();
    }
    void TearDown() override { pv::closeRemoteConnections(); }
    // A new server, for a test that spoilt this one (stopped it, changed its keys).
    static void restartServer() {
        delete server;
        server = new SshServer;
    }

    // The message of the exception `f` throws, or "" when it throws none.
    template <typename F> static std::string failure(F&& f) {
        try {
            f();
        } catch (const std::exception& e) {
            return e.what();
        }
        return {};
    }

    static inline SshServer* server = nullptr;
    EnvGuard sshDir{"PAIRVIEW_SSH_DIR", server->clientDir()};
    TempDir tree;
};

} // namespace pvtest
