#include "docview/thread/LockingQueue.h"
#include "docview/thread/NullMutex.h"

#include <vector>

#include <gtest/gtest.h>

namespace OV::CFW::Thread {
namespace {

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
    LockingQueue<Item, NullMutex> queue;
    EXPECT_EQ(nullptr, queue.Pop());
    EXPECT_EQ(nullptr, queue.TakeAll());
    EXPECT_EQ(0u, queue.GetCount());

    for (int i : {0, 1, 2})
        queue.Push(&items[i]);
    queue.Push(nullptr);
    EXPECT_EQ(&items[0], queue.Pop());
    queue.Push(&items[3]);
    EXPECT_EQ(3u, queue.GetCount());
    std::vector<int> chain;
    for (Item* item = queue.TakeAll(); item != nullptr && chain.size() < 9; item = static_cast<Item*>(item->next))
        chain.push_back(item->id);
    EXPECT_EQ((std::vector<int>{1, 2, 3}), chain);
    EXPECT_TRUE(queue.IsEmpty());

    queue.Push(&items[4]);  // usable again after a take, and after emptying by Pop
    EXPECT_EQ(&items[4], queue.Pop());
    queue.Push(&items[0]);
    EXPECT_EQ(&items[0], queue.Pop());
    EXPECT_EQ(nullptr, queue.Pop());
    EXPECT_EQ(0u, queue.GetCount());
}

}  // namespace
}  // namespace OV::CFW::Thread
