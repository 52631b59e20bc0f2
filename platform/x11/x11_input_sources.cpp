#include "platform/x11/x11_input_sources.hpp"

#include "platform/x11/layout_symbols.hpp"
#include "platform/x11/window_properties.hpp"

// The header of the protocol uses a word of C++ as a name.
#define explicit explicitModifiers
#include <xcb/xkb.h>
#undef explicit
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace orvel::x11 {

namespace {

struct ContextDeleter {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
};
struct KeymapDeleter {
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
};
using Keymap = std::unique_ptr<xkb_keymap, KeymapDeleter>;

Keymap readServerKeymap(xcb_connection_t* connection) {
    const std::unique_ptr<xkb_context, ContextDeleter> context(
        xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    const auto device = xkb_x11_get_core_keyboard_device_id(connection);
    if (context == nullptr || device < 0) return nullptr;
    return Keymap(xkb_x11_keymap_new_from_device(context.get(), connection, device,
                                                 XKB_KEYMAP_COMPILE_NO_FLAGS));
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    while (begin <= text.size()) {
        const auto end = std::min(text.find(separator, begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

InputSource sourceOf(const InputMethodEngine& engine) {
    return {engine.id, true, engine.isAsciiCapable};
}

}  // namespace

std::vector<std::string> layoutIdsFrom(const std::string& layouts, const std::string& variants) {
    std::vector<std::string> ids;
    const auto allVariants = split(variants, ',');
    for (const auto& layout : split(layouts, ',')) {
        const auto place = ids.size();
        const auto variant = place < allVariants.size() ? allVariants[place] : std::string();
        ids.push_back("xkb:" + layout + (variant.empty() ? "" : ":" + variant));
    }
    return ids;
}

X11InputSources::X11InputSources(ServiceConnection& server, InputMethods& methods)
    : server_(server), methods_(methods) {
    std::uint8_t firstEvent = 0;
    hasKeyboardExtension_ =
        xkb_x11_setup_xkb_extension(
            server_.raw(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
            XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent, nullptr) != 0;
    if (!hasKeyboardExtension_) return;
    watch(firstEvent);
    readKeymap();
}

void X11InputSources::watch(std::uint8_t firstEvent) {
    constexpr std::uint16_t kKeymapEvents =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t kEvents = kKeymapEvents | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t kAllParts = 0xffff;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails =
        XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_DEVICE_ID;
    details.affectState = details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
    xcb_xkb_select_events_aux(server_.raw(), XCB_XKB_ID_USE_CORE_KBD, kEvents, 0, 0, kAllParts,
                              kAllParts, &details);
    subscriptions_.push_back(server_.onEvent(firstEvent, [this](const xcb_generic_event_t& event) {
        // Every event of this extension has one number; the next byte tells them apart.
        if (event.pad0 == XCB_XKB_STATE_NOTIFY)
            group_ = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event).group;
        else
            readKeymap();
    }));
}

void X11InputSources::readKeymap() {
    const auto keymap = readServerKeymap(server_.raw());
    groups_.clear();
    if (keymap == nullptr) return;
    const auto count = xkb_keymap_num_layouts(keymap.get());
    const auto ids = layoutIds(count);
    for (xkb_layout_index_t group = 0; group < count; ++group)
        groups_.push_back({ids[group], true, typesAscii(keymap.get(), group)});
    readGroup();
}

std::vector<std::string> X11InputSources::layoutIds(std::size_t count) {
    const auto rules = split(text(server_, server_.root(), "_XKB_RULES_NAMES").value_or(""), '\0');
    constexpr std::size_t kLayouts = 2, kVariants = 3;
    std::vector<std::string> ids;
    if (rules.size() > kVariants) ids = layoutIdsFrom(rules[kLayouts], rules[kVariants]);
    // A keymap that was not made from rules has groups without a name of this kind.
    while (ids.size() < count) ids.push_back("xkb:group" + std::to_string(ids.size() + 1));
    return ids;
}

void X11InputSources::readGroup() {
    const auto state = server_.reply<xcb_xkb_get_state_reply_t>(
        xcb_xkb_get_state(server_.raw(), XCB_XKB_ID_USE_CORE_KBD));
    if (state != nullptr) group_ = state->group;
}

std::optional<InputSource> X11InputSources::current() const {
    if (const auto offer = methods_.offer()) {
        const InputMethodEngine* engine = offer->find(offer->current);
        // An engine that is none of the chosen ones was selected: something else is current.
        return engine == nullptr ? InputSource{offer->current, true, std::nullopt}
                                 : sourceOf(*engine);
    }
    if (group_ >= groups_.size()) return std::nullopt;
    return groups_[group_];
}

std::vector<InputSource> X11InputSources::selectable() const {
    const auto offer = methods_.offer();
    if (offer == nullptr) return groups_;
    std::vector<InputSource> sources;
    for (const auto& engine : offer->engines) sources.push_back(sourceOf(engine));
    return sources;
}

void X11InputSources::select(std::string_view id) {
    if (methods_.select(id)) {
        if (engineSelected_) engineSelected_();
        return;
    }
    const auto wanted = std::find_if(groups_.begin(), groups_.end(),
                                     [id](const InputSource& group) { return group.id == id; });
    if (wanted == groups_.end()) return;
    const auto group = static_cast<std::uint8_t>(wanted - groups_.begin());
    xcb_xkb_latch_lock_state(server_.raw(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
    server_.flush();
    group_ = group;
}

ServiceCheck X11InputSources::check() const {
    if (groups_.empty())
        return {"input sources", false, false, "the keyboard's layouts cannot be read",
                "use an X server with the XKEYBOARD extension"};
    if (groups_.size() == 1)
        return {"input sources", true, false,
                "one layout, " + groups_.front().id +
                    ": without an input method a Shift tap has "
                    "nothing to switch to",
                "add a layout, such as setxkbmap us,ru"};
    std::string names;
    for (const auto& group : groups_) names += (names.empty() ? "" : ", ") + group.id;
    return {"input sources", true, false, names, {}};
}

}  // namespace orvel::x11
