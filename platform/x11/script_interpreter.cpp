#include "platform/x11/script_interpreter.hpp"

#include "platform/x11/trash.hpp"

#include <variant>

namespace orvel::x11 {

namespace {

constexpr const char* kSystemEvents = "System Events";
constexpr const char* kFinder = "Finder";

/// The way the real runner reports what an application could not do.
Failure gotAnError(const char* application, const std::string& message) {
    return Failure{std::string("execution error: ") + application + " got an error: " + message +
                   ". (-10000)"};
}

Result<std::string> toldBy(const char* application, const Result<>& outcome) {
    if (!outcome) return gotAnError(application, outcome.error());
    return std::string();
}

Result<std::string> toldBy(const char* application, const Result<std::string>& outcome) {
    if (!outcome) return gotAnError(application, outcome.error());
    return outcome;
}

class Performer {
public:
    explicit Performer(const SessionActors& actors) : actors_(actors) {}

    Result<std::string> operator()(const script::Power& power) const {
        return toldBy(kSystemEvents, actors_.power.perform(power.action));
    }
    Result<std::string> operator()(const script::ShowDesktop&) const {
        return toldBy(kSystemEvents, actors_.windows.toggleShowDesktop());
    }
    Result<std::string> operator()(const script::ShowForceQuitDialog&) const {
        return toldBy(kSystemEvents, actors_.showForceQuitDialog());
    }
    Result<std::string> operator()(const script::SetDockHidden& dock) const {
        return toldBy(kSystemEvents, actors_.dock.setHidden(dock.isHidden));
    }
    Result<std::string> operator()(const script::RaiseWindow& window) const {
        return toldBy(kSystemEvents,
                      actors_.windows.raise(static_cast<ProcessId>(window.process), window.title));
    }
    Result<std::string> operator()(const script::FileManagerVersion&) const {
        return toldBy(kFinder, actors_.fileManager.version());
    }
    Result<std::string> operator()(const script::FrontFolder& query) const {
        auto folder = actors_.fileManager.frontFolder();
        if (!folder) return query.errorPrefix + "Finder got an error: " + folder.error() + ".";
        return folder;
    }
    Result<std::string> operator()(const script::SetFrontFolder& folder) const {
        return toldBy(kFinder, actors_.fileManager.setFrontFolder(folder.path));
    }
    Result<std::string> operator()(const script::MakeFolder& folder) const {
        const auto made = makeUntitledFolder(folder.parent);
        if (!made) return gotAnError(kFinder, made.error());
        return made.value().string();
    }
    Result<std::string> operator()(const script::EmptyTrash&) const {
        return toldBy(kFinder, emptyTrash());
    }

private:
    const SessionActors& actors_;
};

}  // namespace

Result<std::string> perform(const ScriptAction& action, const SessionActors& actors) {
    return std::visit(Performer(actors), action);
}

}  // namespace orvel::x11
