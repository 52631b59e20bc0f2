#include "platform/x11/typing_judge.hpp"

#include <xcb/res.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <string>

namespace orvel::x11 {

namespace {

using std::chrono::steady_clock;

constexpr Milliseconds kServerPatience{3000};
constexpr Milliseconds kApplicationPatience{1000};
/// Toolkits join the accessibility bus while their first window opens. Who has not joined so long
/// after he got the keyboard does not tell anything.
constexpr Milliseconds kTimeToJoin{3000};
/// More windows than anybody looks at; beyond, everything is learned anew.
constexpr std::size_t kMostWindows = 1000;

bool isRunning(int process) { return ::kill(process, 0) == 0 || errno == EPERM; }

}  // namespace

int TypingJudge::processOf(xcb_window_t window) {
    const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto answer = server_.reply<xcb_res_query_client_ids_reply_t>(
        xcb_res_query_client_ids(server_.raw(), 1, &spec), deadlineIn(kServerPatience));
    if (answer == nullptr) return 0;
    auto each = xcb_res_query_client_ids_ids_iterator(answer.get());
    if (each.rem == 0 || xcb_res_client_id_value_value_length(each.data) == 0) return 0;
    return static_cast<int>(*xcb_res_client_id_value_value(each.data));
}

void TypingJudge::findNames(Application& application) {
    if (busLostSince_ != focus_.lostSince()) {
        // Names on another bus are others' names.
        busLostSince_ = focus_.lostSince();
        silent_.clear();
        for (auto& [process, each] : applications_) each.names.clear();
    }
    for (const std::string& name :
         focus_.namesOf(application.process, deadlineIn(kApplicationPatience))) {
        const auto known = std::find(application.names.begin(), application.names.end(), name);
        if (known == application.names.end()) application.names.push_back(name);
    }
}

void TypingJudge::see(xcb_window_t window) {
    if (windows_.size() > kMostWindows) {
        windows_.clear();
        applications_.clear();
        silent_.clear();
    }
    const int process = processOf(window);
    if (process == 0) return;
    windows_[window] = process;
    const auto [at, isNew] = applications_.try_emplace(process);
    if (isNew) at->second = {process, {}, steady_clock::now()};
    findNames(at->second);
}

const TypingJudge::Application* TypingJudge::applicationOf(xcb_window_t window) const {
    const auto process = windows_.find(window);
    if (process == windows_.end()) return nullptr;
    const auto application = applications_.find(process->second);
    return application == applications_.end() ? nullptr : &application->second;
}

TypingJudge::Teller TypingJudge::tellerOf(xcb_window_t window) {
    const auto* known = applicationOf(window);
    if (known == nullptr) return Teller::notKnown;
    Application& application = applications_[known->process];
    findNames(application);
    if (!application.names.empty()) return Teller::telling;
    if (silent_.contains(application.process)) return Teller::silent;
    const bool isLongEnough = steady_clock::now() - application.seen >= kTimeToJoin;
    if (!isLongEnough || !isRunning(application.process)) return Teller::notKnown;
    silent_.insert(application.process);
    return Teller::silent;
}

std::optional<Deadline> TypingJudge::silentFrom(xcb_window_t window) const {
    const auto* application = applicationOf(window);
    if (application == nullptr || !application->names.empty() || !isRunning(application->process))
        return std::nullopt;
    return application->seen + kTimeToJoin;
}

bool TypingJudge::ask(xcb_window_t window) {
    const auto* application = applicationOf(window);
    if (application == nullptr) return false;
    const Deadline deadline = deadlineIn(kApplicationPatience);
    focus_.askKinds(deadline);
    const bool isKnown = focus_.focusedOf(application->names, deadline).isComplete;
    // Somebody may have told meanwhile.
    focus_.askKinds(deadline);
    return isKnown;
}

bool TypingJudge::isOpen(xcb_window_t window, AccessibleFocus::Moment since) const {
    const auto* application = applicationOf(window);
    return application != nullptr && focus_.isOpen(application->names, since);
}

bool TypingJudge::isOpenInSilence(AccessibleFocus::Moment since) {
    return since >= focus_.lostSince() &&
           !focus_.isPasswordFocused(deadlineIn(kApplicationPatience));
}

}  // namespace orvel::x11
