#include "platform/prompter.h"

#include <iostream>

namespace pv {

void ConsolePrompter::message(const std::string& text, const std::string& title, MessageIcon) {
    std::cerr << title << ": " << text << '\n';
}

bool ConsolePrompter::confirm(const std::string& text, const std::string& title, MessageIcon) {
    std::cerr << title << ": " << text << " (declined)\n";
    return false;
}

Answer ConsolePrompter::ask(const std::string& text, const std::string& title, MessageIcon) {
    std::cerr << title << ": " << text << " (cancelled)\n";
    return Answer::Cancel;
}

std::optional<std::string> ConsolePrompter::input(const std::string& prompt,
                                                  const std::string& title,
                                                  const std::string&) {
    std::cerr << title << ": " << prompt << " (cancelled)\n";
    return std::nullopt;
}

namespace {
ConsolePrompter g_console;
Prompter* g_prompter = &g_console;
} // namespace

Prompter& prompter() { return *g_prompter; }

Prompter* setPrompter(Prompter* p) {
    Prompter* previous = g_prompter;
    g_prompter = p ? p : &g_console;
    return previous;
}

} // namespace pv
