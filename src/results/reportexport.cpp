#include "results/reportexport.h"
#include "results/filerecords.h"
#include "results/resultsnavigation.h"
#include "platform/textutil.h"


namespace pv {

namespace {

// Appends text with the HTML specials escaped; a byte that is not part of valid
// UTF-8 shows as U+FFFD so the page stays well-formed.
void appendHtml(std::string& out, std::string_view text) {
    for (size_t i = 0; i < text.size();) {
        unsigned char c = static_cast<unsigned char>(text[i]);
        switch (c) {
        case '&': out += "&amp;"; ++i; continue;
        case '<': out += "&lt;"; ++i; continue;
        case '>': out += "&gt;"; ++i; continue;
        case '"': out += "&quot;"; ++i; continue;
        case '\t': out += "    "; ++i; continue;
        default: break;
        }
        const size_t len = utf8SequenceLength(text, i);
        const bool valid = len != 0;
        if (valid) {
            out.append(text.substr(i, len));
            i += len;
        } else {
            out += "\xEF\xBF\xBD";
            ++i;
        }
    }
}

std::string_view cssClass(LineKind kind) {
    switch (kind) {
    case LineKind::Different: return "diff";
    case LineKind::OneOnly: return "one";
    case LineKind::TwoOnly: return "two";
    case LineKind::UnmatchedDirectory: return "unmatched";
    case LineKind::UnreadableDirectory: return "unreadable";
    default: return "";
    }
}

void appendCounts(std::string& out, const DirectoryCounts& c) {
    out += " <small>(" + std::to_string(c.different) + " different, " +
           std::to_string(c.oneOnly) + " one only, " + std::to_string(c.twoOnly) + " two only";
    if (c.directories)
        out += ", " + std::to_string(c.directories) + " directories";
    out += ")</small>";
}

void appendNode(std::string& out, const ResultsRun& run, int id) {
    const ResultsTreeNode& node = run.nodes[size_t(id)];
    out += "<li";
    if (node.mark != LineKind::Plain)
        out += " class=\"" + std::string(cssClass(node.mark)) + "\"";
    else if (node.below.any())
        out += " class=\"below\"";
    out += "><a href=\"#l" + std::to_string(node.line) + "\">";
    appendHtml(out, node.name);
    out += "</a>";
    appendCounts(out, node.below);
    if (!node.children.empty()) {
        out += "<ul>";
        for (int c : node.children)
            appendNode(out, run, c);
        out += "</ul>";
    }
    out += "</li>\n";
}

constexpr std::string_view kStyle = R"(<style>
:root { --diff: #fde2c8; --one: #d8ecff; --two: #dff3d8; --dir: #f3d6f0; }
@media (prefers-color-scheme: dark) {
  :root { --diff: #5a3a1c; --one: #1c3a5a; --two: #24461d; --dir: #4a2448; }
  body { background: #1e1e1e; color: #ddd; } a { color: #9cf; } }
body { font-family: sans-serif; }
table { border-collapse: collapse; font-family: monospace; }
td, th { padding: 1px 8px; text-align: left; white-space: pre; }
.diff { background: var(--diff); } .one { background: var(--one); }
.two { background: var(--two); } .unmatched, .unreadable { background: var(--dir); }
li.below > a { font-weight: bold; }
.legend span { padding: 2px 8px; margin-right: 4px; }
</style>
)";

} // namespace

LineRange latestRun(const ResultLines& lines, const ResultsTree& tree) {
    long first = tree.runs().empty() ? 0 : tree.runs().back().firstLine;
    return {first, lines.size()};
}

std::string reportCsv(const ResultLines& lines, LineRange range) {
    std::string out = "kind,directory 1,directory 2,name,attributes 1,attributes 2\r\n";
    // The block's directories, carried along instead of searched for each line.
    LineDirectories dirs = range.first > 0 ? directoriesOfLine(lines, range.first) : LineDirectories{};
    for (long n = range.first; n < range.last && n < lines.size(); ++n) {
        std::string_view line = lines[n];
        LineKind kind = lineKind(line);
        if (kind == LineKind::Plain) {
            if (line.substr(0, 13) == "Directory 1: ")
                dirs.dir1 = trimBlanks(line.substr(13));
            else if (line.substr(0, 13) == "Directory 2: ")
                dirs.dir2 = trimBlanks(line.substr(13));
            continue;
        }
        EntryFields fields = entryFields(line);
        std::string_view name = fields.kind == LineKind::Plain ? line : fields.name;
        out += std::string(kindName(kind)) + ',' + csvField(dirs.dir1) + ',' + csvField(dirs.dir2) +
               ',' + csvField(name) + ',' + csvField(fields.attributes1) + ',' +
               csvField(fields.attributes2) + "\r\n";
    }
    return out;
}

std::string reportHtml(const ResultLines& lines, LineRange range, const ResultsTree& tree) {
    std::string out = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\">"
                      "<title>Pairview compare report</title>\n";
    out += kStyle;
    out += "</head><body>\n<h1>Pairview compare report</h1>\n<p class=\"legend\">"
           "<span class=\"diff\">different</span><span class=\"one\">only in directory 1</span>"
           "<span class=\"two\">only in directory 2</span>"
           "<span class=\"unmatched\">directory unmatched or unreadable</span></p>\n";
    for (const ResultsRun& run : tree.runs()) {
        if (run.firstLine < range.first || run.firstLine >= range.last || run.nodes.empty())
            continue;
        out += "<h2>";
        appendHtml(out, run.left);
        out += " &harr; ";
        appendHtml(out, run.right);
        out += "</h2>\n<ul>";
        appendNode(out, run, 0);
        out += "</ul>\n";
    }
    out += "<table>\n<tr><th>line</th><th>kind</th><th>attributes 1</th><th>attributes 2</th>"
           "<th>name or text</th></tr>\n";
    for (long n = range.first; n < range.last && n < lines.size(); ++n) {
        std::string_view line = lines[n];
        LineKind kind = lineKind(line);
        EntryFields fields = entryFields(line);
        out += "<tr id=\"l" + std::to_string(n) + "\"";
        if (isDifference(kind))
            out += " class=\"" + std::string(cssClass(kind)) + "\"";
        out += "><td>" + std::to_string(n) + "</td><td>" + std::string(kindName(kind)) + "</td><td>";
        appendHtml(out, fields.attributes1);
        out += "</td><td>";
        appendHtml(out, fields.attributes2);
        out += "</td><td>";
        appendHtml(out, fields.kind == LineKind::Plain ? line : fields.name);
        out += "</td></tr>\n";
    }
    out += "</table>\n</body></html>\n";
    return out;
}

} // namespace pv
