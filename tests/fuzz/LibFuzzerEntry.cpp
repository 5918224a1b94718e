// The entry of one fuzzer binary; VARNEL4_FUZZ_TARGET names the target it runs.
#include "tests/fuzz/FuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    OV::Fuzz::VARNEL4_FUZZ_TARGET(data, size);
    return 0;
}
