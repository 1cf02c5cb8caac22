#include "sidebyside/binarysummary.h"

#include "platform/runtimeerror.h"
#include "platform/textutil.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <vector>

namespace pv {

namespace {

constexpr size_t kBlock = 256 * 1024;
constexpr size_t kHeadSize = 8000; // as much as git looks at to call a file binary

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

FilePtr openOrThrow(const std::string& path) {
    FilePtr file(std::fopen(path.c_str(), "rb"));
    if (!file)
        throw RuntimeError::fromErrno(errno, path);
    return file;
}

// Reads up to `want` bytes; a read error throws.
size_t readSome(std::FILE* file, char* into, size_t want) {
    size_t got = std::fread(into, 1, want, file);
    if (got < want && std::ferror(file))
        throw RuntimeError::fromErrno(errno ? errno : EIO);
    return got;
}

} // namespace

BinarySummary compareBinary(std::FILE* left, std::FILE* right) {
    BinarySummary summary;
    std::vector<char> a(kBlock), b(kBlock);
    size_t inA = 0, inB = 0;   // unread bytes held in each block
    size_t posA = 0, posB = 0; // where they start
    bool endA = false, endB = false;
    for (;;) {
        if (inA == 0 && !endA) {
            inA = readSome(left, a.data(), kBlock);
            posA = 0;
            endA = inA == 0;
            summary.leftSize += inA;
        }
        if (inB == 0 && !endB) {
            inB = readSome(right, b.data(), kBlock);
            posB = 0;
            endB = inB == 0;
            summary.rightSize += inB;
        }
        if (inA == 0 || inB == 0)
            break;
        const size_t n = std::min(inA, inB);
        if (!summary.firstDifference) {
            const char* ia =
                std::mismatch(a.data() + posA, a.data() + posA + n, b.data() + posB).first;
            if (ia != a.data() + posA + n)
                summary.firstDifference =
                    summary.leftSize - inA + static_cast<std::uint64_t>(ia - (a.data() + posA));
        }
        posA += n, inA -= n;
        posB += n, inB -= n;
    }
    // Whatever is left of the longer file only counts towards its size.
    auto drain = [](std::FILE* file, std::vector<char>& block, bool atEnd, std::uint64_t& size) {
        for (size_t got = 0; !atEnd && (got = readSome(file, block.data(), kBlock)) > 0;)
            size += got;
    };
    drain(left, a, endA, summary.leftSize);
    drain(right, b, endB, summary.rightSize);
    return summary;
}

BinarySummary compareBinaryFiles(const std::string& leftPath, const std::string& rightPath) {
    FilePtr left = openOrThrow(leftPath);
    FilePtr right = openOrThrow(rightPath);
    return compareBinary(left.get(), right.get());
}

bool looksBinary(std::string_view path, std::string_view head) {
    static constexpr std::string_view kBinaryExtensions[] = {".exe", ".com", ".sys",
                                                             ".obj", ".lib", ".bin"};
    const size_t slash = path.find_last_of('/');
    const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    const size_t dot = name.find_last_of('.');
    if (dot != std::string_view::npos) {
        const std::string ext = toLower(name.substr(dot));
        for (std::string_view binary : kBinaryExtensions)
            if (ext == binary)
                return true;
    }
    const bool utf16 =
        head.size() >= 2 && (head.substr(0, 2) == "\xFF\xFE" || head.substr(0, 2) == "\xFE\xFF");
    return !utf16 && head.substr(0, kHeadSize).find('\0') != std::string_view::npos;
}

std::string fileHead(const std::string& path) {
    FilePtr file(std::fopen(path.c_str(), "rb"));
    if (!file)
        return {};
    std::string head(kHeadSize, '\0');
    head.resize(std::fread(head.data(), 1, kHeadSize, file.get()));
    return head;
}

} // namespace pv
