#include "compare/subdirectorywalk.h"

#include <exception>

namespace pv {

namespace {

// The part of a path below its base, without a leading separator, so that a base
// at the root "/" and one below it give the same relative path.
std::string relativeTo(const std::string& base, const std::string& path) {
    std::string rel = path.size() > base.size() ? path.substr(base.size()) : std::string();
    size_t b = rel.find_first_not_of('/');
    return b == std::string::npos ? std::string() : rel.substr(b);
}

template <typename F> void passOver(F&& step) {
    try {
        step();
    } catch (const std::exception&) {
    }
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
    m_done = 0;
    m_found = 1;
    walk(base1, 0);
}

void SubDirectoryWalk::walk(const std::string& dir, int depth) {
    if (m_hooks.betweenLevels)
        passOver(m_hooks.betweenLevels);
    if (m_hooks.stopRequested && m_hooks.stopRequested())
        return;
    bool doCompare = false;
    if (depth == 0) {
        doCompare = true;
    } else {
        std::string leftNow = dir;
        passOver([&] { leftNow = m_hooks.moveLeft(dir); });
        std::string rightDir = counterpart(m_base1, m_base2, dir);
        std::string rightNow;
        bool moved = false;
        try {
            rightNow = m_hooks.moveRight(rightDir);
            moved = true;
        } catch (const std::exception&) {
        }
        if (!moved) {
            m_hooks.addLine("Unmatched sub directory : '\t" + rightDir + "' does not exist");
        } else {
            std::string rel1 = relativeTo(m_base1, leftNow);
            std::string rel2 = relativeTo(m_base2, rightNow);
            if (rel1 == rel2)
                doCompare = true;
            else
                m_hooks.addLine("Unmatched sub directory : 1:'" + leftNow + "' <> 2:'" + rightNow +
                                "'");
        }
    }
    if (doCompare)
        passOver(m_hooks.compare);
    std::vector<std::string> children;
    passOver([&] { children = m_hooks.subdirectories(dir); });
    if (m_hooks.progress) {
        ++m_done;
        if (depth + 1 < kWalkLevels)
            m_found += long(children.size());
        passOver([&] { m_hooks.progress(m_done, m_found); });
    }
    for (const std::string& child : children) {
        if (depth + 1 < kWalkLevels)
            walk(child, depth + 1);
        else
            passOver([&] { m_hooks.addLine(std::string(kTooDeep)); });
    }
    if (m_hooks.levelDone)
        passOver(m_hooks.levelDone);
}

} // namespace pv
