#include "platform/x11/x11_event_poster.hpp"

namespace orvel::x11 {

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
    hub_.wakeIfPending();
    return isPosted;
}

}  // namespace orvel::x11
