#include "compare/directorycompare.h"
#include "compare/filelisting.h"

#include "compare/compareobserver.h"
#include "compare/fileattributes.h"
#include "compare/scripttext.h"
#include "platform/clock.h"

namespace pv {

CompareFiles CompareFiles::forWindow(const std::string& programDir, const std::string& tag) {
    CompareFiles f;
    f.results = joinPath(programDir, "Pairview" + tag + ".txt");
    f.script = joinPath(programDir, "Pairview" + tag + ".cmd");
    f.capture = joinPath(programDir, "CaptureFile.txt");
    return f;
}

DirectoryCompare::DirectoryCompare(CompareObserver& observer, CompareFiles files, Starter start,
                                   AttributeFunction attributes)
    : m_observer(observer), m_files(std::move(files)), m_start(std::move(start)),
      m_attributes(std::move(attributes)) {}

CompareCounts DirectoryCompare::compareDirectories(const PaneLists& panes, const Call& call) {
    m_observer.setCntl("Process");
    const bool capturing = call.capture != CaptureSelection::None;
    if (capturing)
        m_capture.open(m_files.capture, nowText());
    if (call.replace) {
        std::string start = "\r\n\r\n---------- Start " + nowText() + " -----------\r\n\r\n";
        // In a sub-directory run every pair would truncate the file again, and
        // nothing reads it before the script starts: only the last pair's start
        // lines would remain. They are written once, when the run finishes.
        if (call.subDirectoryMode)
            m_pendingResultsStart = std::move(start);
        else
            writeResultsStart(start);
    }
    if (m_observer.isEmpty())
        m_observer.show();
    writeCompareHeader(m_observer, panes.leftDir, panes.rightDir, nowText());
    m_observer.repaint();

    if (call.subDirectoryMode) {
        m_script.writeLine();
        m_script.writeLine();
        m_script.writeLine("rem ---------- Continue " + nowText() + " -----------");
        m_script.writeLine();
        m_script.writeLine();
    } else {
        m_script.open(m_files.script, TextFileWriter::Mode::ReplaceOnClose);
        m_script.writeLine();
        m_script.writeLine("rem ---------- Start " + nowText() + " -----------");
        m_script.writeLine();
    }

    CompareEngine engine =
        m_attributes ? CompareEngine(call.options, m_attributes)
                     : CompareEngine(
                           call.options,
                           [dateTime = call.options.listDateTime, length = call.options.listLength](
                               const std::string& dir, const std::vector<std::string>& names) {
                               return directoryAttributeFacts(dir, names, dateTime, length);
                           });
    CompareInput input{panes.leftDir, panes.rightDir,  &panes.left,
                       &panes.right,  m_files.results, call.capture, call.whileReading};
    CompareEngine::CaptureFunction capture;
    if (capturing)
        capture = [this](const std::string& dir, const std::string& name) {
            m_capture.Capture_directory(dir, name);
        };
    CompareCounts counts = engine.run(input, m_observer, m_script, capture);
    if (counts.count1 > 0)
        m_attrOne = counts.attrOne;
    if (counts.count2 > 0)
        m_attrTwo = counts.attrTwo;

    if (!call.subDirectoryMode)
        finishRun(call.options);
    if (capturing)
        m_capture.close();
    return counts;
}

void DirectoryCompare::writeResultsStart(const std::string& text) {
    TextFileWriter results(m_files.results, TextFileWriter::Mode::Replace);
    results.write(text);
    results.close();
}

void DirectoryCompare::beginSubDirectoryRun() {
    m_pendingResultsStart.reset();
    m_script.open(m_files.script, TextFileWriter::Mode::ReplaceOnClose);
    m_script.writeLine();
    m_script.writeLine("rem ---------- Start Sub directory search " + nowText() + " -----------");
    m_script.writeLine();
}

void DirectoryCompare::finishRun(const CompareOptions& options) {
    if (m_pendingResultsStart) {
        std::string start = std::move(*m_pendingResultsStart);
        m_pendingResultsStart.reset();
        writeResultsStart(start);
    }
    m_script.writeLine();
    m_script.writeLine(scriptEscaped(scriptEditor(options.editor)) + " \"" + m_files.results +
                       "\"");
    m_script.writeLine();
    m_script.close();
    if (m_start)
        m_lastTask =
            m_start(m_files.script.find(' ') == std::string::npos ? m_files.script
                                                                  : "\"" + m_files.script + "\"");
}

} // namespace pv
