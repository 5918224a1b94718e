#include "docview/thread/LockingPool.h"
#include "docview/utils/LockingScheduler.h"
#include "tests/support/AllocationCounter.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace OV::CFW::DocViewUtils {
namespace {

// Only bounds a hang; nothing here measures time.
constexpr std::chrono::seconds patience(60);

// (producer, sequence) in the order the worker ran them.
struct Log {
    bool WaitFor(std::size_t count)
    {
        std::unique_lock<std::mutex> lock(mutex);
        return added.wait_for(lock, patience, [&] { return entries.size() >= count; });
    }
    std::mutex mutex;
    std::condition_variable added;
    std::vector<std::pair<int, int>> entries;
};

// Shaped like the document commands: `next` from Command, a pool, back to it at the end.
struct Recorded : DocView::Command {
    void Execute() override
    {
        std::unique_lock<std::mutex> lock(log->mutex);
        log->entries.emplace_back(producer, sequence);
        log->added.notify_all();
        lock.unlock();
        pool->Release(this);
    }
    Thread::LockingPool<Recorded, boost::mutex>* pool = nullptr;
    Log* log = nullptr;
    int producer = 0, sequence = 0;
};
using Pool = Thread::LockingPool<Recorded, boost::mutex>;

std::size_t DrainFree(Pool& pool)
{
    std::size_t count = 0;
    while (pool.Acquire() != nullptr)
        ++count;
    return count;
}

// Holds the worker inside Execute until released.
struct Blocker : DocView::Command {
    void Execute() override
    {
        entered.set_value();
        release.get_future().wait();
    }
    std::promise<void> entered, release;
};

TEST(LockingSchedulerTest, PausedWorkerTakesAFullPoolThenRunsItInOrder)
{
    Pool pool(200);
    Log log;
    Blocker blocker;
    LockingScheduler scheduler;
    scheduler.Enqueue(&blocker);
    ASSERT_EQ(std::future_status::ready, blocker.entered.get_future().wait_for(patience));

    Recorded* acquired[201];
    const Testing::AllocationCounter counter;  // the audio thread's path allocates nothing
    for (int i = 0; i < 201; ++i) {
        if ((acquired[i] = pool.Acquire()) != nullptr) {
            acquired[i]->log = &log;
            acquired[i]->sequence = i;
            scheduler.Enqueue(acquired[i]);
        }
    }
    EXPECT_EQ(0, counter.Count());
    EXPECT_EQ(acquired + 200, std::find(acquired, acquired + 201, nullptr));

    blocker.release.set_value();
    ASSERT_TRUE(log.WaitFor(200));
    scheduler.Stop();
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(i, log.entries[i].second);
    EXPECT_EQ(200u, DrainFree(pool)) << "every command went back to its pool";
}

TEST(LockingSchedulerTest, IdleWorkerKeepsTicking)
{
    int ticks = 0;  // worker only
    std::promise<void> fifth;
    LockingScheduler scheduler;
    const boost::signals2::scoped_connection connection = scheduler.ConnectTick([&] {
        if (++ticks == 5)
            fifth.set_value();
    });
    EXPECT_EQ(std::future_status::ready, fifth.get_future().wait_for(patience));
}

// Producers race for the pool and the queue; then Stop, twice, and a command queued after it
// never runs but stays the pool's to delete.
TEST(LockingSchedulerTest, ProducersKeepTheirOrderAndNothingRunsAfterStop)
{
    constexpr int producers = 4, perProducer = 3000;
    Pool pool(200);
    Log log;
    LockingScheduler scheduler;
    std::vector<std::thread> threads;
    for (int p = 0; p < producers; ++p) {
        threads.emplace_back([&, p] {
            for (int s = 0; s < perProducer; ++s) {
                Recorded* command;
                while ((command = pool.Acquire()) == nullptr)
                    std::this_thread::yield();  // the worker is behind
                command->log = &log;
                command->producer = p;
                command->sequence = s;
                scheduler.Enqueue(command);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    ASSERT_TRUE(log.WaitFor(producers * perProducer));
    scheduler.Stop();
    scheduler.Stop();
    Recorded* late = pool.Acquire();
    late->log = &log;
    scheduler.Enqueue(late);

    int expected[producers] = {};
    for (const auto& [producer, sequence] : log.entries)
        ASSERT_EQ(expected[producer]++, sequence) << "producer " << producer;
    EXPECT_EQ(std::size_t{producers * perProducer}, log.entries.size());
    EXPECT_EQ(199u, DrainFree(pool));
}

}  // namespace
}  // namespace OV::CFW::DocViewUtils
