#pragma once

#include "platform/macos/mac_cf_ref.hpp"

#include <functional>

namespace orvel::macos {

/// The system's centres that tell about events.
enum class NoticeCenter {
    application,  ///< this program's own
    workspace,    ///< applications, spaces, sleep, login sessions
    distributed,  ///< any program of the session
};

/// Told on the main thread; gets the NSNotification.
using NoticeHandler = std::function<void(CFTypeRef notification)>;

/// Keeps an observer installed; removes it when destroyed.
class Observation {
public:
    Observation() = default;
    Observation(NoticeCenter center, CFStringRef name, NoticeHandler handler);
    Observation(Observation&& other) noexcept = default;
    Observation& operator=(Observation&& other) noexcept;
    ~Observation();

private:
    NoticeCenter center_ = NoticeCenter::application;
    CfRef<CFTypeRef> token_;
};

}  // namespace orvel::macos
