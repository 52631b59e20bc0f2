#pragma once

#include "tests/session/session_test.hpp"
#include "tools/rig/child_process.hpp"
#include "tools/rig/key_probe.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace orvel::test {

/// The event path in a process of its own, with rules that the test gives it.
class TapHost {
public:
    /// Returns when the tap runs. The words are pairs like "swallow", "3".
    explicit TapHost(const rig::Environment& environment, std::vector<std::string> rules = {});

    rig::ChildProcess& process() { return process_; }
    /// Returns when the host has obeyed.
    void tell(const std::string& command);
    /// What the handler saw, "event TYPE key CODE flags F button B delta D repeat R".
    std::vector<std::string> events();
    /// Process ids of the guards that watch over it now.
    std::vector<int> guards();
    /// Ends it in good order.
    void quit();

private:
    rig::ChildProcess process_;
};

/// False for a process that has ended, also while nobody has asked for its status.
bool isRunning(int process);

/// Whether the server still sees a tap: for a moment also after its process has ended.
bool hasTap(rig::XConnection& x);

/// Short forms of what an application saw: "+a", "-a".
std::vector<std::string> spelled(const rig::KeyProbe::Events& events);

class TapSessionTest : public SessionTest {
protected:
    static rig::KeyProbe startProbe(rig::KeyProbe::Mode mode = rig::KeyProbe::Mode::xinput) {
        rig::KeyProbe::Options options;
        options.mode = mode;
        return {desktop().environment(), desktop().x(), options};
    }
    static TapHost startTap(std::vector<std::string> rules = {}) {
        return TapHost(desktop().environment(), std::move(rules));
    }
};

}  // namespace orvel::test
