#pragma once
// Every question the program asks the user goes through one injectable prompter,
// so commands run unattended in tests and the logic never shows a dialog itself.

#include <optional>
#include <string>

namespace pv {

// The title of every message box that names no other.
inline constexpr const char* kProgramTitle = "Pairview";

// The icon a message box shows; a box that names none shows no icon.
enum class MessageIcon { None, Information, Question, Exclamation, Critical };

// The answer to a Yes/No/Cancel question.
enum class Answer { Yes, No, Cancel };

class Prompter {
public:
    virtual ~Prompter() = default;
    // A message box with an OK button.
    virtual void message(const std::string& text, const std::string& title = kProgramTitle,
                         MessageIcon icon = MessageIcon::None) = 0;
    // A Yes/No question; true for Yes.
    virtual bool confirm(const std::string& text, const std::string& title = kProgramTitle,
                         MessageIcon icon = MessageIcon::None) = 0;
    // A Yes/No/Cancel question.
    virtual Answer ask(const std::string& text, const std::string& title = kProgramTitle,
                       MessageIcon icon = MessageIcon::None) = 0;
    // An input box; nullopt when cancelled (an empty answer is "").
    virtual std::optional<std::string> input(const std::string& prompt, const std::string& title,
                                             const std::string& defaultText) = 0;
    // File dialogs; nullopt when cancelled.
    virtual std::optional<std::string> openFileName(const std::string& title,
                                                    const std::string& directory,
                                                    const std::string& filter) = 0;
    virtual std::optional<std::string> saveFileName(const std::string& title,
                                                    const std::string& directory,
                                                    const std::string& filter) = 0;
};

// Answers nothing: messages go to the error output, questions are declined
// (a Yes/No/Cancel question is cancelled).
// The program's prompter until the user interface installs its own.
class ConsolePrompter : public Prompter {
public:
    void message(const std::string& text, const std::string& title, MessageIcon icon) override;
    bool confirm(const std::string& text, const std::string& title, MessageIcon icon) override;
    Answer ask(const std::string& text, const std::string& title, MessageIcon icon) override;
    std::optional<std::string> input(const std::string& prompt, const std::string& title,
                                     const std::string& defaultText) override;
    std::optional<std::string> openFileName(const std::string&, const std::string&,
                                            const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> saveFileName(const std::string&, const std::string&,
                                            const std::string&) override {
        return std::nullopt;
    }
};

Prompter& prompter();
// Installs a prompter (nullptr restores the console one); returns the previous one.
Prompter* setPrompter(Prompter* prompter);

} // namespace pv
