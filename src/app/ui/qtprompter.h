#pragma once
// The prompter of the running program: Qt's message boxes, input boxes and file
// dialogs. Installs itself for its lifetime.

#include "platform/prompter.h"

namespace pv {

class QtPrompter : public Prompter {
public:
    QtPrompter();
    ~QtPrompter() override;
    void message(const std::string& text, const std::string& title, MessageIcon icon) override;
    bool confirm(const std::string& text, const std::string& title, MessageIcon icon) override;
    Answer ask(const std::string& text, const std::string& title, MessageIcon icon) override;
    std::optional<std::string> input(const std::string& prompt, const std::string& title,
                                     const std::string& defaultText) override;
    std::optional<std::string> openFileName(const std::string& title, const std::string& directory,
                                            const std::string& filter) override;
    std::optional<std::string> saveFileName(const std::string& title, const std::string& directory,
                                            const std::string& filter) override;

private:
    Prompter* m_previous;
};

} // namespace pv
