#include "platform/x11/window_manager.hpp"

#include "platform/x11/window_properties.hpp"

#include <algorithm>
#include <iterator>

namespace orvel::x11 {

namespace {

constexpr std::uint32_t kStaticGravity = 10;
constexpr std::uint32_t kHasX = 1U << 8U, kHasY = 1U << 9U;
constexpr std::uint32_t kHasWidth = 1U << 10U, kHasHeight = 1U << 11U;
/// Requests of a pager: the window manager carries them out on behalf of the user.
constexpr std::uint32_t kFromPager = 2;
constexpr std::uint32_t kRemove = 0;
constexpr std::uint32_t kIconicState = 3;
/// The question by whose answer a window manager shows how far it has got.
constexpr std::string_view kEcho = "_NET_REQUEST_FRAME_EXTENTS";
/// How long a wish counts for a window manager that does not tell when it has got to it.
constexpr Milliseconds kCounted{300};

bool contains(const std::vector<std::uint32_t>& numbers, std::uint32_t wanted) {
    return std::find(numbers.begin(), numbers.end(), wanted) != numbers.end();
}

/// Everything asked about one window before the first answer is read.
struct StateQuestion {
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t origin;
    PendingProperty frame, shadow, states, iconic;
};

StateQuestion ask(ServiceConnection& server, xcb_window_t window) {
    return {xcb_get_geometry(server.raw(), window),
            xcb_translate_coordinates(server.raw(), window, server.root(), 0, 0),
            askProperty(server, window, server.atom("_NET_FRAME_EXTENTS")),
            askProperty(server, window, server.atom("_GTK_FRAME_EXTENTS")),
            askProperty(server, window, server.atom("_NET_WM_STATE")),
            askProperty(server, window, server.atom("WM_STATE"))};
}

std::optional<WindowState> take(ServiceConnection& server, const StateQuestion& question,
                                Deadline deadline) {
    const auto geometry = server.reply<xcb_get_geometry_reply_t>(question.geometry, deadline);
    const auto origin = server.reply<xcb_translate_coordinates_reply_t>(question.origin, deadline);
    WindowState state;
    state.frame.frame = extentsOf(takeCardinals(server, question.frame, deadline));
    state.frame.shadow = extentsOf(takeCardinals(server, question.shadow, deadline));
    const auto states = takeCardinals(server, question.states, deadline);
    const auto iconic = takeCardinals(server, question.iconic, deadline);
    if (geometry == nullptr || origin == nullptr) return std::nullopt;
    state.client = {origin->dst_x, origin->dst_y, geometry->width, geometry->height};
    state.isMinimized = (!iconic.empty() && iconic.front() == kIconicState) ||
                        contains(states, server.atom("_NET_WM_STATE_HIDDEN"));
    state.isMaximized = contains(states, server.atom("_NET_WM_STATE_MAXIMIZED_VERT")) ||
                        contains(states, server.atom("_NET_WM_STATE_MAXIMIZED_HORZ"));
    state.isFullscreen = contains(states, server.atom("_NET_WM_STATE_FULLSCREEN"));
    return state;
}

struct TitleQuestion {
    PendingProperty modern, old;
};

TitleQuestion askTitle(ServiceConnection& server, xcb_window_t window) {
    return {askProperty(server, window, server.atom("_NET_WM_NAME")),
            askProperty(server, window, XCB_ATOM_WM_NAME)};
}

std::optional<std::string> takeTitle(ServiceConnection& server, const TitleQuestion& question,
                                     Deadline deadline) {
    auto modern = takeText(server, question.modern, deadline);
    auto old = takeText(server, question.old, deadline);
    return modern ? modern : old;
}

}  // namespace

WindowManager::WindowManager(ServiceConnection& server)
    : server_(server), echo_(server, [this] { reviewWishes(); }) {
    server_.selectEvents(server_.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    subscriptions_.push_back(
        server_.onEvent(XCB_PROPERTY_NOTIFY, [this](const xcb_generic_event_t& event) {
            const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (notice.window == server_.root() &&
                (notice.atom == server_.atom("_NET_SUPPORTED") ||
                 notice.atom == server_.atom("_NET_SUPPORTING_WM_CHECK")))
                forgetSupported();
        }));
}

std::string WindowManager::name(Deadline deadline) {
    const auto check = cardinals(server_, server_.root(), "_NET_SUPPORTING_WM_CHECK", deadline);
    if (check.empty()) return {};
    // The property survives a window manager that died; its window does not.
    const auto self = cardinals(server_, check.front(), "_NET_SUPPORTING_WM_CHECK", deadline);
    if (self.empty() || self.front() != check.front()) return {};
    return text(server_, check.front(), "_NET_WM_NAME", deadline).value_or("without a name");
}

bool WindowManager::supports(std::string_view feature) {
    if (!isSupportedKnown_) readSupported();
    return supported_.contains(server_.atom(feature));
}

/// Another window manager has begun, or this one ended.
void WindowManager::forgetSupported() {
    isSupportedKnown_ = false;
    wishes_.clear();
    echo_.forget();
}

void WindowManager::readSupported() {
    supported_.clear();
    isSupportedKnown_ = true;
    if (name().empty()) return;
    const auto atoms = cardinals(server_, server_.root(), "_NET_SUPPORTED");
    supported_.insert(atoms.begin(), atoms.end());
}

std::optional<WindowState> WindowManager::state(xcb_window_t window, Deadline deadline) {
    return wished(window, take(server_, ask(server_, window), deadline));
}

std::optional<WindowState> WindowManager::wished(xcb_window_t window,
                                                 std::optional<WindowState> now) const {
    const auto found = wishes_.find(window);
    if (!now || found == wishes_.end()) return now;
    const auto& [wish, counted] = found->second;
    return timeLeft(counted) == Milliseconds::zero() ? now : wish.applied(*now);
}

std::optional<std::string> WindowManager::title(xcb_window_t window, Deadline deadline) {
    return takeTitle(server_, askTitle(server_, window), deadline);
}

std::vector<std::optional<WindowSummary>> WindowManager::summaries(
    const std::vector<xcb_window_t>& windows, Deadline deadline) {
    struct Asked {
        StateQuestion state;
        TitleQuestion title;
        xcb_get_window_attributes_cookie_t attributes;
    };
    std::vector<Asked> asked;
    for (const auto window : windows)
        asked.push_back({ask(server_, window), askTitle(server_, window),
                         xcb_get_window_attributes(server_.raw(), window)});
    std::vector<std::optional<WindowSummary>> summaries;
    for (std::size_t i = 0; i < asked.size(); ++i) {
        const auto& each = asked[i];
        auto state = wished(windows[i], take(server_, each.state, deadline));
        auto title = takeTitle(server_, each.title, deadline);
        const auto attributes =
            server_.reply<xcb_get_window_attributes_reply_t>(each.attributes, deadline);
        if (!state || attributes == nullptr) {
            summaries.emplace_back();
            continue;
        }
        const bool isViewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        summaries.push_back(
            WindowSummary{*state, title.value_or(""), isViewable && !state->isMinimized});
    }
    return summaries;
}

std::vector<xcb_window_t> WindowManager::stacking(Deadline deadline) {
    auto order = cardinals(server_, server_.root(), "_NET_CLIENT_LIST_STACKING", deadline);
    if (order.empty()) order = cardinals(server_, server_.root(), "_NET_CLIENT_LIST", deadline);
    return order;
}

std::optional<WindowState> WindowManager::movable(xcb_window_t window, Deadline deadline) {
    if (!supports("_NET_MOVERESIZE_WINDOW")) return std::nullopt;
    const auto now = state(window, deadline);
    if (!now || now->isFullscreen) return std::nullopt;
    if (!now->isMaximized) return now;
    // A maximised window stays where it is until it is none.
    tellWindowManager(server_, window, "_NET_WM_STATE",
                      {kRemove, server_.atom("_NET_WM_STATE_MAXIMIZED_VERT"),
                       server_.atom("_NET_WM_STATE_MAXIMIZED_HORZ"), kFromPager});
    wishFor(window).leaveMaximized();
    return now;
}

bool WindowManager::move(xcb_window_t window, PixelPlace place, Deadline deadline) {
    const auto now = movable(window, deadline);
    if (!now) return false;
    wishFor(window).moveTo(place);
    tellPlace(window, now->frame, place);
    return follow();
}

bool WindowManager::resize(xcb_window_t window, PixelSize size, Deadline deadline) {
    const auto now = movable(window, deadline);
    if (!now) return false;
    const auto hints = sizeHintsOf(
        takeCardinals(server_, askProperty(server_, window, XCB_ATOM_WM_NORMAL_HINTS), deadline));
    const auto client = now->frame.client({0, 0, size.width, size.height});
    const auto allowed = hints.allowed({client.width, client.height});
    const auto taken = now->frame.seen({0, 0, allowed.width, allowed.height});
    wishFor(window).resizeTo(size, {taken.width, taken.height}, now->frame);
    tellSize(window, now->frame, size);
    return follow();
}

WindowWish& WindowManager::wishFor(xcb_window_t window) {
    // Where nobody tells what became of a wish, it is over with its time.
    if (!supports(kEcho)) {
        std::erase_if(wishes_, [](const auto& each) {
            return timeLeft(each.second.counted) == Milliseconds::zero();
        });
    }
    auto& wished = wishes_[window];
    wished.counted = deadlineIn(kCounted);
    return wished.wish;
}

bool WindowManager::follow() {
    if (supports(kEcho)) echo_.ask();
    return !echo_.isSilent();
}

void WindowManager::reviewWishes() {
    bool isAskedAgain = false;
    for (auto each = wishes_.begin(); each != wishes_.end();) {
        const Review outcome = review(each->first, each->second);
        isAskedAgain = isAskedAgain || outcome == Review::askedAgain;
        each = outcome == Review::done ? wishes_.erase(each) : std::next(each);
    }
    if (isAskedAgain) echo_.ask();
}

WindowManager::Review WindowManager::review(xcb_window_t window, Wished& wished) {
    const auto now = take(server_, ask(server_, window), deadlineIn(kServerLimit));
    if (!now) return Review::done;
    const auto correction = wished.wish.correct(*now);
    if (!correction) {
        const bool counts = timeLeft(wished.counted) > Milliseconds::zero();
        return counts && wished.wish.isUnderWay(*now) ? Review::underWay : Review::done;
    }
    if (correction->size) tellSize(window, now->frame, *correction->size);
    if (const auto place = correction->place) {
        // Some window managers drop a request for the place they were asked for last, wherever the
        // window is meanwhile: another place in between makes it news.
        tellPlace(window, now->frame, {place->x + 1, place->y});
        tellPlace(window, now->frame, *place);
    }
    return Review::askedAgain;
}

void WindowManager::tellPlace(xcb_window_t window, const WindowFrame& frame, PixelPlace place) {
    tellMoveResize(window, kHasX | kHasY, frame.client({place.x, place.y, 0, 0}));
}

void WindowManager::tellSize(xcb_window_t window, const WindowFrame& frame, PixelSize size) {
    tellMoveResize(window, kHasWidth | kHasHeight, frame.client({0, 0, size.width, size.height}));
}

void WindowManager::tellMoveResize(xcb_window_t window, std::uint32_t flags,
                                   const RootRect& client) {
    tellWindowManager(
        server_, window, "_NET_MOVERESIZE_WINDOW",
        {kStaticGravity | flags | (kFromPager << 12U), static_cast<std::uint32_t>(client.x),
         static_cast<std::uint32_t>(client.y), static_cast<std::uint32_t>(client.width),
         static_cast<std::uint32_t>(client.height)});
}

bool WindowManager::minimize(xcb_window_t window, Deadline deadline) {
    if (!state(window, deadline)) return false;
    tellWindowManager(server_, window, "WM_CHANGE_STATE", {kIconicState});
    wishFor(window).minimize(true);
    return follow();
}

bool WindowManager::activate(xcb_window_t window, Deadline deadline) {
    if (!state(window, deadline)) return false;
    tellWindowManager(server_, window, "_NET_ACTIVE_WINDOW", {kFromPager, XCB_CURRENT_TIME, 0});
    wishFor(window).minimize(false);
    return follow();
}

bool WindowManager::activateTopmost(const std::vector<xcb_window_t>& windows, Deadline deadline) {
    std::optional<xcb_window_t> minimized;
    const auto order = stacking(deadline);
    for (auto window = order.rbegin(); window != order.rend(); ++window) {
        if (!contains(windows, *window)) continue;
        const auto now = state(*window, deadline);
        if (now && !now->isMinimized) return activate(*window, deadline);
        if (now && !minimized) minimized = *window;
    }
    return minimized && activate(*minimized, deadline);
}

bool WindowManager::raise(xcb_window_t window, Deadline deadline) {
    if (!state(window, deadline)) return false;
    if (supports("_NET_RESTACK_WINDOW")) {
        tellWindowManager(server_, window, "_NET_RESTACK_WINDOW",
                          {kFromPager, XCB_WINDOW_NONE, XCB_STACK_MODE_ABOVE});
        return true;
    }
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(server_.raw(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    server_.flush();
    return true;
}

void WindowManager::close(xcb_window_t window) {
    tellWindowManager(server_, window, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, kFromPager});
}

void WindowManager::disconnectOwner(xcb_window_t window) {
    xcb_kill_client(server_.raw(), window);
    server_.flush();
}

bool WindowManager::toggleShowDesktop(Deadline deadline) {
    if (!supports("_NET_SHOWING_DESKTOP")) return false;
    const auto showing = cardinals(server_, server_.root(), "_NET_SHOWING_DESKTOP", deadline);
    const bool isShowing = !showing.empty() && showing.front() != 0;
    tellWindowManager(server_, server_.root(), "_NET_SHOWING_DESKTOP", {isShowing ? 0U : 1U});
    return true;
}

ServiceCheck WindowManager::check() {
    const auto running = name();
    if (running.empty())
        return {"window manager", false, true,
                "no window manager runs: windows cannot be found, moved or raised",
                "start a window manager that follows EWMH, such as openbox or xfwm4"};
    for (const auto* feature : {"_NET_ACTIVE_WINDOW", "_NET_CLIENT_LIST_STACKING",
                                "_NET_MOVERESIZE_WINDOW", "_NET_FRAME_EXTENTS"}) {
        if (!supports(feature))
            return {"window manager", false, false, running + " does not offer " + feature,
                    "use a window manager that follows EWMH, such as openbox or xfwm4"};
    }
    return {"window manager", true, true, running, {}};
}

}  // namespace orvel::x11
