#include "platform/x11/x11_screens.hpp"

#include "platform/x11/window_properties.hpp"

#include <xcb/randr.h>

#include <string>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr std::size_t kPartialStrutLength = 12;
constexpr std::size_t kStrutLength = 4;

/// The old _NET_WM_STRUT counts along the whole edge.
Strut strutOf(const std::vector<std::uint32_t>& numbers, const RootRect& root) {
    const auto at = [&](std::size_t index) { return static_cast<int>(numbers[index]); };
    if (numbers.size() < kPartialStrutLength)
        return {at(0), at(1),       at(2), at(3),      0, root.height,
                0,     root.height, 0,     root.width, 0, root.width};
    return {at(0), at(1), at(2), at(3), at(4), at(5), at(6), at(7), at(8), at(9), at(10), at(11)};
}

}  // namespace

X11Screens::X11Screens(ServiceConnection& server) : server_(server) {
    hasRandr_ = server_.extensionEvents(xcb_randr_id).has_value();
    root_ = {0, 0, server_.screen().width_in_pixels, server_.screen().height_in_pixels};
    watch();
    refresh();
}

std::vector<Screen> X11Screens::screens() const { return screens_.get(); }

Subscription X11Screens::onChange(std::function<void(const std::vector<Screen>&)> told) {
    return screens_.subscribe(std::move(told));
}

ServiceCheck X11Screens::check() const {
    if (screens_.get().empty())
        return {"screens", false, true, "no monitor is connected", "connect a monitor"};
    std::string finding = std::to_string(screens_.get().size()) + " screen(s)";
    if (!hasRandr_)
        return {"screens", false, false,
                "the X server lacks RandR: all monitors count as one screen",
                "use an X server with the RandR extension"};
    return {"screens", true, true, std::move(finding), {}};
}

void X11Screens::watch() {
    server_.selectEvents(server_.root(),
                         XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    const auto workArea = server_.atom("_NET_WORKAREA");
    subscriptions_.push_back(
        server_.onEvent(XCB_PROPERTY_NOTIFY, [this, workArea](const xcb_generic_event_t& event) {
            const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (notice.window != server_.root() || notice.atom != workArea) return;
            isWorkAreaOld_ = false;
            refresh();
        }));
    subscriptions_.push_back(
        server_.onEvent(XCB_CONFIGURE_NOTIFY, [this](const xcb_generic_event_t& event) {
            const auto& notice = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
            if (notice.window != server_.root()) return;
            root_ = {0, 0, notice.width, notice.height};
            refresh();
        }));
    const auto randr = server_.extensionEvents(xcb_randr_id);
    if (!randr) return;
    xcb_randr_select_input(server_.raw(), server_.root(),
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                               XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    for (const int kind : {XCB_RANDR_SCREEN_CHANGE_NOTIFY, XCB_RANDR_NOTIFY}) {
        subscriptions_.push_back(
            server_.onEvent(static_cast<std::uint8_t>(*randr + kind),
                            [this](const xcb_generic_event_t&) { refresh(); }));
    }
}

void X11Screens::refresh() {
    if (late_.isDue()) return;
    const auto since = late_.begin();
    const auto deadline = deadlineIn(kServerLimit);
    setMonitors(readMonitors(deadline));
    RootState state{root_, monitors_, readWorkArea(deadline), readStruts(deadline)};
    if (isWorkAreaOld_) state.workArea.reset();
    layout_ = rootLayout(state);
    screens_.set(layOutScreens(state));
    late_.wasLate(since);
}

void X11Screens::setMonitors(std::vector<Monitor> monitors) {
    // A notice of the work area that came before the one of the monitors tells of the old ones.
    if (!monitors_.empty() && monitors != monitors_) isWorkAreaOld_ = true;
    monitors_ = std::move(monitors);
}

std::vector<Monitor> X11Screens::readMonitors(Deadline deadline) {
    if (!hasRandr_) return {{root_, true}};
    const auto answer = server_.reply<xcb_randr_get_monitors_reply_t>(
        xcb_randr_get_monitors(server_.raw(), server_.root(), 1), deadline);
    if (answer == nullptr)
        return monitors_.empty() ? std::vector<Monitor>{{root_, true}} : monitors_;
    std::vector<Monitor> monitors;
    for (auto each = xcb_randr_get_monitors_monitors_iterator(answer.get()); each.rem > 0;
         xcb_randr_monitor_info_next(&each)) {
        const auto& info = *each.data;
        monitors.push_back({{info.x, info.y, info.width, info.height}, info.primary != 0});
    }
    return monitors;
}

std::optional<RootRect> X11Screens::readWorkArea(Deadline deadline) {
    const auto areas = cardinals(server_, server_.root(), "_NET_WORKAREA", deadline);
    const auto desktop = cardinals(server_, server_.root(), "_NET_CURRENT_DESKTOP", deadline);
    std::size_t first = desktop.empty() ? 0 : desktop.front() * std::size_t{4};
    if (first + 4 > areas.size()) first = 0;
    if (areas.size() < 4) return std::nullopt;
    const auto at = [&](std::size_t index) { return static_cast<int>(areas[first + index]); };
    return RootRect{at(0), at(1), at(2), at(3)};
}

std::vector<Strut> X11Screens::readStruts(Deadline deadline) {
    const auto windows = cardinals(server_, server_.root(), "_NET_CLIENT_LIST", deadline);
    const auto partial = server_.atom("_NET_WM_STRUT_PARTIAL");
    const auto whole = server_.atom("_NET_WM_STRUT");
    std::vector<std::pair<PendingProperty, PendingProperty>> asked;
    asked.reserve(windows.size());
    for (const auto window : windows)
        asked.emplace_back(askProperty(server_, window, partial),
                           askProperty(server_, window, whole));
    std::vector<Strut> struts;
    for (const auto& [newKind, oldKind] : asked) {
        auto numbers = takeCardinals(server_, newKind, deadline);
        auto old = takeCardinals(server_, oldKind, deadline);
        if (numbers.size() < kPartialStrutLength) numbers = std::move(old);
        if (numbers.size() >= kStrutLength) struts.push_back(strutOf(numbers, root_));
    }
    return struts;
}

}  // namespace orvel::x11
