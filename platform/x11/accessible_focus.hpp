#pragma once

#include "platform/x11/accessible_id.hpp"
#include "platform/x11/focus_history.hpp"
#include "platform/x11/root_layout.hpp"
#include "platform/x11/service_connection.hpp"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace orvel::x11 {

class AccessibilityBus;
struct SearchLimits;

/// Which object of which application has the keyboard, as applications tell it over the
/// accessibility bus. Connects in the background, and again when the bus was gone. Any thread;
/// whatever asks an application waits for it until the deadline.
class AccessibleFocus {
public:
    using Moment = FocusHistory::Moment;
    using Names = std::vector<std::string>;

    AccessibleFocus();
    ~AccessibleFocus();
    AccessibleFocus(const AccessibleFocus&) = delete;
    AccessibleFocus& operator=(const AccessibleFocus&) = delete;

    enum class Presence { looking, absent, present };
    /// Whether there is a bus. Asked while it is absent, it is looked for once more.
    [[nodiscard]] Presence presence();
    /// Counts what was told; never waits.
    [[nodiscard]] Moment now() const { return now_; }
    /// When a bus that was there was gone for the last time; what was told before is forgotten.
    [[nodiscard]] Moment lostSince() const { return lostSince_; }
    /// `told` is called after the focus moved, on a thread of the bus.
    void onChange(std::function<void()> told);

    /// For those who ask objects themselves; null while there is no bus.
    using Bus = std::shared_ptr<AccessibilityBus>;
    [[nodiscard]] Bus bus() const;

    /// The connections by which that process shows something on the bus.
    [[nodiscard]] Names namesOf(int process, Deadline deadline);
    /// The object of these applications that has the keyboard, asked whether it still has; objects
    /// are searched when none was told. Not complete when an application did not answer.
    [[nodiscard]] FocusSearch focusedOf(const Names& names, Deadline deadline);
    /// Searches the objects without regard to what was told; what it finds is known from then on.
    [[nodiscard]] FocusSearch searchFocus(const Names& names, const SearchLimits& limits);
    /// Where the insertion point of that object is.
    [[nodiscard]] std::optional<RootRect> caretOf(const AccessibleId& object, Deadline deadline);

    /// Asks everybody who was told about what they are.
    void askKinds(Deadline deadline);
    /// Whether a password field of any application still has the keyboard.
    [[nodiscard]] bool isPasswordFocused(Deadline deadline);
    /// See `FocusHistory::isOpen`.
    [[nodiscard]] bool isOpen(const Names& names, Moment since) const;

private:
    void keepConnected();
    void connect();
    void focusChanged(const AccessibleId& object, bool isFocused);
    [[nodiscard]] std::optional<AccessibleId> toldFocus(const AccessibilityBus& bus,
                                                        const Names& names, Deadline deadline);
    [[nodiscard]] FocusSearch search(const AccessibilityBus& bus, const std::string& name,
                                     const SearchLimits& limits);
    [[nodiscard]] bool isSearched(const std::string& name) const;
    void found(const AccessibleId& object, FocusKind kind);
    [[nodiscard]] std::optional<int> processOf(const AccessibilityBus& bus, const std::string& name,
                                               Deadline deadline);
    [[nodiscard]] bool showsSomething(const AccessibilityBus& bus, const std::string& name,
                                      Deadline deadline);

    mutable std::mutex mutex_;
    std::condition_variable wanted_;
    bool isWanted_ = true;
    bool isEnding_ = false;
    Presence presence_ = Presence::looking;
    std::chrono::steady_clock::time_point triedAt_{};
    Bus bus_;
    FocusHistory history_;
    std::map<std::string, int, std::less<>> processes_;
    std::set<std::string, std::less<>> showing_;
    std::map<std::string, std::chrono::steady_clock::time_point, std::less<>> searched_;
    std::function<void()> told_;
    std::atomic<Moment> now_{0};
    std::atomic<Moment> lostSince_{0};
    std::thread thread_;
};

}  // namespace orvel::x11
