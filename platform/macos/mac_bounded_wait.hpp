#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

namespace orvel::macos {

/// A place for one answer that another thread gives, for a caller who waits for a limited time.
/// The answer may come after the caller has left.
template <typename Answer>
class Mailbox {
public:
    void put(Answer answer) {
        const std::lock_guard lock(mutex_);
        answer_ = std::move(answer);
        arrived_.notify_one();
    }
    /// Absent when nothing came in time.
    std::optional<Answer> wait(std::chrono::milliseconds limit) {
        std::unique_lock lock(mutex_);
        arrived_.wait_for(lock, limit, [this] { return answer_.has_value(); });
        return std::move(answer_);
    }

private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::optional<Answer> answer_;
};

}  // namespace orvel::macos
