#pragma once

#include "platform/x11/daemon_talk.hpp"
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
    void askEngines();
    void askCurrent();
    void setCurrent(const std::string& engine, std::uint64_t selection);

    InputMethodBoard& board_;
    BusPeer sessionBus_;
    ChosenEngines chosen_;
    InputMethodState state_;
    std::uint32_t process_ = 0;
    std::optional<BusConnection> bus_;
    DaemonTalk talk_;
    NameWatch watch_;
};

}  // namespace orvel::x11
