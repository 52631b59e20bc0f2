#include "platform/x11/x11_event_poster.hpp"

#include <utility>

namespace orvel::x11 {

X11EventPoster::X11EventPoster(InputHub& hub, RunLoop& runLoop, Task posted)
    : hub_(hub), runLoop_(runLoop), posted_(std::move(posted)) {}

bool X11EventPoster::postKeys(EventSourceState /*source*/, std::span<const PostedKey> keys) {
    return post(keys);
}

bool X11EventPoster::postMediaKeys(std::span<const PostedMediaKey> keys) { return post(keys); }

template <typename Key>
bool X11EventPoster::post(std::span<const Key> keys) {
    if (std::this_thread::get_id() != mainThread_) {
        runLoop_.post([this, copies = std::vector<Key>(keys.begin(), keys.end())] {
            static_cast<void>(post(std::span(copies)));
        });
        return true;
    }
    const bool isPosted = hub_.posted().post(keys);
    hub_.flush();
    if (posted_) runLoop_.post(posted_);
    return isPosted;
}

}  // namespace orvel::x11
