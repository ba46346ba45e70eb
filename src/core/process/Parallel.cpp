#include "core/process/Parallel.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

namespace veilkeep {
namespace {

constexpr std::size_t worthAThread = 64;

} // namespace

void forEachInParallel(std::size_t count, const std::function<void(std::size_t)>& step) {
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t number = next++; number < count; number = next++)
            step(number);
    };
    const std::size_t useful = count / worthAThread; // asking for the processors costs three system calls
    const std::size_t wanted =
        useful > 1 ? std::min<std::size_t>(useful, std::clamp(std::thread::hardware_concurrency(), 1U, 32U))
                   : 1;
    std::vector<std::thread> threads;
    threads.reserve(wanted);
    try {
        while (threads.size() + 1 < wanted)
            threads.emplace_back(work);
    } catch (const std::system_error&) { // no more threads to be had
    }
    work();
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace veilkeep
