#include "platform/x11/x11_run_loop.hpp"

#include <QCoreApplication>

namespace orvel::x11 {

X11RunLoop::X11RunLoop(int& argc, char** argv)
    : application_(QCoreApplication::instance() == nullptr
                       ? std::make_unique<QCoreApplication>(argc, argv)
                       : nullptr),
      loop_(std::make_unique<qt::QtRunLoop>()) {}

X11RunLoop::~X11RunLoop() = default;

}  // namespace orvel::x11
