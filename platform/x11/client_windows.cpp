#include "platform/x11/client_windows.hpp"

#include "platform/x11/window_properties.hpp"

#include <xcb/res.h>

#include <algorithm>
#include <array>
#include <unistd.h>
#include <utility>

namespace orvel::x11 {

namespace {

/// The two texts of WM_CLASS, each ended by a zero.
std::pair<std::string, std::string> splitClass(const std::string& text) {
    const auto end = text.find('\0');
    if (end == std::string::npos) return {text, {}};
    const auto second = text.substr(end + 1);
    return {text.substr(0, end), second.substr(0, second.find('\0'))};
}

WindowKind kindNamed(ServiceConnection& server, const std::vector<std::uint32_t>& types,
                     bool isTransient) {
    constexpr auto kKinds = std::to_array<std::pair<std::string_view, WindowKind>>(
        {{"_NET_WM_WINDOW_TYPE_NORMAL", WindowKind::normal},
         {"_NET_WM_WINDOW_TYPE_DIALOG", WindowKind::dialog},
         {"_NET_WM_WINDOW_TYPE_UTILITY", WindowKind::utility},
         {"_NET_WM_WINDOW_TYPE_TOOLBAR", WindowKind::utility},
         {"_NET_WM_WINDOW_TYPE_DESKTOP", WindowKind::desktop},
         {"_NET_WM_WINDOW_TYPE_DOCK", WindowKind::dock}});
    for (const auto type : types) {
        for (const auto& [name, kind] : kKinds) {
            if (server.atom(name) == type) return kind;
        }
    }
    if (!types.empty()) return WindowKind::other;
    return isTransient ? WindowKind::dialog : WindowKind::normal;
}

/// Everything asked about one window before the first answer is read.
struct Question {
    PendingProperty windowClass, desktopFile, applicationId, process, type, state, transientFor;
    std::optional<xcb_res_query_client_ids_cookie_t> client;
};

Question ask(ServiceConnection& server, xcb_window_t window, bool hasResources) {
    const auto property = [&](std::string_view name) {
        return askProperty(server, window, server.atom(name));
    };
    Question question{property("WM_CLASS"),
                      property("_KDE_NET_WM_DESKTOP_FILE"),
                      property("_GTK_APPLICATION_ID"),
                      property("_NET_WM_PID"),
                      property("_NET_WM_WINDOW_TYPE"),
                      property("_NET_WM_STATE"),
                      property("WM_TRANSIENT_FOR"),
                      {}};
    if (hasResources) {
        const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        question.client = xcb_res_query_client_ids(server.raw(), 1, &spec);
    }
    return question;
}

/// The process at the other end of the window's connection, which no window can get wrong.
ProcessId processOf(ServiceConnection& server, const Question& question, Deadline deadline) {
    ProcessId process = 0;
    if (question.client) {
        const auto answer =
            server.reply<xcb_res_query_client_ids_reply_t>(*question.client, deadline);
        if (answer != nullptr) {
            auto each = xcb_res_query_client_ids_ids_iterator(answer.get());
            if (each.rem > 0 && xcb_res_client_id_value_value_length(each.data) > 0)
                process = static_cast<ProcessId>(*xcb_res_client_id_value_value(each.data));
        }
    }
    const auto named = takeCardinals(server, question.process, deadline);
    if (process <= 0 && !named.empty()) process = static_cast<ProcessId>(named.front());
    return process;
}

std::string firstText(ServiceConnection& server, const Question& question, Deadline deadline) {
    const auto named = takeText(server, question.desktopFile, deadline);
    const auto application = takeText(server, question.applicationId, deadline);
    return named && !named->empty() ? *named : application.value_or("");
}

ClientWindow takeAnswer(ServiceConnection& server, xcb_window_t window, const Question& question,
                        Deadline deadline) {
    ClientWindow client;
    client.id = window;
    const auto [instance, className] =
        splitClass(takeText(server, question.windowClass, deadline).value_or(""));
    client.process = processOf(server, question, deadline);
    client.identity = {firstText(server, question, deadline), instance, className,
                       programName(client.process)};
    const auto types = takeCardinals(server, question.type, deadline);
    const auto states = takeCardinals(server, question.state, deadline);
    const auto transientFor = takeCardinals(server, question.transientFor, deadline);
    client.kind = kindNamed(server, types, !transientFor.empty() && transientFor.front() != 0);
    const auto skips = server.atom("_NET_WM_STATE_SKIP_TASKBAR");
    client.skipsTaskbar = std::find(states.begin(), states.end(), skips) != states.end();
    return client;
}

}  // namespace

ClientWindows::ClientWindows(ServiceConnection& server, const DesktopEntries& entries,
                             ApplicationTable table)
    : server_(server), entries_(entries), table_(std::move(table)) {
    hasResources_ = server_.extensionEvents(xcb_res_id).has_value();
    watch();
    refresh();
}

void ClientWindows::watch() {
    server_.selectEvents(server_.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    subscriptions_.push_back(
        server_.onEvent(XCB_PROPERTY_NOTIFY, [this](const xcb_generic_event_t& event) {
            propertyChanged(reinterpret_cast<const xcb_property_notify_event_t&>(event));
        }));
}

void ClientWindows::propertyChanged(const xcb_property_notify_event_t& notice) {
    if (late_.isDue()) return;
    if (notice.window == server_.root()) {
        if (notice.atom == server_.atom("_NET_CLIENT_LIST")) readList();
        if (notice.atom == server_.atom("_NET_ACTIVE_WINDOW")) readActive();
        return;
    }
    const bool tellsIdentity = notice.atom == XCB_ATOM_WM_CLASS ||
                               notice.atom == server_.atom("_GTK_APPLICATION_ID") ||
                               notice.atom == server_.atom("_NET_WM_STATE") ||
                               notice.atom == server_.atom("_NET_WM_WINDOW_TYPE");
    const auto known =
        std::find_if(windows_.begin(), windows_.end(),
                     [&](const ClientWindow& each) { return each.id == notice.window; });
    if (!tellsIdentity || known == windows_.end()) return;
    const auto since = late_.begin();
    auto fresh = describe({notice.window}).front();
    if (late_.wasLate(since) || fresh == *known) return;
    *known = std::move(fresh);
    regroup();
}

void ClientWindows::refresh() {
    auto known = std::exchange(windows_, {});
    readList();
    if (late_.isDue()) {
        if (windows_.empty()) windows_ = std::move(known);
        return;
    }
    readActive();
}

void ClientWindows::readList() {
    const auto since = late_.begin();
    const auto listed = cardinals(server_, server_.root(), "_NET_CLIENT_LIST");
    if (late_.wasLate(since)) return;
    std::vector<xcb_window_t> unknown;
    std::copy_if(listed.begin(), listed.end(), std::back_inserter(unknown),
                 [this](xcb_window_t window) { return find(window) == nullptr; });
    auto described = describe(unknown);
    late_.wasLate(since);
    std::move(windows_.begin(), windows_.end(), std::back_inserter(described));
    windows_.clear();
    for (const auto window : listed) {
        const auto found =
            std::find_if(described.begin(), described.end(),
                         [window](const ClientWindow& each) { return each.id == window; });
        if (found != described.end()) windows_.push_back(*found);
    }
    regroup();
    publishedList_.set(listed);
}

void ClientWindows::readActive() {
    const auto since = late_.begin();
    const auto active = cardinals(server_, server_.root(), "_NET_ACTIVE_WINDOW");
    if (late_.wasLate(since)) return;
    active_ = active.empty() ? xcb_window_t{XCB_WINDOW_NONE} : active.front();
    // A window may become active before the list that has it is announced.
    if (active_ != XCB_WINDOW_NONE && find(active_) == nullptr) readList();
    regroup();
}

void ClientWindows::regroup() {
    const auto* before = front();
    const auto companions = before == nullptr ? std::vector<xcb_window_t>{} : before->windows;
    groups_ = groupWindows(windows_, *entries_.index(), table_);
    for (auto& group : groups_) {
        // This program's own panels are nothing that people switch to.
        if (group.process == ::getpid()) group.isRegular = false;
    }
    if (active_ != XCB_WINDOW_NONE) frontWindow_ = active_;
    if (find(frontWindow_) == nullptr) {
        const auto alive = std::find_if(companions.begin(), companions.end(),
                                        [this](auto window) { return find(window) != nullptr; });
        frontWindow_ = alive == companions.end() ? xcb_window_t{XCB_WINDOW_NONE} : *alive;
    }
    front_.reset();
    for (std::size_t each = 0; each < groups_.size(); ++each) {
        if (groups_[each].owns(frontWindow_)) front_ = each;
    }
    const auto* now = front();
    publishedFront_.set(now == nullptr
                            ? FrontApplication{}
                            : FrontApplication{now->handle, now->frontmostId, now->kind});
}

std::vector<ClientWindow> ClientWindows::describe(const std::vector<xcb_window_t>& windows) {
    std::vector<Question> questions;
    for (const auto window : windows) {
        server_.selectEvents(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
        questions.push_back(ask(server_, window, hasResources_));
    }
    const auto deadline = deadlineIn(kServerLimit);
    std::vector<ClientWindow> described;
    for (std::size_t each = 0; each < windows.size(); ++each)
        described.push_back(takeAnswer(server_, windows[each], questions[each], deadline));
    return described;
}

const ClientWindow* ClientWindows::find(xcb_window_t window) const {
    const auto found = std::find_if(windows_.begin(), windows_.end(),
                                    [window](const auto& each) { return each.id == window; });
    return found == windows_.end() ? nullptr : &*found;
}

const ApplicationGroup* ClientWindows::group(ProcessId handle) const {
    const auto found = std::find_if(groups_.begin(), groups_.end(),
                                    [handle](const auto& each) { return each.handle == handle; });
    return found == groups_.end() ? nullptr : &*found;
}

const ApplicationGroup* ClientWindows::owner(xcb_window_t window) const {
    const auto found = std::find_if(groups_.begin(), groups_.end(),
                                    [window](const auto& each) { return each.owns(window); });
    return found == groups_.end() ? nullptr : &*found;
}

const ApplicationGroup* ClientWindows::front() const {
    return front_ ? &groups_[*front_] : nullptr;
}

Subscription ClientWindows::onFrontChange(std::function<void(const FrontApplication&)> told) {
    return publishedFront_.subscribe(std::move(told));
}

Subscription ClientWindows::onListChange(
    std::function<void(const std::vector<xcb_window_t>&)> told) const {
    return publishedList_.subscribe(std::move(told));
}

}  // namespace orvel::x11
