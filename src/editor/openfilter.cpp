#include "editor/openfilter.h"

#include "platform/textutil.h"

namespace pv {

std::string patternDescription(const std::string& pattern) {
    if (trimBlanks(pattern) == "*.*")
        return "All ";
    const std::string p = toLower(pattern);
    const auto has = [&p](std::initializer_list<const char*> parts) {
        for (const char* part : parts)
            if (p.find(part) != std::string::npos)
                return true;
        return false;
    };
    if (has({".htm"}))
        return "Web like";
    if (has({".exe"}))
        return "Exe";
    if (has({".bat", ".cmd"}))
        return "DOS";
    if (has({".sql", ".prc", ".tab"}))
        return "SQL like";
    if (has({".bas", ".cls", ".frm"}))
        return "Basic";
    return "";
}

OpenFilter editorOpenFilter(const std::string& patternList, const std::string& currentPattern) {
    OpenFilter out;
    const std::string_view current = trimBlanks(currentPattern);
    size_t pos = 0;
    for (int k = 1;; ++k) {
        const size_t comma = patternList.find(',', pos);
        std::string p = patternList.substr(pos, comma == std::string::npos ? comma : comma - pos);
        if (trimBlanks(p) == current && out.filterIndex == 0)
            out.filterIndex = k;
        std::string description = patternDescription(p);
        if (p.find(';') != std::string::npos)
            p += ';';
        OpenFilter::Entry entry{description, description + " (" + p + ")", p};
        if (k > 1)
            out.filter += '|';
        out.filter += entry.label + "|" + entry.pattern;
        out.entries.push_back(std::move(entry));
        if (comma == std::string::npos)
            break;
        pos = comma + 1;
    }
    return out;
}

std::string dialogFilter(const OpenFilter& filter) {
    std::vector<const OpenFilter::Entry*> order;
    for (size_t i = 0; i < filter.entries.size(); ++i)
        if (int(i) + 1 == filter.filterIndex)
            order.insert(order.begin(), &filter.entries[i]);
        else
            order.push_back(&filter.entries[i]);
    std::string out;
    for (const OpenFilter::Entry* e : order) {
        std::string patterns;
        size_t pos = 0;
        for (size_t semi; pos <= e->pattern.size(); pos = semi + 1) {
            semi = e->pattern.find(';', pos);
            if (semi == std::string::npos)
                semi = e->pattern.size();
            std::string_view one = trimBlanks(std::string_view(e->pattern).substr(pos, semi - pos));
            if (!one.empty())
                patterns += (patterns.empty() ? "" : " ") + std::string(one);
        }
        if (!out.empty())
            out += ";;";
        out += e->description + " (" + patterns + ")";
    }
    return out;
}

} // namespace pv
