#pragma once
// The content capture file: the full text of selected files of a compare, each
// after a "-- " + name line.

#include "platform/textfile.h"

#include <string>

namespace pv {

class CaptureFile {
  public:
    // Creates or truncates the file and writes its start lines.
    void open(const std::string& path, const std::string& now);
    bool isOpen() const { return m_file.isOpen(); }
    // Appends "-- " + fileName, then every line of dirPath/fileName with CR LF.
    // A file that cannot be read leaves only its "-- " line and throws.
    void Capture_directory(const std::string& dirPath, const std::string& fileName);
    void close() { m_file.close(); }

  private:
    TextFileWriter m_file;
};

} // namespace pv
