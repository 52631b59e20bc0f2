#pragma once

#include "platform/event_poster.hpp"
#include "platform/run_loop.hpp"
#include "platform/x11/input_hub.hpp"

#include <span>
#include <thread>
#include <vector>

namespace orvel::x11 {

/// Posts through the session's one synthetic device. What another thread posts leaves from the
/// main queue; whether its keys exist is not known then, and true is returned.
class X11EventPoster final : public EventPoster {
public:
    X11EventPoster(InputHub& hub, RunLoop& runLoop) : hub_(hub), runLoop_(runLoop) {}

    bool postKeys(EventSourceState source, std::span<const PostedKey> keys) override;
    bool postMediaKeys(std::span<const PostedMediaKey> keys) override;

private:
    template <typename Key>
    bool post(std::span<const Key> keys);

    InputHub& hub_;
    RunLoop& runLoop_;
    std::thread::id mainThread_ = std::this_thread::get_id();
};

}  // namespace orvel::x11
