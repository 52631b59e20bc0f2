#pragma once

#include "platform/run_loop.hpp"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace orvel::x11 {

/// Lets other threads ask something of the main thread. Built there.
class MainThread {
public:
    explicit MainThread(RunLoop& runLoop) : runLoop_(runLoop) {}

    /// What `question` returns when the main thread runs it; absent when that did not happen
    /// within the limit, and then it never runs. On the main thread it runs at once.
    template <typename Question>
    auto ask(Question question, std::chrono::milliseconds limit = std::chrono::seconds(2))
        -> std::optional<decltype(question())> {
        if (std::this_thread::get_id() == home_) return question();
        const auto shared = std::make_shared<Asked<decltype(question())>>();
        runLoop_.post([shared, question = std::move(question)] {
            const std::lock_guard lock(shared->mutex);
            if (shared->isGivenUp) return;
            shared->answer = question();
            shared->answered.notify_one();
        });
        std::unique_lock lock(shared->mutex);
        shared->answered.wait_for(lock, limit, [&] { return shared->answer.has_value(); });
        shared->isGivenUp = true;
        return std::move(shared->answer);
    }

private:
    template <typename Answer>
    struct Asked {
        std::mutex mutex;
        std::condition_variable answered;
        std::optional<Answer> answer;
        bool isGivenUp = false;
    };

    RunLoop& runLoop_;
    std::thread::id home_ = std::this_thread::get_id();
};

}  // namespace orvel::x11
