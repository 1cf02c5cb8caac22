#pragma once
// fc's line-by-line compare: two windows of at most /lbN lines each slide over
// the files; after a difference the files count as resynchronised where /N lines
// (fewer at the end of a file or of a full window) match again. Only the two
// windows are held in memory, never the files.

#include "pvcmd/fcoptions.h"
#include "pvcmd/linereader.h"
#include "pvcmd/resyncsearch.h"

#include <cstdint>

#include <ostream>
#include <string>
#include <vector>

namespace pvcmd {

class TextCompare {
  public:
    TextCompare(const FcOptions& options, std::ostream& out);

    // Compares two opened files and writes the blocks (not the header).
    // Returns 0 when the files have no differences, 1 when they differ.
    int run(LineReader& reader1, const std::string& name1, LineReader& reader2,
            const std::string& name2);

  private:
    struct Line {
        std::string text; // as read, for the report
        std::string key;  // normalised for comparing, when it differs from text
        bool hasKey = false;
        bool hashed = false; // hash is computed when a resync search first needs it
        std::uint64_t hash = 0;
        const std::string& compareText() const { return hasKey ? key : text; }
    };

    class Window {
      public:
        Window(LineReader& reader, size_t capacity, const TextCompare& owner);
        void fill();
        void drop(size_t n);
        Line& at(size_t i) { return m_slots[(m_head + i) % m_slots.size()]; }
        size_t count() const { return m_count; }
        bool full() const { return m_count == m_slots.size(); }
        long firstNumber() const { return m_firstNumber; }

      private:
        LineReader& m_reader;
        const TextCompare& m_owner;
        std::vector<Line> m_slots;
        size_t m_head = 0;
        size_t m_count = 0;
        long m_firstNumber = 1;
        bool m_eof = false;
    };

    void normalise(Line& line) const;
    bool equal(Line& a, Line& b) const;
    static std::uint64_t hashOf(Line& line);
    bool findResync(Window& w1, Window& w2, size_t& x, size_t& y);
    void printSide(Window& w, size_t lines, const std::string& name);
    void printBlock(Window& w1, size_t lines1, const std::string& name1, Window& w2, size_t lines2,
                    const std::string& name2);
    void printLine(Window& w, size_t i);

    FcOptions m_options;
    std::ostream& m_out;
    ResyncScratch m_scratch;
};

} // namespace pvcmd
