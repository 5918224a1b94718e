#include "engine/containers/Buffer.h"
#include "engine/containers/Port.h"

#include <cstdint>

#include <gtest/gtest.h>

namespace AudioEngine::AudioContainers {
namespace {

bool AllZero(const float* data, unsigned count)
{
    for (unsigned i = 0; i < count; ++i) {
        if (data[i] != 0.0f)
            return false;
    }
    return true;
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
    EXPECT_EQ(4.0f, ring.At(-1));
    EXPECT_EQ(0.0f, ring.At(-5));
    EXPECT_EQ(2.0f, ring.At(7));
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

    input.Resolve();
    EXPECT_EQ(&outer, input.GetSource()) << "one hop per call";
    input.Resolve();
    EXPECT_EQ(&producer, input.GetSource());
    input.Resolve();
    EXPECT_EQ(&producer, input.GetSource()) << "a buffered output is where the samples are";
}

TEST(ContainersTest, BufferedOutputModesAndSilence)
{
    OutputBuffered small("Small", "", 16);
    OutputBuffered other("Other", "", 4);
    OutputBuffered large("Large", "", 256);
    OutputBuffered later("Later", "", 8);
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
