#include "platform/x11/late_reading.hpp"

#include <utility>

namespace orvel::x11 {

LateReading::LateReading(ServiceConnection& server, std::function<void()> read)
    : server_(server), read_(std::move(read)) {}

bool LateReading::wasLate(unsigned since) {
    if (server_.lateReplies() == since) return false;
    if (std::exchange(*isDue_, true)) return true;
    server_.onceAnswering([this, whileAlive = std::weak_ptr(isDue_)] {
        const auto isDue = whileAlive.lock();
        if (isDue == nullptr) return;
        *isDue = false;
        read_();
    });
    return true;
}

}  // namespace orvel::x11
