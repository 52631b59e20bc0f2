#pragma once

#include "platform/x11/service_connection.hpp"

#include <functional>
#include <memory>

namespace orvel::x11 {

/// For whoever keeps what the server told: when a reply was late, everything is read again once the
/// server answers. Main thread.
class LateReading {
public:
    /// `read` is called from `ServiceConnection::dispatch`, with nothing due any more.
    LateReading(ServiceConnection& server, std::function<void()> read);

    /// Whether everything will be read again, so that nothing need be read now.
    [[nodiscard]] bool isDue() const { return *isDue_; }
    /// To be taken before a reading and given to `wasLate` after it.
    [[nodiscard]] unsigned begin() const { return server_.lateReplies(); }
    /// Whether a reply has been late since then; everything is read again in that case.
    bool wasLate(unsigned since);

private:
    ServiceConnection& server_;
    std::function<void()> read_;
    /// What waits for the server when this object ends does nothing.
    std::shared_ptr<bool> isDue_ = std::make_shared<bool>(false);
};

}  // namespace orvel::x11
