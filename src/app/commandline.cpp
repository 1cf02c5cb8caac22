#include "app/commandline.h"
#include "platform/textutil.h"


namespace pv {

std::string joinArguments(const std::vector<std::string>& args) {
    std::string text;
    for (const std::string& a : args) {
        if (!text.empty())
            text += ' ';
        text += a;
    }
    return text;
}

std::optional<std::string> settingsPathFromCommandLine(const std::string& commandLine) {
    std::optional<std::string> path;
    std::string rest(trimBlanks(commandLine));
    int count = 0;
    while (!rest.empty()) {
        ++count;
        std::string token;
        std::size_t blank = rest.find(' ');
        if (blank != std::string::npos) {
            token = rest.substr(0, blank);
            rest = std::string(trimBlanks(std::string_view(rest).substr(blank)));
        } else {
            token = rest;
            rest.clear();
        }
        token = toUpper(trimBlanks(token));
        if (token == "-INI" || token == "/INI") {
            // The path word stays in the rest and is examined as the next token.
            std::size_t next = rest.find(' ');
            std::string word = next == std::string::npos ? rest : rest.substr(0, next);
            if (!word.empty())
                path = word;
        }
        if (count > 10)
            break;
    }
    return path;
}

} // namespace pv
