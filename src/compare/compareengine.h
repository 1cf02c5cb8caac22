#pragma once
// The heart of a directory compare: merges two name-ordered file lists, judges
// every name match by its attribute text, and writes one results-list line per
// entry, the statistics, and an fc line per name match into the compare script.

#include "compare/compareoptions.h"
#include "compare/fileattributes.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace pv {

class CompareObserver;
class LineSink;

// The item of the capture selection box.
enum class CaptureSelection { None, OneOnly, ProcsDifferent };
CaptureSelection captureSelectionFromItem(std::string_view item);

// The result tags, each 12 characters.
inline constexpr std::string_view kTagMatched = "-matched-   ";
inline constexpr std::string_view kTagDifferent = "-different- ";
inline constexpr std::string_view kTagOneOnly = "-one only-  ";
inline constexpr std::string_view kTagTwoOnly = "-two only-  ";
inline constexpr std::string_view kTagOneMaxed = "-one maxed- ";
inline constexpr std::string_view kTagTwoMaxed = "-two maxed- ";

// With contents compared: why a pair whose attribute texts agree is different,
// added after both attribute texts.
inline constexpr std::string_view kMarkContents = "[contents]"; // same length, other bytes
inline constexpr std::string_view kMarkLength = "[length]";     // lengths differ (not listed)
inline constexpr std::string_view kMarkNotRead = "[not read]";  // the compare was stopped

struct CompareInput {
    std::string leftDir;
    std::string rightDir;
    const std::vector<std::string>* left = nullptr;
    const std::vector<std::string>* right = nullptr;
    std::string resultsFile; // where the script's fc lines append their reports
    CaptureSelection capture = CaptureSelection::None;
    // While contents are read: called about every 40 ms with the pairs read so
    // far; false stops the reading.
    std::function<bool(std::size_t done, std::size_t total)> whileReading = {};
};

struct CompareCounts {
    long count1 = 0;
    long count2 = 0;
    long matched = 0;
    long different = 0;
    long oneOnly = 0;
    long twoOnly = 0;
    // The attribute texts of the last left and right entries looked at.
    std::string attrOne;
    std::string attrTwo;
};

class CompareEngine {
  public:
    using AttributeFunction = std::function<std::string(const std::string& path)>;
    // The attribute texts and facts of the named files of a directory, in the
    // order given.
    using ListAttributeFunction = std::function<std::vector<EntryAttributes>(
        const std::string& dir, const std::vector<std::string>& names)>;
    using CaptureFunction = std::function<void(const std::string& dir, const std::string& name)>;

    CompareEngine(CompareOptions options, AttributeFunction attributes);
    CompareEngine(CompareOptions options, ListAttributeFunction attributes);

    // Writes the entry lines (not the header) and the statistics to `observer`,
    // drives its progress bar, and writes "" + fc line per name match to
    // `script`. `capture` receives the files the capture selection asks for.
    CompareCounts run(const CompareInput& input, CompareObserver& observer, LineSink& script,
                      const CaptureFunction& capture = {}) const;

    // The fc line of one name match.
    std::string fcLine(const std::string& leftPath, const std::string& rightPath,
                       const std::string& resultsFile) const;

    // Number of decimal digits of the larger count, plus 1.
    static int seqWidth(long count1, long count2);

  private:
    // The attribute texts agree, or differ only by a time the options tolerate.
    bool attributesAgree(const EntryAttributes& a, const EntryAttributes& b) const;
    // Reads the name matches whose attributes agree and marks the texts of those
    // that differ inside; gives, by left index, which pairs differ so.
    std::vector<char> compareContents(const CompareInput& in, const std::vector<std::string>& left,
                                      const std::vector<std::string>& right,
                                      std::vector<EntryAttributes>& attrs1,
                                      std::vector<EntryAttributes>& attrs2,
                                      CompareObserver& observer) const;

    CompareOptions m_options;
    ListAttributeFunction m_attributes;
    std::string m_fcSwitches; // the same for every fc line
};

// The results-list header of a directory pair (lines 1 to 4), with `now` as date.
void writeCompareHeader(CompareObserver& observer, const std::string& leftDir,
                        const std::string& rightDir, const std::string& now);

} // namespace pv
