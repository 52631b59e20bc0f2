#include "platform/x11/x11_text_caret.hpp"

#include "platform/x11/accessibility_bus.hpp"
#include "platform/x11/accessible_objects.hpp"

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace orvel::x11 {

namespace {

/// A caret that takes longer is not worth waiting for: the keyboard waits as well. Applications
/// that are well take a millisecond or two.
constexpr Milliseconds kWait{30};
/// When a question without anybody waiting is given up.
constexpr Milliseconds kLimit{150};
/// An application with many objects, or on a busy machine, takes longer to search. Nobody waits.
constexpr Milliseconds kSearchLimit{30000};
/// An application that hangs is told from one on a busy machine by a single answer.
constexpr Milliseconds kAnswerLimit{1000};

/// Whether that process has been stopped, so that it cannot answer.
bool isStopped(int process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string line;
    std::getline(file, line);
    // The name of the program stands in brackets and may hold brackets itself.
    const auto name = line.rfind(')');
    if (name == std::string::npos || name + 2 >= line.size()) return false;
    const char state = line[name + 2];
    return state == 'T' || state == 't';
}

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
            search_.request_stop();
        }
        changed_.notify_all();
        thread_.join();
    }
    Asker(const Asker&) = delete;
    Asker& operator=(const Asker&) = delete;

    std::optional<RootRect> ask(int process) {
        std::unique_lock lock(mutex_);
        if (isStopped(process)) {
            late_ = process;
            return std::nullopt;
        }
        const bool isWorthWaiting = process != late_;
        const auto number = begin(process);
        if (!isWorthWaiting) return std::nullopt;
        const auto isAnswered = [&] { return answered_ == number; };
        if (changed_.wait_for(lock, kWait, isAnswered)) return caret_;
        late_ = process;
        return std::nullopt;
    }
    /// Asks with nobody waiting, so that what must be searched is found and whether the
    /// application answers at all is known.
    void prepare(int process) {
        const std::lock_guard lock(mutex_);
        if (process > 0) begin(process);
    }

private:
    /// The number of the question: of the one under way when it is the same.
    unsigned long begin(int process) {
        if (answered_ != asked_ && process_ == process) return asked_;
        // A search for the sake of another application is not worth this one's caret.
        if (searched_ != process) search_.request_stop();
        process_ = process;
        ++asked_;
        changed_.notify_all();
        return asked_;
    }
    void answer() {
        std::unique_lock lock(mutex_);
        for (;;) {
            changed_.wait(lock, [this] { return isEnding_ || answered_ != asked_; });
            if (isEnding_) return;
            const auto number = asked_;
            const int process = process_;
            lock.unlock();
            const auto begin = std::chrono::steady_clock::now();
            auto [caret, unsearched] = caretOf(process, deadlineIn(kLimit));
            const bool isLate = std::chrono::steady_clock::now() - begin >= kWait;
            lock.lock();
            if (isLate)
                late_ = process;
            else if (late_ == process)
                late_ = 0;
            caret_ = caret;
            answered_ = number;
            changed_.notify_all();
            if (unsearched.empty() || answered_ != asked_ || isEnding_) continue;
            search_ = std::stop_source();
            searched_ = process;
            const SearchLimits limits{.deadline = deadlineIn(kSearchLimit),
                                      .eachCall = kAnswerLimit,
                                      .stop = search_.get_token()};
            lock.unlock();
            static_cast<void>(focus_.searchFocus(unsearched, limits));
            lock.lock();
            searched_ = 0;
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
    int late_ = 0;  ///< The process that did not answer in time when it was asked last; 0: none.
    std::optional<RootRect> caret_;
    std::stop_source search_;
    int searched_ = 0;  ///< The process whose objects are being searched with nobody waiting.
    std::thread thread_;
};

X11TextCaret::X11TextCaret(AccessibleFocus& focus, ClientWindows& clients,
                           const X11Screens& screens)
    : clients_(clients), screens_(screens), asker_(std::make_unique<Asker>(focus)) {
    frontChange_ = clients.onFrontChange([this](const FrontApplication&) {
        if (const auto* window = clients_.find(clients_.activeWindow()))
            asker_->prepare(window->process);
    });
}

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
