#include "compare/contentcompare.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <mutex>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace pv {

namespace {

constexpr std::size_t kBlock = 256 * 1024;
// A pair at least this long is read as ranges of kRange bytes, so that both
// readers share one large pair.
constexpr std::uint64_t kSplitAt = 16ull * 1024 * 1024;
constexpr std::uint64_t kRange = 4ull * 1024 * 1024;

struct Job {
    std::size_t pair;
    std::uint64_t offset;
    std::uint64_t length; // 0: the whole files, lengths checked first
};

struct PairState {
    std::atomic<int> verdict{static_cast<int>(ContentVerdict::Same)};
    std::atomic<int> jobsLeft{0};
};

struct Batch {
    const std::vector<ContentPair>* pairs = nullptr;
    std::vector<Job> jobs;
    std::unique_ptr<PairState[]> states;
    std::atomic<std::size_t> next{0};
    std::atomic<std::size_t> pairsDone{0};
    std::atomic<bool> stopped{false};
    std::size_t jobsFinished = 0; // under the pool's mutex
};

// Keeps the worse of two verdicts: a failure over a difference over "same".
void settle(PairState& s, ContentVerdict v) {
    int want = static_cast<int>(v);
    int have = s.verdict.load();
    while (want > have && !s.verdict.compare_exchange_weak(have, want)) {
    }
}

class File {
  public:
    explicit File(const std::string& path) : m_fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
    ~File() {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    int fd() const { return m_fd; }

    // Reads up to `size` bytes at `offset`; -1 on an error.
    long readAt(char* buffer, std::size_t size, std::uint64_t offset) const {
        std::size_t got = 0;
        while (got < size) {
            ssize_t n = ::pread(m_fd, buffer + got, size - got, static_cast<off_t>(offset + got));
            if (n < 0 && errno == EINTR)
                continue;
            if (n < 0)
                return -1;
            if (n == 0)
                break;
            got += static_cast<std::size_t>(n);
        }
        return static_cast<long>(got);
    }

  private:
    int m_fd;
};

ContentVerdict compareRange(const Job& job, const ContentPair& pair, PairState& state,
                            const std::atomic<bool>& stopped) {
    if (stopped.load(std::memory_order_relaxed))
        return ContentVerdict::NotRead;
    File left(pair.left);
    if (left.fd() < 0)
        return ContentVerdict::LeftUnreadable;
    File right(pair.right);
    if (right.fd() < 0)
        return ContentVerdict::RightUnreadable;
    struct stat s1, s2;
    if (::fstat(left.fd(), &s1) != 0)
        return ContentVerdict::LeftUnreadable;
    if (::fstat(right.fd(), &s2) != 0)
        return ContentVerdict::RightUnreadable;
    if (S_ISREG(s1.st_mode) && S_ISREG(s2.st_mode) && s1.st_size != s2.st_size)
        return ContentVerdict::LengthDiffers;
    std::uint64_t offset = job.offset;
    const std::uint64_t end = job.length == 0 ? UINT64_MAX : job.offset + job.length;
    if (job.length == 0 || job.length >= kRange) {
        ::posix_fadvise(left.fd(), static_cast<off_t>(offset), static_cast<off_t>(job.length),
                        POSIX_FADV_SEQUENTIAL);
        ::posix_fadvise(right.fd(), static_cast<off_t>(offset), static_cast<off_t>(job.length),
                        POSIX_FADV_SEQUENTIAL);
    }
    thread_local std::unique_ptr<char[]> b1(new char[kBlock]), b2(new char[kBlock]);
    while (offset < end) {
        if (stopped.load(std::memory_order_relaxed))
            return ContentVerdict::NotRead;
        if (state.verdict.load(std::memory_order_relaxed) != int(ContentVerdict::Same))
            return ContentVerdict::Same; // another range has decided the pair
        const std::size_t want = static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, end - offset));
        long n1 = left.readAt(b1.get(), want, offset);
        if (n1 < 0)
            return ContentVerdict::LeftUnreadable;
        long n2 = right.readAt(b2.get(), want, offset);
        if (n2 < 0)
            return ContentVerdict::RightUnreadable;
        if (n1 != n2 || std::memcmp(b1.get(), b2.get(), static_cast<std::size_t>(n1)) != 0)
            return ContentVerdict::Differ;
        if (static_cast<std::size_t>(n1) < want)
            break; // both ended
        offset += want;
    }
    return ContentVerdict::Same;
}

// The reader threads, started at the first contents compare and kept for the
// process: a walk compares thousands of directories, each a batch of its own.
class ReaderPool {
  public:
    // Never destroyed: the threads wait for work until the process ends (a
    // forked child, which has none of them, would otherwise wait to join them).
    static ReaderPool& instance() {
        static ReaderPool* pool = new ReaderPool;
        return *pool;
    }

    void run(Batch& batch, const std::function<bool(std::size_t, std::size_t)>& poll) {
        if (::getpid() != m_process) {
            // A forked child has the pool but not its threads: it reads alone.
            for (std::size_t k = 0; k < batch.jobs.size(); ++k)
                runJob(batch, k);
            batch.jobsFinished = batch.jobs.size();
            return;
        }
        std::unique_lock lock(m_mutex);
        m_batch = &batch;
        ++m_generation;
        m_wake.notify_all();
        const std::size_t total = batch.pairs->size();
        // Every reader that took up the batch must have left it before it ends.
        while (batch.jobsFinished < batch.jobs.size() || m_active > 0) {
            m_done.wait_for(lock, std::chrono::milliseconds(40));
            if (batch.jobsFinished >= batch.jobs.size() || !poll)
                continue;
            lock.unlock();
            const bool goOn = poll(batch.pairsDone.load(), total);
            lock.lock();
            if (!goOn)
                batch.stopped = true;
        }
        m_batch = nullptr;
    }

  private:
    ReaderPool() {
        const unsigned cores = std::max(1u, std::min(2u, std::thread::hardware_concurrency()));
        for (unsigned n = 0; n < cores; ++n)
            std::thread([this] { work(); }).detach();
    }

    static void runJob(Batch& batch, std::size_t k) {
        const Job& job = batch.jobs[k];
        PairState& state = batch.states[job.pair];
        settle(state, compareRange(job, (*batch.pairs)[job.pair], state, batch.stopped));
        if (state.jobsLeft.fetch_sub(1) == 1)
            batch.pairsDone.fetch_add(1);
    }

    void work() {
        std::uint64_t seen = 0;
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_wake.wait(lock, [&] { return m_batch && m_generation != seen; });
            seen = m_generation;
            Batch& batch = *m_batch;
            ++m_active;
            lock.unlock();
            std::size_t finished = 0;
            for (std::size_t k; (k = batch.next.fetch_add(1)) < batch.jobs.size(); ++finished)
                runJob(batch, k);
            lock.lock();
            batch.jobsFinished += finished;
            --m_active;
            if (batch.jobsFinished == batch.jobs.size())
                m_done.notify_all();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_done;
    Batch* m_batch = nullptr;
    std::uint64_t m_generation = 0;
    const pid_t m_process = ::getpid();
    int m_active = 0; // readers inside the current batch
};

} // namespace

std::vector<ContentVerdict>
compareContents(const std::vector<ContentPair>& pairs,
                const std::function<bool(std::size_t, std::size_t)>& poll) {
    Batch batch;
    batch.pairs = &pairs;
    batch.states = std::make_unique<PairState[]>(pairs.size());
    for (std::size_t p = 0; p < pairs.size(); ++p) {
        const ContentPair& pair = pairs[p];
        if (pair.lengthsKnown && pair.leftLength != pair.rightLength) {
            batch.states[p].verdict = static_cast<int>(ContentVerdict::LengthDiffers);
            continue;
        }
        if (pair.lengthsKnown && pair.leftLength >= kSplitAt) {
            for (std::uint64_t at = 0; at < pair.leftLength; at += kRange)
                batch.jobs.push_back({p, at, std::min(kRange, pair.leftLength - at)});
            batch.states[p].jobsLeft = static_cast<int>((pair.leftLength + kRange - 1) / kRange);
        } else {
            batch.jobs.push_back({p, 0, 0});
            batch.states[p].jobsLeft = 1;
        }
    }
    if (!batch.jobs.empty())
        ReaderPool::instance().run(batch, poll);
    std::vector<ContentVerdict> verdicts;
    verdicts.reserve(pairs.size());
    for (std::size_t p = 0; p < pairs.size(); ++p)
        verdicts.push_back(static_cast<ContentVerdict>(batch.states[p].verdict.load()));
    return verdicts;
}

} // namespace pv
