#include "docview/utils/ChangeList.h"
#include "docview/utils/ExchangeRing.h"

#include <atomic>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace OV::CFW::DocViewUtils {
namespace {

// Runs a script against a fresh ring. Tokens, each with the slot it must give ('-': must fail):
//   wN  a whole write           fN  a whole write that must fail when the ring is full
//   rN  a whole read            <N  begin a write and hold it   >  end it
//   (N  begin a read and hold it                                )  end it
void RunScript(const char* name, const std::string& script)
{
    ExchangeRing ring;
    std::istringstream tokens(script);
    std::string token;
    int step = 0;
    while (tokens >> token) {
        SCOPED_TRACE(std::string(name) + ", step " + std::to_string(++step) + " '" + token + "'");
        const char op = token[0];
        if (op == '>') {
            ring.EndWrite();
            continue;
        }
        if (op == ')') {
            ring.EndRead();
            continue;
        }
        const bool mustSucceed = token[1] != '-';
        int slot = -1;
        bool done = false;
        if (op == 'w' || op == 'f' || op == '<')
            done = ring.BeginWrite(slot, op == 'f');
        else
            done = ring.BeginRead(slot);
        ASSERT_EQ(mustSucceed, done);
        if (!done)
            continue;
        ASSERT_EQ(token[1] - '0', slot);
        if (op == 'w' || op == 'f')
            ring.EndWrite();
        else if (op == 'r')
            ring.EndRead();
    }
}

TEST(ExchangeRingTest, SlotsFollowTheHandOverRules)
{
    const struct {
        const char* name;
        const char* script;
    } cases[] = {
        {"nothing written yet", "r- r-"},
        {"one write, one read", "w0 r0 r-"},
        {"in step, around twice", "w0 r0 w1 r1 w2 r2 w0 r0 w1 r1 w2 r2 r-"},
        // While a finished slot waits, later writes reopen it: the reader gets one list.
        {"writer three ahead", "w0 w0 w0 w0 r0 r- w1 r1"},
        {"must-fail write while one waits", "w0 f- r0 f1 r1 r-"},
        // A read in progress keeps its slot; the writer works around it.
        {"writer around a held read", "w0 (0 w1 w1 w1 ) r1 r- w2 r2"},
        {"reader behind, then catching up", "w0 w0 r0 w1 w1 r1 r- w2 r2"},
        // Nesting: the inner level gives the held slot; only the outer end publishes.
        {"nested write is one slot", "<0 <0 w0 > r- > r0 r-"},
        {"nested read is one slot", "w0 w0 (0 (0 r0 ) ) r-"},
        // The reader cannot take a slot the writer has reopened; it comes at the next read.
        {"reopened slot waits", "w0 <0 r- > r0 r-"},
    };
    for (const auto& test : cases)
        RunScript(test.name, test.script);
}

// One writer and one reader thread over many rounds. Each write puts its sequence number into
// a few pairs of cells (which pairs depends on the number); the reader checks that both cells
// of a pair agree (it never sees a list half written), that a pair's numbers only rise (it
// never sees an older value after a newer one), and that it ends on the writer's last numbers.
TEST(ExchangeRingTest, WriterAndReaderThreadsHandOverWholeListsInOrder)
{
    constexpr int pairs = 4;
    constexpr int rounds = 500000;
    ExchangeRing ring;
    std::vector<ChangeList> lists(ExchangeRing::capacity, ChangeList(2 * pairs));
    std::atomic<bool> writing{true};
    std::atomic<long> readCount{0};
    std::vector<std::uint32_t> written(pairs, 0);

    std::thread writer([&] {
        for (std::uint32_t sequence = 1; sequence <= static_cast<std::uint32_t>(rounds); ++sequence) {
            const long readsBefore = readCount.load(std::memory_order_acquire);
            int slot;
            ring.BeginWrite(slot);
            const bool last = sequence == static_cast<std::uint32_t>(rounds);
            for (int pair = 0; pair < pairs; ++pair) {
                if (!last && sequence % static_cast<std::uint32_t>(pair + 1) != 0)
                    continue;
                for (int cell = 2 * pair; cell < 2 * pair + 2; ++cell)
                    lists[static_cast<std::size_t>(slot)].Put(cell, DocView::Parameter{DocView::Parameter::Integer, sequence});
                written[static_cast<std::size_t>(pair)] = sequence;
            }
            ring.EndWrite();
            // A writer that never pauses keeps the newest slot open and starves the reader,
            // so the writes are paced unevenly, and now and then wait for a read: the two
            // sides then meet in every order. Nothing here depends on time.
            for (volatile unsigned spin = 0; spin < (sequence * 2654435761u) % 97; ++spin) {
            }
            if (sequence % 256 == 0) {
                while (readCount.load(std::memory_order_acquire) == readsBefore)
                    std::this_thread::yield();
            }
        }
        writing.store(false, std::memory_order_release);
    });

    std::vector<std::uint32_t> seen(pairs, 0);
    long faults = 0;
    auto drain = [&] {
        int slot;
        if (!ring.BeginRead(slot))
            return false;
        std::uint32_t cells[2 * pairs] = {};
        int index;
        DocView::Parameter value;
        while (lists[static_cast<std::size_t>(slot)].Next(index, value))
            cells[index] = value.payload;
        for (int pair = 0; pair < pairs; ++pair) {
            const std::uint32_t first = cells[2 * pair], second = cells[2 * pair + 1];
            if (first == 0 && second == 0)
                continue;
            if ((first != second || first <= seen[static_cast<std::size_t>(pair)]) && ++faults <= 5)
                ADD_FAILURE() << "pair " << pair << ": " << first << "/" << second << " after " << seen[static_cast<std::size_t>(pair)];
            seen[static_cast<std::size_t>(pair)] = first;
        }
        ring.EndRead();
        readCount.fetch_add(1, std::memory_order_release);
        return true;
    };
    while (writing.load(std::memory_order_acquire))
        drain();
    writer.join();
    while (drain()) {
    }

    EXPECT_EQ(0, faults);
    EXPECT_EQ(written, seen);
    EXPECT_EQ(std::vector<std::uint32_t>(pairs, static_cast<std::uint32_t>(rounds)), seen);
}

}  // namespace
}  // namespace OV::CFW::DocViewUtils
