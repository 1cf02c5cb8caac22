#pragma once
// One compare window's compare: the files it writes (results file, compare
// script, capture file), the script that stays open across the pairs of a
// sub-directory run, and the last task started. Shared by the compare window and
// the command-line compare, so both write the same bytes.

#include "compare/capturefile.h"
#include "compare/compareengine.h"
#include "compare/linesink.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace pv {

class CompareObserver;

// The per-window file names: "Pairview" + tag + ".txt" and ".cmd", and the one
// capture file "CaptureFile.txt", all in the program directory.
struct CompareFiles {
    std::string results;
    std::string script;
    std::string capture;
    static CompareFiles forWindow(const std::string& programDir, const std::string& tag);
};

// What the two panes show at the moment of a compare.
struct PaneLists {
    std::string leftDir;
    std::string rightDir;
    std::vector<std::string> left;
    std::vector<std::string> right;
};

class DirectoryCompare {
  public:
    using Starter = std::function<long(const std::string& commandLine)>;
    using AttributeFunction = CompareEngine::AttributeFunction;

    // `start` starts a script detached and returns its task id; `attributes`
    // gives a file's attribute text (empty: the real files, by the options' switches).
    DirectoryCompare(CompareObserver& observer, CompareFiles files, Starter start,
                     AttributeFunction attributes = {});

    struct Call {
        CompareOptions options;
        CaptureSelection capture = CaptureSelection::None;
        bool replace = true; // "Replace" selected rather than "Append"
        bool subDirectoryMode = false;
        // The file pattern of the panes; its directory patterns ("name/") decide
        // which sub-directories a walk enters.
        std::string pattern = "*.*";
        // While contents are read (see CompareInput).
        std::function<bool(std::size_t done, std::size_t total)> whileReading = {};
    };

    // CompareDirectories on the given lists. In single-directory mode the script
    // is written whole and started; in sub-directory mode its lines go to the
    // script opened by beginSubDirectoryRun. Throws on a failure; the script is
    // then left unstarted.
    CompareCounts compareDirectories(const PaneLists& panes, const Call& call);

    // Opens the script of a sub-directory run and writes its start block.
    void beginSubDirectoryRun();
    // Writes the script's end lines, closes and starts it.
    void finishRun(const CompareOptions& options);

    const CompareFiles& files() const { return m_files; }
    void setFiles(CompareFiles files) { m_files = std::move(files); }
    long lastTask() const { return m_lastTask; }
    // The attribute texts of the last pair the compare looked at.
    const std::string& attrOne() const { return m_attrOne; }
    const std::string& attrTwo() const { return m_attrTwo; }
    void setAttrOne(std::string text) { m_attrOne = std::move(text); }
    void setAttrTwo(std::string text) { m_attrTwo = std::move(text); }

  private:
    void writeResultsStart(const std::string& text);

    CompareObserver& m_observer;
    CompareFiles m_files;
    Starter m_start;
    AttributeFunction m_attributes;
    FileLineSink m_script;
    CaptureFile m_capture;
    std::optional<std::string> m_pendingResultsStart;
    long m_lastTask = 0;
    std::string m_attrOne;
    std::string m_attrTwo;
};

} // namespace pv
