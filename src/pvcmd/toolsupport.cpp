#include "pvcmd/toolsupport.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace pvcmd {

void writeLine(std::ostream& out, std::string_view text) {
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.write("\r\n", 2);
}

std::vector<std::string> splitSwitchPieces(std::string_view word) {
    std::vector<std::string> pieces;
    size_t pos = 0;
    while (pos < word.size()) {
        if (word[pos] == '/') {
            ++pos;
            continue;
        }
        size_t next = word.find('/', pos);
        if (next == std::string_view::npos)
            next = word.size();
        pieces.emplace_back(word.substr(pos, next - pos));
        pos = next;
    }
    return pieces;
}

ClassifiedWord classifyWord(std::string_view word, const SwitchRecogniser& isKnown) {
    ClassifiedWord result;
    if (word.size() < 2 || word[0] != '/')
        return result; // a lone "/" is an operand as well
    std::vector<std::string> pieces = splitSwitchPieces(word);
    bool emptyPiece = word.find("//") != std::string_view::npos || word.back() == '/';
    std::string firstBad;
    for (const std::string& piece : pieces) {
        if (!isKnown(piece)) {
            firstBad = "/" + piece;
            break;
        }
    }
    if (firstBad.empty() && !emptyPiece && !pieces.empty()) {
        result.kind = WordKind::Switches;
        result.switches = std::move(pieces);
        return result;
    }
    struct stat st;
    std::string path(word);
    if (word.find('/', 1) != std::string_view::npos || ::lstat(path.c_str(), &st) == 0)
        return result;
    result.kind = WordKind::BadSwitch;
    result.badSwitch = firstBad.empty() ? std::string(word) : firstBad;
    return result;
}

std::string systemMessage(int error) {
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return "The system cannot find the path specified.";
    case EACCES:
    case EPERM:
    case EISDIR:
    case EROFS:
        return "Access is denied.";
    case ENOSPC:
    case EDQUOT:
        return "There is not enough space on the disk.";
    case ENAMETOOLONG:
        return "The filename or extension is too long.";
    default:
        return std::strerror(error);
    }
}

std::string withThousands(unsigned long long value) {
    std::string digits = std::to_string(value);
    std::string result;
    int count = 0;
    for (auto it = digits.rbegin(); it != digits.rend(); ++it) {
        if (count > 0 && count % 3 == 0)
            result.insert(result.begin(), ',');
        result.insert(result.begin(), *it);
        ++count;
    }
    return result;
}

} // namespace pvcmd
