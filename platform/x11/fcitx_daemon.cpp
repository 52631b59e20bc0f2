#include "platform/x11/fcitx_daemon.hpp"

#include "platform/x11/layout_symbols.hpp"

#include <string_view>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr const char* kName = "org.fcitx.Fcitx5";
constexpr const char* kPath = "/controller";
constexpr const char* kController = "org.fcitx.Fcitx.Controller1";
constexpr std::string_view kPrefix = "fcitx:";
constexpr std::string_view kLayoutPrefix = "keyboard-";

/// "keyboard-de-nodeadkeys" is a layout with a variant; what is no layout composes.
bool isAsciiCapable(std::string_view name, std::string_view language) {
    if (!name.starts_with(kLayoutPrefix)) return language == "en";
    name.remove_prefix(kLayoutPrefix.size());
    const auto dash = name.find('-');
    const auto variant =
        dash == std::string_view::npos ? std::string_view() : name.substr(dash + 1);
    return layoutTypesAscii(std::string(name.substr(0, dash)), std::string(variant));
}

std::string own(std::string_view id) { return std::string(id.substr(kPrefix.size())); }

}  // namespace

FcitxDaemon::FcitxDaemon(const BusConnection& session, InputMethodBoard& board)
    : session_(session),
      board_(board),
      talk_(DaemonKind::fcitx, board),
      watch_(
          session, kName, [this](const std::string&) { appeared(); },
          [this] {
              talk_.end();
              board_.setPresence(DaemonKind::fcitx, DaemonPresence::absent);
          }) {}

void FcitxDaemon::appeared() {
    talk_.begin(session_, kName, kPath)
        .onSignal(kController, "InputMethodGroupsChanged", "()", [this](GVariant*) { askNames(); });
    askNames();
}

void FcitxDaemon::ask(const char* method, GVariant* parameters, const char* answerType,
                      std::function<void(GVariant*)> answered) {
    talk_.ask(kController, method, parameters, answerType,
              [answered = std::move(answered)](GVariant* answer) {
                  if (answer != nullptr) answered(answer);
              });
}

void FcitxDaemon::askNames() {
    ask("AvailableInputMethods", nullptr, "(a(ssssssb))", [this](GVariant* answer) {
        readNames(answer);
        askGroup();
    });
}

void FcitxDaemon::readNames(GVariant* all) {
    known_.clear();
    const GVariantHolder list(g_variant_get_child_value(all, 0));
    GVariantIter each;
    g_variant_iter_init(&each, list.get());
    const char* id = nullptr;
    const char* name = nullptr;
    const char* native = nullptr;
    const char* language = nullptr;
    while (g_variant_iter_next(&each, "(&s&s&ss&s&sb)", &id, &name, &native, nullptr, nullptr,
                               &language, nullptr) != FALSE) {
        const bool hasNative = native != nullptr && *native != '\0';
        known_[id] = {.id = std::string(kPrefix) + id,
                      .name = hasNative ? native : name,
                      .language = language,
                      .isAsciiCapable = false};
    }
}

void FcitxDaemon::askGroup() {
    ask("CurrentInputMethodGroup", nullptr, "(s)", [this](GVariant* answer) {
        const char* group = nullptr;
        g_variant_get(answer, "(&s)", &group);
        ask("InputMethodGroupInfo", g_variant_new("(s)", group), "(sa(ss))",
            [this](GVariant* info) {
                readGroup(info);
                askCurrent();
            });
    });
}

void FcitxDaemon::readGroup(GVariant* group) {
    state_.engines.clear();
    const GVariantHolder members(g_variant_get_child_value(group, 1));
    GVariantIter each;
    g_variant_iter_init(&each, members.get());
    const char* id = nullptr;
    while (g_variant_iter_next(&each, "(&ss)", &id, nullptr) != FALSE) {
        const auto known = known_.find(id);
        if (known == known_.end()) continue;
        InputMethodEngine engine = known->second;
        engine.isAsciiCapable = isAsciiCapable(id, engine.language);
        state_.engines.push_back(std::move(engine));
    }
}

void FcitxDaemon::askCurrent() {
    ask("CurrentInputMethod", nullptr, "(s)",
        [this, selection = talk_.carriedOut()](GVariant* answer) {
            const char* id = nullptr;
            g_variant_get(answer, "(&s)", &id);
            state_.current = std::string(kPrefix) + id;
            // While nothing takes text there is none; whatever comes begins with the first.
            if (*id == '\0' && !state_.engines.empty()) state_.current = state_.engines.front().id;
            board_.tell(DaemonKind::fcitx, state_, selection);
        });
}

void FcitxDaemon::select(const EngineSelection& selection) {
    talk_.select(selection, kController, "SetCurrentIM", own(selection.engine),
                 [this] { askCurrent(); });
}

void FcitxDaemon::refresh() {
    if (!talk_.isOn() || talk_.isAsking()) return;
    if (!talk_.isSilent()) return askCurrent();
    if (!talk_.isDueAgain()) return;
    // What it was asked to do while it was silent it has done by the time it answers.
    talk_.countAllAsCarriedOut();
    askNames();
}

}  // namespace orvel::x11
