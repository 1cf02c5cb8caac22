#include "compare/compareengine.h"
#include "compare/filelisting.h"

#include "compare/compareobserver.h"
#include "compare/contentcompare.h"
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

// Which of two names comes first in the merge: 0 when they name the same file,
// negative when the left one comes first.
int mergeOrder(const std::string& name1, const std::string& name2) {
    std::string_view t1 = trimBlanks(name1), t2 = trimBlanks(name2);
    int cu = ordinal(toUpper(t1), toUpper(t2));
    if (cu == 0)
        return 0;
    int cl = ordinal(toLower(t1), toLower(t2));
    if (cu < 0 && cl < 0)
        return -1;
    if (cu > 0 && cl > 0)
        return 1;
    // The orders disagree ("_" against letters): the names as they stand.
    return ordinal(name1, name2) > 0 ? -1 : 1;
}

bool skippedName(const std::string& name) {
    return toLower(name) == "vssver.scc";
}

void mark(std::string& text, std::string_view marker) {
    if (!text.empty())
        text += ' ';
    text += marker;
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
          std::vector<EntryAttributes> entries(names.size());
          for (size_t n = 0; n < names.size(); ++n)
              entries[n].text = one(joinPath(dir, names[n]));
          return entries;
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

bool CompareEngine::attributesAgree(const EntryAttributes& a, const EntryAttributes& b) const {
    if (trimBlanks(a.text) == trimBlanks(b.text))
        return true;
    const CompareOptions& o = m_options;
    if ((o.modifyWindow <= 0 && !o.ignoreHourShift) || !o.listDateTime)
        return false;
    // The texts hold nothing but the time and the length: with equal lengths (or
    // none listed) they differ by the time alone.
    if (!a.found || !b.found || !a.haveTime || !b.haveTime)
        return false;
    if (o.listLength && (!a.haveLength || !b.haveLength || a.length != b.length))
        return false;
    const std::int64_t apart = a.time > b.time ? a.time - b.time : b.time - a.time;
    const std::int64_t window = std::max(0, o.modifyWindow);
    if (apart <= window)
        return true;
    if (o.ignoreHourShift)
        for (std::int64_t hours = 1; hours <= 2; ++hours) {
            const std::int64_t off = apart - hours * 3600;
            if (off <= window && -off <= window)
                return true;
        }
    return false;
}

void writeCompareHeader(CompareObserver& observer, const std::string& leftDir,
                        const std::string& rightDir, const std::string& now) {
    observer.addLine("Start\t" + now);
    observer.addLine("Directory 1: " + leftDir + " ");
    observer.addLine("Directory 2: " + rightDir + " ");
    observer.addLine("seq 1\tmessage\tseq 2\tCreateDate\tFile length\tFilename");
}

std::vector<char> CompareEngine::compareContents(const CompareInput& in,
                                                const std::vector<std::string>& left,
                                                const std::vector<std::string>& right,
                                                std::vector<EntryAttributes>& attrs1,
                                                std::vector<EntryAttributes>& attrs2,
                                                CompareObserver& observer) const {
    std::vector<char> differs(left.size(), 0);
    // The name matches whose attributes agree: only they are read, and of those
    // only the pairs of equal (or unknown) length.
    std::vector<std::pair<size_t, size_t>> matches;
    std::vector<ContentPair> pairs;
    for (size_t i = 0, j = 0; i < left.size() && j < right.size();) {
        const int order = mergeOrder(left[i], right[j]);
        if (order == 0) {
            const EntryAttributes& a1 = attrs1[i];
            const EntryAttributes& a2 = attrs2[j];
            if (!skippedName(left[i]) && attributesAgree(a1, a2)) {
                if (!a1.found || !a2.found) {
                    differs[i] = 1; // failure texts on both sides: never matched
                } else {
                    matches.emplace_back(i, j);
                    // The files the attribute texts were taken from.
                    pairs.push_back({std::string(trimBlanks(joinPath(in.leftDir, left[i]))),
                                     std::string(trimBlanks(joinPath(in.rightDir, right[j]))),
                                     a1.haveLength && a2.haveLength, a1.length, a2.length});
                }
            }
            ++i;
            ++j;
        } else if (order < 0) {
            ++i;
        } else {
            ++j;
        }
    }
    if (pairs.empty())
        return differs;
    observer.initializeProgress(static_cast<long>(pairs.size()));
    observer.repaint();
    size_t shown = 0;
    const std::vector<ContentVerdict> verdicts =
        pv::compareContents(pairs, [&](size_t done, size_t total) {
            for (; shown < done; ++shown)
                observer.incrementProgress();
            observer.repaint();
            return !in.whileReading || in.whileReading(done, total);
        });
    for (size_t p = 0; p < matches.size(); ++p) {
        const auto [i, j] = matches[p];
        const ContentVerdict v = verdicts[p];
        if (v == ContentVerdict::Same)
            continue;
        if (v == ContentVerdict::LeftUnreadable) {
            attrs1[i].text = kCantOpen;
        } else if (v == ContentVerdict::RightUnreadable) {
            attrs2[j].text = kCantOpen;
        } else {
            const std::string_view marker = v == ContentVerdict::Differ      ? kMarkContents
                                            : v == ContentVerdict::NotRead ? kMarkNotRead
                                                                           : kMarkLength;
            mark(attrs1[i].text, marker);
            mark(attrs2[j].text, marker);
        }
        differs[i] = 1;
    }
    return differs;
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
    std::vector<EntryAttributes> attrs1 = m_attributes(in.leftDir, left);
    std::vector<EntryAttributes> attrs2 = m_attributes(in.rightDir, right);
    // Pairs whose attributes agree but whose contents do not (left index).
    std::vector<char> differsInside;
    if (m_options.listContents)
        differsInside = compareContents(in, left, right, attrs1, attrs2, observer);
    size_t longest = 0;
    for (const EntryAttributes& a : attrs1)
        longest = std::max(longest, a.text.size());
    for (const EntryAttributes& a : attrs2)
        longest = std::max(longest, a.text.size());
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
            k.attrOne = attrs1[i].text;
        if (j < k.count2)
            k.attrTwo = attrs2[j].text;
        if (i < k.count1 && j < k.count2) {
            const std::string& name1 = left[i];
            const std::string& name2 = right[j];
            const int order = mergeOrder(name1, name2);
            if (order == 0) {
                if (!skippedName(name1)) {
                    const std::string& a1 = attrs1[i].text;
                    const std::string& a2 = attrs2[j].text;
                    bool differs = (!differsInside.empty() && differsInside[i]) ||
                                   !attributesAgree(attrs1[i], attrs2[j]);
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
            } else if (order < 0) {
                singleLine(i, kTagOneOnly, j, attrs1[i].text, name1);
                ++k.oneOnly;
                if (capturing(CaptureSelection::OneOnly))
                    capture(in.leftDir, name1);
                advancedI = true;
            } else {
                singleLine(i, kTagTwoOnly, j, attrs2[j].text, name2);
                ++k.twoOnly;
                advancedJ = true;
            }
        } else if (i >= k.count1) {
            singleLine(i, kTagOneMaxed, j, attrs2[j].text, right[j]);
            ++k.twoOnly;
            advancedJ = true;
        } else {
            singleLine(i, kTagTwoMaxed, j, attrs1[i].text, left[i]);
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
