#include "compare/contentcompare.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// A stop while a pair is still being read leaves that pair unjudged, never
// "same". The reader waits on a pipe nobody writes to until the stop is given.
TEST(ContentCompare, StopLeavesThePairsNotReadYet) {
    pvtest::TempDir dir;
    const std::string fifo = dir / "pipe";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const std::string plain = dir.write("plain", "");
    int polls = 0;
    const std::vector<pv::ContentVerdict> verdicts =
        pv::compareContents({{fifo, plain}}, [&](std::size_t done, std::size_t total) {
            EXPECT_EQ(done, 0u);
            EXPECT_EQ(total, 1u);
            if (++polls == 2) {
                // Lets the reader's open return, now that the first answer has
                // stopped the reading.
                int writer = ::open(fifo.c_str(), O_WRONLY);
                if (writer >= 0)
                    ::close(writer);
            }
            return false;
        });
    EXPECT_GE(polls, 2);
    EXPECT_EQ(verdicts, std::vector<pv::ContentVerdict>{pv::ContentVerdict::NotRead});
}
