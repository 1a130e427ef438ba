#include "host/checks/HandleHeap.h"
#include <cstdio>
#include <cstring>
#include <new>

namespace host {

namespace {
constexpr std::uint64_t kMaxHandleBytes = std::uint64_t(1) << 32;
}  // namespace

HandleHeap::~HandleHeap() { release_current(); }

std::string HandleHeap::key(char** handle) {
    char text[32];
    std::snprintf(text, sizeof text, "%p", static_cast<void*>(handle));
    return text;
}

char** HandleHeap::allocate(std::uint64_t size) {
    if (size > kMaxHandleBytes) return nullptr;
    Block block;
    // One byte at least, so every handle has a distinct, non-null block.
    block.data.reset(new (std::nothrow) std::uint8_t[size ? size : 1]);
    if (!block.data) return nullptr;
    std::memset(block.data.get(), poison_ ? kPoisonByte : 0, size ? size : 1);
    block.master.reset(new char*(reinterpret_cast<char*>(block.data.get())));
    block.size = size;
    char** handle = block.master.get();
    {
        std::lock_guard<std::mutex> lock(mutex_);
        blocks_.emplace(handle, std::move(block));
    }
    if (counters_) counters_->acquire(Resource::Handle, key(handle));
    return handle;
}

void* HandleHeap::lock(char** handle) {
    std::lock_guard<std::mutex> guard(mutex_);
    auto it = blocks_.find(handle);
    if (it == blocks_.end()) return nullptr;
    ++it->second.locks;
    if (counters_) counters_->acquire(Resource::HandleLock, key(handle));
    return *handle;
}

void HandleHeap::unlock(char** handle) {
    std::lock_guard<std::mutex> guard(mutex_);
    auto it = blocks_.find(handle);
    if (it == blocks_.end()) {
        if (counters_) counters_->note_problem("unlocked an unknown handle " + key(handle));
        return;
    }
    if (it->second.locks == 0) {
        if (counters_) counters_->note_problem("unlocked a handle that was not locked " + key(handle));
        return;
    }
    --it->second.locks;
    if (counters_) counters_->release(Resource::HandleLock, key(handle));
}

void HandleHeap::dispose(char** handle) {
    if (!handle) return;
    Block doomed;
    {
        std::lock_guard<std::mutex> guard(mutex_);
        auto it = blocks_.find(handle);
        if (it == blocks_.end()) {
            if (counters_) counters_->note_problem("disposed of an unknown handle " + key(handle));
            return;
        }
        doomed = std::move(it->second);
        blocks_.erase(it);
    }
    if (counters_) {
        for (int i = 0; i < doomed.locks; ++i) counters_->release(Resource::HandleLock, key(handle));
        counters_->release(Resource::Handle, key(handle));
    }
}

std::uint64_t HandleHeap::size(char** handle) const {
    std::lock_guard<std::mutex> guard(mutex_);
    auto it = blocks_.find(handle);
    return it == blocks_.end() ? 0 : it->second.size;
}

bool HandleHeap::resize(char** handle, std::uint64_t new_size) {
    if (new_size > kMaxHandleBytes) return false;
    std::lock_guard<std::mutex> guard(mutex_);
    auto it = blocks_.find(handle);
    if (it == blocks_.end()) return false;
    Block& block = it->second;
    std::unique_ptr<std::uint8_t[]> data(new (std::nothrow) std::uint8_t[new_size ? new_size : 1]);
    if (!data) return false;
    std::memset(data.get(), poison_ ? kPoisonByte : 0, new_size ? new_size : 1);
    std::memcpy(data.get(), block.data.get(), block.size < new_size ? block.size : new_size);
    block.data = std::move(data);
    block.size = new_size;
    *handle = reinterpret_cast<char*>(block.data.get());
    return true;
}

bool HandleHeap::owns(char** handle) const {
    std::lock_guard<std::mutex> guard(mutex_);
    return blocks_.count(handle) != 0;
}

int HandleHeap::lock_count(char** handle) const {
    std::lock_guard<std::mutex> guard(mutex_);
    auto it = blocks_.find(handle);
    return it == blocks_.end() ? 0 : it->second.locks;
}

std::size_t HandleHeap::live() const {
    std::lock_guard<std::mutex> guard(mutex_);
    return blocks_.size();
}

}  // namespace host
