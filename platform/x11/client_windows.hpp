#pragma once

#include "platform/x11/application_groups.hpp"
#include "platform/x11/desktop_entries.hpp"
#include "platform/x11/late_reading.hpp"
#include "platform/x11/service_connection.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvel::x11 {

/// Which application is in front, and how it wants to be spoken to.
struct FrontApplication {
    ProcessId handle = 0;    ///< 0: none
    std::string identifier;  ///< of macOS where it plays that part
    ApplicationKind kind = ApplicationKind::other;
    bool operator==(const FrontApplication&) const = default;
};

/// The windows and running applications of the session as the window manager tells them, kept up
/// to date by its notices: a read never asks anybody. Main thread.
class ClientWindows {
public:
    ClientWindows(ServiceConnection& server, const DesktopEntries& entries, ApplicationTable table);

    /// In the order in which they appeared.
    [[nodiscard]] const std::vector<ClientWindow>& windows() const { return windows_; }
    [[nodiscard]] const ClientWindow* find(xcb_window_t window) const;
    [[nodiscard]] const std::vector<ApplicationGroup>& groups() const { return groups_; }
    [[nodiscard]] const ApplicationGroup* group(ProcessId handle) const;
    [[nodiscard]] const ApplicationGroup* owner(xcb_window_t window) const;
    /// The application with the active window. While no window is active it is the one that was
    /// in front before, as long as it runs; null when there is none.
    [[nodiscard]] const ApplicationGroup* front() const;
    [[nodiscard]] xcb_window_t activeWindow() const { return active_; }

    [[nodiscard]] const ApplicationTable& table() const { return table_; }
    [[nodiscard]] std::shared_ptr<const ApplicationIndex> index() const { return entries_.index(); }

    /// Tells after the front application or the list of windows changed.
    [[nodiscard]] Subscription onFrontChange(std::function<void(const FrontApplication&)> told);
    [[nodiscard]] Subscription onListChange(
        std::function<void(const std::vector<xcb_window_t>&)> told) const;

    /// Reads everything again. Needed only after the installed applications changed.
    void refresh();

private:
    void watch();
    void propertyChanged(const xcb_property_notify_event_t& notice);
    void readList();
    void readActive();
    void regroup();
    [[nodiscard]] std::vector<ClientWindow> describe(const std::vector<xcb_window_t>& windows);

    ServiceConnection& server_;
    const DesktopEntries& entries_;
    ApplicationTable table_;
    bool hasResources_ = false;
    std::vector<ClientWindow> windows_;
    std::vector<ApplicationGroup> groups_;
    xcb_window_t active_ = XCB_WINDOW_NONE;
    /// A window of the application in front; the active one while there is one.
    xcb_window_t frontWindow_ = XCB_WINDOW_NONE;
    std::optional<std::size_t> front_;
    LateReading late_{server_, [this] { refresh(); }};
    Published<FrontApplication> publishedFront_;
    Published<std::vector<xcb_window_t>> publishedList_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace orvel::x11
