#pragma once

#include "tools/rig/environment.hpp"
#include "tools/rig/windows.hpp"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace orvel::rig {

/// Something that shows and has a name, as assistive programs see it.
struct Accessible {
    std::string role;  ///< "check box", "push button", …
    std::string name;
    WindowFrame frame;  ///< on the screen
    std::string states;
    std::vector<std::string> actions;

    bool is(const std::string& state) const { return states.find(state) != std::string::npos; }
};

/// Short form for failure messages.
std::ostream& operator<<(std::ostream& out, const Accessible& item);

/// An application as a screen reader sees it. Its desktop has an accessibility bus.
class AccessibleApp {
public:
    AccessibleApp(Environment environment, std::string application);

    /// Everything that shows now, in the order of the tree.
    std::vector<Accessible> items() const;
    /// The first of that role and name that shows now.
    std::optional<Accessible> find(const std::string& role, const std::string& name) const;
    /// Waits for it; a RigError that lists what shows instead when it never comes.
    Accessible waitFor(const std::string& role, const std::string& name) const;
    /// Does an action such as "Toggle" or "Press"; a RigError when it cannot be done.
    void act(const Accessible& item, const std::string& action) const;

private:
    Environment environment_;
    std::string application_;
};

}  // namespace orvel::rig
