#include "platform/x11/focus_history.hpp"

#include <algorithm>
#include <set>

namespace orvel::x11 {

namespace {

/// More than anybody needs: what is asked about lies seconds back.
constexpr std::size_t kMostPeriods = 512;

bool isOneOf(const std::string& name, const std::vector<std::string>& applications) {
    return std::find(applications.begin(), applications.end(), name) != applications.end();
}

bool isHarmless(FocusKind kind) {
    return kind == FocusKind::ordinary || kind == FocusKind::nothing || kind == FocusKind::surely;
}

}  // namespace

FocusHistory::Period* FocusHistory::lastOf(const std::string& application) {
    const auto last = std::find_if(periods_.rbegin(), periods_.rend(), [&](const Period& period) {
        return period.object.name == application;
    });
    return last == periods_.rend() ? nullptr : &*last;
}

void FocusHistory::begin(const AccessibleId& object, FocusKind kind) {
    periods_.push_back({++now_, object, kind});
    if (periods_.size() > kMostPeriods) periods_.pop_front();
}

void FocusHistory::gained(const AccessibleId& object) { begin(object, FocusKind::unasked); }

void FocusHistory::lost(const AccessibleId& object) {
    const Period* last = lastOf(object.name);
    if (last != nullptr && last->object == object) begin({object.name, {}}, FocusKind::nothing);
}

void FocusHistory::found(const AccessibleId& object, FocusKind kind) {
    Period* last = lastOf(object.name);
    if (last == nullptr || last->object != object) return begin(object, kind);
    if (last->kind == kind) return;
    // What was not known was so from the beginning; what is another thing now became it.
    if (last->kind == FocusKind::unasked || last->kind == FocusKind::nothing) {
        last->kind = kind;
    } else {
        begin(object, kind);
    }
}

void FocusHistory::learned(const AccessibleId& object, FocusKind kind) {
    for (Period& period : periods_) {
        if (period.object == object && period.kind == FocusKind::unasked) period.kind = kind;
    }
}

void FocusHistory::forget() {
    periods_.clear();
    ++now_;
}

std::vector<AccessibleId> FocusHistory::unasked() const {
    std::vector<AccessibleId> objects;
    for (const Period& period : periods_) {
        const bool isListed =
            std::find(objects.begin(), objects.end(), period.object) != objects.end();
        if (period.kind == FocusKind::unasked && !isListed) objects.push_back(period.object);
    }
    return objects;
}

std::optional<FocusHistory::Holder> FocusHistory::holder(
    const std::vector<std::string>& applications) const {
    for (auto period = periods_.rbegin(); period != periods_.rend(); ++period) {
        if (isOneOf(period->object.name, applications)) return Holder{period->object, period->kind};
    }
    return std::nullopt;
}

std::vector<AccessibleId> FocusHistory::passwordHolders() const {
    std::set<std::string> seen;
    std::vector<AccessibleId> holders;
    for (auto period = periods_.rbegin(); period != periods_.rend(); ++period) {
        const bool isLast = seen.insert(period->object.name).second;
        if (isLast && period->kind == FocusKind::password) holders.push_back(period->object);
    }
    return holders;
}

bool FocusHistory::isOpen(const std::vector<std::string>& applications, Moment since) const {
    bool isHeld = false;
    for (const Period& period : periods_) {
        if (period.begin > since && period.kind == FocusKind::password) return false;
    }
    for (auto period = periods_.rbegin(); period != periods_.rend(); ++period) {
        if (!isOneOf(period->object.name, applications)) continue;
        const bool isLast = !isHeld;
        isHeld = true;
        if (!isHarmless(period->kind) || (isLast && period->kind == FocusKind::nothing))
            return false;
        if (period->begin <= since) return true;
    }
    // Nobody had told when it was typed.
    return false;
}

}  // namespace orvel::x11
