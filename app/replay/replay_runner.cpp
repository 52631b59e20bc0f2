#include "app/replay/replay_runner.hpp"

#include "app/replay/call_table.hpp"
#include "app/replay/step_actions.hpp"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace orvel {

namespace replay {

namespace {

class Runner {
public:
    Runner(const std::string& fileName, std::istream& in, std::ostream& out, std::ostream& err)
        : fileName_(fileName), in_(in), out_(out), err_(err), reader_(in, [this] { flush(); }) {}

    int run() {
        while (reader_.nextLine()) {
            const auto problem = runLine();
            if (problem) return stop(*problem);
            if (session_.desktop.effects.text().size() > kFullBuffer) write();
        }
        flush();
        if (in_.bad()) return report("cannot be read", kMalformedInput);
        if (!out_) return report("the transcript cannot be written", kWriteFailed);
        return 0;
    }

private:
    static constexpr std::size_t kFullBuffer = std::size_t{1} << 16U;
    static constexpr int kWriteFailed = 1;

    std::optional<StepProblem> runLine() {
        const Result<Step> step = parseStep(reader_.line());
        if (!step) return StepProblem{.text = step.error()};
        session_.desktop.effects.setStep(reader_.lineNumber());
        if (!isMenuChoice(step.value())) session_.desktop.nativeMenus.dismiss();
        auto problem = runStep(step.value(), session_);
        if (!problem) session_.desktop.runLoop.drain();
        return problem;
    }

    static bool isMenuChoice(const Step& step) {
        const Json* op = step.value.member("op");
        return step.key == StepKey::call && op != nullptr && op->asString() != nullptr &&
               *op->asString() == kMenuChoose;
    }

    int stop(const StepProblem& problem) {
        flush();
        err_ << fileName_ << ':' << reader_.lineNumber() << ": " << problem.text << std::endl;
        return problem.exitStatus;
    }

    int report(std::string_view what, int exitStatus) {
        err_ << fileName_ << ": " << what << std::endl;
        return exitStatus;
    }

    void write() {
        memory::EffectLog& effects = session_.desktop.effects;
        out_.write(effects.text().data(), static_cast<std::streamsize>(effects.text().size()));
        effects.clear();
    }

    void flush() {
        write();
        out_.flush();
    }

    const std::string& fileName_;
    std::istream& in_;
    std::ostream& out_;
    std::ostream& err_;
    ReplaySession session_;
    StepReader reader_;
};

}  // namespace

}  // namespace replay

int runReplay(const std::string& fileName, std::istream& in, std::ostream& out, std::ostream& err) {
    return replay::Runner(fileName, in, out, err).run();
}

int runReplayFile(const std::string& fileName, std::istream& standardInput, std::ostream& out,
                  std::ostream& err) {
    if (fileName == "-") return runReplay(fileName, standardInput, out, err);
    std::ifstream file(fileName, std::ios::binary);
    if (!file) {
        err << fileName << ": " << std::generic_category().message(errno) << std::endl;
        return replay::kMalformedInput;
    }
    return runReplay(fileName, file, out, err);
}

}  // namespace orvel
