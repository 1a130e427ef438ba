#include "host/pixels/IterateGeneric.h"

#include <algorithm>
#include <cstdint>

namespace host {

struct IterationPool::Job {
    IterateFunc fn;
    void* refcon;
    A_long total;        // iterations to run
    A_long count_arg;    // the last argument of every call
    A_long chunk;
    bool index_is_iteration;
    unsigned max_threads;
    const std::atomic<bool>* cancel;

    // 64-bit so that every thread overshooting the end once cannot wrap around.
    std::atomic<std::int64_t> next{0};
    std::atomic<A_long> finished{0};
    std::atomic<PF_Err> error{PF_Err_NONE};
    std::atomic<bool> stop{false};

    // Guarded by the pool's mutex.
    unsigned joined = 1;  // thread index 0 is the caller's
    unsigned active_workers = 0;
    bool open = true;

    void fail(PF_Err err) {
        PF_Err expected = PF_Err_NONE;
        error.compare_exchange_strong(expected, err);
        stop.store(true, std::memory_order_relaxed);
    }
};

unsigned defaultIterationThreads() {
    const unsigned hardware = std::thread::hardware_concurrency();
    return std::clamp(hardware, 1u, 32u);
}

IterationPool::IterationPool(unsigned threads) {
    const unsigned workers = threads > 1 ? threads - 1 : 0;
    workers_.reserve(workers);
    for (unsigned n = 0; n < workers; ++n) workers_.emplace_back([this] { workerLoop(); });
}

IterationPool::~IterationPool() {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
    }
    work_ready_.notify_all();
    for (std::thread& worker : workers_) worker.join();
}

bool IterationPool::exhausted(const Job& job) {
    return job.stop.load(std::memory_order_relaxed) || job.next.load(std::memory_order_relaxed) >= job.total;
}

void IterationPool::workerLoop() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
        work_ready_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
        if (stopping_) return;
        Job* job = queue_.front();
        if (!job->open || job->joined >= job->max_threads || exhausted(*job)) {
            // Nothing left for another thread to do in this job.
            queue_.pop_front();
            continue;
        }
        const A_long thread_index = static_cast<A_long>(job->joined++);
        ++job->active_workers;
        lock.unlock();
        runChunks(*job, thread_index, nullptr);
        lock.lock();
        if (--job->active_workers == 0) worker_left_.notify_all();
    }
}

bool IterationPool::runOne(Job& job, A_long thread_index, A_long i) {
    if (job.stop.load(std::memory_order_relaxed)) return false;
    if (job.cancel && job.cancel->load(std::memory_order_relaxed)) {
        job.fail(PF_Interrupt_CANCEL);
        return false;
    }
    // Once per thread, call i stands for thread i whichever thread happens to run it, so
    // every index is used exactly once even when the pool is busy with other work.
    const A_long index = job.index_is_iteration ? i : thread_index;
    const PF_Err err = job.fn(job.refcon, index, i, job.count_arg);
    if (err != PF_Err_NONE) {
        job.fail(err);
        return false;
    }
    return true;
}

void IterationPool::runChunks(Job& job, A_long thread_index, const IterateOptions* options) {
    const bool report = options && options->progress;
    try {
        while (!job.stop.load(std::memory_order_relaxed)) {
            const std::int64_t begin = job.next.fetch_add(job.chunk, std::memory_order_relaxed);
            if (begin >= job.total) break;
            const A_long end = static_cast<A_long>(std::min<std::int64_t>(begin + job.chunk, job.total));
            A_long ran = 0;
            for (A_long i = static_cast<A_long>(begin); i < end && runOne(job, thread_index, i); ++i) ++ran;
            const A_long finished = job.finished.fetch_add(ran, std::memory_order_relaxed) + ran;
            if (report) options->progress(finished, job.total);
        }
    } catch (...) {
        // An exception must not leave the module; if one does, fail the iteration rather
        // than take the worker thread (and the process) down with it.
        job.fail(PF_Err_INTERNAL_STRUCT_DAMAGED);
    }
}

PF_Err IterationPool::iterate(A_long iterations, void* refcon, IterateFunc fn, const IterateOptions& options) {
    if (!fn) return PF_Err_BAD_CALLBACK_PARAM;
    const bool once_per_thread = iterations == PF_Iterations_ONCE_PER_PROCESSOR;
    if (iterations < 0 && !once_per_thread) return PF_Err_BAD_CALLBACK_PARAM;

    const unsigned pool_threads = threadCount();
    const unsigned threads = options.max_threads == 0 ? pool_threads : std::min(options.max_threads, pool_threads);

    Job job;
    job.fn = fn;
    job.refcon = refcon;
    job.total = once_per_thread ? static_cast<A_long>(threads) : iterations;
    job.count_arg = job.total;
    job.max_threads = threads;
    job.cancel = options.cancel;
    job.index_is_iteration = once_per_thread;
    if (once_per_thread) {
        job.chunk = 1;
        job.next = 1;  // the caller runs call 0 itself, as thread 0
    } else if (options.chunk_size > 0) {
        job.chunk = options.chunk_size;
    } else {
        job.chunk = std::clamp<A_long>(job.total / static_cast<A_long>(threads * 16), 1, 1024);
    }
    if (job.total == 0) return PF_Err_NONE;

    const bool share = threads > 1 && job.total > job.chunk;
    if (share) {
        std::lock_guard<std::mutex> lock(mutex_);
        queue_.push_back(&job);
    }
    if (share) work_ready_.notify_all();

    if (once_per_thread) {
        try {
            if (runOne(job, 0, 0)) job.finished.fetch_add(1, std::memory_order_relaxed);
        } catch (...) {
            job.fail(PF_Err_INTERNAL_STRUCT_DAMAGED);
        }
    }
    runChunks(job, 0, &options);

    if (share) {
        std::unique_lock<std::mutex> lock(mutex_);
        job.open = false;
        queue_.erase(std::remove(queue_.begin(), queue_.end(), &job), queue_.end());
        worker_left_.wait(lock, [&job] { return job.active_workers == 0; });
    }
    return job.error.load();
}

PF_Err iterate_generic(A_long iterations, void* refcon, IterateFunc fn, const IterateOptions& options) {
    static IterationPool pool;
    return pool.iterate(iterations, refcon, fn, options);
}

}  // namespace host
