#pragma once

#include <map>
#include <string>

namespace orvel::rig {

/// The whole environment of a child process; nothing is inherited beside it.
using Environment = std::map<std::string, std::string>;

/// `base` with the entries of `extra` added or replaced.
inline Environment merged(Environment base, const Environment& extra) {
    for (const auto& [name, value] : extra) {
        base[name] = value;
    }
    return base;
}

}  // namespace orvel::rig
