#include "platform/x11/x11_text_caret.hpp"

#include "platform/x11/accessibility_bus.hpp"
#include "platform/x11/accessible_objects.hpp"

#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <stop_token>
#include <string_view>
#include <thread>
#include <utility>

namespace orvel::x11 {

namespace {

/// A caret that takes longer is not worth waiting for: the keyboard waits as well.
constexpr Milliseconds kLimit{150};
/// An application with many objects, or on a busy machine, takes longer to search. Nobody waits.
constexpr Milliseconds kSearchLimit{30000};
/// An application that hangs is told from one on a busy machine by a single answer.
constexpr Milliseconds kAnswerLimit{1000};

}  // namespace

/// One question at a time, asked beside the caller. A question that is late is given up by the
/// caller and ends by itself soon after, since every call in it has the same end. Where only the
/// time did not suffice to find what has the focus, the search goes on for the next question.
class X11TextCaret::Asker {
public:
    explicit Asker(AccessibleFocus& focus) : focus_(focus), thread_([this] { answer(); }) {}
    ~Asker() {
        {
            const std::lock_guard lock(mutex_);
            isEnding_ = true;
        }
        search_.request_stop();
        changed_.notify_all();
        thread_.join();
    }
    Asker(const Asker&) = delete;
    Asker& operator=(const Asker&) = delete;

    std::optional<RootRect> ask(int process) {
        std::unique_lock lock(mutex_);
        process_ = process;
        deadline_ = deadlineIn(kLimit);
        const auto number = ++asked_;
        changed_.notify_all();
        const bool isThere =
            changed_.wait_until(lock, deadline_, [&] { return answered_ == number; });
        return isThere ? caret_ : std::nullopt;
    }

private:
    void answer() {
        std::unique_lock lock(mutex_);
        for (;;) {
            changed_.wait(lock, [this] { return isEnding_ || answered_ != asked_; });
            if (isEnding_) return;
            const auto number = asked_;
            const int process = process_;
            const Deadline deadline = deadline_;
            lock.unlock();
            const auto [caret, unsearched] = caretOf(process, deadline);
            lock.lock();
            caret_ = caret;
            answered_ = number;
            changed_.notify_all();
            if (unsearched.empty()) continue;
            lock.unlock();
            static_cast<void>(focus_.searchFocus(unsearched, {.deadline = deadlineIn(kSearchLimit),
                                                              .eachCall = kAnswerLimit,
                                                              .stop = search_.get_token()}));
            lock.lock();
        }
    }

    struct Answer {
        std::optional<RootRect> caret;
        AccessibleFocus::Names unsearched;
    };
    Answer caretOf(int process, Deadline deadline) {
        if (focus_.presence() != AccessibleFocus::Presence::present) return {};
        auto names = focus_.namesOf(process, deadline);
        const auto found = focus_.focusedOf(names, deadline);
        if (found.focused) return {focus_.caretOf(*found.focused, deadline), {}};
        if (found.isComplete) names.clear();
        return {std::nullopt, std::move(names)};
    }

    AccessibleFocus& focus_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isEnding_ = false;
    unsigned long asked_ = 0;
    unsigned long answered_ = 0;
    int process_ = 0;
    Deadline deadline_{};
    std::optional<RootRect> caret_;
    std::stop_source search_;
    std::thread thread_;
};

X11TextCaret::X11TextCaret(AccessibleFocus& focus, const ClientWindows& clients,
                           const X11Screens& screens)
    : clients_(clients), screens_(screens), asker_(std::make_unique<Asker>(focus)) {}

X11TextCaret::~X11TextCaret() = default;

std::optional<AxRect> X11TextCaret::caretRect() const {
    const auto* window = clients_.find(clients_.activeWindow());
    if (window == nullptr) return std::nullopt;
    const auto caret = asker_->ask(window->process);
    if (!caret) return std::nullopt;
    return screens_.layout().toAx(*caret);
}

ServiceCheck X11TextCaret::check() {
    ServiceCheck check{
        .name = "text caret", .isOk = false, .isEssential = false, .finding = {}, .remedy = {}};
    const auto isOn = isAccessibilitySwitchedOn();
    const char* bridge = std::getenv("NO_AT_BRIDGE");
    if (!isOn) {
        check.finding =
            "this session has no accessibility bus: panels open at the pointer, and "
            "password fields are not known";
        check.remedy = "install at-spi2-core and log in again";
    } else if (bridge != nullptr && std::string_view(bridge) == "1") {
        check.finding = "NO_AT_BRIDGE=1 keeps GTK applications from telling where their caret is";
        check.remedy = "remove it from the session's environment and log in again";
    } else if (!*isOn) {
        check.finding =
            "accessibility is switched off: GTK applications tell where their caret "
            "is all the same, those of Qt and browsers do not";
        check.remedy =
            "gsettings set org.gnome.desktop.interface toolkit-accessibility true, then start "
            "them anew";
    } else {
        check.isOk = true;
        check.finding = "applications tell where it is";
    }
    return check;
}

}  // namespace orvel::x11
