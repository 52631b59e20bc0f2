#include "platform/x11/script_text.hpp"

#include "platform/base/event_flags.hpp"
#include "platform/base/key_codes.hpp"
#include "platform/x11/script_tokens.hpp"

#include <array>
#include <charconv>
#include <optional>
#include <span>
#include <vector>

namespace orvel::x11 {

namespace {

using Kind = ScriptToken::Kind;
using Tokens = std::span<const ScriptToken>;

/// What stood in the holes of a pattern, in their order.
struct Holes {
    std::vector<std::string> texts;
    std::vector<std::int64_t> numbers;
    EventFlags modifiers = 0;
};

using Build = std::optional<ScriptAction> (*)(const Holes&);

/// One statement that an application understands. In a pattern `|` is the end of a line; holes
/// are $text, $number, $word, $modifiers.
struct Statement {
    std::string_view application;
    std::string_view pattern;
    Build build;
};

std::optional<std::int64_t> numberOf(const std::string& digits) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

/// `command down` or `{command down, control down}`; what follows remains in `tokens`.
std::optional<EventFlags> takeModifiers(Tokens& tokens) {
    constexpr auto kNames =
        std::to_array<std::pair<std::string_view, EventFlags>>({{"command", flag::command},
                                                                {"control", flag::control},
                                                                {"option", flag::option},
                                                                {"shift", flag::shift}});
    const auto takeOne = [&]() -> EventFlags {
        if (tokens.size() < 2 || tokens[1].value != "down") return 0;
        for (const auto& [name, bit] : kNames) {
            if (tokens[0].value != name) continue;
            tokens = tokens.subspan(2);
            return bit;
        }
        return 0;
    };
    const auto takeSign = [&](std::string_view sign) {
        if (tokens.empty() || tokens[0].kind != Kind::sign || tokens[0].value != sign) return false;
        tokens = tokens.subspan(1);
        return true;
    };
    const bool isList = takeSign("{");
    EventFlags modifiers = 0;
    do {
        const auto one = takeOne();
        if (one == 0) return std::nullopt;
        modifiers |= one;
    } while (isList && takeSign(","));
    if (isList && !takeSign("}")) return std::nullopt;
    return modifiers;
}

bool takeHole(std::string_view hole, Tokens& tokens, Holes& holes) {
    if (hole == "$modifiers") {
        const auto modifiers = takeModifiers(tokens);
        holes.modifiers = modifiers.value_or(0);
        return modifiers.has_value();
    }
    if (tokens.empty()) return false;
    const auto& token = tokens[0];
    if (hole == "$number") {
        const auto number = token.kind == Kind::number ? numberOf(token.value) : std::nullopt;
        if (!number) return false;
        holes.numbers.push_back(*number);
    } else if (token.kind == (hole == "$text" ? Kind::text : Kind::word)) {
        holes.texts.push_back(token.value);
    } else {
        return false;
    }
    tokens = tokens.subspan(1);
    return true;
}

bool isPart(std::string_view part, const ScriptToken& token) {
    if (part == "|") return token.kind == Kind::lineEnd;
    return token.kind != Kind::text && token.kind != Kind::lineEnd && token.value == part;
}

/// The holes when all of the tokens match the pattern.
std::optional<Holes> match(std::string_view pattern, Tokens tokens) {
    Holes holes;
    while (!pattern.empty()) {
        const auto part = pattern.substr(0, pattern.find(' '));
        pattern.remove_prefix(std::min(part.size() + 1, pattern.size()));
        if (part.front() == '$') {
            if (!takeHole(part, tokens, holes)) return std::nullopt;
        } else if (!tokens.empty() && isPart(part, tokens[0])) {
            tokens = tokens.subspan(1);
        } else {
            return std::nullopt;
        }
    }
    if (!tokens.empty()) return std::nullopt;
    return holes;
}

template <script::PowerAction action>
std::optional<ScriptAction> power(const Holes&) {
    return script::Power{action};
}

/// The chords of macOS that stand for an act of the session.
std::optional<ScriptAction> keyCode(const Holes& holes) {
    if (holes.numbers[0] == key::f11 && holes.modifiers == 0) return script::ShowDesktop{};
    if (holes.numbers[0] == key::escape && holes.modifiers == (flag::command | flag::option))
        return script::ShowForceQuitDialog{};
    return std::nullopt;
}

std::optional<ScriptAction> keystroke(const Holes& holes) {
    if (holes.texts[0] == "q" && holes.modifiers == (flag::command | flag::control))
        return script::Power{script::PowerAction::lock};
    return std::nullopt;
}

std::optional<ScriptAction> raiseWindow(const Holes& holes) {
    if (holes.texts[0] != "AXRaise") return std::nullopt;
    return script::RaiseWindow{holes.numbers[0], holes.texts[1]};
}

/// The two shell texts that hide and restore the Dock; no other ever runs.
std::optional<ScriptAction> shellScript(const Holes& holes) {
    constexpr std::string_view kHide =
        "defaults write com.apple.dock autohide -bool true; "
        "defaults write com.apple.dock autohide-delay -float 1000; killall Dock";
    constexpr std::string_view kRestore =
        "defaults write com.apple.dock autohide -bool false; "
        "defaults delete com.apple.dock autohide-delay 2>/dev/null || true; killall Dock";
    if (holes.texts[0] == kHide) return script::SetDockHidden{true};
    if (holes.texts[0] == kRestore) return script::SetDockHidden{false};
    return std::nullopt;
}

std::optional<ScriptAction> frontFolder(const Holes& holes) {
    // The same name twice: the message that was caught is the one that is returned.
    if (holes.texts[0] != holes.texts[2]) return std::nullopt;
    return script::FrontFolder{holes.texts[1]};
}

constexpr std::string_view kSystemEvents = "System Events";
constexpr std::string_view kFinder = "Finder";
/// Statements that no application is told.
constexpr std::string_view kNobody;

constexpr auto kVocabulary = std::to_array<Statement>({
    {kSystemEvents, "set autohide of dock preferences to true",
     [](const Holes&) -> std::optional<ScriptAction> { return script::SetDockHidden{true}; }},
    {kSystemEvents, "set autohide of dock preferences to false",
     [](const Holes&) -> std::optional<ScriptAction> { return script::SetDockHidden{false}; }},
    {kSystemEvents, "key code $number", keyCode},
    {kSystemEvents, "key code $number using $modifiers", keyCode},
    {kSystemEvents, "keystroke $text using $modifiers", keystroke},
    {kSystemEvents, "log out", power<script::PowerAction::logOut>},
    {kSystemEvents, "sleep", power<script::PowerAction::sleep>},
    {kSystemEvents, "restart", power<script::PowerAction::restart>},
    {kSystemEvents, "shut down", power<script::PowerAction::shutDown>},
    {kSystemEvents,
     "tell ( first process whose unix id is $number ) | try | "
     "perform action $text of ( first window whose name is $text ) | end try | end tell",
     raiseWindow},
    {kFinder, "get version",
     [](const Holes&) -> std::optional<ScriptAction> { return script::FileManagerVersion{}; }},
    {kFinder,
     "try | if exists finder window 1 then | return url of ( target of finder window 1 ) | else | "
     "return url of desktop | end if | on error $word | return $text & $word | end try",
     frontFolder},
    {kFinder, "set target of front window to posix file $text",
     [](const Holes& holes) -> std::optional<ScriptAction> {
         return script::SetFrontFolder{holes.texts[0]};
     }},
    {kFinder, "make new folder at posix file $text",
     [](const Holes& holes) -> std::optional<ScriptAction> {
         return script::MakeFolder{holes.texts[0]};
     }},
    {kFinder, "empty trash",
     [](const Holes&) -> std::optional<ScriptAction> { return script::EmptyTrash{}; }},
    {kNobody, "do shell script $text", shellScript},
});

/// A statement and the application that is told it.
struct Told {
    std::string application;
    Tokens statement;
};

/// Takes `tell application "X" to S` and the block form of it apart; anything else is told nobody.
Told takeTellApart(Tokens tokens) {
    const bool isTell = tokens.size() > 4 && tokens[0].value == "tell" &&
                        tokens[1].value == "application" && tokens[2].kind == Kind::text;
    if (!isTell) return {"", tokens};
    const auto& application = tokens[2].value;
    const auto rest = tokens.subspan(3);
    if (isPart("to", rest[0])) return {application, rest.subspan(1)};
    const bool isBlock =
        rest.size() > 4 && isPart("|", rest[0]) && isPart("|", rest[rest.size() - 3]) &&
        isPart("end", rest[rest.size() - 2]) && isPart("tell", rest[rest.size() - 1]);
    if (isBlock) return {application, rest.subspan(1, rest.size() - 4)};
    return {"", tokens};
}

/// The first line of a statement as it stands in the script.
std::string firstLine(Tokens statement) {
    const char* begin = statement.front().source.data();
    const char* end = begin;
    for (const auto& token : statement) {
        if (token.kind == Kind::lineEnd) break;
        end = token.source.data() + token.source.size();
    }
    return {begin, end};
}

}  // namespace

Result<ScriptAction> parseScript(std::string_view source) {
    const auto tokens = scriptTokens(source);
    if (!tokens) return Failure{tokens.error()};
    if (tokens.value().empty()) return Failure{"syntax error: the script is empty. (-2741)"};
    const auto told = takeTellApart(tokens.value());
    for (const auto& statement : kVocabulary) {
        if (statement.application != told.application) continue;
        const auto holes = match(statement.pattern, told.statement);
        if (!holes) continue;
        if (auto action = statement.build(*holes)) return *std::move(action);
    }
    const std::string who = told.application.empty() ? "the script" : told.application;
    return Failure{"execution error: " + who + " got an error: it does not understand “" +
                   firstLine(told.statement) + "”. (-1708)"};
}

}  // namespace orvel::x11
