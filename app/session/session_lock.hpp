#pragma once

#include <optional>
#include <string>

namespace orvel::session {

/// The lock that one resident process holds for each X display.
class SessionLock {
public:
    /// Absent with `holder` set when another process holds it; `holder` 0 when that is not known.
    static std::optional<SessionLock> take(const std::string& folder, const std::string& display,
                                           int& holder);

    SessionLock(SessionLock&& other) noexcept;
    SessionLock& operator=(SessionLock&&) = delete;
    ~SessionLock();

private:
    explicit SessionLock(int file) : file_(file) {}

    int file_;
};

/// Name of the lock file for a display: `:0` and `:0.1` are one session.
[[nodiscard]] std::string lockFileName(const std::string& display);

}  // namespace orvel::session
