#pragma once

#include "tests/session/service_session.hpp"
#include "tools/rig/clipboard_app.hpp"

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvel::test {

/// A clipboard among applications: xclip copies and pastes by command, the others as they are
/// told. Every pasteboard that is opened meets what the one before left.
class ClipboardDesktop {
public:
    using Process = std::unique_ptr<rig::ChildProcess>;

    rig::EmbeddedDesktop& desktop() { return desktop_; }
    const rig::Environment& environment() const { return desktop_.environment(); }

    /// The path of a new file with these bytes.
    std::string file(const std::string& bytes) {
        const auto path = nextPath();
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    /// The path of a new picture file of that size, full of detail.
    std::string picture(int width, int height) {
        const auto path = nextPath() + ".png";
        rig::runTool({"convert", "-size", std::to_string(width) + "x" + std::to_string(height),
                      "plasma:red-blue", path},
                     environment());
        return path;
    }
    std::string nextPath() {
        return desktop_.home().runtime() / ("clipboard-" + std::to_string(++lastFile_));
    }

    /// Copies the bytes of a file and owns them until somebody else copies.
    Process xclip(const std::string& path, const std::string& target = "UTF8_STRING") {
        return start(
            {"xclip", "-quiet", "-selection", "clipboard", "-target", target, "-in", path});
    }
    Process xsel(const std::string& path) {
        return start({"sh", "-c", "exec xsel --clipboard --input --nodetach < " + path});
    }
    rig::ClipboardApp app(rig::ClipboardApp::Kind kind) {
        return rig::ClipboardApp(kind, environment());
    }

    Process start(std::vector<std::string> arguments) {
        return std::make_unique<rig::ChildProcess>(
            rig::Command{.arguments = std::move(arguments), .environment = environment()});
    }

private:
    rig::EmbeddedDesktop desktop_;
    int lastFile_ = 0;
};

class PasteboardTest : public testing::Test {
protected:
    using App = rig::ClipboardApp;
    using Process = ClipboardDesktop::Process;

    static void SetUpTestSuite() { shared = std::make_unique<ClipboardDesktop>(); }
    static void TearDownTestSuite() { shared.reset(); }

    Pasteboard& pasteboard() { return services_.get().pasteboard(); }
    void settle() { services_.settle(); }
    /// Waits for the count to reach `count`.
    testing::AssertionResult countBecomes(std::int64_t count) {
        return eventually(
            services_, [this] { return pasteboard().changeCount(); }, testing::Eq(count));
    }
    /// Runs a program to its end while we answer it; what it printed.
    std::string outputOf(std::vector<std::string> arguments) {
        settle();
        const Process process = shared->start(std::move(arguments));
        process->closeInput();
        EXPECT_TRUE(process->waitForExit().has_value());
        EXPECT_TRUE(process->out().waitForEnd());
        return process->out().text();
    }
    /// What xclip pastes.
    std::string pasted(const std::string& target = "UTF8_STRING") {
        const auto path = shared->nextPath();
        outputOf(
            {"sh", "-c", "xclip -selection clipboard -target '" + target + "' -out > " + path});
        return rig::contentOf(path);
    }

    static inline std::unique_ptr<ClipboardDesktop> shared;
    OpenServices services_{shared->desktop()};
};

/// Text in which every line is another one, so that a lost or doubled part shows.
inline std::string longText(std::size_t size) {
    std::string text;
    text.reserve(size + 32);
    for (int line = 0; text.size() < size; ++line)
        text += "Zeile " + std::to_string(line) + " 第一行\n";
    return text;
}

}  // namespace orvel::test
