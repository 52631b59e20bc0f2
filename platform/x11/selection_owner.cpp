#include "platform/x11/selection_owner.hpp"

#include "platform/x11/window_properties.hpp"

#include <algorithm>
#include <utility>

namespace orvel::x11 {

namespace {

/// More than this goes in increments of this size. Every server takes as much at once, and other
/// clients are served between them.
constexpr std::size_t kIncrement = std::size_t{240} << 10U;
/// A requestor that takes no increment for so long has lost interest.
constexpr Milliseconds kRequestorLimit{10'000};

}  // namespace

SelectionOwner::SelectionOwner(ServiceConnection& server, xcb_window_t window, xcb_atom_t selection)
    : server_(server), window_(window), selection_(selection) {
    subscriptions_.push_back(
        server_.onEvent(XCB_SELECTION_REQUEST, [this](const xcb_generic_event_t& event) {
            requested(reinterpret_cast<const Request&>(event));
        }));
    subscriptions_.push_back(
        server_.onEvent(XCB_PROPERTY_NOTIFY, [this](const xcb_generic_event_t& event) {
            const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (notice.state != XCB_PROPERTY_DELETE) return;
            const auto taken =
                std::find_if(transfers_.begin(), transfers_.end(), [&](const Transfer& transfer) {
                    return transfer.requestor == notice.window && transfer.property == notice.atom;
                });
            if (taken != transfers_.end()) sendNext(taken);
        }));
    subscriptions_.push_back(
        server_.onEvent(XCB_DESTROY_NOTIFY, [this](const xcb_generic_event_t& event) {
            const auto destroyed =
                reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
            transfers_.remove_if(
                [destroyed](const Transfer& transfer) { return transfer.requestor == destroyed; });
        }));
}

void SelectionOwner::offer(std::vector<SelectionForm> forms, xcb_timestamp_t time) {
    withdraw();
    forms_ = std::move(forms);
    since_ = time;
    isOffering_ = true;
}

void SelectionOwner::update(std::vector<SelectionForm> forms) {
    if (!isOffering_) return;
    forms_ = std::move(forms);
    for (const Request& request : std::exchange(waiting_, {})) requested(request);
}

void SelectionOwner::withdraw() {
    isOffering_ = false;
    forms_.clear();
    for (const Request& request : std::exchange(waiting_, {})) notify(request, false);
}

std::vector<xcb_atom_t> SelectionOwner::contentTargets() {
    std::vector<xcb_atom_t> targets;
    for (const SelectionForm& form : forms_) targets.push_back(server_.atom(form.target));
    return targets;
}

void SelectionOwner::dropStalled() {
    const auto now = std::chrono::steady_clock::now();
    for (auto transfer = transfers_.begin(); transfer != transfers_.end();) {
        const auto next = std::next(transfer);
        if (transfer->deadline <= now) end(transfer);
        transfer = next;
    }
}

void SelectionOwner::requested(Request request) {
    // Clients older than the conventions leave the property to the owner.
    if (request.property == XCB_ATOM_NONE) request.property = request.target;
    const Answer answered = isOurs(request) ? answer(request) : Answer::refused;
    if (answered == Answer::later) {
        waiting_.push_back(request);
    } else {
        notify(request, answered == Answer::given);
    }
}

/// A request as of a moment before we became the owner was meant for the owner before.
bool SelectionOwner::isOurs(const Request& request) const {
    if (!isOffering_ || request.owner != window_ || request.selection != selection_) return false;
    return request.time == XCB_CURRENT_TIME ||
           static_cast<std::int32_t>(request.time - since_) >= 0;
}

SelectionOwner::Answer SelectionOwner::answer(const Request& request) {
    if (request.target == server_.atom("MULTIPLE")) return answerMultiple(request);
    return give(request.requestor, request.property, request.target);
}

SelectionOwner::Answer SelectionOwner::answerMultiple(const Request& request) {
    auto pairs = takeCardinals(server_, askProperty(server_, request.requestor, request.property),
                               deadlineIn(kServerLimit));
    if (pairs.size() < 2) return Answer::refused;
    for (std::size_t at = 0; at + 1 < pairs.size(); at += 2) {
        if (mustWait(pairs[at])) return Answer::later;
    }
    for (std::size_t at = 0; at + 1 < pairs.size(); at += 2) {
        const bool isGiven = pairs[at + 1] != XCB_ATOM_NONE &&
                             give(request.requestor, pairs[at + 1], pairs[at]) == Answer::given;
        if (!isGiven) pairs[at + 1] = XCB_ATOM_NONE;
    }
    write(request.requestor, request.property, server_.atom("ATOM_PAIR"), pairs);
    return Answer::given;
}

SelectionOwner::Answer SelectionOwner::give(xcb_window_t requestor, xcb_atom_t property,
                                            xcb_atom_t target) {
    if (target == server_.atom("TARGETS")) {
        write(requestor, property, XCB_ATOM_ATOM, allTargets());
        return Answer::given;
    }
    if (target == server_.atom("TIMESTAMP")) {
        write(requestor, property, XCB_ATOM_INTEGER, std::vector<std::uint32_t>{since_});
        return Answer::given;
    }
    if (target == server_.atom("SAVE_TARGETS")) {
        // Only clipboard managers save; the convention has an owner agree and do nothing.
        write(requestor, property, server_.atom("NULL"), std::span<const std::byte>());
        return Answer::given;
    }
    const SelectionForm* form = formFor(target);
    if (form == nullptr) return Answer::refused;
    if (!form->isReady) return Answer::later;
    send(requestor, property, *form);
    return Answer::given;
}

void SelectionOwner::send(xcb_window_t requestor, xcb_atom_t property, const SelectionForm& form) {
    const auto type = server_.atom(form.type);
    const auto size = form.contents.bytes.size();
    if (size <= kIncrement) return write(requestor, property, type, form.contents.bytes);
    transfers_.remove_if([&](const Transfer& transfer) {
        return transfer.requestor == requestor && transfer.property == property;
    });
    server_.selectEvents(requestor,
                         XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    write(requestor, property, server_.atom("INCR"),
          std::vector<std::uint32_t>{static_cast<std::uint32_t>(size)});
    transfers_.push_back(
        {requestor, property, type, form.contents, 0, deadlineIn(kRequestorLimit)});
}

/// The increment after the last one is empty, which is how the requestor knows the end.
void SelectionOwner::sendNext(Transfers::iterator transfer) {
    const auto left = transfer->contents.bytes.subspan(transfer->sent);
    const auto part = left.first(std::min(left.size(), kIncrement));
    write(transfer->requestor, transfer->property, transfer->type, part);
    transfer->sent += part.size();
    transfer->deadline = deadlineIn(kRequestorLimit);
    if (part.empty()) end(transfer);
}

void SelectionOwner::end(Transfers::iterator transfer) {
    const auto requestor = transfer->requestor;
    transfers_.erase(transfer);
    const bool hasMore =
        std::any_of(transfers_.begin(), transfers_.end(),
                    [requestor](const Transfer& other) { return other.requestor == requestor; });
    if (!hasMore) server_.deselectEvents(requestor);
}

void SelectionOwner::write(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                           const std::vector<std::uint32_t>& values) {
    xcb_change_property(server_.raw(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

void SelectionOwner::write(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                           std::span<const std::byte> bytes) {
    xcb_change_property(server_.raw(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(bytes.size()), bytes.data());
}

void SelectionOwner::notify(const Request& request, bool isGiven) {
    xcb_selection_notify_event_t event{};
    event.response_type = XCB_SELECTION_NOTIFY;
    event.time = request.time;
    event.requestor = request.requestor;
    event.selection = request.selection;
    event.target = request.target;
    event.property = isGiven ? request.property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    xcb_send_event(server_.raw(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&event));
    server_.flush();
}

/// In the order of the common toolkits: some clipboard managers leave the first one out.
std::vector<std::uint32_t> SelectionOwner::allTargets() {
    std::vector<std::uint32_t> targets;
    for (const char* name : {"TIMESTAMP", "TARGETS", "MULTIPLE", "SAVE_TARGETS"})
        targets.push_back(server_.atom(name));
    for (const auto target : contentTargets()) targets.push_back(target);
    return targets;
}

const SelectionForm* SelectionOwner::formFor(xcb_atom_t target) {
    const auto form = std::find_if(forms_.begin(), forms_.end(), [&](const SelectionForm& each) {
        return server_.atom(each.target) == target;
    });
    return form == forms_.end() ? nullptr : &*form;
}

bool SelectionOwner::mustWait(xcb_atom_t target) {
    const SelectionForm* form = formFor(target);
    return form != nullptr && !form->isReady;
}

}  // namespace orvel::x11
