#include "app/replay/calls.hpp"

#include <array>

namespace orvel::replay {

Call statusItemClick(ObjectReader& arguments) {
    constexpr std::array<std::string_view, 2> buttons{"left", "right"};
    StatusItemClick click;
    arguments.requiredName("button", buttons, click.button);
    arguments.optional("flags", click.flags);
    return always([click](ReplaySession& session) {
        session.application().statusItem().handleStatusItemClick(click);
    });
}

}  // namespace orvel::replay
