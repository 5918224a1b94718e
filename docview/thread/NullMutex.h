#pragma once

namespace OV::CFW::Thread {

// A mutex that does nothing, for a container whose every use is already under the caller's lock.
struct NullMutex {
    void lock() {}
    bool try_lock() { return true; }
    void unlock() {}
};

}  // namespace OV::CFW::Thread
