// Runs one job per item on a pool of worker threads and hands the results
// back on the calling thread in item order, each as soon as every result
// before it has been handed back: output stays in a stable order whatever
// the number of threads.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace tpcli {

// The number of workers for a requested count: 0 means one per core.
unsigned WorkerCount(unsigned requested, size_t items);

template <typename Result>
class ParallelRunner {
public:
    using Work = std::function<Result(size_t)>;
    using Deliver = std::function<void(size_t, Result&&)>;
    // Called on the calling thread about ten times a second while waiting,
    // and after each delivery, with the number of finished items.
    using Tick = std::function<void(size_t)>;

    ParallelRunner(unsigned workers, Work work) : workers_(workers), work_(std::move(work)) {}

    void run(size_t count, const Deliver& deliver, const Tick& tick = {})
    {
        const unsigned workers = WorkerCount(workers_, count);
        if (workers <= 1) {
            for (size_t i = 0; i < count; ++i) {
                deliver(i, work_(i));
                if (tick) tick(i + 1);
            }
            return;
        }
        slots_.assign(count, std::nullopt);
        next_ = 0;
        finished_ = 0;
        std::vector<std::jthread> pool;
        for (unsigned w = 0; w < workers; ++w) pool.emplace_back([this, count] { drain(count); });
        for (size_t i = 0; i < count; ++i) {
            Result result = waitFor(i, tick);
            deliver(i, std::move(result));
            if (tick) tick(finishedCount());
        }
    }

private:
    unsigned workers_;
    Work work_;
    std::vector<std::optional<Result>> slots_;
    std::atomic<size_t> next_{0};
    size_t finished_ = 0;
    std::mutex mutex_;
    std::condition_variable ready_;

    void drain(size_t count)
    {
        for (size_t i; (i = next_.fetch_add(1)) < count;) {
            Result result = work_(i);
            std::lock_guard lock(mutex_);
            slots_[i].emplace(std::move(result));
            ++finished_;
            ready_.notify_one();
        }
    }

    size_t finishedCount()
    {
        std::lock_guard lock(mutex_);
        return finished_;
    }

    Result waitFor(size_t i, const Tick& tick)
    {
        std::unique_lock lock(mutex_);
        while (!slots_[i]) {
            ready_.wait_for(lock, std::chrono::milliseconds(100));
            if (tick && !slots_[i]) {
                const size_t finished = finished_;
                lock.unlock();
                tick(finished);
                lock.lock();
            }
        }
        Result result = std::move(*slots_[i]);
        slots_[i].reset();
        return result;
    }
};

}  // namespace tpcli
