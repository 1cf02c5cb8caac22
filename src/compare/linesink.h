#pragma once
// Where generated script lines go: a file while a compare runs, a string in tests
// and previews. Every line is ended by CR LF by the sink.

#include "platform/textfile.h"

#include <string>
#include <string_view>

namespace pv {

class LineSink {
  public:
    virtual ~LineSink() = default;
    virtual void writeLine(std::string_view line = {}) = 0;
};

class StringLineSink : public LineSink {
  public:
    void writeLine(std::string_view line = {}) override {
        m_text += line;
        m_text += kLineEnd;
    }
    const std::string& text() const { return m_text; }

  private:
    std::string m_text;
};

class FileLineSink : public LineSink {
  public:
    void open(const std::string& path, TextFileWriter::Mode mode) { m_file.open(path, mode); }
    bool isOpen() const { return m_file.isOpen(); }
    void close() { m_file.close(); }
    void writeLine(std::string_view line = {}) override { m_file.writeLine(line); }

  private:
    TextFileWriter m_file;
};

} // namespace pv
