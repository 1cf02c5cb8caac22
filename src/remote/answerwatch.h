#pragma once
// Bounds every wait for a server's answer. libssh's SFTP calls wait without end
// for a reply, so a server that stops answering (a frozen host, a network that
// drops everything) would hang the run: when a wait outlasts its limit, the
// watch shuts the connection's socket down and the call fails at once.

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace pv {

class AnswerWatch {
  public:
    explicit AnswerWatch(std::chrono::milliseconds limit);
    ~AnswerWatch();
    AnswerWatch(const AnswerWatch&) = delete;
    AnswerWatch& operator=(const AnswerWatch&) = delete;

    // A wait on socket `fd` starts, and ends.
    void begin(int fd);
    void end();
    // True once a wait took too long (the socket is then shut down for good).
    bool fired() const { return m_fired; }
    std::chrono::milliseconds limit() const { return m_limit; }

  private:
    void watch();

    const std::chrono::milliseconds m_limit;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_fd = -1;
    bool m_waiting = false;
    bool m_quit = false;
    std::chrono::steady_clock::time_point m_until;
    std::atomic<bool> m_fired{false};
    std::thread m_thread;
};

} // namespace pv
