#include "results/filerecords.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace pv;

namespace {

// A walk of /l against /r with dates, lengths and contents compared.
const std::vector<std::string> kWalk = {
    "Start\t1",
    "Directory 1: /l ",
    "Directory 2: /r ",
    "seq 1\tmessage\tseq 2\tCreateDate\tFile length\tFilename",
    "0 -matched-   0 2026\\5\\7 9:5:7 - 12 2026\\5\\7 9:5:7 - 12 same.txt",
    "1 -different- 1 2026\\5\\7 9:5:7 - 3 [contents] 2026\\5\\7 9:5:7 - 3 [contents] a,\"b\".txt",
    "2 -one only-  2 2026\\5\\7 9:5:7 - 1     left\xFF",
    "Compare stats:",
    "Start\t1",
    "Directory 1: /l/sub ",
    "Directory 2: /r/sub ",
    "0 -two only-  0 2026\\12\\31 23:59:59 - 7     line\nbreak",
    "Unmatched sub directory : '\t/r/gone' does not exist",
    "Unreadable sub directory : '/r/locked' Permission denied",
};

std::string records(RecordFormat format, bool contents) {
    FileRecords r(format, "/l", "/r", contents);
    std::string out = r.header();
    for (const std::string& line : kWalk)
        out += r.add(line);
    return out;
}

TEST(FileRecords, CsvOneRecordPerFileAndDirectory) {
    EXPECT_EQ(records(RecordFormat::Csv, true),
              "path,status,time 1,length 1,time 2,length 2,contents\n"
              "same.txt,matched,2026-05-07 09:05:07,12,2026-05-07 09:05:07,12,same\n"
              "\"a,\"\"b\"\".txt\",different,2026-05-07 09:05:07,3,2026-05-07 09:05:07,3,contents\n"
              "left\xFF,one only,2026-05-07 09:05:07,1,,,\n"
              "\"sub/line\nbreak\",two only,,,2026-12-31 23:59:59,7,\n"
              "gone,unmatched directory,,,,,\n"
              "locked,unreadable directory,,,,,\n");
}

TEST(FileRecords, JsonLinesEscapeAndKeepTheBytes) {
    const std::string json = records(RecordFormat::Json, false);
    EXPECT_EQ(json.substr(0, json.find('\n') + 1),
              "{\"path\":\"same.txt\",\"status\":\"matched\",\"time1\":\"2026-05-07 09:05:07\","
              "\"length1\":12,\"time2\":\"2026-05-07 09:05:07\",\"length2\":12,\"contents\":null}\n");
    EXPECT_NE(json.find("{\"path\":\"a,\\\"b\\\".txt\",\"status\":\"different\""), std::string::npos);
    EXPECT_NE(json.find("{\"path\":\"left\\udcff\",\"status\":\"one only\",\"time1\":\"2026-05-07 "
                        "09:05:07\",\"length1\":1,\"time2\":null,\"length2\":null"),
              std::string::npos);
    EXPECT_NE(json.find("{\"path\":\"sub/line\\nbreak\""), std::string::npos);
}

TEST(FileRecords, JsonStringKeepsValidUtf8AndEscapesControls) {
    EXPECT_EQ(jsonString("\xC3\xA9\t\x01\\"), "\"\xC3\xA9\\t\\u0001\\\\\"");
    // An overlong form and a lone surrogate are no text: byte by byte.
    EXPECT_EQ(jsonString("\xC0\xAF\xED\xA0\x80"), "\"\\udcc0\\udcaf\\udced\\udca0\\udc80\"");
}

} // namespace
