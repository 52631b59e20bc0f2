#include "tools/rig/clients/line_client.hpp"

#include <cstdint>
#include <cstdlib>
#include <sys/poll.h>
#include <unistd.h>

namespace orvel::rig {

LineClient::LineClient() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) std::exit(1);
}

LineClient::~LineClient() { xcb_disconnect(connection_); }

void LineClient::run() {
    for (;;) {
        xcb_flush(connection_);
        pollfd waits[] = {{STDIN_FILENO, POLLIN, 0},
                          {xcb_get_file_descriptor(connection_), POLLIN, 0}};
        ::poll(waits, 2, -1);
        if (waits[0].revents != 0 && !input_.read([this](const auto& line) { obey(line); })) return;
        if (xcb_connection_has_error(connection_) != 0) return;
        while (auto* event = xcb_poll_for_event(connection_)) {
            handle(*event);
            std::free(event);
        }
    }
}

const xcb_screen_t& LineClient::screen() const {
    return *xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

xcb_atom_t LineClient::atom(const std::string& name) const {
    auto* reply = xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr);
    const auto found = reply->atom;
    std::free(reply);
    return found;
}

}  // namespace orvel::rig
