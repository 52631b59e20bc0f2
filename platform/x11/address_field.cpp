#include "platform/x11/address_field.hpp"

#include "platform/x11/accessibility_bus.hpp"
#include "platform/x11/accessible_objects.hpp"

#include <deque>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

namespace orvel::x11 {

namespace {

constexpr const char* kAction = "org.a11y.atspi.Action";
constexpr const char* kEditableText = "org.a11y.atspi.EditableText";
/// Whatever holds more is the list of files, in which there is no address.
constexpr std::size_t kMostChildren = 60;
/// A window beyond that is not searched to its end.
constexpr std::size_t kMostObjects = 600;

bool isYes(const BusAnswer& answer) {
    gboolean yes = FALSE;
    if (answer.reply && g_variant_is_of_type(answer.reply.get(), G_VARIANT_TYPE("(b)")))
        g_variant_get(answer.reply.get(), "(b)", &yes);
    return yes != FALSE;
}

bool isAddress(const std::string& text) {
    std::error_code error;
    return text.starts_with('/') && std::filesystem::is_directory(text, error);
}

std::size_t countActions(const AccessibilityBus& bus, const AccessibleId& object,
                         Deadline deadline) {
    const auto answer = bus.call(object, kAction, "GetActions", nullptr, deadline);
    if (!answer.reply || !g_variant_is_of_type(answer.reply.get(), G_VARIANT_TYPE("(a(sss))")))
        return 0;
    const GVariantHolder list(g_variant_get_child_value(answer.reply.get(), 0));
    return g_variant_n_children(list.get());
}

/// The number of the action by which a field takes what was entered. The list of actions has them
/// in the user's language only.
std::optional<int> activation(const AccessibilityBus& bus, const AccessibleId& object,
                              Deadline deadline) {
    const auto count = static_cast<int>(countActions(bus, object, deadline));
    for (int number = 0; number < count; ++number) {
        const auto name =
            stringIn(bus.call(object, kAction, "GetName", g_variant_new("(i)", number), deadline));
        if (name == "activate") return number;
    }
    return std::nullopt;
}

struct AddressField {
    AccessibleId object;
    int activation = 0;
};

std::optional<AddressField> fieldAt(const AccessibilityBus& bus, const AccessibleId& object,
                                    Deadline deadline) {
    const auto text = textOf(bus, object, deadline);
    if (!text || !isAddress(*text) || !isShowing(bus, object, deadline)) return std::nullopt;
    const auto number = activation(bus, object, deadline);
    if (!number) return std::nullopt;
    return AddressField{object, *number};
}

/// Searched from the window inwards, since bars lie less deep than what they are about.
std::optional<AddressField> findField(const AccessibilityBus& bus, const AccessibleId& window,
                                      Deadline deadline) {
    std::deque<AccessibleId> open{window};
    for (std::size_t asked = 0; !open.empty() && asked < kMostObjects; ++asked) {
        if (timeLeft(deadline) == Milliseconds::zero()) return std::nullopt;
        const AccessibleId object = open.front();
        open.pop_front();
        if (auto field = fieldAt(bus, object, deadline)) return field;
        const auto children = childrenOf(bus, object, deadline);
        if (children && children->size() <= kMostChildren)
            open.insert(open.end(), children->begin(), children->end());
    }
    return std::nullopt;
}

bool enter(const AccessibilityBus& bus, const AddressField& field, const std::string& path,
           Deadline deadline) {
    const auto set = [&](const std::string& text) {
        return isYes(bus.call(field.object, kEditableText, "SetTextContents",
                              g_variant_new("(s)", text.c_str()), deadline));
    };
    const auto before = textOf(bus, field.object, deadline);
    if (!set(path)) return false;
    if (textOf(bus, field.object, deadline) == path)
        return isYes(bus.call(field.object, kAction, "DoAction",
                              g_variant_new("(i)", field.activation), deadline));
    // A field that makes something else of the path must not go there.
    set(before.value_or(""));
    return false;
}

}  // namespace

bool enterAddress(AccessibleFocus& focus, int process, const std::string& title,
                  const std::string& path, Deadline deadline) {
    const auto bus = focus.bus();
    // Names of files may be any bytes; the bus carries text.
    if (!bus || g_utf8_validate(path.c_str(), -1, nullptr) == FALSE) return false;
    for (const std::string& name : focus.namesOf(process, deadline)) {
        const auto windows = childrenOf(*bus, rootOf(name), deadline);
        for (const auto& window : windows.value_or(std::vector<AccessibleId>{})) {
            if (nameOf(*bus, window, deadline) != title) continue;
            const auto field = findField(*bus, window, deadline);
            if (field && enter(*bus, *field, path, deadline)) return true;
        }
    }
    return false;
}

}  // namespace orvel::x11
