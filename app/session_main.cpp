#include "app/cli/session_command.hpp"
#include "app/session/doctor.hpp"
#include "app/session/resident.hpp"

namespace {

using namespace orvel;

class X11SessionProgram final : public SessionProgram {
public:
    X11SessionProgram(int& argc, char** argv) : argc_(argc), argv_(argv) {}

    [[nodiscard]] std::string traceFile() const override {
        return "$XDG_STATE_HOME/orvel/trace.log";
    }
    int run(const session::SessionOptions& options) override {
        return session::runResident(argc_, argv_, options);
    }
    int openPanel() override { return session::openPanel(); }
    int doctor() override { return session::runDoctor(argc_, argv_); }

private:
    int& argc_;
    char** argv_;
};

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc);
    X11SessionProgram program(argc, argv);
    return runSessionCommand(arguments, program);
}
