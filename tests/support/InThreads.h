#pragma once

#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

namespace nbscore::test {

/// Runs a task on four threads at once; what it answered on each.
inline std::vector<int> InThreads(const std::function<int()>& task) {
    std::vector<int> answers(4, -1);
    std::vector<std::thread> threads;
    threads.reserve(answers.size());
    for (int& answer : answers)
        threads.emplace_back([&task, &answer] { answer = task(); });
    for (std::thread& thread : threads)
        thread.join();
    return answers;
}

}  // namespace nbscore::test
