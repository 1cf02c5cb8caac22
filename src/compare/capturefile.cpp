#include "compare/capturefile.h"
#include "compare/filelisting.h"

#include "compare/scripttext.h"

#include <string_view>

namespace pv {

void CaptureFile::open(const std::string& path, const std::string& now) {
    m_file.open(path, TextFileWriter::Mode::Replace);
    m_file.writeLine();
    m_file.writeLine();
    m_file.writeLine("---------- Start " + now + " -----------");
    m_file.writeLine();
}

void CaptureFile::Capture_directory(const std::string& dirPath, const std::string& fileName) {
    m_file.writeLine("-- " + fileName);
    std::string bytes = readFileBytes(joinPath(dirPath, fileName));
    // Lines end at LF (a CR before it belongs to the line end); a last line
    // without a line end is still a line.
    std::string_view rest(bytes);
    while (!rest.empty()) {
        size_t nl = rest.find('\n');
        std::string_view line = rest.substr(0, nl);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        m_file.writeLine(line);
        if (nl == std::string_view::npos)
            break;
        rest.remove_prefix(nl + 1);
    }
}

} // namespace pv
