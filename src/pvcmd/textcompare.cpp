#include "pvcmd/textcompare.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string_view>

namespace pvcmd {

TextCompare::Window::Window(LineReader& reader, size_t capacity, const TextCompare& owner)
    : m_reader(reader), m_owner(owner), m_slots(capacity) {}

void TextCompare::Window::fill() {
    while (m_count < m_slots.size() && !m_eof) {
        Line& line = m_slots[(m_head + m_count) % m_slots.size()];
        if (!m_reader.next(line.text)) {
            m_eof = true;
            break;
        }
        m_owner.normalise(line);
        line.hashed = false;
        ++m_count;
    }
}

void TextCompare::Window::drop(size_t n) {
    m_head = (m_head + n) % m_slots.size();
    m_count -= n;
    m_firstNumber += static_cast<long>(n);
}

TextCompare::TextCompare(const FcOptions& options, std::ostream& out)
    : m_options(options), m_out(out) {}

void TextCompare::normalise(Line& line) const {
    const std::string& text = line.text;
    bool hasTab = text.find('\t') != std::string::npos;
    bool expandTabs = hasTab && !m_options.keepTabs;
    if (!expandTabs && !m_options.compressBlanks && !m_options.ignoreCase) {
        line.hasKey = false;
        return;
    }
    std::string& key = line.key;
    key.clear();
    if (expandTabs) {
        for (char c : text) {
            if (c == '\t')
                key.append(8 - key.size() % 8, ' ');
            else
                key += c;
        }
    } else {
        key = text;
    }
    if (m_options.compressBlanks) {
        std::string packed;
        packed.reserve(key.size());
        bool blank = false;
        for (char c : key) {
            if (c == ' ' || c == '\t') {
                blank = true;
                continue;
            }
            if (blank && !packed.empty())
                packed += ' ';
            blank = false;
            packed += c;
        }
        key.swap(packed);
    }
    if (m_options.ignoreCase) {
        for (char& c : key)
            if (c >= 'a' && c <= 'z')
                c = static_cast<char>(c - 'a' + 'A');
    }
    line.hasKey = true;
}

bool TextCompare::equal(Line& a, Line& b) const {
    const std::string& ka = a.compareText();
    const std::string& kb = b.compareText();
    return ka.size() == kb.size() && std::memcmp(ka.data(), kb.data(), ka.size()) == 0;
}

std::uint64_t TextCompare::hashOf(Line& line) {
    if (!line.hashed) {
        line.hash = std::hash<std::string_view>{}(line.compareText());
        line.hashed = true;
    }
    return line.hash;
}

bool TextCompare::findResync(Window& w1, Window& w2, size_t& x, size_t& y) {
    return findResyncPoint(
        w1.count(), w2.count(), static_cast<size_t>(m_options.resyncLines),
        [&](size_t i) { return hashOf(w1.at(i)); }, [&](size_t j) { return hashOf(w2.at(j)); },
        [&](size_t i, size_t j) { return equal(w1.at(i), w2.at(j)); }, m_scratch, x, y);
}

void TextCompare::printLine(Window& w, size_t i) {
    if (m_options.lineNumbers) {
        char number[32];
        std::snprintf(number, sizeof number, "%5ld:  ", w.firstNumber() + static_cast<long>(i));
        m_out << number;
    }
    m_out << w.at(i).text << "\r\n";
}

void TextCompare::printSide(Window& w, size_t lines, const std::string& name) {
    m_out << "***** " << name << "\r\n";
    if (m_options.abbreviate && lines >= 4) {
        printLine(w, 0);
        m_out << "...\r\n";
        printLine(w, lines - 1);
        return;
    }
    for (size_t i = 0; i < lines; ++i)
        printLine(w, i);
}

void TextCompare::printBlock(Window& w1, size_t lines1, const std::string& name1, Window& w2,
                             size_t lines2, const std::string& name2) {
    printSide(w1, lines1, name1);
    printSide(w2, lines2, name2);
    m_out << "*****\r\n\r\n";
}

int TextCompare::run(LineReader& reader1, const std::string& name1, LineReader& reader2,
                     const std::string& name2) {
    const size_t capacity = static_cast<size_t>(m_options.lineBuffer);
    Window w1(reader1, capacity, *this);
    Window w2(reader2, capacity, *this);
    bool differ = false;
    for (;;) {
        w1.fill();
        w2.fill();
        if (w1.count() == 0 && w2.count() == 0)
            break;
        const size_t common = std::min(w1.count(), w2.count());
        size_t i = 0;
        while (i < common && equal(w1.at(i), w2.at(i)))
            ++i;
        if (i == common) {
            // Everything compared matched and is dropped, context included: a
            // difference that starts a new window, or the tail of the longer
            // file, is shown without a context line.
            w1.drop(common);
            w2.drop(common);
            if (w1.count() == 0 && w2.count() == 0)
                continue;
        } else {
            size_t keep = i > 0 ? i - 1 : 0; // the last matching line stays as context
            w1.drop(keep);
            w2.drop(keep);
        }
        w1.fill();
        w2.fill();
        differ = true;
        size_t x = 0;
        size_t y = 0;
        if (findResync(w1, w2, x, y)) {
            printBlock(w1, x + 1, name1, w2, y + 1, name2);
            w1.drop(x);
            w2.drop(y);
            continue;
        }
        if (w1.full() || w2.full())
            m_out << "Resync Failed.  Files are too different.\r\n";
        printBlock(w1, w1.count(), name1, w2, w2.count(), name2);
        break;
    }
    if (!differ)
        m_out << "FC: no differences encountered\r\n\r\n";
    return differ ? 1 : 0;
}

} // namespace pvcmd
