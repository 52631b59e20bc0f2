// Sees an application as a screen reader does.
//
//   orvel-rig-accessibles list APPLICATION
//   orvel-rig-accessibles act APPLICATION ROLE NAME ACTION
//
// `list` prints what has a name and shows, in the order of the tree, one line each:
// ROLE, NAME, "X Y WIDTH HEIGHT", states and actions, with tabs between the fields. `act` does an
// action of the first one of that role and name. Exit status 1 when there is no such thing.

#include <atspi/atspi.h>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

template <typename T>
using Held = std::unique_ptr<T, decltype(&g_object_unref)>;

template <typename T>
Held<T> hold(T* object) {
    return {object, g_object_unref};
}

std::string taken(char* text) {
    const std::unique_ptr<char, decltype(&g_free)> owner(text, g_free);
    return text == nullptr ? std::string() : std::string(text);
}

std::string nameOf(AtspiAccessible* item) {
    return taken(atspi_accessible_get_name(item, nullptr));
}
std::string roleOf(AtspiAccessible* item) {
    return taken(atspi_accessible_get_role_name(item, nullptr));
}

bool has(AtspiAccessible* item, AtspiStateType state) {
    const auto states = hold(atspi_accessible_get_state_set(item));
    return states && atspi_state_set_contains(states.get(), state) != 0;
}

std::string statesOf(AtspiAccessible* item) {
    std::string names;
    for (const auto& [state, name] :
         {std::pair{ATSPI_STATE_CHECKED, "checked"}, std::pair{ATSPI_STATE_FOCUSED, "focused"},
          std::pair{ATSPI_STATE_FOCUSABLE, "focusable"},
          std::pair{ATSPI_STATE_SELECTED, "selected"}}) {
        if (has(item, state)) names += (names.empty() ? "" : " ") + std::string(name);
    }
    return names;
}

std::string placeOf(AtspiAccessible* item) {
    const auto component = hold(atspi_accessible_get_component_iface(item));
    if (!component) return "0 0 0 0";
    const std::unique_ptr<AtspiRect, decltype(&g_free)> rect(
        atspi_component_get_extents(component.get(), ATSPI_COORD_TYPE_SCREEN, nullptr), g_free);
    if (!rect) return "0 0 0 0";
    return std::to_string(rect->x) + ' ' + std::to_string(rect->y) + ' ' +
           std::to_string(rect->width) + ' ' + std::to_string(rect->height);
}

std::vector<std::string> actionsOf(AtspiAction* action) {
    std::vector<std::string> names;
    const int count = action == nullptr ? 0 : atspi_action_get_n_actions(action, nullptr);
    for (int at = 0; at < count; ++at) {
        names.push_back(taken(atspi_action_get_action_name(action, at, nullptr)));
    }
    return names;
}

void print(AtspiAccessible* item) {
    const auto action = hold(atspi_accessible_get_action_iface(item));
    std::cout << roleOf(item) << '\t' << nameOf(item) << '\t' << placeOf(item) << '\t'
              << statesOf(item) << '\t';
    for (const std::string& name : actionsOf(action.get())) std::cout << name << ' ';
    std::cout << '\n';
}

using Visit = std::function<bool(AtspiAccessible*)>;

/// Goes through everything that shows until `visit` says that this was it.
bool walk(AtspiAccessible* item, const Visit& visit) {
    if (!has(item, ATSPI_STATE_SHOWING)) return false;
    if (!nameOf(item).empty() && visit(item)) return true;
    const int count = atspi_accessible_get_child_count(item, nullptr);
    for (int at = 0; at < count; ++at) {
        const auto child = hold(atspi_accessible_get_child_at_index(item, at, nullptr));
        if (child && walk(child.get(), visit)) return true;
    }
    return false;
}

bool walkApplication(std::string_view name, const Visit& visit) {
    const auto desktop = hold(atspi_get_desktop(0));
    const int applications = atspi_accessible_get_child_count(desktop.get(), nullptr);
    for (int at = 0; at < applications; ++at) {
        const auto application =
            hold(atspi_accessible_get_child_at_index(desktop.get(), at, nullptr));
        if (!application || nameOf(application.get()) != name) continue;
        const int windows = atspi_accessible_get_child_count(application.get(), nullptr);
        for (int window = 0; window < windows; ++window) {
            const auto child =
                hold(atspi_accessible_get_child_at_index(application.get(), window, nullptr));
            if (child && walk(child.get(), visit)) return true;
        }
    }
    return false;
}

bool act(AtspiAccessible* item, std::string_view wanted) {
    const auto action = hold(atspi_accessible_get_action_iface(item));
    const std::vector<std::string> names = actionsOf(action.get());
    for (std::size_t at = 0; at < names.size(); ++at) {
        if (names[at] != wanted) continue;
        return atspi_action_do_action(action.get(), static_cast<int>(at), nullptr) != 0;
    }
    return false;
}

bool run(const std::vector<std::string_view>& words) {
    if (words.size() == 2 && words[0] == "list") {
        walkApplication(words[1], [](AtspiAccessible* item) {
            print(item);
            return false;
        });
        return true;
    }
    if (words.size() != 5 || words[0] != "act") return false;
    bool isDone = false;
    walkApplication(words[1], [&](AtspiAccessible* item) {
        if (nameOf(item) != words[3] || roleOf(item) != words[2]) return false;
        isDone = act(item, words[4]);
        return true;
    });
    return isDone;
}

}  // namespace

int main(int argc, char** argv) {
    if (atspi_init() != 0) {
        std::cerr << "orvel-rig-accessibles: no accessibility bus\n";
        return 1;
    }
    const bool isDone = run({argv + 1, argv + argc});
    atspi_exit();
    return isDone ? 0 : 1;
}
