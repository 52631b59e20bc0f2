#pragma once

namespace orvel {

class Log;
class LoginItems;
class Preferences;

/// Whether this program starts with the login session, as stored and as the desktop knows it.
class LoginItem {
public:
    LoginItem(LoginItems& loginItems, Preferences& preferences, Log& log);

    [[nodiscard]] bool isEnabled() const;
    /// Stores the new state only when the desktop took it.
    void toggle();

private:
    LoginItems& loginItems_;
    Preferences& preferences_;
    Log& log_;
};

}  // namespace orvel
