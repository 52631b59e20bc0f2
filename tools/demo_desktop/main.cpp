#include "tools/demo_desktop/demo_desktop.hpp"
#include "tools/demo_desktop/scene.hpp"
#include "tools/rig/rig_error.hpp"

#include <CLI/CLI.hpp>

#include <iostream>
#include <string>

int main(int argc, char** argv) {
    CLI::App app("Starts a desktop without a screen, runs Orvel in it and plays a short scene.");
    std::string program;
    std::string screenshot = "demo.png";
    app.add_option("--program", program, "the orvel program")->required()->check(CLI::ExistingFile);
    app.add_option("--screenshot", screenshot, "where to leave a picture of the desktop")
        ->capture_default_str();
    CLI11_PARSE(app, argc, argv);

    try {
        orvel::demo::DemoDesktop desktop;
        const bool well = orvel::demo::playScene(desktop, program, std::cout);
        desktop.writeScreenshot(screenshot);
        std::cout << "screenshot: " << screenshot << '\n';
        return well ? 0 : 1;
    } catch (const orvel::rig::RigError& error) {
        std::cerr << "demo-desktop: " << error.what() << '\n';
        return 1;
    }
}
