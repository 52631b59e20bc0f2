#pragma once

#include "platform/x11/bus_call.hpp"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace orvel::x11 {

/// Somebody on a message bus who is asked without being waited for. What is still under way when
/// this object ends is called off, and no signal is told any more. Belongs to the thread that made
/// it, whose context answers and signals come on.
class BusPeer {
public:
    using Answered = std::function<void(BusAnswer)>;
    using Told = std::function<void(GVariant*)>;

    /// The bus must live longer. `name` null: whoever is at the other end.
    BusPeer(const BusConnection& bus, const char* name, std::string path);
    ~BusPeer();
    BusPeer(const BusPeer&) = delete;
    BusPeer& operator=(const BusPeer&) = delete;

    /// `parameters` is a floating variant that is taken over, or null. An answer of another type
    /// than `answerType` is none.
    void call(const char* interface, const char* method, GVariant* parameters,
              const char* answerType, std::chrono::milliseconds limit, Answered answered) const;
    /// Parameters of another type than `type` are not told.
    void onSignal(const char* interface, const char* signal, const char* type, Told told);

private:
    GDBusConnection* bus_;
    std::string name_;
    std::string path_;
    GObjectHolder<GCancellable> ended_{g_cancellable_new()};
    std::vector<unsigned> subscriptions_;
};

}  // namespace orvel::x11
