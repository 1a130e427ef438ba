#pragma once
// Mac-style relocatable memory handles as the host's handle callbacks hand them out.
//
// A handle is the address of a master pointer; the master pointer holds the block's address.
// Locks are counted, the block moves only on resize, and new blocks are filled with a fixed
// non-zero pattern (switchable to zero) so code that relies on cleared memory fails.

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

#include "host/checks/ResourceCounters.h"
#include "host/checks/SessionCurrent.h"

namespace host {

class HandleHeap : public SessionCurrent<HandleHeap> {
public:
    static constexpr std::uint8_t kPoisonByte = 0xA5;

    HandleHeap() = default;
    HandleHeap(const HandleHeap&) = delete;
    HandleHeap& operator=(const HandleHeap&) = delete;
    ~HandleHeap();

    void set_poison(bool poison) { poison_ = poison; }
    void set_counters(ResourceCounters* counters) { counters_ = counters; }

    // Null when the size is absurd (over 4 GiB) or the memory is not there.
    char** allocate(std::uint64_t size);
    // Null for an unknown handle.
    void* lock(char** handle);
    void unlock(char** handle);
    // Disposing of a locked handle is allowed (its locks are dropped with it).
    void dispose(char** handle);
    std::uint64_t size(char** handle) const;
    // Keeps the contents up to the smaller size; the block may move, the handle does not.
    bool resize(char** handle, std::uint64_t new_size);

    bool owns(char** handle) const;
    int lock_count(char** handle) const;
    std::size_t live() const;

private:
    struct Block {
        std::unique_ptr<char*> master;  // the handle is &*master
        std::unique_ptr<std::uint8_t[]> data;
        std::uint64_t size = 0;
        int locks = 0;
    };
    static std::string key(char** handle);

    mutable std::mutex mutex_;
    std::map<char**, Block> blocks_;
    bool poison_ = true;
    ResourceCounters* counters_ = nullptr;
};

}  // namespace host
