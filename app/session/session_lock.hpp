#pragma once

#include <optional>
#include <string>

namespace orvel::session {

/// Why the lock could not be taken.
struct LockRefusal {
    int holder = 0;       ///< the process that holds it; 0 when that is not known
    std::string problem;  ///< what the system said; empty when another process holds it
};

/// The lock that one resident process holds for each X display. It ends with its process, however
/// that ends.
class SessionLock {
public:
    /// Absent with `refusal` filled in when it cannot be had.
    static std::optional<SessionLock> take(const std::string& folder, const std::string& display,
                                           LockRefusal& refusal);

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
