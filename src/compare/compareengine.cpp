#include "compare/compareengine.h"
#include "compare/filelisting.h"

#include "compare/compareobserver.h"
#include "compare/linesink.h"
#include "compare/scripttext.h"
#include "platform/textutil.h"

#include <algorithm>
#include <cctype>

namespace pv {

CaptureSelection captureSelectionFromItem(std::string_view item) {
    if (item == "1OnlyCapture")
        return CaptureSelection::OneOnly;
    if (item == "1Procs different")
        return CaptureSelection::ProcsDifferent;
    return CaptureSelection::None;
}

namespace {

// Byte order, so that characters above 127 sort after ASCII as their codes do.
int ordinal(std::string_view a, std::string_view b) {
    int c = std::char_traits<char>::compare(a.data(), b.data(), std::min(a.size(), b.size()));
    if (c != 0)
        return c;
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

void pad(std::string& line, std::string_view text, size_t width) {
    line += text;
    if (text.size() < width)
        line.append(width - text.size(), ' ');
}

} // namespace

CompareEngine::CompareEngine(CompareOptions options, AttributeFunction attributes)
    : m_options(std::move(options)),
      m_attributes([one = std::move(attributes)](const std::string& dir,
                                                 const std::vector<std::string>& names) {
          std::vector<std::string> texts;
          texts.reserve(names.size());
          for (const std::string& name : names)
              texts.push_back(one(joinPath(dir, name)));
          return texts;
      }),
      m_fcSwitches(directoryFcSwitches(m_options)) {}

CompareEngine::CompareEngine(CompareOptions options, ListAttributeFunction attributes)
    : m_options(std::move(options)), m_attributes(std::move(attributes)),
      m_fcSwitches(directoryFcSwitches(m_options)) {}

int CompareEngine::seqWidth(long count1, long count2) {
    return static_cast<int>(std::to_string(std::max(count1, count2)).size()) + 1;
}

std::string CompareEngine::fcLine(const std::string& leftPath, const std::string& rightPath,
                                  const std::string& resultsFile) const {
    return "fc " + m_fcSwitches + scriptArgument(leftPath) + " " +
           scriptArgument(rightPath) + "  >> " + resultsFile;
}

void writeCompareHeader(CompareObserver& observer, const std::string& leftDir,
                        const std::string& rightDir, const std::string& now) {
    observer.addLine("Start\t" + now);
    observer.addLine("Directory 1: " + leftDir + " ");
    observer.addLine("Directory 2: " + rightDir + " ");
    observer.addLine("seq 1\tmessage\tseq 2\tCreateDate\tFile length\tFilename");
}

CompareCounts CompareEngine::run(const CompareInput& in, CompareObserver& observer,
                                 LineSink& script, const CaptureFunction& capture) const {
    static const std::vector<std::string> none;
    const std::vector<std::string>& left = in.left ? *in.left : none;
    const std::vector<std::string>& right = in.right ? *in.right : none;
    CompareCounts k;
    k.count1 = static_cast<long>(left.size());
    k.count2 = static_cast<long>(right.size());

    // Each file is looked at once: the texts serve both the column width and the
    // equality test, so a file cannot change between the two.
    const std::vector<std::string> attrs1 = m_attributes(in.leftDir, left);
    const std::vector<std::string> attrs2 = m_attributes(in.rightDir, right);
    size_t longest = 0;
    for (const std::string& a : attrs1)
        longest = std::max(longest, a.size());
    for (const std::string& a : attrs2)
        longest = std::max(longest, a.size());
    const size_t attrWidth = longest + 1;
    const size_t seqW = static_cast<size_t>(seqWidth(k.count1, k.count2));

    observer.initializeProgress(std::max(k.count1, k.count2));
    observer.repaint();

    auto capturing = [&](CaptureSelection which) { return capture && in.capture == which; };
    std::string line;
    auto beginLine = [&](long i, std::string_view tag, long j) {
        line.clear();
        pad(line, std::to_string(i), seqW);
        line += tag;
        pad(line, std::to_string(j), seqW);
    };
    auto singleLine = [&](long i, std::string_view tag, long j, const std::string& attr,
                          const std::string& name) {
        beginLine(i, tag, j);
        line += attr;
        line.append(attrWidth + 2, ' ');
        line += name;
        observer.addLine(line);
    };

    long i = 0, j = 0;
    while (i < k.count1 || j < k.count2) {
        bool advancedI = false, advancedJ = false;
        if (i < k.count1)
            k.attrOne = attrs1[i];
        if (j < k.count2)
            k.attrTwo = attrs2[j];
        if (i < k.count1 && j < k.count2) {
            const std::string& name1 = left[i];
            const std::string& name2 = right[j];
            std::string_view t1 = trimBlanks(name1), t2 = trimBlanks(name2);
            std::string u1 = toUpper(t1), u2 = toUpper(t2);
            int cu = ordinal(u1, u2);
            if (cu == 0) {
                if (toLower(name1) != "vssver.scc") {
                    const std::string& a1 = attrs1[i];
                    const std::string& a2 = attrs2[j];
                    bool differs = trimBlanks(a1) != trimBlanks(a2);
                    beginLine(i, differs ? kTagDifferent : kTagMatched, j);
                    line += a1;
                    line.append(
                        std::max<size_t>(1, attrWidth > a1.size() ? attrWidth - a1.size() : 0),
                        ' ');
                    line += a2;
                    line.append(
                        std::max<size_t>(1, attrWidth > a2.size() ? attrWidth - a2.size() : 0),
                        ' ');
                    line += name1;
                    observer.addLine(line);
                    ++k.matched;
                    if (differs)
                        ++k.different;
                    std::string leftPath = joinPath(in.leftDir, name1);
                    std::string rightPath = joinPath(in.rightDir, name2);
                    std::string refusal = scriptRefusal(leftPath);
                    if (refusal.empty())
                        refusal = scriptRefusal(rightPath);
                    if (refusal.empty()) {
                        script.writeLine();
                        script.writeLine(fcLine(leftPath, rightPath, in.resultsFile));
                    } else {
                        observer.addLine(std::string(seqW * 2 + 12, ' ') +
                                         "left out of the compare script: " + refusal);
                    }
                    if (capturing(CaptureSelection::ProcsDifferent) &&
                        toUpper(name1).find(".PRC") != std::string::npos)
                        capture(in.leftDir, name1);
                }
                advancedI = advancedJ = true;
            } else {
                std::string l1 = toLower(t1), l2 = toLower(t2);
                int cl = ordinal(l1, l2);
                bool leftFirst;
                if (cu < 0 && cl < 0)
                    leftFirst = true;
                else if (cu > 0 && cl > 0)
                    leftFirst = false;
                else // the orders disagree ("_" against letters): the names as they stand
                    leftFirst = ordinal(name1, name2) > 0;
                if (leftFirst) {
                    singleLine(i, kTagOneOnly, j, attrs1[i], name1);
                    ++k.oneOnly;
                    if (capturing(CaptureSelection::OneOnly))
                        capture(in.leftDir, name1);
                    advancedI = true;
                } else {
                    singleLine(i, kTagTwoOnly, j, attrs2[j], name2);
                    ++k.twoOnly;
                    advancedJ = true;
                }
            }
        } else if (i >= k.count1) {
            singleLine(i, kTagOneMaxed, j, attrs2[j], right[j]);
            ++k.twoOnly;
            advancedJ = true;
        } else {
            singleLine(i, kTagTwoMaxed, j, attrs1[i], left[i]);
            ++k.oneOnly;
            advancedI = true;
        }
        if (advancedI)
            ++i;
        if (advancedJ)
            ++j;
        // The bar counts the steps of the longer list.
        if ((advancedI && advancedJ) || (advancedI && k.count1 >= k.count2) ||
            (advancedJ && !advancedI && k.count1 < k.count2))
            observer.incrementProgress();
        observer.repaint();
    }

    observer.completeProgress();
    observer.addLine("Compare stats:");
    observer.addLine(" there were " + std::to_string(k.count1) + " items in list one");
    observer.addLine(" there were " + std::to_string(k.count2) + " items in list two");
    observer.addLine(" there were " + std::to_string(k.matched) + " items that matched items");
    observer.addLine(" there were " + std::to_string(k.oneOnly) + " unmatched file one items");
    observer.addLine(" there were " + std::to_string(k.twoOnly) + " unmatched file two items");
    observer.addLine(" there were " + std::to_string(k.different) +
                     " items with different datetimes and or lengths. See results for details.");
    observer.repaint();
    return k;
}

} // namespace pv
