#include "platform/memory/memory_event_poster.hpp"

#include "platform/memory/event_names.hpp"

namespace orvel::memory {

bool MemoryEventPoster::postKeys(EventSourceState, std::span<const PostedKey> keys) {
    for (const PostedKey& key : keys) {
        effects_.effect("post")
            ->beginObject()
            .member("type", eventTypeName(key.type))
            .member("key", key.keyCode)
            .member("flags", key.flags.value_or(world_.hidFlags))
            .member("userData", key.userData)
            .member("tap", "hid")
            .endObject();
    }
    return true;
}

bool MemoryEventPoster::postMediaKeys(std::span<const PostedMediaKey> keys) {
    for (const PostedMediaKey& key : keys) {
        effects_.effect("post")
            ->beginObject()
            .member("type", eventTypeName(EventType::systemDefined))
            .member("subtype", key.subtype)
            .member("data1", key.data1)
            .member("data2", key.data2)
            .member("flags", key.flags)
            .member("userData", key.userData)
            .member("tap", "hid")
            .endObject();
    }
    return true;
}

}  // namespace orvel::memory
