#include "bench/rig_run.hpp"

#include "tools/rig/rig_error.hpp"

#include <cerrno>
#include <cstdlib>
#include <iostream>

namespace orvel {

int runInRig(const std::function<void()>& bench) {
    try {
        bench();
        return EXIT_SUCCESS;
    } catch (const rig::RigError& error) {
        std::cerr << program_invocation_short_name << ": " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}

}  // namespace orvel
