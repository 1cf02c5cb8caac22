#include "results/resultstree.h"
#include "platform/textutil.h"

#include <algorithm>

namespace pv {

namespace {

bool startsWith(std::string_view s, std::string_view prefix) {
    return s.substr(0, prefix.size()) == prefix;
}

// The path of "Directory 1: PATH " (the header ends in one blank).
std::string_view headerPath(std::string_view line, std::string_view prefix) {
    std::string_view path = line.substr(prefix.size());
    if (!path.empty() && path.back() == ' ')
        path.remove_suffix(1);
    return path;
}

// `path` below `top`, as the rest after the separator; false when it is not below.
bool relativeTo(std::string_view top, std::string_view path, std::string_view& rest) {
    if (top.empty() || !startsWith(path, top))
        return false;
    rest = path.substr(top.size());
    if (top.back() != '/') {
        if (!rest.empty() && rest.front() != '/')
            return false;
        if (!rest.empty())
            rest.remove_prefix(1);
    }
    return true;
}

} // namespace

ResultsRun& ResultsTree::openRun() {
    if (!m_inRun) {
        m_runs.emplace_back();
        m_runs.back().firstLine = m_next;
        m_byPath.clear();
        m_children.clear();
        m_current = -1;
        m_inRun = true;
    }
    return m_runs.back();
}

int ResultsTree::child(int parent, std::string_view name) {
    ResultsRun& run = m_runs.back();
    // By parent and name, so a directory of thousands of sub-directories costs
    // no search through its children.
    std::string key = std::to_string(parent);
    key += '\0';
    key += name;
    const auto [known, added] = m_children.try_emplace(std::move(key), int(run.nodes.size()));
    if (!added)
        return known->second;
    int id = int(run.nodes.size());
    ResultsTreeNode node;
    node.name = name;
    node.parent = parent;
    run.nodes.push_back(std::move(node));
    run.nodes[size_t(parent)].children.push_back(id);
    return id;
}

int ResultsTree::nodeForPath(std::string_view path) {
    ResultsRun& run = m_runs.back();
    auto known = m_byPath.find(std::string(path));
    if (known != m_byPath.end())
        return known->second;
    std::string_view rest;
    int node = 0;
    if (relativeTo(run.left, path, rest) || relativeTo(run.right, path, rest)) {
        while (!rest.empty()) {
            size_t slash = rest.find('/');
            node = child(node, rest.substr(0, slash));
            rest = slash == std::string_view::npos ? std::string_view() : rest.substr(slash + 1);
        }
    } else {
        // A pane that landed outside the run's top directory: a node of its own.
        node = child(0, path);
    }
    m_byPath.emplace(path, node);
    return node;
}

void ResultsTree::count(int node, LineKind kind) {
    ResultsRun& run = m_runs.back();
    auto bump = [kind](DirectoryCounts& c) {
        switch (kind) {
        case LineKind::Different: ++c.different; break;
        case LineKind::OneOnly: ++c.oneOnly; break;
        case LineKind::TwoOnly: ++c.twoOnly; break;
        default: ++c.directories; break;
        }
    };
    bump(run.nodes[size_t(node)].own);
    for (int n = node; n >= 0; n = run.nodes[size_t(n)].parent)
        bump(run.nodes[size_t(n)].below);
}

void ResultsTree::markDirectory(std::string_view path, LineKind kind) {
    if (m_runs.back().nodes.empty())
        return;
    int node = path.empty() ? std::max(m_current, 0) : nodeForPath(path);
    ResultsTreeNode& n = m_runs.back().nodes[size_t(node)];
    if (n.line < 0)
        n.line = m_next;
    n.mark = kind;
    count(node, kind);
}

void ResultsTree::add(std::string_view line) {
    add(line, lineKind(line));
}

void ResultsTree::add(std::string_view line, LineKind kind) {
    static constexpr std::string_view kDir1 = "Directory 1: ", kDir2 = "Directory 2: ";
    if (kind != LineKind::Plain) {
        if (m_inRun && !m_runs.back().nodes.empty()) {
            if (kind == LineKind::UnmatchedDirectory || kind == LineKind::UnreadableDirectory)
                markDirectory(directoryOfWalkLine(line), kind);
            else if (isDifference(kind) && m_current >= 0)
                count(m_current, kind);
        }
    } else if (startsWith(line, "Start\t")) {
        openRun();
    } else if (startsWith(line, "end of Directory compare\t") ||
               startsWith(line, "end of subdirectory compare\t")) {
        m_inRun = false;
    } else if (startsWith(line, kDir1)) {
        ResultsRun& run = openRun();
        std::string_view path = headerPath(line, kDir1);
        if (run.nodes.empty()) {
            run.left = path;
            run.nodes.emplace_back().name = path;
            m_byPath.emplace(path, 0);
        }
        m_current = nodeForPath(path);
        if (run.nodes[size_t(m_current)].line < 0)
            run.nodes[size_t(m_current)].line = m_next;
    } else if (startsWith(line, kDir2)) {
        ResultsRun& run = openRun();
        if (run.right.empty())
            run.right = headerPath(line, kDir2);
    }
    ++m_next;
}

} // namespace pv
