// Randomised inputs for the script interpreter and fc: a few thousand cases with
// a fixed seed, so a failure repeats. Nothing may crash or hang, and the
// results must keep the invariants checked below.

#include "pvcmdtestutil.h"

#include "pvcmd/interpreter.h"
#include "pvcmd/tool.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace {

class PathGuard {
  public:
    explicit PathGuard(const std::string& path) {
        const char* old = std::getenv("PATH");
        m_old = old ? old : "";
        ::setenv("PATH", path.c_str(), 1);
    }
    ~PathGuard() { ::setenv("PATH", m_old.c_str(), 1); }

  private:
    std::string m_old;
};

std::vector<std::string> splitCrLf(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find("\r\n", start);
        if (end == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    return lines;
}

bool startsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

TEST(Fuzz, ScriptsNeverCrashAndOnlyReportKnownErrors) {
    pvcmdtest::InTempDir here;
    here.dir().mkdir("sub");
    here.dir().write("a", "A\nB\n");
    here.dir().write("b", "A\nC\n");
    // No program can be found: random lines must not start anything. No token
    // starts with "/", so no redirection can name a file outside the directory.
    PathGuard path(here.dir().mkdir("emptybin"));
    const std::vector<std::string> tokens = {
        "echo",    "ECHO",      "echo.", "echo:",     "rem",        "@",      "@echo off",
        "echo on", "cd",        "cd /d", "pushd",     "popd",       "sub",    "\"sub\"",
        "C:",      "fc",        "FC",    "fc /b",     "FC /lb2 /n", "fc /x",  "a",
        "b",       "\"a\"",     ">",     ">>",        "2>",         "2>&1",   "f",
        "\"g h\"", "missing/y", "sub/x", "^",         "^>",         "\"",     "%",
        "%1",      "%%",        "%~1",   " ",         "  ",         "\t",     "x",
        "100%",    "&",         "|",     "exit /b 1", "pause",      "nosuch", std::string("\0", 1),
        "\r",      "::"};
    std::mt19937 rng(20261123);
    const std::vector<std::string> knownErrors = {"The system cannot find the path specified.",
                                                  "Access is denied.",
                                                  "The syntax of the command is incorrect.",
                                                  "The input line is too long.",
                                                  "There is not enough space on the disk.",
                                                  "operable program or batch file.",
                                                  "FC: ",
                                                  "'"};
    for (int round = 0; round < 3000; ++round) {
        std::string script;
        int lines = 1 + static_cast<int>(rng() % 6);
        for (int l = 0; l < lines; ++l) {
            int words = static_cast<int>(rng() % 7);
            for (int w = 0; w < words; ++w)
                script += tokens[rng() % tokens.size()] + (rng() % 3 ? " " : "");
            script += rng() % 2 ? "\r\n" : "\n";
        }
        std::vector<std::string> args;
        if (rng() % 3 == 0)
            args = {"s.cmd", "\"a b\"", "a"};
        std::istringstream in;
        std::ostringstream out;
        std::ostringstream err;
        pvcmd::ToolIo io{in, out, err};
        pvcmd::Interpreter interpreter(io);
        interpreter.runText(script, args);
        for (const std::string& line : splitCrLf(err.str())) {
            bool known = false;
            for (const std::string& prefix : knownErrors)
                known = known || startsWith(line, prefix);
            ASSERT_TRUE(known) << "unexpected error line [" << line << "] from script:\n" << script;
        }
        // Scripts may cd into sub; every round starts from the top again.
        ASSERT_EQ(::chdir(here.dir().str().c_str()), 0);
    }
}

// Lines as fc reads them, for short inputs: LF or NUL ends a line, one CR
// before LF is dropped, a final line end adds nothing.
std::vector<std::string> referenceLines(const std::string& bytes) {
    std::vector<std::string> lines;
    std::string line;
    bool open = false;
    for (char c : bytes) {
        if (c == '\n' || c == '\0') {
            if (c == '\n' && !line.empty() && line.back() == '\r')
                line.pop_back();
            lines.push_back(line);
            line.clear();
            open = false;
        } else {
            line += c;
            open = true;
        }
    }
    if (open)
        lines.push_back(line);
    return lines;
}

std::string randomText(std::mt19937& rng) {
    static const std::string alphabet[] = {
        "A", "B", "C", "a", " ", "\t", "\r", "\n", "\n", "\n", std::string("\0", 1)};
    std::string text;
    int length = static_cast<int>(rng() % 40);
    for (int i = 0; i < length; ++i)
        text += alphabet[rng() % std::size(alphabet)];
    return text;
}

TEST(Fuzz, FcTextReportsAreConsistentWithTheFiles) {
    pvcmdtest::InTempDir here;
    std::mt19937 rng(42);
    const std::vector<std::string> optional = {"/a",   "/c",   "/w", "/t", "/lb1",
                                               "/lb3", "/lb5", "/1", "/3"};
    for (int round = 0; round < 2000; ++round) {
        std::string text1 = randomText(rng);
        // Often a small edit of the first file, so that resynchronisation happens.
        std::string text2 = text1;
        if (rng() % 4 == 0 || text2.empty()) {
            text2 = randomText(rng);
        } else {
            int edits = 1 + static_cast<int>(rng() % 3);
            for (int e = 0; e < edits && !text2.empty(); ++e)
                text2[rng() % text2.size()] = "AB\nx"[rng() % 4];
        }
        here.dir().write("a.txt", text1);
        here.dir().write("b.txt", text2);
        pvcmd::ToolArgs args = {"/n"};
        for (const std::string& s : optional)
            if (rng() % 4 == 0)
                args.push_back(s);
        pvcmd::ToolArgs forward = args;
        forward.insert(forward.end(), {"a.txt", "b.txt"});
        pvcmd::ToolArgs backward = args;
        backward.insert(backward.end(), {"b.txt", "a.txt"});
        pvcmdtest::ToolRun run = pvcmdtest::runTool(&pvcmd::fcMain, forward);
        pvcmdtest::ToolRun back = pvcmdtest::runTool(&pvcmd::fcMain, backward);
        std::string context = "files [" + text1 + "] [" + text2 + "]";
        ASSERT_TRUE(run.rc == 0 || run.rc == 1) << context;
        ASSERT_EQ(run.rc, back.rc) << "difference must be symmetric: " << context;
        std::vector<std::string> out = splitCrLf(run.out);
        ASSERT_FALSE(out.empty());
        ASSERT_EQ(out[0], "Comparing files a.txt and b.txt");
        ASSERT_EQ(run.rc == 0, out.size() >= 2 && out[1] == "FC: no differences encountered")
            << context;
        if (text1 == text2) {
            ASSERT_EQ(run.rc, 0) << context;
        }

        // Every numbered line shows that line of its file; within a side the
        // numbers run on by one (across "..." of /a they jump ahead).
        const std::vector<std::string> lines1 = referenceLines(text1);
        const std::vector<std::string> lines2 = referenceLines(text2);
        const std::vector<std::string>* side = nullptr;
        long last = 0;
        bool skipped = false;
        for (size_t i = 1; i < out.size(); ++i) {
            const std::string& line = out[i];
            if (line == "***** a.txt" || line == "***** b.txt") {
                side = line == "***** a.txt" ? &lines1 : &lines2;
                last = 0;
                continue;
            }
            if (line == "*****" || line.empty() || startsWith(line, "Resync Failed.") ||
                startsWith(line, "FC: no differences")) {
                side = nullptr;
                continue;
            }
            if (line == "...") {
                skipped = true;
                continue;
            }
            ASSERT_NE(side, nullptr) << "line outside a block: [" << line << "] " << context;
            ASSERT_GE(line.size(), 8u);
            long number = std::strtol(line.substr(0, 5).c_str(), nullptr, 10);
            ASSERT_EQ(line.substr(5, 3), ":  ");
            ASSERT_GE(number, 1);
            ASSERT_LE(static_cast<size_t>(number), side->size()) << context;
            EXPECT_EQ(line.substr(8), (*side)[static_cast<size_t>(number) - 1]) << context;
            if (last != 0 && !skipped) {
                EXPECT_EQ(number, last + 1) << context;
            }
            last = number;
            skipped = false;
        }
    }
}

TEST(Fuzz, FcBinaryListsEveryDifferingByte) {
    pvcmdtest::InTempDir here;
    std::mt19937 rng(7);
    for (int round = 0; round < 1000; ++round) {
        std::string bytes1(rng() % 64, '\0');
        for (char& c : bytes1)
            c = static_cast<char>(rng() % 4);
        std::string bytes2 = bytes1;
        if (rng() % 3)
            bytes2.resize(rng() % 64, '\x01');
        for (int e = static_cast<int>(rng() % 4); e > 0 && !bytes2.empty(); --e)
            bytes2[rng() % bytes2.size()] = static_cast<char>(rng() % 4);
        here.dir().write("a.bin", bytes1);
        here.dir().write("b.bin", bytes2);
        pvcmdtest::ToolRun run = pvcmdtest::runTool(&pvcmd::fcMain, {"a.bin", "b.bin"});
        size_t common = std::min(bytes1.size(), bytes2.size());
        size_t differing = 0;
        for (size_t i = 0; i < common; ++i)
            differing += bytes1[i] != bytes2[i];
        std::vector<std::string> out = splitCrLf(run.out);
        size_t listed = 0;
        for (const std::string& line : out)
            listed += line.size() == 15 && line[8] == ':';
        EXPECT_EQ(listed, differing);
        EXPECT_EQ(run.rc, bytes1 == bytes2 ? 0 : 1);
        bool longer = run.out.find("longer than") != std::string::npos;
        EXPECT_EQ(longer, bytes1.size() != bytes2.size());
    }
}

} // namespace
