#pragma once

#include "platform/x11/window_properties.hpp"

#include <functional>
#include <optional>
#include <vector>

namespace orvel::x11 {

/// Larger contents are left where they are.
inline constexpr std::size_t kMostSelectionBytes = std::size_t{256} << 20U;

/// Asks the owner of a selection for its contents, one target after the other, in one piece or in
/// increments. An owner that falls silent, dies or never ends costs the limit and no more.
class SelectionReader {
public:
    /// Handles what arrives until something did or the deadline has passed; false when there is
    /// nothing to wait for any more.
    using Wait = std::function<bool(Deadline)>;

    /// `window` is ours and selects changes of properties.
    SelectionReader(ServiceConnection& server, xcb_window_t window, Wait wait);

    /// What was asked for, and as of which moment.
    struct Question {
        xcb_atom_t selection = XCB_ATOM_NONE;
        xcb_timestamp_t time = XCB_CURRENT_TIME;
        Deadline deadline{};  ///< for all targets together
    };
    /// Absent when the owner refuses or does not deliver in time.
    [[nodiscard]] std::optional<PropertyValue> read(const Question& question, xcb_atom_t target);
    /// Whether the last owner left an answer unfinished; it is not worth asking for more.
    [[nodiscard]] bool hasGivenUp() const { return hasGivenUp_; }

private:
    [[nodiscard]] bool waitFor(const std::function<bool()>& isThere);
    [[nodiscard]] std::optional<PropertyValue> take();
    [[nodiscard]] std::optional<PropertyValue> readIncrements();
    std::nullopt_t giveUp();
    void answered(const xcb_selection_notify_event_t& event);

    ServiceConnection& server_;
    xcb_window_t window_;
    Wait wait_;
    Question question_;
    xcb_atom_t target_ = XCB_ATOM_NONE;
    xcb_atom_t property_ = XCB_ATOM_NONE;
    std::optional<xcb_atom_t> answer_;
    bool hasNewValue_ = false;
    bool hasGivenUp_ = false;
    unsigned unfinished_ = 0;
    std::vector<Subscription> subscriptions_;
};

}  // namespace orvel::x11
