#include "pvcmd/binarycompare.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>

namespace pvcmd {

namespace {

constexpr size_t kBlock = 256 * 1024;
constexpr char kHex[] = "0123456789ABCDEF";

// Fills buf as far as the file allows; returns the byte count, and sets failed
// on a read error.
size_t readBlock(std::FILE* file, char* buf, bool& failed) {
    size_t got = std::fread(buf, 1, kBlock, file);
    if (got < kBlock && std::ferror(file))
        failed = true;
    return got;
}

// "OOOOOOOO: XX YY\r\n"; the offset widens past 8 digits for files over 4 GiB.
void appendDifference(std::string& out, unsigned long long offset, unsigned char a,
                      unsigned char b) {
    char digits[16];
    int n = 0;
    do {
        digits[n++] = kHex[offset & 0xF];
        offset >>= 4;
    } while (offset != 0);
    for (int i = n; i < 8; ++i)
        out += '0';
    while (n > 0)
        out += digits[--n];
    out += ": ";
    out += kHex[a >> 4];
    out += kHex[a & 0xF];
    out += ' ';
    out += kHex[b >> 4];
    out += kHex[b & 0xF];
    out += "\r\n";
}

} // namespace

size_t firstDifference(const char* a, const char* b, size_t from, size_t n) {
    // Equal stretches are skipped a page at a time by memcmp, the page that
    // differs is searched eight bytes at a time; the lowest differing byte of a
    // word is its first in memory on a little-endian machine, its highest on a
    // big-endian one.
    constexpr size_t kPage = 4096;
    size_t i = from;
    while (i + kPage <= n && std::memcmp(a + i, b + i, kPage) == 0)
        i += kPage;
    for (; i + 8 <= n; i += 8) {
        std::uint64_t wa, wb;
        std::memcpy(&wa, a + i, 8);
        std::memcpy(&wb, b + i, 8);
        if (std::uint64_t x = wa ^ wb) {
            if constexpr (std::endian::native == std::endian::little)
                return i + static_cast<size_t>(std::countr_zero(x)) / 8;
            else
                return i + static_cast<size_t>(std::countl_zero(x)) / 8;
        }
    }
    for (; i < n; ++i)
        if (a[i] != b[i])
            return i;
    return n;
}

int BinaryCompare::run(std::FILE* file1, const std::string& name1, std::FILE* file2,
                       const std::string& name2) {
    // Not zero-filled: for a small file only the pages that are read get touched.
    std::unique_ptr<char[]> buf1(new char[kBlock]);
    std::unique_ptr<char[]> buf2(new char[kBlock]);
    std::string report;
    report.reserve(64 * 1024);
    bool differ = false;
    unsigned long long offset = 0;
    size_t len1 = 0, len2 = 0, pos1 = 0, pos2 = 0;
    bool fail1 = false, fail2 = false;
    bool end1 = false, end2 = false;
    for (;;) {
        if (pos1 == len1 && !end1) {
            len1 = readBlock(file1, buf1.get(), fail1);
            pos1 = 0;
            end1 = len1 == 0;
        }
        if (pos2 == len2 && !end2) {
            len2 = readBlock(file2, buf2.get(), fail2);
            pos2 = 0;
            end2 = len2 == 0;
        }
        if (fail1 || fail2) {
            m_out << report;
            m_error = errno ? errno : EIO;
            m_errorFile = fail1 ? name1 : name2;
            return 2;
        }
        if (end1 || end2)
            break;
        size_t n = std::min(len1 - pos1, len2 - pos2);
        const char* p1 = buf1.get() + pos1;
        const char* p2 = buf2.get() + pos2;
        for (size_t i = firstDifference(p1, p2, 0, n); i < n;
             i = firstDifference(p1, p2, i + 1, n)) {
            appendDifference(report, offset + i, static_cast<unsigned char>(p1[i]),
                             static_cast<unsigned char>(p2[i]));
            differ = true;
            if (report.size() >= 60 * 1024) {
                m_out << report;
                report.clear();
            }
        }
        pos1 += n;
        pos2 += n;
        offset += n;
    }
    m_out << report;
    // The shorter file ended; whatever is left in the other makes it longer.
    bool more1 = !end1 && (pos1 < len1 || std::fgetc(file1) != EOF);
    bool more2 = !end2 && (pos2 < len2 || std::fgetc(file2) != EOF);
    if (more1)
        m_out << "FC: " << name1 << " longer than " << name2 << "\r\n";
    else if (more2)
        m_out << "FC: " << name2 << " longer than " << name1 << "\r\n";
    if (!differ && !more1 && !more2) {
        m_out << "FC: no differences encountered\r\n\r\n";
        return 0;
    }
    m_out << "\r\n";
    return 1;
}

} // namespace pvcmd
