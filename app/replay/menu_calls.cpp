#include "app/replay/calls.hpp"

namespace orvel::replay {

Call menuChoose(ObjectReader& arguments) {
    std::string title;
    arguments.required("title", title);
    return [title](ReplaySession& session) -> std::optional<StepProblem> {
        auto& menus = session.desktop.nativeMenus;
        if (!menus.isUp()) return StepProblem{.text = "menu.choose: no menu is up"};
        if (menus.choose(title)) return std::nullopt;
        return StepProblem{.text = "menu.choose.title: the menu has no item " + inQuotes(title)};
    };
}

}  // namespace orvel::replay
