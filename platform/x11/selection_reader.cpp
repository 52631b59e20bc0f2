#include "platform/x11/selection_reader.hpp"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace orvel::x11 {

namespace {

/// How long an owner may show no sign of life. Making a large picture takes an application a while.
constexpr Milliseconds kSilenceLimit{3000};
/// How long the server itself may take to hand over what the owner gave.
constexpr Milliseconds kHandOverLimit{2000};
/// An owner that wakes up late must not write into a newer answer.
constexpr unsigned kPropertyNames = 64;

std::size_t announcedSize(const PropertyValue& increments) {
    std::uint32_t size = 0;
    if (increments.bytes.size() >= sizeof size)
        std::memcpy(&size, increments.bytes.data(), sizeof size);
    return size;
}

}  // namespace

SelectionReader::SelectionReader(ServiceConnection& server, xcb_window_t window, Wait wait)
    : server_(server), window_(window), wait_(std::move(wait)) {
    subscriptions_.push_back(
        server_.onEvent(XCB_SELECTION_NOTIFY, [this](const xcb_generic_event_t& event) {
            answered(reinterpret_cast<const xcb_selection_notify_event_t&>(event));
        }));
    subscriptions_.push_back(
        server_.onEvent(XCB_PROPERTY_NOTIFY, [this](const xcb_generic_event_t& event) {
            const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (notice.window == window_ && notice.atom == property_ &&
                notice.state == XCB_PROPERTY_NEW_VALUE)
                hasNewValue_ = true;
        }));
}

std::optional<PropertyValue> SelectionReader::read(const Question& question, xcb_atom_t target) {
    question_ = question;
    target_ = target;
    property_ = server_.atom("_ORVEL_SELECTION_" + std::to_string(unfinished_ % kPropertyNames));
    answer_.reset();
    hasGivenUp_ = false;
    xcb_delete_property(server_.raw(), window_, property_);
    xcb_convert_selection(server_.raw(), window_, question.selection, target, property_,
                          question.time);
    if (!waitFor([this] { return answer_.has_value(); })) return giveUp();
    if (*answer_ == XCB_ATOM_NONE) return std::nullopt;
    hasNewValue_ = false;
    auto value = take();
    if (!value) return giveUp();
    if (value->type != server_.atom("INCR")) return value;
    return announcedSize(*value) > kMostSelectionBytes ? giveUp() : readIncrements();
}

std::optional<PropertyValue> SelectionReader::readIncrements() {
    std::optional<PropertyValue> whole;
    for (;;) {
        if (!waitFor([this] { return hasNewValue_; })) return giveUp();
        hasNewValue_ = false;
        const auto part = take();
        if (!part) return giveUp();
        if (!whole) whole = PropertyValue{part->type, part->format, {}};
        if (part->bytes.empty()) return whole;
        if (whole->bytes.size() + part->bytes.size() > kMostSelectionBytes) return giveUp();
        whole->bytes.insert(whole->bytes.end(), part->bytes.begin(), part->bytes.end());
    }
}

bool SelectionReader::waitFor(const std::function<bool()>& isThere) {
    const auto deadline = std::min(question_.deadline, deadlineIn(kSilenceLimit));
    while (!isThere()) {
        if (!wait_(deadline)) return isThere();
    }
    return true;
}

/// Reads and deletes, which tells the owner to go on.
std::optional<PropertyValue> SelectionReader::take() {
    const auto cookie =
        xcb_get_property(server_.raw(), 1, window_, property_, XCB_GET_PROPERTY_TYPE_ANY, 0,
                         static_cast<std::uint32_t>(kMostSelectionBytes / sizeof(std::uint32_t)));
    auto value = takeProperty(server_, {cookie}, deadlineIn(kHandOverLimit));
    if (!value || value->bytes.size() < kMostSelectionBytes) return value;
    xcb_delete_property(server_.raw(), window_, property_);
    return std::nullopt;
}

std::nullopt_t SelectionReader::giveUp() {
    ++unfinished_;
    property_ = XCB_ATOM_NONE;
    hasGivenUp_ = true;
    return std::nullopt;
}

void SelectionReader::answered(const xcb_selection_notify_event_t& event) {
    if (event.requestor != window_ || event.selection != question_.selection ||
        event.target != target_ || property_ == XCB_ATOM_NONE)
        return;
    const bool isRefusal = event.property == XCB_ATOM_NONE && event.time == question_.time;
    if (isRefusal || event.property == property_) answer_ = event.property;
}

}  // namespace orvel::x11
