#include "docview/thread/LockingPool.h"
#include "docview/thread/LockingQueue.h"
#include "docview/thread/NullMutex.h"
#include "docview/utils/LockingScheduler.h"
#include "tests/docview/utils/WorkerTestSetup.h"
#include "tests/support/AllocationCounter.h"

#include <algorithm>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace OV::CFW::DocViewUtils {
namespace {

// Shaped like the document commands: `next` from Command, a pool, back to it at the end. The
// log is the worker's until a drain.
struct Recorded : DocView::Command {
    void Execute() override
    {
        log->emplace_back(producer, sequence);
        pool->Release(this);
    }
    Thread::LockingPool<Recorded, boost::mutex>* pool = nullptr;
    std::vector<std::pair<int, int>>* log = nullptr;  // (producer, sequence) as run
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

TEST(LockingSchedulerTest, PausedWorkerTakesAFullPoolThenRunsItInOrder)
{
    Pool pool(200);
    std::vector<std::pair<int, int>> log;
    Testing::Gate blocker;
    LockingScheduler scheduler;
    scheduler.Enqueue(&blocker);
    blocker.WaitUntilHeld();

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

    blocker.Open();
    Testing::Drain(&scheduler);
    scheduler.Stop();
    ASSERT_EQ(200u, log.size());
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(i, log[i].second);
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
    EXPECT_EQ(std::future_status::ready, fifth.get_future().wait_for(std::chrono::seconds(60)));
}

// Producers race for the pool and the queue; then Stop, twice, and a command queued after it
// never runs but stays the pool's to delete.
TEST(LockingSchedulerTest, ProducersKeepTheirOrderAndNothingRunsAfterStop)
{
    constexpr int producers = 4, perProducer = 3000;
    Pool pool(200);
    std::vector<std::pair<int, int>> log;
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
    Testing::Drain(&scheduler);
    scheduler.Stop();
    scheduler.Stop();
    Recorded* late = pool.Acquire();
    late->log = &log;
    scheduler.Enqueue(late);

    int expected[producers] = {};
    for (const auto& [producer, sequence] : log)
        ASSERT_EQ(expected[producer]++, sequence) << "producer " << producer;
    EXPECT_EQ(std::size_t{producers * perProducer}, log.size());
    EXPECT_EQ(199u, DrainFree(pool));
}

// `next` typed as a base, the way commands carry it.
struct Link {
    Link* next = nullptr;
};
struct Item : Link {
    int id = 0;
};

TEST(LockingQueueTest, FirstInFirstOutThroughPopAndTakeAll)
{
    Item items[5];
    for (int i = 0; i < 5; ++i)
        items[i] = {{&items[(i + 3) % 5]}, i};  // stale links must not matter
    Thread::LockingQueue<Item, Thread::NullMutex> queue;
    EXPECT_TRUE(queue.Pop() == nullptr && queue.TakeAll() == nullptr && queue.GetCount() == 0u);

    for (Item* item : {&items[0], &items[1], &items[2], static_cast<Item*>(nullptr)})
        queue.Push(item);
    EXPECT_EQ(&items[0], queue.Pop());
    queue.Push(&items[3]);
    EXPECT_EQ(3u, queue.GetCount());
    std::vector<int> chain;
    for (Item* item = queue.TakeAll(); item != nullptr && chain.size() < 9; item = static_cast<Item*>(item->next))
        chain.push_back(item->id);
    EXPECT_EQ((std::vector<int>{1, 2, 3}), chain);
    EXPECT_TRUE(queue.IsEmpty());

    // Usable again after a take, and after emptying by Pop.
    for (Item* item : {&items[4], &items[0]}) {
        queue.Push(item);
        EXPECT_EQ(item, queue.Pop());
    }
    EXPECT_EQ(nullptr, queue.Pop());
    EXPECT_EQ(0u, queue.GetCount());
}

}  // namespace
}  // namespace OV::CFW::DocViewUtils
