#include "pvcmd/findstrmatcher.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <cstring>
#include <stdexcept>

namespace pvcmd {

namespace {

// Pattern text that matches the end of a line: a line end must follow.
constexpr std::string_view kLineEnd = "(?=\\r?\\n)";

bool isAsciiAlnum(unsigned char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

void appendLiteralChar(std::string& out, char c) {
    // A backslash before any non-alphanumeric byte is a literal in PCRE2.
    if (!isAsciiAlnum(static_cast<unsigned char>(c)))
        out += '\\';
    out += c;
}

// Reads a class starting at text[pos] == '['; on success appends its PCRE2 form
// and returns the index after the closing ']'; returns npos when unterminated.
size_t translateClass(std::string_view text, size_t pos, std::string& out) {
    size_t i = pos + 1;
    bool negated = i < text.size() && text[i] == '^';
    if (negated)
        ++i;
    std::string body;
    bool first = true;
    while (i < text.size()) {
        char c = text[i];
        if (c == ']' && !first)
            break;
        if (c == '\\' && i + 1 < text.size()) {
            appendLiteralChar(body, text[i + 1]);
            i += 2;
        } else if (c == '-' && !first && i + 1 < text.size() && text[i + 1] != ']') {
            body += '-';
            ++i;
        } else {
            appendLiteralChar(body, c);
            ++i;
        }
        first = false;
    }
    if (i >= text.size())
        return std::string_view::npos;
    // A line ends at LF, and the CR before it belongs to the line end, so no class
    // may match either: a range such as [\x01-~] would otherwise match across lines.
    if (negated)
        out += "[^\\r\\n" + body + "]";
    else
        out += "(?:(?![\\r\\n])[" + body + "])";
    return i + 1;
}

} // namespace

struct FindstrMatcher::Compiled {
    pcre2_code* code = nullptr;
    pcre2_match_data* data = nullptr;
    bool jit = false;
    ~Compiled() {
        if (data)
            pcre2_match_data_free(data);
        if (code)
            pcre2_code_free(code);
    }
};

std::string FindstrMatcher::escapeLiteral(std::string_view text) {
    std::string out;
    out.reserve(text.size() * 2);
    for (char c : text)
        appendLiteralChar(out, c);
    return out;
}

std::string FindstrMatcher::translateRegex(std::string_view text) {
    std::string out;
    bool haveAtom = false; // "*" needs something to repeat
    size_t i = 0;
    while (i < text.size()) {
        char c = text[i];
        if (c == '^' && i == 0) {
            out += '^';
            ++i;
            continue;
        }
        if (c == '$' && i + 1 == text.size()) {
            out += kLineEnd;
            ++i;
            continue;
        }
        if (c == '.') {
            out += "[^\\r\\n]";
            haveAtom = true;
            ++i;
        } else if (c == '*') {
            if (haveAtom) {
                out += '*';
                haveAtom = false; // a second "*" in a row is taken literally
            } else {
                out += "\\*";
                haveAtom = true;
            }
            ++i;
        } else if (c == '[') {
            size_t next = translateClass(text, i, out);
            if (next == std::string_view::npos) {
                out += "\\[";
                ++i;
            } else {
                i = next;
            }
            haveAtom = true;
        } else if (c == '\\' && i + 1 < text.size()) {
            char n = text[i + 1];
            if (n == '<') {
                out += "\\b(?=\\w)";
                haveAtom = false;
            } else if (n == '>') {
                out += "\\b(?<=\\w)";
                haveAtom = false;
            } else {
                appendLiteralChar(out, n);
                haveAtom = true;
            }
            i += 2;
        } else {
            appendLiteralChar(out, c);
            haveAtom = true;
            ++i;
        }
    }
    return out;
}

bool FindstrMatcher::looksLikeRegex(std::string_view text) {
    for (size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c == '.' || c == '*' || c == '[' || c == '\\')
            return true;
        if (c == '^' && i == 0)
            return true;
        if (c == '$' && i + 1 == text.size())
            return true;
    }
    return false;
}

FindstrMatcher::FindstrMatcher(const std::vector<SearchString>& strings,
                               const FindstrMatchOptions& options) {
    if (strings.size() == 1 && !strings[0].regex && !options.atLineStart && !options.atLineEnd &&
        !options.ignoreCase && !strings[0].text.empty()) {
        m_usesLiteral = true;
        m_literal = strings[0].text;
        return;
    }
    for (const SearchString& s : strings) {
        if (!m_pattern.empty())
            m_pattern += '|';
        m_pattern += "(?:";
        if (options.atLineStart)
            m_pattern += '^';
        m_pattern += s.regex ? translateRegex(s.text) : escapeLiteral(s.text);
        if (options.atLineEnd)
            m_pattern += kLineEnd;
        m_pattern += ')';
    }
    m_compiled = std::make_unique<Compiled>();
    int errorCode = 0;
    PCRE2_SIZE errorOffset = 0;
    uint32_t flags = PCRE2_MULTILINE | (options.ignoreCase ? PCRE2_CASELESS : 0);
    m_compiled->code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(m_pattern.data()),
                                     m_pattern.size(), flags, &errorCode, &errorOffset, nullptr);
    if (!m_compiled->code) {
        PCRE2_UCHAR message[256];
        pcre2_get_error_message(errorCode, message, sizeof message);
        throw std::invalid_argument(reinterpret_cast<const char*>(message));
    }
    m_compiled->jit = pcre2_jit_compile(m_compiled->code, PCRE2_JIT_COMPLETE) == 0;
    m_compiled->data = pcre2_match_data_create_from_pattern(m_compiled->code, nullptr);
}

FindstrMatcher::~FindstrMatcher() = default;

size_t FindstrMatcher::find(std::string_view buffer, size_t from) const {
    if (from > buffer.size())
        return std::string_view::npos;
    if (m_usesLiteral) {
        const void* hit = ::memmem(buffer.data() + from, buffer.size() - from, m_literal.data(),
                                   m_literal.size());
        return hit ? static_cast<size_t>(static_cast<const char*>(hit) - buffer.data())
                   : std::string_view::npos;
    }
    const auto* subject = reinterpret_cast<PCRE2_SPTR>(buffer.data());
    int rc = m_compiled->jit ? pcre2_jit_match(m_compiled->code, subject, buffer.size(), from, 0,
                                               m_compiled->data, nullptr)
                             : pcre2_match(m_compiled->code, subject, buffer.size(), from, 0,
                                           m_compiled->data, nullptr);
    if (rc == PCRE2_ERROR_MATCHLIMIT || rc == PCRE2_ERROR_DEPTHLIMIT ||
        rc == PCRE2_ERROR_HEAPLIMIT || rc == PCRE2_ERROR_JIT_STACKLIMIT ||
        rc == PCRE2_ERROR_NOMEMORY)
        throw TooComplex{};
    if (rc < 0)
        return std::string_view::npos;
    return static_cast<size_t>(pcre2_get_ovector_pointer(m_compiled->data)[0]);
}

} // namespace pvcmd
