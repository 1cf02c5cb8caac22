#pragma once
// A prompter for tests: records every message and answers from queues.

#include "platform/prompter.h"

#include <deque>
#include <string>
#include <vector>

namespace pvtest {

class RecordingPrompter : public pv::Prompter {
public:
    RecordingPrompter() : m_previous(pv::setPrompter(this)) {}
    ~RecordingPrompter() override { pv::setPrompter(m_previous); }

    std::vector<std::string> messages;       // texts of message boxes and questions
    std::vector<std::string> titles;         // their titles
    std::vector<pv::MessageIcon> icons;      // their icons
    std::deque<bool> confirmAnswers;         // default: No
    std::deque<pv::Answer> askAnswers;       // default: Cancel
    std::deque<std::optional<std::string>> inputAnswers; // default: cancelled
    std::deque<std::optional<std::string>> fileAnswers;  // default: cancelled

    void message(const std::string& text, const std::string& title,
                 pv::MessageIcon icon = pv::MessageIcon::None) override {
        messages.push_back(text);
        titles.push_back(title);
        icons.push_back(icon);
    }
    bool confirm(const std::string& text, const std::string& title,
                 pv::MessageIcon icon = pv::MessageIcon::None) override {
        message(text, title, icon);
        return take(confirmAnswers, false);
    }
    pv::Answer ask(const std::string& text, const std::string& title,
                   pv::MessageIcon icon = pv::MessageIcon::None) override {
        message(text, title, icon);
        return take(askAnswers, pv::Answer::Cancel);
    }
    std::optional<std::string> input(const std::string& prompt, const std::string& title,
                                     const std::string&) override {
        message(prompt, title);
        return take(inputAnswers, std::optional<std::string>{});
    }
    std::optional<std::string> openFileName(const std::string& title, const std::string&,
                                            const std::string&) override {
        message("open: " + title, title);
        return take(fileAnswers, std::optional<std::string>{});
    }
    std::optional<std::string> saveFileName(const std::string& title, const std::string&,
                                            const std::string&) override {
        message("save: " + title, title);
        return take(fileAnswers, std::optional<std::string>{});
    }

private:
    template <class Q, class T> static T take(Q& q, T fallback) {
        if (q.empty())
            return fallback;
        T v = q.front();
        q.pop_front();
        return v;
    }
    pv::Prompter* m_previous;
};

} // namespace pvtest
