#pragma once

#include "tools/rig/clients/line_input.hpp"

#include <xcb/xcb.h>

#include <string>

namespace orvel::rig {

/// An X client that does what lines on standard input say, until they end or the server is gone.
class LineClient {
public:
    /// Ends the program when there is no server.
    LineClient();
    virtual ~LineClient();
    LineClient(const LineClient&) = delete;
    LineClient& operator=(const LineClient&) = delete;

    void run();

protected:
    virtual void obey(const std::string& line) = 0;
    virtual void handle(const xcb_generic_event_t& event) = 0;

    [[nodiscard]] xcb_connection_t* connection() const { return connection_; }
    [[nodiscard]] const xcb_screen_t& screen() const;
    [[nodiscard]] xcb_atom_t atom(const std::string& name) const;

private:
    xcb_connection_t* connection_;
    LineInput input_;
};

}  // namespace orvel::rig
