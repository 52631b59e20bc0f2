#pragma once

#include "platform/x11/service_connection.hpp"

#include <functional>

namespace orvel::x11 {

/// Whether what is being typed at this moment may be a password: another client holds the
/// keyboard, as screen lockers and password dialogs do, or a password field is known to have the
/// focus. When the server cannot tell in time, it may be.
class SecretInput {
public:
    explicit SecretInput(ServiceConnection& server);
    ~SecretInput();
    SecretInput(const SecretInput&) = delete;
    SecretInput& operator=(const SecretInput&) = delete;

    /// `isFocused` tells without waiting whether a password field has the focus.
    void setPasswordField(std::function<bool()> isFocused) {
        passwordField_ = std::move(isFocused);
    }
    [[nodiscard]] bool isTyped();

private:
    ServiceConnection& server_;
    xcb_window_t window_;
    std::function<bool()> passwordField_;
};

}  // namespace orvel::x11
