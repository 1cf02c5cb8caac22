#pragma once
// The search of findstr: a set of search strings, each literal or in findstr's
// own regular-expression dialect, compiled into one matcher that scans a whole
// buffer. Lines end at LF; a CR before the LF belongs to the line end.
//
// Literal strings without anchoring or case folding go through a plain substring
// search; everything else is translated to one PCRE2 pattern (JIT compiled):
//   .        any character but CR and LF
//   *        zero or more of the previous character or class
//   ^  $     line start / end, special only at the start / end of the string
//   [..]     classes and ranges by code point; no class matches CR or LF
//   \x       x taken literally; \< and \> word start and end
// "$" and /e need a line end after the text, so they never match a last line
// that has no newline.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace pvcmd {

struct SearchString {
    std::string text;
    bool regex = false;
};

struct FindstrMatchOptions {
    bool atLineStart = false; // /b
    bool atLineEnd = false;   // /e
    bool ignoreCase = false;  // /i
};

class FindstrMatcher {
  public:
    FindstrMatcher(const std::vector<SearchString>& strings, const FindstrMatchOptions& options);
    ~FindstrMatcher();
    FindstrMatcher(const FindstrMatcher&) = delete;
    FindstrMatcher& operator=(const FindstrMatcher&) = delete;

    // PCRE2 gave up on a search at one of its limits (a line too long for a
    // pattern that backtracks a lot): neither a match nor its absence is known.
    struct TooComplex {};

    // The offset of the first match at or after `from` in `buffer`, or npos.
    // `from` must be a line start (0 or just after a LF). Throws TooComplex.
    size_t find(std::string_view buffer, size_t from) const;

    // The PCRE2 pattern in use ("" when the plain substring search is used).
    const std::string& pattern() const { return m_pattern; }

    // findstr's regex dialect as a PCRE2 pattern (without the /b /e anchors).
    static std::string translateRegex(std::string_view text);
    // True when `text` holds an unescaped metacharacter of the dialect, which
    // makes a search string without /l, /r or /c: a regular expression.
    static bool looksLikeRegex(std::string_view text);
    // `text` with every PCRE2 metacharacter escaped.
    static std::string escapeLiteral(std::string_view text);

  private:
    struct Compiled;
    std::unique_ptr<Compiled> m_compiled;
    std::string m_literal; // the one plain substring, when that path is used
    std::string m_pattern;
    bool m_usesLiteral = false;
};

} // namespace pvcmd
