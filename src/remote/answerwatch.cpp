#include "remote/answerwatch.h"

#include <sys/socket.h>

namespace pv {

AnswerWatch::AnswerWatch(std::chrono::milliseconds limit)
    : m_limit(limit), m_thread([this] { watch(); }) {}

AnswerWatch::~AnswerWatch() {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_quit = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

void AnswerWatch::begin(int fd) {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_fd = fd;
        m_waiting = true;
        m_until = std::chrono::steady_clock::now() + m_limit;
    }
    m_changed.notify_one();
}

void AnswerWatch::end() {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_waiting = false;
}

void AnswerWatch::watch() {
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_quit) {
        if (!m_waiting) {
            m_changed.wait(lock);
            continue;
        }
        const auto until = m_until;
        if (m_changed.wait_until(lock, until) == std::cv_status::timeout && m_waiting &&
            m_until == until) {
            // The blocked call sees the socket end and returns with an error.
            m_fired = true;
            m_waiting = false;
            if (m_fd >= 0)
                ::shutdown(m_fd, SHUT_RDWR);
        }
    }
}

} // namespace pv
