#include "platform/x11/accessible_objects.hpp"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr const char* kAccessible = "org.a11y.atspi.Accessible";
constexpr const char* kText = "org.a11y.atspi.Text";
constexpr const char* kComponent = "org.a11y.atspi.Component";
constexpr guint32 kPasswordTextRole = 40;
constexpr unsigned kActiveState = 1;
constexpr unsigned kFocusedState = 12;
constexpr unsigned kShowingState = 25;
constexpr guint32 kOnScreen = 0;  // Kind of coordinates: the root window's.
/// A tree beyond that is not searched to its end.
constexpr std::size_t kMostObjects = 3000;
/// Coordinates of the X protocol have 16 bits; what lies beyond is no place.
constexpr int kFarthest = 32767;
/// An empty text field that is higher holds several lines, the first of which is about as high as
/// `kUsualLine`.
constexpr int kHighestLine = 60;
constexpr int kUsualLine = 20;

using States = std::uint64_t;

std::optional<States> statesOf(const AccessibilityBus& bus, const AccessibleId& object,
                               Deadline deadline) {
    const auto answer = bus.call(object, kAccessible, "GetState", nullptr, deadline);
    if (!answer.reply || !g_variant_is_of_type(answer.reply.get(), G_VARIANT_TYPE("(au)")))
        return std::nullopt;
    const GVariantHolder words(g_variant_get_child_value(answer.reply.get(), 0));
    States states = 0;
    for (gsize i = 0; i < std::min<gsize>(g_variant_n_children(words.get()), 2); ++i) {
        guint32 word = 0;
        g_variant_get_child(words.get(), i, "u", &word);
        states |= static_cast<States>(word) << (32U * i);
    }
    return states;
}

bool has(States states, unsigned state) { return (states >> state & 1U) != 0; }

/// The windows in which the focus can be: the active one where an application has one.
std::vector<AccessibleId> windowsToSearch(const AccessibilityBus& bus,
                                          std::vector<AccessibleId> windows, Deadline deadline) {
    for (const AccessibleId& window : windows) {
        const auto states = statesOf(bus, window, deadline);
        if (states && has(*states, kActiveState)) return {window};
    }
    return windows;
}

Deadline nextDeadline(const SearchLimits& limits) {
    return limits.eachCall ? std::min(limits.deadline, deadlineIn(*limits.eachCall))
                           : limits.deadline;
}

std::optional<RootRect> rectIn(const BusAnswer& answer) {
    if (!answer.reply) return std::nullopt;
    const GVariant* reply = answer.reply.get();
    RootRect rect;
    if (g_variant_is_of_type(answer.reply.get(), G_VARIANT_TYPE("((iiii))"))) {
        g_variant_get(const_cast<GVariant*>(reply), "((iiii))", &rect.x, &rect.y, &rect.width,
                      &rect.height);
    } else if (g_variant_is_of_type(answer.reply.get(), G_VARIANT_TYPE("(iiii)"))) {
        g_variant_get(const_cast<GVariant*>(reply), "(iiii)", &rect.x, &rect.y, &rect.width,
                      &rect.height);
    }
    // An application that does not know answers with an empty rectangle, or with a place far
    // outside; a caret is at least high.
    const auto isFar = [](int value) { return value > kFarthest || value < -kFarthest; };
    if (rect.height <= 0 || rect.width < 0 || isFar(rect.x) || isFar(rect.y)) return std::nullopt;
    return rect;
}

std::optional<RootRect> characterAt(const AccessibilityBus& bus, const AccessibleId& object,
                                    int offset, Deadline deadline) {
    return rectIn(bus.call(object, kText, "GetCharacterExtents",
                           g_variant_new("(iu)", offset, kOnScreen), deadline));
}

/// The value of a property of the object; null when it has another type or is not told.
GVariantHolder propertyOf(const AccessibilityBus& bus, const AccessibleId& object,
                          const char* interface, const char* name, const GVariantType* type,
                          Deadline deadline) {
    const auto answer = bus.call(object, "org.freedesktop.DBus.Properties", "Get",
                                 g_variant_new("(ss)", interface, name), deadline);
    if (!answer.reply || !g_variant_is_of_type(answer.reply.get(), G_VARIANT_TYPE("(v)")))
        return nullptr;
    GVariant* boxed = nullptr;
    g_variant_get(answer.reply.get(), "(v)", &boxed);
    GVariantHolder value(boxed);
    if (!g_variant_is_of_type(value.get(), type)) return nullptr;
    return value;
}

std::optional<int> caretOffsetOf(const AccessibilityBus& bus, const AccessibleId& object,
                                 Deadline deadline) {
    const auto value =
        propertyOf(bus, object, kText, "CaretOffset", G_VARIANT_TYPE_INT32, deadline);
    if (!value) return std::nullopt;
    const int offset = g_variant_get_int32(value.get());
    return offset < 0 ? std::nullopt : std::optional(offset);
}

bool isLineBreak(const AccessibilityBus& bus, const AccessibleId& object, int offset,
                 Deadline deadline) {
    return stringIn(bus.call(object, kText, "GetText", g_variant_new("(ii)", offset, offset + 1),
                             deadline)) == "\n";
}

std::optional<RootRect> extentsOf(const AccessibilityBus& bus, const AccessibleId& object,
                                  Deadline deadline) {
    return rectIn(
        bus.call(object, kComponent, "GetExtents", g_variant_new("(u)", kOnScreen), deadline));
}

/// Behind the character before the caret, for toolkits that know no place behind the last one.
std::optional<RootRect> behind(const AccessibilityBus& bus, const AccessibleId& object, int offset,
                               Deadline deadline) {
    const auto before = characterAt(bus, object, offset, deadline);
    if (!before) return std::nullopt;
    if (!isLineBreak(bus, object, offset, deadline))
        return RootRect{before->right(), before->y, 0, before->height};
    const auto field = extentsOf(bus, object, deadline);
    if (!field) return std::nullopt;
    return RootRect{field->x, before->bottom(), 0, before->height};
}

/// The beginning of a field without a character to measure.
std::optional<RootRect> beginningOf(const AccessibilityBus& bus, const AccessibleId& object,
                                    Deadline deadline) {
    const auto field = extentsOf(bus, object, deadline);
    if (!field) return std::nullopt;
    return RootRect{field->x, field->y, 0,
                    field->height <= kHighestLine ? field->height : kUsualLine};
}

}  // namespace

std::optional<std::string> stringIn(const BusAnswer& answer) {
    if (!answer.reply || !g_variant_is_of_type(answer.reply.get(), G_VARIANT_TYPE("(s)")))
        return std::nullopt;
    const char* text = nullptr;
    g_variant_get(answer.reply.get(), "(&s)", &text);
    return lent(text);
}

AccessibleId rootOf(const std::string& application) {
    return {application, "/org/a11y/atspi/accessible/root"};
}

std::optional<std::vector<AccessibleId>> childrenOf(const AccessibilityBus& bus,
                                                    const AccessibleId& object, Deadline deadline) {
    const auto answer = bus.call(object, kAccessible, "GetChildren", nullptr, deadline);
    if (!answer.reply || !g_variant_is_of_type(answer.reply.get(), G_VARIANT_TYPE("(a(so))")))
        return std::nullopt;
    const GVariantHolder list(g_variant_get_child_value(answer.reply.get(), 0));
    std::vector<AccessibleId> children;
    for (gsize i = 0; i < g_variant_n_children(list.get()); ++i) {
        const char* name = nullptr;
        const char* path = nullptr;
        g_variant_get_child(list.get(), i, "(&s&o)", &name, &path);
        children.push_back({lent(name), lent(path)});
    }
    return children;
}

std::optional<std::string> nameOf(const AccessibilityBus& bus, const AccessibleId& object,
                                  Deadline deadline) {
    const auto value =
        propertyOf(bus, object, kAccessible, "Name", G_VARIANT_TYPE_STRING, deadline);
    if (!value) return std::nullopt;
    return lent(g_variant_get_string(value.get(), nullptr));
}

std::optional<std::string> textOf(const AccessibilityBus& bus, const AccessibleId& object,
                                  Deadline deadline) {
    return stringIn(bus.call(object, kText, "GetText", g_variant_new("(ii)", 0, -1), deadline));
}

bool isShowing(const AccessibilityBus& bus, const AccessibleId& object, Deadline deadline) {
    const auto states = statesOf(bus, object, deadline);
    return states && has(*states, kShowingState);
}

std::optional<AccessibleLook> lookAt(const AccessibilityBus& bus, const AccessibleId& object,
                                     Deadline deadline) {
    const auto states = statesOf(bus, object, deadline);
    if (!states) return std::nullopt;
    const auto answer = bus.call(object, kAccessible, "GetRole", nullptr, deadline);
    if (!answer.reply || !g_variant_is_of_type(answer.reply.get(), G_VARIANT_TYPE("(u)")))
        return std::nullopt;
    guint32 role = 0;
    g_variant_get(answer.reply.get(), "(u)", &role);
    return AccessibleLook{has(*states, kFocusedState), role == kPasswordTextRole};
}

FocusSearch findFocus(const AccessibilityBus& bus, const std::string& application,
                      const SearchLimits& limits) {
    auto windows = childrenOf(bus, rootOf(application), nextDeadline(limits));
    if (!windows) return {};
    auto open = windowsToSearch(bus, std::move(*windows), nextDeadline(limits));
    std::size_t asked = 0;
    bool isComplete = true;
    while (!open.empty()) {
        const AccessibleId object = std::move(open.back());
        open.pop_back();
        const auto deadline = nextDeadline(limits);
        if (++asked > kMostObjects || limits.stop.stop_requested()) return {};
        const auto states = statesOf(bus, object, deadline);
        if (states && has(*states, kFocusedState)) return {object, true};
        auto children = childrenOf(bus, object, deadline);
        if (timeLeft(deadline) == Milliseconds::zero()) return {};
        isComplete = isComplete && states && children;
        if (!children) continue;
        // The last one is asked next: what comes first in a window is asked first.
        std::reverse(children->begin(), children->end());
        std::move(children->begin(), children->end(), std::back_inserter(open));
    }
    return {std::nullopt, isComplete};
}

std::optional<RootRect> caretOf(const AccessibilityBus& bus, const AccessibleId& object,
                                Deadline deadline) {
    const auto offset = caretOffsetOf(bus, object, deadline);
    if (!offset) return std::nullopt;
    if (const auto at = characterAt(bus, object, *offset, deadline))
        return RootRect{at->x, at->y, 0, at->height};
    if (*offset > 0) return behind(bus, object, *offset - 1, deadline);
    return beginningOf(bus, object, deadline);
}

}  // namespace orvel::x11
