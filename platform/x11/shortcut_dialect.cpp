#include "platform/x11/shortcut_dialect.hpp"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace orvel::x11 {

namespace {

using Kind = ApplicationKind;

constexpr EventFlags kCmd = flag::command, kShift = flag::shift, kOpt = flag::option,
                     kCtl = flag::control;
constexpr EventFlags kShortcutFlags = kCmd | kShift | kOpt | kCtl;

/// Bits of the modifiers of X11 as they stand in a set.
constexpr unsigned kXShift = 1U << indexOf(XModifier::shift);
constexpr unsigned kXCtrl = 1U << indexOf(XModifier::control);
constexpr unsigned kXAlt = 1U << indexOf(XModifier::alt);
constexpr unsigned kXSuper = 1U << indexOf(XModifier::super);

constexpr unsigned bit(Kind kind) { return 1U << static_cast<unsigned>(kind); }
constexpr unsigned kFiles = bit(Kind::fileManager);
constexpr unsigned kTerminal = bit(Kind::terminal);
constexpr unsigned kBrowser = bit(Kind::browser);
constexpr unsigned kAny = ~0U;
constexpr unsigned kTexts = kAny & ~kFiles & ~kTerminal;

/// Where a shortcut came from, when that decides what it is called.
constexpr KeyCode kAnywhere = -1, kNoKey = -2;

struct Row {
    unsigned kinds;
    KeyCode key;
    EventFlags modifiers;
    KeyCode source;
    KeyCode outKey;
    unsigned outModifiers;
};

/// The first row that fits holds.
constexpr auto kRows = std::to_array<Row>({
    // File managers have the wanted habits by nature: they get their own keys back, so that a name
    // that is being edited is left alone by itself.
    {kFiles, key::o, kCmd, key::returnKey, key::returnKey, 0},
    {kFiles, key::returnKey, 0, key::f2, key::f2, 0},
    {kFiles, key::returnKey, kShift, key::f2, key::f2, kXShift},
    {kFiles, key::backspace, kCmd, kAnywhere, key::forwardDelete, 0},
    {kFiles, key::c, kCmd, key::x, key::x, kXCtrl},
    {kFiles, key::v, kCmd | kOpt, kAnywhere, key::v, kXCtrl},
    // Going through folders.
    {kFiles, key::upArrow, kCmd, kAnywhere, key::upArrow, kXAlt},
    {kFiles, key::downArrow, kCmd, kAnywhere, key::returnKey, 0},
    {kFiles, key::i, kCmd, kAnywhere, key::returnKey, kXAlt},
    {kFiles, key::g, kCmd | kShift, kAnywhere, key::l, kXCtrl},
    {kFiles, key::h, kCmd | kShift, kAnywhere, key::home, kXAlt},
    {kFiles, key::period, kCmd | kShift, kAnywhere, key::h, kXCtrl},
    // Back and forward: the side buttons everywhere, the keys where they mean it.
    {kAny, key::leftBracket, kCmd, kNoKey, key::leftArrow, kXAlt},
    {kAny, key::rightBracket, kCmd, kNoKey, key::rightArrow, kXAlt},
    {kFiles | kBrowser, key::leftBracket, kCmd, kAnywhere, key::leftArrow, kXAlt},
    {kFiles | kBrowser, key::rightBracket, kCmd, kAnywhere, key::rightArrow, kXAlt},
    // Keys that became a shortcut of macOS and mean the same here by themselves.
    {kAny, key::w, kCmd, key::f4, key::f4, kXAlt},
    {kAny, key::r, kCmd, key::f5, key::f5, 0},
    // A terminal keeps Ctrl+letter for the program in it.
    {kTerminal, key::v, kCmd, kAnywhere, key::v, kXCtrl | kXShift},
    {kTerminal, key::q, kCmd, kAnywhere, key::q, kXCtrl | kXShift},
    {kTerminal, key::f, kCmd, kAnywhere, key::f, kXCtrl | kXShift},
    {kTerminal, key::t, kCmd, kAnywhere, key::t, kXCtrl | kXShift},
    // Switching applications.
    {kAny, key::tab, kCmd, kAnywhere, key::tab, kXAlt},
    {kAny, key::tab, kCmd | kShift, kAnywhere, key::tab, kXAlt | kXShift},
    // Start and end of line and text.
    {kAny, key::leftArrow, kCmd, kAnywhere, key::home, 0},
    {kAny, key::rightArrow, kCmd, kAnywhere, key::end, 0},
    {kAny, key::leftArrow, kCmd | kShift, kAnywhere, key::home, kXShift},
    {kAny, key::rightArrow, kCmd | kShift, kAnywhere, key::end, kXShift},
    {kTexts, key::upArrow, kCmd, kAnywhere, key::home, kXCtrl},
    {kTexts, key::downArrow, kCmd, kAnywhere, key::end, kXCtrl},
    {kTexts, key::upArrow, kCmd | kShift, kAnywhere, key::home, kXCtrl | kXShift},
    {kTexts, key::downArrow, kCmd | kShift, kAnywhere, key::end, kXCtrl | kXShift},
    // The desktop itself.
    {kAny, key::space, kCmd, kAnywhere, key::f2, kXAlt},
    {kAny, key::slash, kCmd | kShift, kAnywhere, key::f10, 0},
    {kAny, key::digit3, kCmd | kShift, kAnywhere, key::f13, 0},
    {kAny, key::digit4, kCmd | kShift, kAnywhere, key::f13, kXShift},
    {kAny, key::digit5, kCmd | kShift, kAnywhere, key::f13, 0},
    {kAny, key::q, kCmd | kCtl, kAnywhere, key::l, kXSuper},
});

constexpr auto kKeyNames = std::to_array<std::pair<std::string_view, KeyCode>>({
    {"a", key::a},
    {"b", key::b},
    {"c", key::c},
    {"d", key::d},
    {"e", key::e},
    {"f", key::f},
    {"g", key::g},
    {"h", key::h},
    {"i", key::i},
    {"j", key::j},
    {"k", key::k},
    {"l", key::l},
    {"m", key::m},
    {"n", key::n},
    {"o", key::o},
    {"p", key::p},
    {"q", key::q},
    {"r", key::r},
    {"s", key::s},
    {"t", key::t},
    {"u", key::u},
    {"v", key::v},
    {"w", key::w},
    {"x", key::x},
    {"y", key::y},
    {"z", key::z},
    {"0", key::digit0},
    {"1", key::digit1},
    {"2", key::digit2},
    {"3", key::digit3},
    {"4", key::digit4},
    {"5", key::digit5},
    {"6", key::digit6},
    {"7", key::digit7},
    {"8", key::digit8},
    {"9", key::digit9},
    {"[", key::leftBracket},
    {"]", key::rightBracket},
    {"/", key::slash},
    {".", key::period},
    {",", key::comma},
    {"-", key::minus},
    {"=", key::equal},
    {";", key::semicolon},
    {"'", key::quote},
    {"`", key::grave},
    {"\\", key::backslash},
    {"return", key::returnKey},
    {"space", key::space},
    {"tab", key::tab},
    {"escape", key::escape},
    {"backspace", key::backspace},
    {"delete", key::forwardDelete},
    {"insert", key::help},
    {"home", key::home},
    {"end", key::end},
    {"page_up", key::pageUp},
    {"page_down", key::pageDown},
    {"left", key::leftArrow},
    {"right", key::rightArrow},
    {"up", key::upArrow},
    {"down", key::downArrow},
    {"print", key::f13},
    {"menu", key::contextMenu},
    {"f1", key::f1},
    {"f2", key::f2},
    {"f3", key::f3},
    {"f4", key::f4},
    {"f5", key::f5},
    {"f6", key::f6},
    {"f7", key::f7},
    {"f8", key::f8},
    {"f9", key::f9},
    {"f10", key::f10},
    {"f11", key::f11},
    {"f12", key::f12},
});

template <typename Value>
using Names = std::span<const std::pair<std::string_view, Value>>;

template <typename Value>
std::optional<Value> named(Names<Value> names, std::string_view name) {
    const auto wanted = lowered(name);
    const auto found = std::find_if(names.begin(), names.end(),
                                    [&](const auto& row) { return row.first == wanted; });
    return found == names.end() ? std::nullopt : std::optional(found->second);
}

/// Modifiers and the key of "A+B+key", each modifier once.
template <typename Value>
std::optional<std::pair<KeyCode, Value>> parse(std::string_view text, Names<Value> modifierNames) {
    Value modifiers = 0;
    for (auto plus = text.find('+'); plus != std::string_view::npos && plus + 1 < text.size();
         plus = text.find('+')) {
        const auto modifier = named(modifierNames, text.substr(0, plus));
        if (!modifier || (modifiers & *modifier) != 0) return std::nullopt;
        modifiers |= *modifier;
        text.remove_prefix(plus + 1);
    }
    const auto code = named<KeyCode>(kKeyNames, text);
    if (!code) return std::nullopt;
    return std::pair(*code, modifiers);
}

bool fits(const Row& row, const MacShortcut& shortcut, Kind kind) {
    if ((row.kinds & bit(kind)) == 0 || row.key != shortcut.key ||
        row.modifiers != (shortcut.modifiers & kShortcutFlags))
        return false;
    if (row.source == kAnywhere) return true;
    return row.source == shortcut.source.value_or(kNoKey);
}

}  // namespace

std::optional<MacShortcut> parseMacShortcut(std::string_view text) {
    constexpr auto kNames = std::to_array<std::pair<std::string_view, EventFlags>>(
        {{"command", kCmd}, {"control", kCtl}, {"option", kOpt}, {"shift", kShift}});
    const auto parsed = parse<EventFlags>(text, kNames);
    if (!parsed) return std::nullopt;
    return MacShortcut{parsed->first, parsed->second, std::nullopt};
}

std::optional<XShortcut> parseXShortcut(std::string_view text) {
    constexpr auto kNames =
        std::to_array<std::pair<std::string_view, unsigned>>({{"ctrl", kXCtrl},
                                                              {"control", kXCtrl},
                                                              {"alt", kXAlt},
                                                              {"shift", kXShift},
                                                              {"super", kXSuper}});
    const auto parsed = parse<unsigned>(text, kNames);
    if (!parsed) return std::nullopt;
    return XShortcut{parsed->first, XModifiers(parsed->second)};
}

ShortcutDialect::ShortcutDialect(const PlatformTable& user, std::vector<std::string>& errors) {
    for (const auto& entry : user.section("shortcuts")) {
        const auto blank = entry.key.find(' ');
        const auto kindText = entry.key.substr(0, blank);
        const auto kind = kindNamed(kindText);
        if (!kind && kindText != "any") {
            errors.push_back(
                user.errorAt(entry, "no kind of application is called '" + kindText +
                                        "' (file-manager, terminal, browser, editor, other, any)"));
            continue;
        }
        const auto from = parseMacShortcut(blank == std::string::npos
                                               ? std::string_view()
                                               : std::string_view(entry.key).substr(blank + 1));
        const auto to = parseXShortcut(entry.value);
        if (!from || !to) {
            errors.push_back(user.errorAt(entry, "'" + (from ? entry.value : entry.key) +
                                                     "' holds no shortcut such as " +
                                                     (from ? "Ctrl+Page_Up" : "any Command+Up")));
            continue;
        }
        own_.push_back({kind, *from, *to});
    }
}

std::optional<XShortcut> ShortcutDialect::translate(const MacShortcut& shortcut, Kind kind) const {
    for (const auto& row : own_) {
        const bool isKind = !row.kind || *row.kind == kind;
        if (isKind && row.from.key == shortcut.key &&
            row.from.modifiers == (shortcut.modifiers & kShortcutFlags))
            return row.to;
    }
    const auto* row = std::find_if(kRows.begin(), kRows.end(),
                                   [&](const Row& each) { return fits(each, shortcut, kind); });
    if (row == kRows.end()) return std::nullopt;
    return XShortcut{row->outKey, XModifiers(row->outModifiers)};
}

}  // namespace orvel::x11
