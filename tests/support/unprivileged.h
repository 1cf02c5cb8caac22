#pragma once
// Permission checks do not bind the superuser, and CI runs as root. These
// helpers run a piece of a test as the unprivileged user "nobody" in a child
// process, so an unreadable file really is unreadable there.

#include <filesystem>
#include <functional>
#include <string>

namespace pvtest {

// The child's exit code when privileges could not be dropped.
inline constexpr int kCannotDropPrivileges = 125;

// Runs `body` in a forked child as user and group 65534 when the test runs as
// root, else in a forked child as the current user. Returns the body's result,
// or kCannotDropPrivileges. Only the return value crosses back: the body must
// not rely on GoogleTest assertions (they would be lost with the child).
int runUnprivileged(const std::function<int()>& body);

// Gives a tree (the directory and everything below it) to the user that
// runUnprivileged runs as, so that the child can read and write it; a no-op
// when the test does not run as root.
void handToUnprivileged(const std::filesystem::path& tree);

} // namespace pvtest
