#pragma once

#include "platform/x11/service_connection.hpp"

#include <cstddef>
#include <list>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace orvel::x11 {

/// Bytes that stay while somebody still sends them.
struct SharedBytes {
    std::shared_ptr<const void> keeper;
    std::span<const std::byte> bytes;
};

/// One form of the contents: the target that others ask for and what they get.
struct SelectionForm {
    std::string target;
    std::string type;
    SharedBytes contents;
    /// False while the contents are being made; who asks meanwhile waits.
    bool isReady = true;
};

/// Our side of a selection that we own: answers everybody who asks, large contents in increments,
/// and keeps nobody waiting for somebody who stopped taking.
class SelectionOwner {
public:
    /// `window` is ours and owns the selection.
    SelectionOwner(ServiceConnection& server, xcb_window_t window, xcb_atom_t selection);

    /// From now on these forms are what others get; owned since `time`.
    void offer(std::vector<SelectionForm> forms, xcb_timestamp_t time);
    /// The same contents, more of them ready.
    void update(std::vector<SelectionForm> forms);
    /// Another owner took over. What is being sent is sent to its end.
    void withdraw();

    [[nodiscard]] bool isOffering() const { return isOffering_; }
    [[nodiscard]] xcb_timestamp_t since() const { return since_; }
    /// The targets of the contents themselves.
    [[nodiscard]] std::vector<xcb_atom_t> contentTargets();
    /// Whether somebody is in the middle of taking increments.
    [[nodiscard]] bool isSending() const { return !transfers_.empty(); }
    void dropStalled();

private:
    enum class Answer { given, refused, later };
    using Request = xcb_selection_request_event_t;
    struct Transfer {
        xcb_window_t requestor = XCB_WINDOW_NONE;
        xcb_atom_t property = XCB_ATOM_NONE;
        xcb_atom_t type = XCB_ATOM_NONE;
        SharedBytes contents{};
        std::size_t sent = 0;
        Deadline deadline{};
    };
    using Transfers = std::list<Transfer>;

    void requested(Request request);
    [[nodiscard]] bool isOurs(const Request& request) const;
    Answer answer(const Request& request);
    Answer answerMultiple(const Request& request);
    Answer give(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t target);
    void send(xcb_window_t requestor, xcb_atom_t property, const SelectionForm& form);
    void sendNext(Transfers::iterator transfer);
    void end(Transfers::iterator transfer);
    void write(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
               const std::vector<std::uint32_t>& values);
    void write(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
               std::span<const std::byte> bytes);
    void notify(const Request& request, bool isGiven);
    [[nodiscard]] std::vector<std::uint32_t> allTargets();
    [[nodiscard]] const SelectionForm* formFor(xcb_atom_t target);
    [[nodiscard]] bool mustWait(xcb_atom_t target);

    ServiceConnection& server_;
    xcb_window_t window_;
    xcb_atom_t selection_;
    bool isOffering_ = false;
    xcb_timestamp_t since_ = XCB_CURRENT_TIME;
    std::vector<SelectionForm> forms_;
    Transfers transfers_;
    std::vector<Request> waiting_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace orvel::x11
