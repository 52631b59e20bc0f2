#pragma once

#include "platform/run_loop.hpp"
#include "platform/window_images.hpp"
#include "platform/x11/client_windows.hpp"
#include "platform/x11/picture_reader.hpp"
#include "platform/x11/service_check.hpp"
#include "platform/x11/window_pixmaps.hpp"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>

namespace orvel::x11 {

/// Pictures of client windows with the window manager's frame, as large as the window list tells
/// them. A hidden window has the picture of the moment before it was hidden; one that was never
/// seen has none. Main thread.
class X11WindowImages final : public WindowImages {
public:
    X11WindowImages(RunLoop& runLoop, ServiceConnection& server, const ClientWindows& clients);

    /// Every client of an X server may see the windows of all others.
    [[nodiscard]] bool hasPermission() const override { return true; }
    void requestPermission() override {}
    [[nodiscard]] std::optional<Picture> capture(WindowNumber number) override;

    /// What a server has to offer.
    [[nodiscard]] static ServiceCheck check(ServiceConnection& server);

private:
    [[nodiscard]] std::optional<Picture> read(xcb_window_t client, Deadline deadline);
    void keepLast(xcb_window_t client, Deadline deadline);
    void keepHidden();

    RunLoop& runLoop_;
    ServiceConnection& server_;
    WindowPixmaps pixmaps_;
    PictureReader reader_;
    /// Of hidden windows.
    std::map<xcb_window_t, Picture> last_;
    /// Windows whose last picture is still to be read.
    std::deque<xcb_window_t> hidden_;
    std::unique_ptr<Timer> nextHidden_;
    Subscription listChange_;
    std::int64_t lastSerial_ = 0;
};

}  // namespace orvel::x11
