#pragma once

#include <cstddef>
#include <functional>
#include <latch>
#include <thread>
#include <vector>

namespace nbscore::test {

/// Runs a task on several threads, which start it together. Returns its result on each.
/// @param task given the number of its thread, from 0.
inline std::vector<int> InThreads(const std::function<int(int)>& task, std::size_t numThreads = 4) {
    std::vector<int> answers(numThreads, -1);
    std::latch begin(static_cast<std::ptrdiff_t>(answers.size()));
    std::vector<std::thread> threads;
    threads.reserve(answers.size());
    for (std::size_t i = 0; i < answers.size(); ++i) {
        threads.emplace_back([&, i] {
            begin.arrive_and_wait();
            answers[i] = task(static_cast<int>(i));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    return answers;
}

}  // namespace nbscore::test
