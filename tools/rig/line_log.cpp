#include "tools/rig/line_log.hpp"

#include "tools/rig/rig_error.hpp"

#include <array>
#include <cerrno>
#include <cstdint>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace orvel::rig {

LineLog::LineLog(UniqueFd fd) : fd_(std::move(fd)), stop_(eventfd(0, EFD_CLOEXEC)) {
    if (!stop_.valid()) {
        failWithErrno("eventfd");
    }
    reader_ = std::thread([this] { readAll(); });
}

LineLog::~LineLog() {
    const std::uint64_t one = 1;
    // The pipe may outlive the child when a grandchild holds it, so its end is not waited for.
    [[maybe_unused]] const ssize_t written = write(stop_.get(), &one, sizeof one);
    reader_.join();
}

LineLog::Lines LineLog::lines(std::size_t from) const {
    const std::lock_guard lock(mutex_);
    if (from >= lines_.size()) {
        return {};
    }
    return {lines_.begin() + static_cast<std::ptrdiff_t>(from), lines_.end()};
}

std::size_t LineLog::count() const {
    const std::lock_guard lock(mutex_);
    return lines_.size();
}

std::string LineLog::text() const {
    const std::lock_guard lock(mutex_);
    std::string all;
    for (const std::string& line : lines_) {
        all += line + '\n';
    }
    return all + unfinished_;
}

std::optional<std::string> LineLog::waitForLine(
    const std::function<bool(const std::string&)>& accept, std::size_t from,
    std::chrono::milliseconds limit) const {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    std::unique_lock lock(mutex_);
    for (std::size_t next = from;;) {
        for (; next < lines_.size(); ++next) {
            if (accept(lines_[next])) {
                return lines_[next];
            }
        }
        if (ended_ || arrived_.wait_until(lock, deadline) == std::cv_status::timeout) {
            if (next >= lines_.size()) {
                return std::nullopt;
            }
        }
    }
}

std::optional<std::string> LineLog::waitForText(const std::string& part, std::size_t from,
                                                std::chrono::milliseconds limit) const {
    return waitForLine(
        [&part](const std::string& line) { return line.find(part) != std::string::npos; }, from,
        limit);
}

bool LineLog::waitForEnd(std::chrono::milliseconds limit) const {
    std::unique_lock lock(mutex_);
    return arrived_.wait_for(lock, limit, [this] { return ended_; });
}

void LineLog::readAll() {
    std::array<char, 65536> buffer{};
    while (true) {
        std::array<pollfd, 2> waits{{{fd_.get(), POLLIN, 0}, {stop_.get(), POLLIN, 0}}};
        if (poll(waits.data(), waits.size(), -1) < 0 && errno != EINTR) {
            break;
        }
        if ((waits[0].revents & (POLLIN | POLLHUP | POLLERR)) != 0) {
            const ssize_t got = read(fd_.get(), buffer.data(), buffer.size());
            if (got <= 0) {
                break;
            }
            append(buffer.data(), static_cast<std::size_t>(got));
        } else if (waits[1].revents != 0) {
            break;
        }
    }
    const std::lock_guard lock(mutex_);
    ended_ = true;
    arrived_.notify_all();
}

void LineLog::append(const char* data, std::size_t size) {
    const std::lock_guard lock(mutex_);
    for (std::size_t at = 0; at < size; ++at) {
        if (data[at] == '\n') {
            lines_.push_back(std::move(unfinished_));
            unfinished_.clear();
        } else {
            unfinished_ += data[at];
        }
    }
    arrived_.notify_all();
}

}  // namespace orvel::rig
