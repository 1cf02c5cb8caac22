// Randomised inputs for the script interpreter and fc's text compare: a few
// thousand cases with a fixed seed, so a failure repeats. Nothing may crash or hang, and the
// results must keep the invariants checked below.

#include "pvcmdtestutil.h"

#include "pvcmd/interpreter.h"
#include "support/envguard.h"

#include <gtest/gtest.h>

#include <random>

namespace {

std::vector<std::string> splitCrLf(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t start = 0, end; start < text.size(); start = end + 2) {
        end = std::min(text.find("\r\n", start), text.size());
        lines.push_back(text.substr(start, end - start));
    }
    return lines;
}

bool startsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

TEST(Fuzz, ScriptsNeverCrashAndOnlyReportKnownErrors) {
    pvcmdtest::InTempDir here;
    here.mkdir("sub");
    here.write("a", "A\nB\n");
    here.write("b", "A\nC\n");
    // No program can be found: random lines must not start anything. No token
    // starts with "/", so no redirection can name a file outside the directory.
    pvtest::EnvGuard path("PATH", here.mkdir("emptybin"));
    // clang-format off
    const std::vector<std::string> tokens = {
        "echo", "ECHO", "echo.", "echo:", "rem", "@", "@echo off", "echo on", "cd", "cd /d",
        "pushd", "popd", "sub", "\"sub\"", "C:", "fc", "FC", "fc /b", "FC /lb2 /n", "fc /x", "a",
        "b", "\"a\"", ">", ">>", "2>", "2>&1", "f", "\"g h\"", "missing/y", "sub/x", "^", "^>",
        "\"", "%", "%1", "%%", "%~1", " ", "  ", "\t", "x", "100%", "&", "|", "exit /b 1",
        "pause", "nosuch", std::string("\0", 1), "\r", "::"};
    const std::vector<std::string> knownErrors = {
        "The system cannot find the path specified.", "Access is denied.",
        "The syntax of the command is incorrect.", "The input line is too long.",
        "There is not enough space on the disk.", "operable program or batch file.", "FC: ", "'"};
    // clang-format on
    std::mt19937 rng(20261123);
    for (int round = 0; round < 3000; ++round) {
        std::string script;
        for (int l = 0, lines = 1 + static_cast<int>(rng() % 6); l < lines; ++l) {
            for (int w = 0, words = static_cast<int>(rng() % 7); w < words; ++w)
                script += tokens[rng() % tokens.size()] + (rng() % 3 ? " " : "");
            script += rng() % 2 ? "\r\n" : "\n";
        }
        std::vector<std::string> args;
        if (rng() % 3 == 0)
            args = {"s.cmd", "\"a b\"", "a"};
        std::istringstream in;
        std::ostringstream out, err;
        pvcmd::ToolIo io{in, out, err};
        pvcmd::Interpreter(io).runText(script, args);
        for (const std::string& line : splitCrLf(err.str())) {
            bool known = false;
            for (const std::string& prefix : knownErrors)
                known = known || startsWith(line, prefix);
            ASSERT_TRUE(known) << "unexpected error line [" << line << "] from script:\n" << script;
        }
        // Scripts may cd into sub; every round starts from the top again.
        std::filesystem::current_path(here.path());
    }
}

// Lines as fc reads them, for short inputs: LF or NUL ends a line, one CR
// before LF is dropped, a final line end adds nothing.
std::vector<std::string> referenceLines(const std::string& bytes) {
    std::vector<std::string> lines;
    std::string line;
    for (char c : bytes) {
        if (c != '\n' && c != '\0') {
            line += c;
            continue;
        }
        if (c == '\n' && !line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
        line.clear();
    }
    if (!bytes.empty() && bytes.back() != '\n' && bytes.back() != '\0')
        lines.push_back(line);
    return lines;
}

std::string randomText(std::mt19937& rng) {
    static const std::string alphabet[] = {
        "A", "B", "C", "a", " ", "\t", "\r", "\n", "\n", "\n", std::string("\0", 1)};
    std::string text;
    for (int i = 0, length = static_cast<int>(rng() % 40); i < length; ++i)
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
            for (int e = 0, edits = 1 + static_cast<int>(rng() % 3); e < edits; ++e)
                text2[rng() % text2.size()] = "AB\nx"[rng() % 4];
        }
        here.write("a.txt", text1);
        here.write("b.txt", text2);
        pvcmd::ToolArgs args = {"/n"};
        for (const std::string& s : optional)
            if (rng() % 4 == 0)
                args.push_back(s);
        pvcmd::ToolArgs backward = args;
        args.insert(args.end(), {"a.txt", "b.txt"});
        backward.insert(backward.end(), {"b.txt", "a.txt"});
        auto run = pvcmdtest::runTool(&pvcmd::fcMain, here.str(), args);
        auto back = pvcmdtest::runTool(&pvcmd::fcMain, here.str(), backward);
        std::string context = "files [" + text1 + "] [" + text2 + "]";
        ASSERT_TRUE(run.code == 0 || run.code == 1) << context;
        ASSERT_EQ(run.code, back.code) << "difference must be symmetric: " << context;
        std::vector<std::string> out = splitCrLf(run.out);
        ASSERT_FALSE(out.empty());
        ASSERT_EQ(out[0], "Comparing files a.txt and b.txt");
        ASSERT_EQ(run.code == 0, out.size() >= 2 && out[1] == "FC: no differences encountered")
            << context;
        ASSERT_TRUE(text1 != text2 || run.code == 0) << context;

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
            } else if (line == "*****" || line.empty() || startsWith(line, "Resync Failed.") ||
                       startsWith(line, "FC: no differences")) {
                side = nullptr;
            } else if (line == "...") {
                skipped = true;
            } else {
                ASSERT_NE(side, nullptr) << "line outside a block: [" << line << "] " << context;
                ASSERT_GE(line.size(), 8u);
                long number = std::strtol(line.substr(0, 5).c_str(), nullptr, 10);
                ASSERT_EQ(line.substr(5, 3), ":  ");
                ASSERT_GE(number, 1);
                ASSERT_LE(static_cast<size_t>(number), side->size()) << context;
                EXPECT_EQ(line.substr(8), (*side)[static_cast<size_t>(number) - 1]) << context;
                EXPECT_TRUE(last == 0 || skipped || number == last + 1) << context;
                last = number;
                skipped = false;
            }
        }
    }
}

} // namespace
