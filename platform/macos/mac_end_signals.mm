#include "platform/macos/mac_end_signals.hpp"

#import <Foundation/Foundation.h>

#include <csignal>

namespace orvel::macos {

EndSignals::EndSignals(std::function<void()> asked) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        // The usual action would come first. What is ignored stays so in programs that this one
        // starts; a handler does not.
        std::signal(signal, [](int) {});
        dispatch_source_t source =
            dispatch_source_create(DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<uintptr_t>(signal), 0,
                                   dispatch_get_main_queue());
        dispatch_source_set_event_handler(source, ^{
          asked();
        });
        dispatch_resume(source);
        sources_.emplace_back(CFBridgingRetain(source));
    }
}

}  // namespace orvel::macos
