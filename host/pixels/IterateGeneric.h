#pragma once
// The host's generic iteration: calls fn(refcon, thread_index, i, iterations) once for every i
// in 0..iterations-1, spread over a persistent pool of worker threads plus the calling thread.
//
// - thread_index runs 0..N-1 within one call, and 0 is always the calling thread;
// - iterations are handed out dynamically in chunks, in no promised order;
// - the first non-zero error returned by fn stops further iterations from starting and is
//   returned once all started ones have finished;
// - PF_Iterations_ONCE_PER_PROCESSOR (-1) makes one call per thread index, i = thread_index =
//   0..N-1, and passes N (never -1) as the last argument;
// - an optional cancel flag stops the iteration and makes it return PF_Interrupt_CANCEL;
// - an optional progress hook runs on the calling thread only.
// Several calls may run at once (several frames rendering); they share the workers.

#include "AE_Effect.h"
#include "AE_EffectCB.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace host {

using IterateFunc = PF_Err (*)(void* refcon, A_long thread_index, A_long i, A_long iterations);

struct IterateOptions {
    // Threads taking part, the caller included; 0 means every thread of the pool. 1 runs
    // everything on the calling thread (useful when debugging).
    unsigned max_threads = 0;
    // Iterations handed out at a time; 0 chooses from the iteration count (at most 1024, so
    // per-pixel work shares out evenly without contending on the counter).
    A_long chunk_size = 0;
    // Checked before every iteration; once true no more iterations start and the call returns
    // PF_Interrupt_CANCEL (unless a callback failed first).
    const std::atomic<bool>* cancel = nullptr;
    // Called on the calling thread after each of its chunks with (finished, total).
    std::function<void(A_long finished, A_long total)> progress;
};

// Threads of the shared pool: the number of hardware threads, at most 32 (the limit of the
// utility callbacks and of version 1 of the iterate suite).
unsigned defaultIterationThreads();

class IterationPool {
public:
    // `threads` counts the calling thread, so threads - 1 workers are started.
    explicit IterationPool(unsigned threads = defaultIterationThreads());
    ~IterationPool();
    IterationPool(const IterationPool&) = delete;
    IterationPool& operator=(const IterationPool&) = delete;

    unsigned threadCount() const { return static_cast<unsigned>(workers_.size()) + 1; }

    // Errors of the call itself: PF_Err_BAD_CALLBACK_PARAM for a null fn or a negative count
    // other than PF_Iterations_ONCE_PER_PROCESSOR.
    PF_Err iterate(A_long iterations, void* refcon, IterateFunc fn, const IterateOptions& options = {});

private:
    struct Job;
    void workerLoop();
    static bool runOne(Job& job, A_long thread_index, A_long i);
    static void runChunks(Job& job, A_long thread_index, const IterateOptions* options);
    static bool exhausted(const Job& job);

    std::mutex mutex_;
    std::condition_variable work_ready_;
    std::condition_variable worker_left_;
    std::deque<Job*> queue_;
    bool stopping_ = false;
    std::vector<std::thread> workers_;
};

// Runs on a process-wide pool of defaultIterationThreads() threads, started on first use.
PF_Err iterate_generic(A_long iterations, void* refcon, IterateFunc fn, const IterateOptions& options = {});

}  // namespace host
