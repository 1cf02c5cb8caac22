#pragma once
// The directories of the results list as trees, one per compare run, built line
// by line as the lines arrive: each "Directory 1:" block is a node under its
// run's top directory, counting what its lines report, and the directory lines
// of a walk (unmatched, unreadable) mark the node they name.

#include "results/linekind.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace pv {

struct DirectoryCounts {
    long different = 0;
    long oneOnly = 0;
    long twoOnly = 0;
    long directories = 0; // unmatched or unreadable directories

    bool any() const { return different || oneOnly || twoOnly || directories; }
};

struct ResultsTreeNode {
    std::string name;  // the directory's own name; a run's top node: its whole path
    long line = -1;    // its "Directory 1:" line, else the first line that names it
    LineKind mark = LineKind::Plain; // UnmatchedDirectory, UnreadableDirectory or Plain
    DirectoryCounts own;   // what its own block reports
    DirectoryCounts below; // its own block and every block below it
    int parent = -1;
    std::vector<int> children; // in the order the lines named them
};

struct ResultsRun {
    long firstLine = 0;
    std::string left, right; // the run's top directories
    std::vector<ResultsTreeNode> nodes; // nodes[0] is the top directory
};

class ResultsTree {
  public:
    // Takes the next line of the list (lines arrive in order, from index 0).
    void add(std::string_view line);
    // The same, with the line's kind already known.
    void add(std::string_view line, LineKind kind);
    // The runs, oldest first.
    const std::vector<ResultsRun>& runs() const { return m_runs; }

  private:
    ResultsRun& openRun();
    int nodeForPath(std::string_view path);
    int child(int parent, std::string_view name);
    void count(int node, LineKind kind);
    void markDirectory(std::string_view path, LineKind kind);

    std::vector<ResultsRun> m_runs;
    std::unordered_map<std::string, int> m_byPath;   // the open run's nodes by path
    std::unordered_map<std::string, int> m_children; // ... by parent and name
    long m_next = 0;
    bool m_inRun = false;
    int m_current = -1; // the node whose block the lines belong to
};

} // namespace pv
