#include "app/cli/front_door.hpp"
#include "app/cli/session_program.hpp"

int main(int argc, char** argv) {
    return orvel::runFrontDoor(argc, argv, orvel::becomeSessionProgram);
}
