#pragma once

#include "platform/x11/service_connection.hpp"

#include <xcb/shm.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace orvel::x11 {

/// Memory that the X server writes pictures into. Nobody else can find it, and it is gone with the
/// last of the two processes, however they end.
class SharedSegment {
public:
    /// Null when the server does not take it: it lacks the extension or runs on another machine.
    [[nodiscard]] static std::unique_ptr<SharedSegment> make(ServiceConnection& server,
                                                             std::size_t size, Deadline deadline);
    ~SharedSegment();
    SharedSegment(const SharedSegment&) = delete;
    SharedSegment& operator=(const SharedSegment&) = delete;

    [[nodiscard]] xcb_shm_seg_t id() const { return id_; }
    [[nodiscard]] std::span<const std::byte> bytes() const { return bytes_; }

private:
    SharedSegment(ServiceConnection& server, std::span<std::byte> bytes);

    ServiceConnection& server_;
    xcb_shm_seg_t id_;
    std::span<std::byte> bytes_;
};

}  // namespace orvel::x11
