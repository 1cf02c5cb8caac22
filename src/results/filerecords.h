#pragma once
// The compare's lines as one record per file, for programs that read pvcompare's
// output: the path relative to the compared directories, the status, both sides'
// time and length, and the contents verdict. Records are made line by line, as
// the lines come, so a million files need no more memory than the text lines.

#include <string>
#include <string_view>

namespace pv {

enum class RecordFormat { Csv, Json };

class FileRecords {
  public:
    // `left` and `right`: the compared directories (paths are made relative to
    // them); `contentsCompared`: whether pairs were compared byte for byte.
    FileRecords(RecordFormat format, std::string left, std::string right, bool contentsCompared);

    // What comes before the first record (the CSV header line; nothing for JSON).
    std::string header() const;
    // The record of one results line, ended by a line end; empty for a line that
    // reports no file and no directory.
    std::string add(std::string_view line);

  private:
    RecordFormat m_format;
    std::string m_left, m_right;
    bool m_contents;
    std::string m_dir1, m_dir2; // the directories of the block the lines belong to
};

// A CSV field: quoted, with quotes doubled, when it holds a comma, a quote or a
// line break; otherwise as it is. Bytes are kept as they are.
std::string csvField(std::string_view text);

// A JSON string, quotes included: escapes as JSON requires, UTF-8 kept as it is,
// and each byte that is not part of valid UTF-8 as \udcXX (XX the byte), the
// escape that lets a reader give the name's bytes back.
std::string jsonString(std::string_view bytes);

} // namespace pv
