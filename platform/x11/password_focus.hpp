#pragma once

#include <memory>

namespace orvel::x11 {

/// Learns from the accessibility bus whether a password field has the focus. Where there is no
/// such bus, or an application does not tell, none is known.
class PasswordFocus {
public:
    PasswordFocus();
    ~PasswordFocus();
    PasswordFocus(const PasswordFocus&) = delete;
    PasswordFocus& operator=(const PasswordFocus&) = delete;

    /// Also while a new focus has not said yet what it is. Answers at once; any thread.
    [[nodiscard]] bool isKnown() const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace orvel::x11
