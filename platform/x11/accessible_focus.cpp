#include "platform/x11/accessible_focus.hpp"

#include "platform/x11/accessible_objects.hpp"

#include <algorithm>
#include <utility>

namespace orvel::x11 {

namespace {

using std::chrono::steady_clock;

/// How often a bus that is not there is looked for.
constexpr std::chrono::seconds kTryAgain{3};
/// An application whose objects were all asked in vain is believed for so long.
constexpr std::chrono::seconds kBelieved{2};

FocusKind kindOf(const AccessibleLook& look) {
    return look.isPassword ? FocusKind::password : FocusKind::ordinary;
}

std::vector<std::string> listNames(const AccessibilityBus& bus, Deadline deadline) {
    std::vector<std::string> names;
    const auto answer = bus.askBus("ListNames", nullptr, deadline);
    if (!answer.reply || !g_variant_is_of_type(answer.reply.get(), G_VARIANT_TYPE("(as)")))
        return names;
    const GVariantHolder list(g_variant_get_child_value(answer.reply.get(), 0));
    for (gsize i = 0; i < g_variant_n_children(list.get()); ++i) {
        const char* name = nullptr;
        g_variant_get_child(list.get(), i, "&s", &name);
        // Connections have names with a colon; the others are their nicknames.
        if (name[0] == ':') names.emplace_back(name);
    }
    return names;
}

}  // namespace

AccessibleFocus::AccessibleFocus() : thread_([this] { keepConnected(); }) {}

AccessibleFocus::~AccessibleFocus() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    wanted_.notify_all();
    thread_.join();
}

void AccessibleFocus::keepConnected() {
    std::unique_lock lock(mutex_);
    for (;;) {
        wanted_.wait(lock, [this] { return isWanted_ || isEnding_; });
        if (isEnding_) return;
        lock.unlock();
        connect();
        lock.lock();
        isWanted_ = false;
    }
}

void AccessibleFocus::connect() {
    auto opened = AccessibilityBus::open(
        [this](const AccessibleId& object, bool isFocused) { focusChanged(object, isFocused); });
    const std::lock_guard lock(mutex_);
    const auto found = opened ? Presence::present : Presence::absent;
    triedAt_ = steady_clock::now();
    if (found == presence_) return;
    if (opened) bus_ = std::move(opened).value();
    presence_ = found;
    if (told_) told_();
}

AccessibleFocus::Presence AccessibleFocus::presence() {
    const std::lock_guard lock(mutex_);
    if (bus_ && !bus_->isOpen()) {
        bus_.reset();
        processes_.clear();
        showing_.clear();
        searched_.clear();
        history_.forget();
        lostSince_ = now_ = history_.now();
        presence_ = Presence::looking;
        isWanted_ = true;
    } else if (presence_ == Presence::absent && steady_clock::now() - triedAt_ > kTryAgain) {
        isWanted_ = true;
    }
    if (isWanted_) wanted_.notify_all();
    return presence_;
}

void AccessibleFocus::onChange(std::function<void()> told) {
    const std::lock_guard lock(mutex_);
    told_ = std::move(told);
}

void AccessibleFocus::focusChanged(const AccessibleId& object, bool isFocused) {
    const std::lock_guard lock(mutex_);
    isFocused ? history_.gained(object) : history_.lost(object);
    now_ = history_.now();
    // Under the lock, so that whoever takes the hook back is not called any more.
    if (told_) told_();
}

AccessibleFocus::Bus AccessibleFocus::bus() const {
    const std::lock_guard lock(mutex_);
    return bus_;
}

std::optional<int> AccessibleFocus::processOf(const AccessibilityBus& bus, const std::string& name,
                                              Deadline deadline) {
    {
        const std::lock_guard lock(mutex_);
        if (const auto known = processes_.find(name); known != processes_.end())
            return known->second;
    }
    const auto answer =
        bus.askBus("GetConnectionUnixProcessID", g_variant_new("(s)", name.c_str()), deadline);
    if (!answer.reply || !g_variant_is_of_type(answer.reply.get(), G_VARIANT_TYPE("(u)")))
        return std::nullopt;
    guint32 process = 0;
    g_variant_get(answer.reply.get(), "(u)", &process);
    const std::lock_guard lock(mutex_);
    return processes_[name] = static_cast<int>(process);
}

bool AccessibleFocus::showsSomething(const AccessibilityBus& bus, const std::string& name,
                                     Deadline deadline) {
    {
        const std::lock_guard lock(mutex_);
        if (showing_.contains(name)) return true;
    }
    const auto answer =
        bus.call(rootOf(name), "org.a11y.atspi.Accessible", "GetRole", nullptr, deadline);
    // One that hangs may show something; one that answers with an error only listens to others.
    if (answer.reply == nullptr) return !answer.isAnswered;
    const std::lock_guard lock(mutex_);
    showing_.insert(name);
    return true;
}

AccessibleFocus::Names AccessibleFocus::namesOf(int process, Deadline deadline) {
    const Bus bus = this->bus();
    Names names;
    if (!bus || process <= 0) return names;
    for (const std::string& name : listNames(*bus, deadline)) {
        if (name == bus->ownName() || processOf(*bus, name, deadline) != process) continue;
        if (showsSomething(*bus, name, deadline)) names.push_back(name);
    }
    return names;
}

std::optional<AccessibleId> AccessibleFocus::toldFocus(const AccessibilityBus& bus,
                                                       const Names& names, Deadline deadline) {
    std::optional<FocusHistory::Holder> holder;
    {
        const std::lock_guard lock(mutex_);
        holder = history_.holder(names);
    }
    if (!holder || holder->object.path.empty()) return std::nullopt;
    const auto look = lookAt(bus, holder->object, deadline);
    if (!look || !look->isFocused) return std::nullopt;
    found(holder->object, kindOf(*look));
    return holder->object;
}

bool AccessibleFocus::isSearched(const std::string& name) const {
    const std::lock_guard lock(mutex_);
    const auto holder = history_.holder({name});
    const auto at = searched_.find(name);
    return holder && holder->kind == FocusKind::surely && at != searched_.end() &&
           steady_clock::now() - at->second < kBelieved;
}

FocusSearch AccessibleFocus::search(const AccessibilityBus& bus, const std::string& name,
                                    const SearchLimits& limits) {
    if (isSearched(name)) return {std::nullopt, true};
    const FocusSearch result = findFocus(bus, name, limits);
    if (!result.isComplete) return result;
    if (!result.focused) {
        found({name, {}}, FocusKind::surely);
        const std::lock_guard lock(mutex_);
        searched_[name] = steady_clock::now();
        return result;
    }
    const auto look = lookAt(bus, *result.focused, limits.deadline);
    if (!look) return {};
    found(*result.focused, kindOf(*look));
    return result;
}

FocusSearch AccessibleFocus::focusedOf(const Names& names, Deadline deadline) {
    const Bus bus = this->bus();
    if (!bus) return {};
    if (const auto told = toldFocus(*bus, names, deadline)) return {told, true};
    return searchFocus(names, {.deadline = deadline});
}

FocusSearch AccessibleFocus::searchFocus(const Names& names, const SearchLimits& limits) {
    const Bus bus = this->bus();
    if (!bus) return {};
    bool isComplete = true;
    for (const std::string& name : names) {
        const FocusSearch result = search(*bus, name, limits);
        if (result.focused) return result;
        isComplete = isComplete && result.isComplete;
    }
    return {std::nullopt, isComplete};
}

std::optional<RootRect> AccessibleFocus::caretOf(const AccessibleId& object, Deadline deadline) {
    const Bus bus = this->bus();
    return bus ? x11::caretOf(*bus, object, deadline) : std::nullopt;
}

void AccessibleFocus::found(const AccessibleId& object, FocusKind kind) {
    const std::lock_guard lock(mutex_);
    history_.found(object, kind);
    now_ = history_.now();
}

void AccessibleFocus::askKinds(Deadline deadline) {
    const Bus bus = this->bus();
    if (!bus) return;
    std::vector<AccessibleId> objects;
    {
        const std::lock_guard lock(mutex_);
        objects = history_.unasked();
    }
    for (const AccessibleId& object : objects) {
        const auto look = lookAt(*bus, object, deadline);
        const std::lock_guard lock(mutex_);
        history_.learned(object, look ? kindOf(*look) : FocusKind::untold);
    }
}

bool AccessibleFocus::isPasswordFocused(Deadline deadline) {
    const Bus bus = this->bus();
    if (!bus) return false;
    std::vector<AccessibleId> holders;
    {
        const std::lock_guard lock(mutex_);
        holders = history_.passwordHolders();
    }
    for (const AccessibleId& object : holders) {
        const auto look = lookAt(*bus, object, deadline);
        if (look && look->isFocused && look->isPassword) return true;
        const std::lock_guard lock(mutex_);
        history_.lost(object);
        now_ = history_.now();
    }
    return false;
}

bool AccessibleFocus::isOpen(const Names& names, Moment since) const {
    const std::lock_guard lock(mutex_);
    return history_.isOpen(names, since);
}

}  // namespace orvel::x11
