#include "tools/demo_desktop/scene.hpp"

#include "tools/rig/orvel_program.hpp"
#include "tools/rig/poll_until.hpp"
#include "tools/rig/rig_error.hpp"

#include <ostream>
#include <string_view>
#include <utility>

namespace orvel::demo {

namespace {

constexpr std::string_view kLine = "Every key of this line went through Orvel.";

class Scene {
public:
    Scene(DemoDesktop& desktop, std::string program, std::ostream& out)
        : desktop_(desktop), program_(std::move(program)), out_(out) {}

    // A step that cannot even be tried ends the scene; the screenshot then shows why.
    bool play() {
        try {
            playSteps();
        } catch (const rig::RigError& error) {
            tell("the scene breaks off", error.what(), false);
        }
        return well_;
    }

private:
    void playSteps() {
        start();
        writeInEditor();
        copyIntoTerminal();
        typeOnTwoKeyboards();
        holdNothing();
        end();
        typeWithoutProgram();
    }

    void start() {
        rig::writeSettings(desktop_.environment(), rig::usualMapping());
        orvel_ = std::make_unique<rig::OrvelProgram>(program_, desktop_.environment());
        out_ << "orvel runs, with the Control key as Command and the Super key as Win\n";
    }

    void writeInEditor() {
        desktop_.clickEditor();
        desktop_.keyboard().type(kLine);
        desktop_.keyboard().chord({"Control_L", "s"});
        expectFile("typed into the editor and saved with Ctrl+S", desktop_.editedFile(),
                   std::string(kLine));
    }

    void copyIntoTerminal() {
        copyAll();
        desktop_.clickTerminal();
        // Takes every character as it comes, and no more than the line has.
        desktop_.keyboard().type("stty -icanon -echo; head -c " + std::to_string(kLine.size()) +
                                 " | tee pasted.txt; stty sane; echo\n");
        const auto file = desktop_.folder() / "pasted.txt";
        rig::pollUntil([&] { return std::filesystem::exists(file); });
        desktop_.keyboard().chord({"Control_L", "Shift_L", "v"});
        expectFile("copied with Ctrl+C, pasted into the terminal with Ctrl+Shift+V", file,
                   std::string(kLine));
    }

    // Right after saving this editor overhears a shortcut now and then, with Orvel and without; a
    // person tries again.
    void copyAll() {
        constexpr std::chrono::milliseconds kPerTry{1000};
        rig::pollUntil([this] { return desktop_.editorTitle() == "notes.txt"; });
        rig::pollUntil([&] {
            desktop_.keyboard().chord({"Control_L", "a"});
            desktop_.keyboard().chord({"Control_L", "c"});
            return rig::pollUntil([this] { return desktop_.state().clipboardOwner() != 0; },
                                  kPerTry);
        });
    }

    void typeOnTwoKeyboards() {
        desktop_.keyboard().type("echo ");
        desktop_.keyboard().press("Shift_L");
        desktop_.secondKeyboard().type("two");
        desktop_.keyboard().release("Shift_L");
        desktop_.secondKeyboard().type(" keyboards | tee two.txt\n");
        expectFile("Shift held on one keyboard, letters typed on the other",
                   desktop_.folder() / "two.txt", "TWO keyboards\n");
    }

    void holdNothing() {
        const bool none = rig::pollUntil([this] { return desktop_.state().keysDown().empty(); });
        tell("nothing is held when all keys are up", none ? "no key down" : "a key is stuck", none);
    }

    void end() {
        const rig::ExitStatus status = orvel_->stop();
        tell("ended orvel", status.success() ? "exit status 0" : "no clean exit", status.success());
    }

    void typeWithoutProgram() {
        desktop_.keyboard().type("echo still here | tee after.txt\n");
        expectFile("typed on without it", desktop_.folder() / "after.txt", "still here\n");
    }

    void expectFile(const std::string& what, const std::filesystem::path& file,
                    const std::string& wanted) {
        const auto seen = rig::pollUntil([&] { return rig::contentOf(file); },
                                         [&](const std::string& text) { return text == wanted; });
        tell(what, seen.last, seen.accepted);
    }

    void tell(const std::string& what, std::string result, bool asWanted) {
        if (result.ends_with('\n')) {
            result.pop_back();
        }
        out_ << what << "\n    -> " << result << (asWanted ? "" : "    (WRONG)") << std::endl;
        well_ = well_ && asWanted;
    }

    DemoDesktop& desktop_;
    std::string program_;
    std::ostream& out_;
    std::unique_ptr<rig::OrvelProgram> orvel_;
    bool well_ = true;
};

}  // namespace

bool playScene(DemoDesktop& desktop, const std::string& program, std::ostream& out) {
    return Scene(desktop, program, out).play();
}

}  // namespace orvel::demo
