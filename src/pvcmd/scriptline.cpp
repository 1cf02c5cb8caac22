#include "pvcmd/scriptline.h"
#include "platform/textutil.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <strings.h>
#include <unistd.h>

#include <sys/stat.h>

namespace pvcmd {

namespace {
bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// The compare lines name their results file unquoted ("fc ... >> /prog/x.txt"),
// which breaks when the program directory holds a blank. An unquoted absolute
// target that runs to the end of the line, whose directory part holds a blank
// and exists, is taken whole. Returns the end of that target, or 0.
size_t unquotedPathTarget(const std::string& raw, size_t at) {
    if (at >= raw.size() || raw[at] != '/')
        return 0;
    size_t end = raw.size();
    while (end > at && isBlank(raw[end - 1]))
        --end;
    std::string path = raw.substr(at, end - at);
    if (path.find_first_of("\"<>^") != std::string::npos)
        return 0;
    size_t slash = path.rfind('/');
    std::string directory = path.substr(0, slash);
    if (directory.find(' ') == std::string::npos || !pv::isDirectory(directory))
        return 0;
    return end;
}
} // namespace

ScriptLine ScriptLine::parse(const std::string& raw) {
    ScriptLine line;
    size_t i = 0;
    const size_t n = raw.size();
    while (i < n && (isBlank(raw[i]) || raw[i] == '@')) {
        if (raw[i] == '@')
            line.m_hidden = true;
        ++i;
    }
    std::string& text = line.m_text;
    bool quoted = false;
    while (i < n) {
        char c = raw[i];
        if (c == '"') {
            quoted = !quoted;
            text += c;
            ++i;
            continue;
        }
        if (quoted) {
            text += c;
            ++i;
            continue;
        }
        if (c == '^') {
            if (i + 1 < n)
                text += raw[i + 1];
            i += 2;
            continue;
        }
        if (c != '>') {
            text += c;
            ++i;
            continue;
        }
        Redirection redirection;
        // "2>x": a digit standing alone before the operator is a handle;
        // "a2>x" keeps the digit as text.
        if (!text.empty() && (text.back() == '1' || text.back() == '2') &&
            (text.size() == 1 || isBlank(text[text.size() - 2]))) {
            redirection.handle = text.back() - '0';
            text.pop_back();
        }
        ++i;
        if (i < n && raw[i] == '>') {
            redirection.append = true;
            ++i;
        }
        while (i < n && isBlank(raw[i]))
            ++i;
        std::string& target = redirection.target;
        if (i < n && raw[i] == '&' && i + 1 < n && (raw[i + 1] == '1' || raw[i + 1] == '2')) {
            target = raw.substr(i, 2);
            i += 2;
        } else if (size_t end = unquotedPathTarget(raw, i); end != 0) {
            target = raw.substr(i, end - i);
            i = n;
        } else {
            bool inQuotes = false;
            while (i < n) {
                char t = raw[i];
                if (t == '"') {
                    inQuotes = !inQuotes;
                    ++i;
                    continue;
                }
                if (!inQuotes && (isBlank(t) || t == '>'))
                    break;
                if (!inQuotes && t == '^' && i + 1 < n) {
                    target += raw[i + 1];
                    i += 2;
                    continue;
                }
                target += t;
                ++i;
            }
        }
        if (target.empty())
            line.m_malformed = true;
        line.m_redirections.push_back(redirection);
    }
    return line;
}

std::string ScriptLine::display() const {
    std::string shown = m_text;
    if (m_redirections.empty()) {
        // "echo." and "echo:word" are shown without the blank other commands get.
        bool echoJoined = m_text.size() > 4 && ::strncasecmp(m_text.c_str(), "echo", 4) == 0 &&
                          std::strchr(".:/(+,;=[]\\", m_text[4]) != nullptr;
        return echoJoined ? shown : shown + " ";
    }
    for (const Redirection& r : m_redirections) {
        shown += " ";
        shown += static_cast<char>('0' + r.handle);
        shown += r.append ? ">>" : ">";
        shown += r.target;
    }
    return shown;
}

bool endsInContinuation(const std::string& line) {
    bool quoted = false;
    for (size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"')
            quoted = !quoted;
        else if (!quoted && line[i] == '^') {
            if (i + 1 == line.size())
                return true;
            ++i;
        }
    }
    return false;
}

namespace {

// The position of the "%" that closes a variable name starting at `from`, or npos
// when the text there is no name (letters, digits and underscores) closed by "%".
size_t variableEnd(const std::string& line, size_t from) {
    size_t k = from;
    while (k < line.size() && (std::isalnum(static_cast<unsigned char>(line[k])) || line[k] == '_'))
        ++k;
    if (k == from || k >= line.size() || line[k] != '%')
        return std::string::npos;
    return k;
}

// A variable's value, its name matched without regard to case.
std::optional<std::string> variableValue(const std::string& name) {
    if (const char* value = std::getenv(name.c_str()))
        return std::string(value);
    for (char** entry = environ; entry && *entry; ++entry) {
        const char* eq = std::strchr(*entry, '=');
        if (eq && static_cast<size_t>(eq - *entry) == name.size() &&
            ::strncasecmp(*entry, name.c_str(), name.size()) == 0)
            return std::string(eq + 1);
    }
    return std::nullopt;
}

// %NAME%: a variable set by the user wins over the interpreter's own ERRORLEVEL.
std::optional<std::string> percentVariable(const std::string& name, const PercentContext& context) {
    std::optional<std::string> value = variableValue(name);
    if (!value && ::strcasecmp(name.c_str(), "errorlevel") == 0)
        value = std::to_string(context.errorLevel);
    return value;
}

// A script started without arguments: only %% and known %NAME% outside quotes.
std::string expandLiterally(const std::string& line, const PercentContext& context) {
    std::string out;
    bool quoted = false;
    for (size_t i = 0; i < line.size(); ++i) {
        char c = line[i];
        if (c == '"')
            quoted = !quoted;
        if (c != '%' || quoted || i + 1 >= line.size()) {
            out += c;
            continue;
        }
        if (line[i + 1] == '%') {
            out += '%';
            ++i;
        } else if (size_t close = variableEnd(line, i + 1); close != std::string::npos) {
            if (auto value = percentVariable(line.substr(i + 1, close - i - 1), context)) {
                out += *value;
                i = close;
            } else {
                out += c;
            }
        } else {
            out += c;
        }
    }
    return out;
}

} // namespace

std::string expandPercents(const std::string& line, const PercentContext& context) {
    if (!context.withArguments)
        return expandLiterally(line, context);
    const std::vector<std::string>& args = context.args;
    std::string out;
    const size_t n = line.size();
    for (size_t i = 0; i < n; ++i) {
        char c = line[i];
        if (c != '%') {
            out += c;
            continue;
        }
        if (i + 1 >= n)
            break; // a lone "%" at the end is dropped
        char next = line[i + 1];
        if (next == '%') {
            out += '%';
            ++i;
        } else if (next >= '0' && next <= '9') {
            size_t index = static_cast<size_t>(next - '0');
            if (index < args.size())
                out += args[index];
            ++i;
        } else if (next == '~' && i + 2 < n && line[i + 2] >= '0' && line[i + 2] <= '9') {
            size_t index = static_cast<size_t>(line[i + 2] - '0');
            if (index < args.size()) {
                std::string arg = args[index];
                if (arg.size() >= 2 && arg.front() == '"' && arg.back() == '"')
                    arg = arg.substr(1, arg.size() - 2);
                else if (!arg.empty() && arg.front() == '"')
                    arg.erase(0, 1);
                out += arg;
            }
            i += 2;
        } else if (next == '*') {
            for (size_t k = 1; k < args.size(); ++k)
                out += (k > 1 ? " " : "") + args[k];
            ++i;
        } else if (size_t close = variableEnd(line, i + 1); close != std::string::npos) {
            // %NAME% is the variable's value (set by "set"), or nothing.
            out += percentVariable(line.substr(i + 1, close - i - 1), context).value_or("");
            i = close;
        }
        // any other "%" is dropped and the character after it kept
    }
    return out;
}

} // namespace pvcmd
