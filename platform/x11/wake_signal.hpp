#pragma once

#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace orvel::x11 {

/// Wakes a thread that polls `fd`. Any thread.
class WakeSignal {
public:
    WakeSignal() : fd_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
    ~WakeSignal() {
        if (fd_ >= 0) ::close(fd_);
    }
    WakeSignal(const WakeSignal&) = delete;
    WakeSignal& operator=(const WakeSignal&) = delete;

    [[nodiscard]] int fd() const { return fd_; }
    void set() {
        const std::uint64_t one = 1;
        static_cast<void>(::write(fd_, &one, sizeof one) == sizeof one);
    }
    void clear() {
        std::uint64_t count = 0;
        static_cast<void>(::read(fd_, &count, sizeof count) == sizeof count);
    }

private:
    int fd_;
};

}  // namespace orvel::x11
