#include "platform/x11/shared_segment.hpp"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/stat.h>

namespace orvel::x11 {

std::unique_ptr<SharedSegment> SharedSegment::make(ServiceConnection& server, std::size_t size,
                                                   Deadline deadline) {
    if (!server.extensionEvents(xcb_shm_id)) return nullptr;
    const int shared = ::shmget(IPC_PRIVATE, size, IPC_CREAT | S_IRUSR | S_IWUSR);
    if (shared < 0) return nullptr;
    void* const memory = ::shmat(shared, nullptr, 0);
    std::unique_ptr<SharedSegment> segment;
    if (memory != reinterpret_cast<void*>(-1)) {
        segment.reset(new SharedSegment(server, {static_cast<std::byte*>(memory), size}));
        const auto attached = xcb_shm_attach_checked(server.raw(), segment->id(),
                                                     static_cast<std::uint32_t>(shared), 0);
        if (!server.check(attached, deadline)) segment.reset();
    }
    // From here on it lives only as long as it is attached.
    ::shmctl(shared, IPC_RMID, nullptr);
    return segment;
}

SharedSegment::SharedSegment(ServiceConnection& server, std::span<std::byte> bytes)
    : server_(server), id_(xcb_generate_id(server.raw())), bytes_(bytes) {}

SharedSegment::~SharedSegment() {
    xcb_shm_detach(server_.raw(), id_);
    server_.flush();
    ::shmdt(bytes_.data());
}

}  // namespace orvel::x11
