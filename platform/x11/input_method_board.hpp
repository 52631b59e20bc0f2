#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

/// Something that an input method daemon can switch to: a keyboard layout or a way of composing.
struct InputMethodEngine {
    std::string id;        ///< with the daemon's own word in front: "ibus:chewing"
    std::string name;      ///< for people
    std::string language;  ///< "zh_TW"; may be empty
    bool isAsciiCapable = false;
};

/// What one daemon tells.
struct InputMethodState {
    std::vector<InputMethodEngine> engines;
    std::string current;  ///< an id; empty while none is known

    /// Without a choice a daemon is of no use for switching.
    [[nodiscard]] bool offersChoice() const { return engines.size() > 1; }
    [[nodiscard]] const InputMethodEngine* find(std::string_view id) const;
};

/// Where one daemon stands.
enum class DaemonPresence : std::uint8_t {
    unknown,  ///< nobody has looked yet
    absent,
    answering,
    silent,  ///< it runs and does not answer
};

/// The daemons that are known, in the order in which one is preferred that offers a choice.
enum class DaemonKind : std::uint8_t { fcitx, ibus };
inline constexpr std::size_t kDaemonCount = 2;
[[nodiscard]] const char* daemonName(DaemonKind kind);

/// One wish for another engine; a daemon's wishes are counted from 1.
struct EngineSelection {
    DaemonKind daemon;
    std::string engine;
    std::uint64_t number = 0;
};

/// The last word of every daemon, written by the thread that talks to them and read by the one that
/// decides keys: a read takes no longer than copying a pointer. A selection shows at once; what was
/// asked before it and is told after it does not undo it. Any thread.
class InputMethodBoard {
public:
    using Snapshot = std::shared_ptr<const InputMethodState>;

    /// The state of the daemon that counts; null when none offers a choice.
    [[nodiscard]] Snapshot offer() const;
    /// Which daemon that is.
    [[nodiscard]] std::optional<DaemonKind> offering() const;
    [[nodiscard]] DaemonPresence presence(DaemonKind kind) const;
    /// Waits until somebody has looked for every daemon, at most for `limit`.
    void waitUntilKnown(std::chrono::milliseconds limit) const;

    /// Shows `id` as the current one; absent when the daemon that counts does not have it.
    std::optional<EngineSelection> select(std::string_view id);

    /// What a daemon says that has carried out the selections up to `selection`.
    void tell(DaemonKind kind, InputMethodState state, std::uint64_t selection);
    void setPresence(DaemonKind kind, DaemonPresence presence);

private:
    struct Daemon {
        DaemonKind kind;
        DaemonPresence presence = DaemonPresence::unknown;
        Snapshot state = std::make_shared<const InputMethodState>();
        std::uint64_t selections = 0;
    };

    [[nodiscard]] Daemon& at(DaemonKind kind) {
        return daemons_.at(static_cast<std::size_t>(kind));
    }
    [[nodiscard]] std::size_t counting() const;
    [[nodiscard]] bool isKnown() const;

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::array<Daemon, kDaemonCount> daemons_{Daemon{DaemonKind::fcitx}, Daemon{DaemonKind::ibus}};
};

}  // namespace orvel::x11
