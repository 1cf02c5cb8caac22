#include "editor/editorfile.h"
#include "editor/textcodec.h"
#include "platform/runtimeerror.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

using namespace pv;

TEST(TextCodec, DecodesAndWritesBackTheSameBytes) {
    struct Row {
        const char* name;
        std::string bytes;
        std::string text;
        TextFormat format;
    } rows[] = {
        // clang-format off
        {"UTF-8, CR LF", "caf\xC3\xA9\r\nx\r\n", "caf\xC3\xA9\nx\n", {TextEncoding::Utf8, LineEnd::CrLf}},
        {"UTF-8, LF", "a\nb", "a\nb", {TextEncoding::Utf8, LineEnd::Lf}},
        {"old Mac CR", "a\rb\r", "a\nb\n", {TextEncoding::Utf8, LineEnd::Cr}},
        {"no line end: CR LF", "abc", "abc", {TextEncoding::Utf8, LineEnd::CrLf}},
        {"Latin-1 bytes", "caf\xE9\xA0\r\n", "caf\xC3\xA9\xC2\xA0\n", {TextEncoding::Latin1, LineEnd::CrLf}},
        {"overlong form is not UTF-8", "\xC0\xAF", "\xC3\x80\xC2\xAF", {TextEncoding::Latin1, LineEnd::CrLf}},
        {"UTF-8 with a mark", "\xEF\xBB\xBFz\n", "z\n", {TextEncoding::Utf8Bom, LineEnd::Lf}},
        {"UTF-16 little-endian", std::string("\xFF\xFEh\0\xE9\0\r\0\n\0", 10), "h\xC3\xA9\n",
         {TextEncoding::Utf16LE, LineEnd::CrLf}},
        {"UTF-16 big-endian, beyond the BMP", std::string("\xFE\xFF\xD8\x3D\xDE\x00\0\n", 8),
         "\xF0\x9F\x98\x80\n", {TextEncoding::Utf16BE, LineEnd::Lf}},
        // clang-format on
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        DecodedText d = decodeText(r.bytes);
        EXPECT_EQ(d.text, r.text);
        EXPECT_TRUE(d.format == r.format);
        TextFormat f = d.format;
        EXPECT_EQ(encodeText(d.text, f), r.bytes);
        EXPECT_TRUE(f == r.format);
    }
}

TEST(TextCodec, LatinOneTextWithOtherLettersIsWrittenAsUtf8) {
    TextFormat f{TextEncoding::Latin1, LineEnd::Lf};
    EXPECT_EQ(encodeText("\xC3\xA9\xE2\x82\xAC", f), "\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(f.encoding, TextEncoding::Utf8);
}

TEST(EditorFile, SaveReplacesTheFileKeepingModeAndLink) {
    pvtest::TempDir dir;
    const std::string file = dir.write("t.sh", "old\n");
    ::chmod(file.c_str(), 0751);
    std::filesystem::create_symlink(file, dir / "link.sh");
    DecodedText d = loadEditorFile(dir / "link.sh");
    EXPECT_EQ(d.format.lineEnd, LineEnd::Lf);
    saveEditorFile(dir / "link.sh", "new\nline", d.format);
    EXPECT_TRUE(std::filesystem::is_symlink(dir / "link.sh"));
    EXPECT_EQ(pvtest::readFile(file), "new\nline");
    struct stat st {};
    ::stat(file.c_str(), &st);
    EXPECT_EQ(st.st_mode & 07777, 0751u);
}

TEST(EditorFile, FailedSaveLeavesTheOldFileWhole) {
    pvtest::TempDir dir;
    // The temporary file beside it gets a name longer than a file system allows.
    const std::string file = dir.write(std::string(250, 'n'), "old\r\n");
    TextFormat f;
    EXPECT_THROW(saveEditorFile(file, "new", f), RuntimeError);
    EXPECT_EQ(pvtest::readFile(file), "old\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1);
}

TEST(EditorFile, DirectoryOrMissingFileCannotBeLoaded) {
    pvtest::TempDir dir;
    EXPECT_THROW(loadEditorFile(dir.str()), RuntimeError);
    EXPECT_THROW(loadEditorFile(dir / "missing"), RuntimeError);
}
