#pragma once

#include "platform/pasteboard.hpp"
#include "platform/run_loop.hpp"
#include "platform/x11/pasteboard_state.hpp"
#include "platform/x11/service_check.hpp"

#include <memory>
#include <string>
#include <thread>

namespace orvel::x11 {

/// The clipboard of the X server. What others copy is read on a thread of its own before the count
/// goes up, so that no read here waits for an application. Contents that their owner marked as a
/// secret are never fetched, only their mark. What we write is ours at once and is told to others
/// at the end of the current task; it lasts as long as this object, and longer where a clipboard
/// manager takes it over. Pictures have no pixels beside the TIFF.
class X11Pasteboard final : public Pasteboard {
public:
    /// `display` empty: the one that the environment names.
    X11Pasteboard(RunLoop& runLoop, const std::string& display);
    ~X11Pasteboard() override;
    X11Pasteboard(const X11Pasteboard&) = delete;
    X11Pasteboard& operator=(const X11Pasteboard&) = delete;

    [[nodiscard]] std::int64_t changeCount() const override;
    [[nodiscard]] PasteboardMarks marks() const override;
    [[nodiscard]] std::optional<std::string> string() const override;
    [[nodiscard]] std::optional<PasteboardImage> image() const override;
    void clear() override;
    void setString(std::string_view text) override;
    Result<> writeImage(std::string_view path) override;

    /// Asks on the connection of the caller.
    [[nodiscard]] ServiceCheck check(ServiceConnection& server) const;

private:
    void announceSoon();

    RunLoop& runLoop_;
    std::shared_ptr<PasteboardState> state_ = std::make_shared<PasteboardState>();
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
    bool isAnnouncing_ = false;
    std::string problem_;  ///< why there is no connection; empty when there is one
    std::thread thread_;
};

}  // namespace orvel::x11
