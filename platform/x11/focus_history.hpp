#pragma once

#include "platform/x11/accessible_id.hpp"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace orvel::x11 {

/// What has the keyboard inside an application.
enum class FocusKind {
    unasked,   ///< an object that has not been asked what it is
    untold,    ///< one that did not say, or that is gone
    nothing,   ///< no object, as far as was told
    surely,    ///< no object: every one was asked
    ordinary,  ///< an object that is no password field
    password,
};

/// Who had the focus inside which application, in the order in which it was told. Moments are
/// counted by what was told until then. Pure bookkeeping, one thread.
class FocusHistory {
public:
    using Moment = std::uint64_t;

    /// The moment of the last change; changes that are told from now on are later.
    [[nodiscard]] Moment now() const { return now_; }

    void gained(const AccessibleId& object);
    void lost(const AccessibleId& object);
    /// What a question came to, where it differs from what was told.
    void found(const AccessibleId& object, FocusKind kind);
    /// What an object is, for the times at which it was not known.
    void learned(const AccessibleId& object, FocusKind kind);
    /// Nothing that was told before counts any more.
    void forget();

    /// Objects that nobody asked what they are.
    [[nodiscard]] std::vector<AccessibleId> unasked() const;
    /// The last one of these applications, with what it is.
    struct Holder {
        AccessibleId object;
        FocusKind kind{};
    };
    [[nodiscard]] std::optional<Holder> holder(const std::vector<std::string>& applications) const;
    /// Every object that is a password field and did not lose the focus.
    [[nodiscard]] std::vector<AccessibleId> passwordHolders() const;

    /// Whether what was typed into these applications at `since` or later went into no password
    /// field: whoever had the focus at `since`, and everybody since, is known to be none. Nor had
    /// another application one since.
    [[nodiscard]] bool isOpen(const std::vector<std::string>& applications, Moment since) const;

private:
    struct Period {
        Moment begin{};
        AccessibleId object;
        FocusKind kind{};
    };
    [[nodiscard]] Period* lastOf(const std::string& application);
    void begin(const AccessibleId& object, FocusKind kind);

    std::deque<Period> periods_;
    Moment now_ = 0;
};

}  // namespace orvel::x11
