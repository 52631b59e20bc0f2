#include "platform/x11/x11_run_loop.hpp"

namespace orvel::x11 {

std::unique_ptr<qt::QtRunLoop> makeRunLoop() { return std::make_unique<qt::QtRunLoop>(); }

}  // namespace orvel::x11
