#include "engine/containers/Buffer.h"
#include "engine/containers/Port.h"

#include <algorithm>
#include <cstdint>

#include <gtest/gtest.h>

namespace AudioEngine::AudioContainers {
namespace {

bool AllZero(const float* data, unsigned count)
{
    return std::all_of(data, data + count, [](float x) { return x == 0.0f; });
}

TEST(ContainersTest, BuffersAreAlignedZeroedAndCopiedEmpty)
{
    for (unsigned size : {1u, 3u, 4u, 17u, 64u, 128u, 16384u}) {
        Buffer buffer(size);
        ASSERT_EQ(size, buffer.Size());
        EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(buffer.Data()) % 16) << size;
        EXPECT_TRUE(AllZero(buffer.Data(), size));
        buffer.Data()[size - 1] = 5.0f;

        const Buffer copy(buffer);
        EXPECT_EQ(size, copy.Size());
        EXPECT_NE(buffer.Data(), copy.Data());
        EXPECT_TRUE(AllZero(copy.Data(), size)) << "a copy takes the size, not the samples";

        float* before = buffer.Data();
        buffer.Allocate(0);
        EXPECT_EQ(before, buffer.Data()) << "Allocate(0) leaves the buffer as it was";
        EXPECT_EQ(size, buffer.Size());
        buffer.Free();
        EXPECT_EQ(nullptr, buffer.Data());
        EXPECT_EQ(0u, buffer.Size());
    }
}

TEST(ContainersTest, CircularIndicesWrapOnce)
{
    BufferCircular ring;
    ring.Resize(5);
    ASSERT_EQ(5, ring.Capacity());
    for (int i = 0; i < 5; ++i)
        ring.At(i) = static_cast<float>(i);
    for (const auto& [index, value] : {std::pair{-1, 4.0f}, {-5, 0.0f}, {7, 2.0f}})
        EXPECT_EQ(value, ring.At(index)) << index;
    EXPECT_EQ(1, ring.Advance(4, 2));
    EXPECT_EQ(3, ring.Advance(1, -3));
    ring.Resize(0);
    EXPECT_EQ(0, ring.Capacity());
    EXPECT_EQ(nullptr, ring.Data());
}

TEST(ContainersTest, PortsForwardAndResolveTransparentHops)
{
    OutputBuffered producer("Out", "", 64);
    OutputHierarchic outer("Outer", "", &producer);
    OutputHierarchic outermost("Outermost", "", &outer);
    Input input("In", "");
    input.SetSource(&outermost);
    EXPECT_EQ(producer.GetBuffer(), input.GetBuffer());
    // One hop per call; a buffered output is where the samples are.
    for (Port* next : std::initializer_list<Port*>{&outer, &producer, &producer}) {
        input.Resolve();
        EXPECT_EQ(next, input.GetSource());
    }
}

TEST(ContainersTest, BufferedOutputModesAndSilence)
{
    OutputBuffered small("Small", "", 16), other("Other", "", 4), large("Large", "", 256), later("Later", "", 8);
    float* own = large.GetBuffer();
    ASSERT_NE(nullptr, own);
    own[0] = 1.0f;

    large.SetSource(&small);
    EXPECT_EQ(OutputBuffered::Connected, large.GetMode());
    EXPECT_EQ(small.GetBuffer(), large.GetBuffer());

    large.SetSource(nullptr);
    EXPECT_EQ(OutputBuffered::Silent, large.GetMode());
    EXPECT_TRUE(AllZero(large.GetBuffer(), 256)) << "silence is as long as the longest output built";

    large.ClearSource();
    EXPECT_EQ(own, large.GetBuffer());
    EXPECT_EQ(1.0f, large.GetBuffer()[0]);
}

}  // namespace
}  // namespace AudioEngine::AudioContainers
