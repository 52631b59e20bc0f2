#pragma once

#include "tools/rig/poll_until.hpp"
#include "tools/rig/unique_fd.hpp"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace orvel::rig {

/// Collects what arrives on a pipe, line by line, so that the writer never blocks.
/// Usable from any thread.
class LineLog {
public:
    using Lines = std::vector<std::string>;

    explicit LineLog(UniqueFd fd);
    ~LineLog();
    LineLog(const LineLog&) = delete;
    LineLog& operator=(const LineLog&) = delete;

    /// The complete lines so far, from line `from` on.
    Lines lines(std::size_t from = 0) const;
    std::size_t count() const;
    /// Everything so far as one text, an unfinished last line included.
    std::string text() const;

    /// Waits until `accept` says yes to one line at or after `from`, and returns that line.
    std::optional<std::string> waitForLine(const std::function<bool(const std::string&)>& accept,
                                           std::size_t from = 0,
                                           std::chrono::milliseconds limit = kPatience) const;
    /// The same for a line that holds this text.
    std::optional<std::string> waitForText(const std::string& part, std::size_t from = 0,
                                           std::chrono::milliseconds limit = kPatience) const;
    /// Waits until the writers have closed the pipe.
    bool waitForEnd(std::chrono::milliseconds limit = kPatience) const;

private:
    void readAll();
    void append(const char* data, std::size_t size);

    UniqueFd fd_;
    UniqueFd stop_;
    mutable std::mutex mutex_;
    mutable std::condition_variable arrived_;
    Lines lines_;
    std::string unfinished_;
    bool ended_ = false;
    std::thread reader_;
};

}  // namespace orvel::rig
