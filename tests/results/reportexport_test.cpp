#include "results/reportexport.h"

#include <gtest/gtest.h>

#include <string>

using namespace pv;

namespace {

ResultLines withTree(std::initializer_list<std::string_view> lines, ResultsTree& tree) {
    ResultLines out(lines);
    for (long n = 0; n < out.size(); ++n)
        tree.add(out[n]);
    return out;
}

TEST(ReportCsv, QuotesWhatCsvMustAndKeepsOtherBytes) {
    ResultsTree tree;
    ResultLines lines = withTree({"Start\t1", "Directory 1: /a,b ", "Directory 2: /c ",
                                  "0 -different- 0  - 5   - 77 say \"hi\".txt",
                                  "1 -matched-   1  - 5  - 5 plain\xE9.txt",
                                  "2 -one only-  2  - 5       line\nbreak",
                                  "Unreadable sub directory : '/a,b/x' Permission denied",
                                  " there were 2 items in list one"},
                                 tree);
    EXPECT_EQ(reportCsv(lines, {0, lines.size()}),
              "kind,directory 1,directory 2,name,attributes 1,attributes 2\r\n"
              "different,\"/a,b\",/c,\"say \"\"hi\"\".txt\", - 5, - 77\r\n"
              "matched,\"/a,b\",/c,plain\xE9.txt, - 5, - 5\r\n"
              "one only,\"/a,b\",/c,\"line\nbreak\", - 5,\r\n"
              "unreadable directory,\"/a,b\",/c,\"Unreadable sub directory : '/a,b/x' Permission denied\",,\r\n");
}

TEST(ReportCsv, LatestRunStartsWhereTheLastRunStarts) {
    ResultsTree tree;
    ResultLines lines = withTree({"Start\t1", "Directory 1: /a ", "Directory 2: /b ",
                                  "0 -different- 0   old", "end of Directory compare\t1",
                                  "Start\t2", "Directory 1: /c ", "Directory 2: /d ",
                                  "0 -different- 0   new", "end of Directory compare\t2"},
                                 tree);
    LineRange latest = latestRun(lines, tree);
    EXPECT_EQ(latest.first, 5);
    EXPECT_EQ(reportCsv(lines, latest),
              "kind,directory 1,directory 2,name,attributes 1,attributes 2\r\n"
              "different,/c,/d,new,,\r\n");
}

TEST(ReportHtml, EscapesTextTintsKindsAndNestsTheTree) {
    ResultsTree tree;
    ResultLines lines = withTree({"Start\t1", "Directory 1: /a ", "Directory 2: /b ",
                                  "Start\t1", "Directory 1: /a/<s> ", "Directory 2: /b/<s> ",
                                  "0 -different- 0  - 5   - 77 a&b\xFF.txt",
                                  "end of subdirectory compare\t1"},
                                 tree);
    std::string html = reportHtml(lines, {0, lines.size()}, tree);
    EXPECT_NE(html.find("<li class=\"below\"><a href=\"#l1\">/a</a> <small>(1 different, 0 one only, "
                        "0 two only)</small><ul><li class=\"below\"><a href=\"#l4\">&lt;s&gt;</a>"),
              std::string::npos)
        << html;
    EXPECT_NE(html.find("<tr id=\"l6\" class=\"diff\"><td>6</td><td>different</td><td> - 5</td>"
                        "<td> - 77</td><td>a&amp;b\xEF\xBF\xBD.txt</td></tr>"),
              std::string::npos)
        << html;
    EXPECT_NE(html.find("<tr id=\"l4\"><td>4</td><td></td><td></td><td></td><td>Directory 1: /a/&lt;s&gt; "),
              std::string::npos);
}

} // namespace
