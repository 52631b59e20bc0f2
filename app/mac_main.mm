#include "app/cli/front_door.hpp"
#include "app/mac/mac_program.hpp"

int main(int argc, char** argv) {
    return orvel::runFrontDoor(argc, argv, [](const std::vector<std::string>& arguments) {
        orvel::session::MacProgram program;
        return orvel::runSessionCommand(arguments, program);
    });
}
