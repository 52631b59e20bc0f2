#pragma once

#include "platform/x11/bus_peer.hpp"
#include "platform/x11/input_method_daemon.hpp"
#include "platform/x11/name_watch.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvel::x11 {

/// The engines that the user has chosen in the settings of IBus, in his order; none where IBus is
/// not installed. Belongs to the thread that made it.
class ChosenEngines {
public:
    explicit ChosenEngines(std::function<void()> changed);
    ~ChosenEngines();
    ChosenEngines(const ChosenEngines&) = delete;
    ChosenEngines& operator=(const ChosenEngines&) = delete;

    [[nodiscard]] std::vector<std::string> names() const;

private:
    std::function<void()> changed_;
    GObjectHolder<GSettings> settings_;
    gulong handler_ = 0;
};

/// IBus: the engines that its settings name. It lives on a bus of its own, whose address lies in a
/// file, and tells by itself when another engine is selected.
class IbusDaemon final : public InputMethodDaemon {
public:
    IbusDaemon(const BusConnection& session, InputMethodBoard& board);

    void select(const EngineSelection& selection) override;
    void refresh() override;

private:
    void appeared(const std::string& owner);
    void vanished();
    void connect();
    void ask(const char* interface, const char* method, GVariant* parameters,
             const char* answerType, std::function<void(GVariant*)> answered);
    void askEngines();
    void askCurrent();
    void setCurrent(const std::string& engine, std::uint64_t selection);
    void fallSilent();

    InputMethodBoard& board_;
    BusPeer sessionBus_;
    ChosenEngines chosen_;
    InputMethodState state_;
    /// Selections that were passed on, and those that the daemon has carried out or never will.
    std::uint64_t asked_ = 0;
    std::uint64_t carriedOut_ = 0;
    std::uint32_t process_ = 0;
    bool isSilent_ = false;
    std::chrono::steady_clock::time_point lastTry_;
    std::optional<BusConnection> bus_;
    std::unique_ptr<BusPeer> peer_;
    NameWatch watch_;
};

}  // namespace orvel::x11
