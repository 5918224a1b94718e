// Every test binary runs with HOME and the XDG folders in a scratch folder, so no test reads or
// writes the real home folder.
#include "tests/support/ScratchFolder.h"

#include <cstdlib>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const OV::Testing::ScratchFolder home;
    setenv("HOME", home.Path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", (home.Path() + "/config").c_str(), 1);
    setenv("XDG_DATA_HOME", (home.Path() + "/data").c_str(), 1);
    return RUN_ALL_TESTS();
}
