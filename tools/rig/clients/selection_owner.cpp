// An owner of the clipboard that does exactly what it is told by lines on standard input, good
// manners or not:
//   form TARGET TYPE FILE    offers the bytes of a file
//   forget                   offers nothing any more
//   own                      becomes the owner
//   mute                     answers nobody any more
//   refuse-targets           does not tell what it offers
//   stall COUNT              falls silent after so many increments
//   ask TARGET               asks the owner for a target and tells how many bytes came at once
//   multiple TARGET TARGET   asks for both in one request and tells which came
//   manage                   becomes the clipboard manager, which keeps what others own at their
//   end
// Answers each line with "done", and says "asked TARGET" at every request.

#include "tools/rig/clients/line_client.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace orvel::rig {
namespace {

constexpr std::size_t kIncrement = 256U * 1024U;

struct Form {
    xcb_atom_t target;
    xcb_atom_t type;
    std::string bytes;
};

struct Transfer {
    xcb_window_t requestor;
    xcb_atom_t property;
    const Form* form;
    std::size_t sent = 0;
    int increments = 0;
};

class SelectionOwner final : public LineClient {
public:
    SelectionOwner() : window_(xcb_generate_id(connection())), clipboard_(atom("CLIPBOARD")) {
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(connection(), XCB_COPY_FROM_PARENT, window_, screen().root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                          &events);
        std::cout << "done" << std::endl;
    }

private:
    std::string nameOf(xcb_atom_t atom) {
        auto* reply =
            xcb_get_atom_name_reply(connection(), xcb_get_atom_name(connection(), atom), nullptr);
        if (reply == nullptr) return "?";
        std::string name(xcb_get_atom_name_name(reply),
                         static_cast<std::size_t>(xcb_get_atom_name_name_length(reply)));
        std::free(reply);
        return name;
    }

    void obey(const std::string& line) override {
        std::istringstream words(line);
        std::string command;
        words >> command;
        if (command == "form") addForm(words);
        if (command == "forget") forms_.clear();
        if (command == "own")
            xcb_set_selection_owner(connection(), window_, clipboard_, XCB_CURRENT_TIME);
        if (command == "manage")
            xcb_set_selection_owner(connection(), window_, atom("CLIPBOARD_MANAGER"),
                                    XCB_CURRENT_TIME);
        if (command == "mute") isMute_ = true;
        if (command == "refuse-targets") refusesTargets_ = true;
        if (command == "stall") words >> stallAfter_.emplace();
        if (command == "ask") return ask(words);
        if (command == "multiple") return askMultiple(words);
        std::cout << "done" << std::endl;
    }

    void addForm(std::istream& words) {
        std::string target;
        std::string type;
        std::string file;
        words >> target >> type >> file;
        std::ifstream in(file, std::ios::binary);
        forms_.push_back({atom(target),
                          atom(type),
                          {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()}});
    }

    void ask(std::istream& words) {
        std::string target;
        words >> target;
        xcb_convert_selection(connection(), window_, clipboard_, atom(target), atom("ASKED"),
                              XCB_CURRENT_TIME);
    }

    void askMultiple(std::istream& words) {
        std::vector<xcb_atom_t> pairs;
        for (std::string target; words >> target;) {
            pairs.push_back(atom(target));
            pairs.push_back(atom("ASKED_" + std::to_string(pairs.size())));
        }
        xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window_, atom("ASKED"),
                            atom("ATOM_PAIR"), 32, static_cast<std::uint32_t>(pairs.size()),
                            pairs.data());
        xcb_convert_selection(connection(), window_, clipboard_, atom("MULTIPLE"), atom("ASKED"),
                              XCB_CURRENT_TIME);
    }

    void handle(const xcb_generic_event_t& event) override {
        switch (event.response_type & 0x7f) {
            case XCB_SELECTION_REQUEST:
                return answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
            case XCB_SELECTION_NOTIFY:
                return tell(reinterpret_cast<const xcb_selection_notify_event_t&>(event));
            case XCB_PROPERTY_NOTIFY:
                return sendNext(reinterpret_cast<const xcb_property_notify_event_t&>(event));
            default: return;
        }
    }

    void answer(const xcb_selection_request_event_t& request) {
        std::cout << "asked " << nameOf(request.target) << std::endl;
        if (isMute_) return;
        if (request.target == atom("SAVE_TARGETS")) return beginToSave(request);
        notify(request, give(request));
    }

    void notify(const xcb_selection_request_event_t& request, bool isGiven) {
        xcb_selection_notify_event_t reply{};
        reply.response_type = XCB_SELECTION_NOTIFY;
        reply.time = request.time;
        reply.requestor = request.requestor;
        reply.selection = request.selection;
        reply.target = request.target;
        if (isGiven) reply.property = request.property;
        xcb_send_event(connection(), 0, request.requestor, 0,
                       reinterpret_cast<const char*>(&reply));
    }

    bool give(const xcb_selection_request_event_t& request) {
        if (request.target == atom("TARGETS") && !refusesTargets_) {
            std::vector<xcb_atom_t> targets{request.target};
            for (const Form& form : forms_) targets.push_back(form.target);
            xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, request.requestor,
                                request.property, XCB_ATOM_ATOM, 32,
                                static_cast<std::uint32_t>(targets.size()), targets.data());
            return true;
        }
        const auto form = std::find_if(forms_.begin(), forms_.end(), [&](const Form& each) {
            return each.target == request.target;
        });
        if (form == forms_.end()) return false;
        send(request, *form);
        return true;
    }

    /// The requestor lists what to save; everything is asked for in one request.
    void beginToSave(const xcb_selection_request_event_t& request) {
        saving_ = request;
        const auto listed = take(request.property, request.requestor);
        std::string names;
        for (std::size_t at = 0; at + 4 <= listed.bytes.size(); at += 4) {
            xcb_atom_t target = XCB_ATOM_NONE;
            std::memcpy(&target, listed.bytes.data() + at, sizeof target);
            names += nameOf(target) + ' ';
        }
        std::istringstream words(names);
        askMultiple(words);
    }

    void endSaving() {
        forms_ = std::exchange(taken_, {});
        xcb_set_selection_owner(connection(), window_, clipboard_, XCB_CURRENT_TIME);
        notify(*saving_, true);
        saving_.reset();
        std::cout << "saved" << std::endl;
    }

    void send(const xcb_selection_request_event_t& request, const Form& form) {
        const auto size = static_cast<std::uint32_t>(form.bytes.size());
        if (size <= kIncrement) {
            xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, request.requestor,
                                request.property, form.type, 8, size, form.bytes.data());
            return;
        }
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection(), request.requestor, XCB_CW_EVENT_MASK, &events);
        xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, request.requestor,
                            request.property, atom("INCR"), 32, 1, &size);
        transfer_ = {request.requestor, request.property, &form};
    }

    void sendNext(const xcb_property_notify_event_t& notice) {
        if (!transfer_ || notice.state != XCB_PROPERTY_DELETE ||
            notice.window != transfer_->requestor || notice.atom != transfer_->property)
            return;
        if (stallAfter_ && transfer_->increments == *stallAfter_) {
            std::cout << "stalled" << std::endl;
            transfer_.reset();
            return;
        }
        const auto& bytes = transfer_->form->bytes;
        const auto size = std::min(kIncrement, bytes.size() - transfer_->sent);
        xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, transfer_->requestor,
                            transfer_->property, transfer_->form->type, 8,
                            static_cast<std::uint32_t>(size), bytes.data() + transfer_->sent);
        transfer_->sent += size;
        ++transfer_->increments;
        if (size == 0) transfer_.reset();
    }

    void tell(const xcb_selection_notify_event_t& notice) {
        if (notice.property == XCB_ATOM_NONE) {
            std::cout << "done refused" << std::endl;
        } else if (notice.target == atom("MULTIPLE")) {
            tellMultiple();
        } else {
            const auto value = take(notice.property, window_);
            std::cout << "done " << nameOf(value.type) << ' ' << value.bytes << std::endl;
        }
    }

    void tellMultiple() {
        const auto pairs = take(atom("ASKED"), window_);
        std::string told = "done";
        for (std::size_t at = 0; at + 8 <= pairs.bytes.size(); at += 8) {
            xcb_atom_t pair[2];
            std::memcpy(pair, pairs.bytes.data() + at, sizeof pair);
            told += ' ' + nameOf(pair[0]) + '=';
            if (pair[1] == XCB_ATOM_NONE) {
                told += "refused";
                continue;
            }
            taken_.push_back(take(pair[1], window_));
            taken_.back().target = pair[0];
            told += taken_.back().bytes;
        }
        if (saving_) return endSaving();
        taken_.clear();
        std::cout << told << std::endl;
    }

    Form take(xcb_atom_t property, xcb_window_t window) {
        auto* reply =
            xcb_get_property_reply(connection(),
                                   xcb_get_property(connection(), 1, window, property,
                                                    XCB_GET_PROPERTY_TYPE_ANY, 0, kIncrement),
                                   nullptr);
        if (reply == nullptr) return {};
        const auto* begin = static_cast<const char*>(xcb_get_property_value(reply));
        const auto size = static_cast<std::size_t>(xcb_get_property_value_length(reply));
        Form value{property, reply->type, std::string(begin, size)};
        std::free(reply);
        return value;
    }

    xcb_window_t window_;
    xcb_atom_t clipboard_;
    std::vector<Form> forms_;
    std::vector<Form> taken_;
    std::optional<xcb_selection_request_event_t> saving_;
    std::optional<Transfer> transfer_;
    std::optional<int> stallAfter_;
    bool isMute_ = false;
    bool refusesTargets_ = false;
};

}  // namespace
}  // namespace orvel::rig

int main() { orvel::rig::SelectionOwner().run(); }
