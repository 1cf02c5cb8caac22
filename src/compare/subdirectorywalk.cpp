#include "compare/subdirectorywalk.h"

#include "platform/fileidentity.h"
#include "platform/runtimeerror.h"

#include <cerrno>
#include <cstring>
#include <exception>
#include <set>

namespace pv {

namespace {

// The part of a path below its base, without a leading separator, so that a base
// at the root "/" and one below it give the same relative path.
std::string relativeTo(const std::string& base, const std::string& path) {
    std::string rel = path.size() > base.size() ? path.substr(base.size()) : std::string();
    size_t b = rel.find_first_not_of('/');
    return b == std::string::npos ? std::string() : rel.substr(b);
}

std::string lastName(const std::string& path) {
    size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

template <typename F> void passOver(F&& step) {
    try {
        step();
    } catch (const std::exception&) {
    }
}

// Why a directory could not be shown: the system's text for its error number.
std::string reasonOf(const std::exception& e) {
    if (auto* r = dynamic_cast<const RuntimeError*>(&e); r && r->number() > 0)
        return std::strerror(r->number());
    return e.what();
}

bool isMissing(const std::exception& e) {
    auto* r = dynamic_cast<const RuntimeError*>(&e);
    return r && (r->number() == ENOENT || r->number() == ENOTDIR);
}

} // namespace

std::string SubDirectoryWalk::counterpart(const std::string& base1, const std::string& base2,
                                          const std::string& leftDir) {
    std::string rel = relativeTo(base1, leftDir);
    if (rel.empty())
        return base2;
    return (!base2.empty() && base2.back() == '/') ? base2 + rel : base2 + "/" + rel;
}

void SubDirectoryWalk::run(const std::string& base1, const std::string& base2) {
    m_base1 = base1;
    m_base2 = base2;
    m_visited.clear();
    m_rightOnly.clear();
    walk(base1, 0);
    // The right tree's directories that the left walk never reached, each once at
    // its top, after the walk.
    for (const std::string& path : m_rightOnly)
        passOver([&] {
            m_hooks.addLine("Unmatched sub directory : '" + path + "' exists only in directory 2");
        });
}

bool SubDirectoryWalk::enter(const std::string& dir) {
    const std::optional<FileIdentity> id = fileIdentity(dir);
    if (!id)
        return true;
    auto [at, fresh] = m_visited.emplace(*id, dir);
    if (fresh || !isSymbolicLink(dir))
        return true;
    // A link to a directory the walk has been in: following it again would walk
    // that tree once more, and a link to an ancestor without end.
    passOver([&] {
        const std::string line =
            "Sub directory loop : '" + dir + "' leads to '" + at->second + "', not entered";
        if (m_hooks.addNote)
            m_hooks.addNote(line);
        else
            m_hooks.addLine(line);
    });
    return false;
}

void SubDirectoryWalk::walk(const std::string& dir, int depth) {
    if (m_hooks.betweenLevels)
        passOver(m_hooks.betweenLevels);
    if (m_hooks.stopRequested && m_hooks.stopRequested())
        return;
    if (!enter(dir))
        return;
    bool doCompare = false;
    std::string rightNow = m_base2;
    if (depth == 0) {
        doCompare = true;
    } else {
        std::string leftNow;
        bool leftMoved = false;
        try {
            leftNow = m_hooks.moveLeft(dir);
            leftMoved = true;
        } catch (const std::exception& e) {
            // The left pane still shows the previous directory: comparing now
            // would pair the wrong directories.
            passOver([&] {
                m_hooks.addLine("Unreadable sub directory : '" + dir + "' " + reasonOf(e));
            });
        }
        std::string rightDir = counterpart(m_base1, m_base2, dir);
        bool rightMoved = false;
        if (leftMoved) {
            try {
                rightNow = m_hooks.moveRight(rightDir);
                rightMoved = true;
            } catch (const std::exception& e) {
                passOver([&] {
                    if (isMissing(e))
                        m_hooks.addLine("Unmatched sub directory : '\t" + rightDir +
                                        "' does not exist");
                    else
                        m_hooks.addLine("Unreadable sub directory : '" + rightDir + "' " +
                                        reasonOf(e));
                });
            }
        }
        if (rightMoved) {
            std::string rel1 = relativeTo(m_base1, leftNow);
            std::string rel2 = relativeTo(m_base2, rightNow);
            if (rel1 == rel2)
                doCompare = true;
            else
                passOver([&] {
                    m_hooks.addLine("Unmatched sub directory : 1:'" + leftNow + "' <> 2:'" +
                                    rightNow + "'");
                });
        }
    }
    if (doCompare)
        passOver(m_hooks.compare);
    std::vector<std::string> children;
    passOver([&] { children = m_hooks.subdirectories(dir); });
    if (doCompare)
        noteRightOnly(children, rightNow);
    for (const std::string& child : children) {
        if (depth + 1 < kWalkLevels)
            walk(child, depth + 1);
        else
            passOver([&] { m_hooks.addLine(std::string(kTooDeep)); });
    }
    if (m_hooks.levelDone)
        passOver(m_hooks.levelDone);
}

void SubDirectoryWalk::noteRightOnly(const std::vector<std::string>& leftChildren,
                                     const std::string& rightDir) {
    std::set<std::string> leftNames;
    for (const std::string& child : leftChildren)
        leftNames.insert(lastName(child));
    passOver([&] {
        for (const std::string& child : m_hooks.subdirectories(rightDir))
            if (!leftNames.count(lastName(child)))
                m_rightOnly.push_back(child);
    });
}

} // namespace pv
