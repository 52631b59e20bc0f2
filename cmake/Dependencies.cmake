# Everything outside the project, from Debian's packages (packaging/debian12/install_deps.sh).
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)

pkg_check_modules(RAPIDJSON REQUIRED IMPORTED_TARGET RapidJSON)
pkg_check_modules(PLIST REQUIRED IMPORTED_TARGET libplist-2.0)
find_package(CLI11 2.1 REQUIRED CONFIG)
add_library(orvel::json_library ALIAS PkgConfig::RAPIDJSON)
add_library(orvel::plist_library ALIAS PkgConfig::PLIST)

if(ORVEL_SESSION)
    pkg_check_modules(X11 REQUIRED IMPORTED_TARGET
        x11 x11-xcb xi xtst xext xfixes xrandr xcomposite xdamage xscrnsaver xkbcommon xkbcommon-x11 xcb
        xcb-xkb xcb-xinput xcb-ewmh xcb-icccm xcb-randr xcb-composite xcb-shm xcb-xfixes xcb-res)
    add_library(orvel::x11_libraries ALIAS PkgConfig::X11)
    pkg_check_modules(PNG REQUIRED IMPORTED_TARGET libpng)
    add_library(orvel::png_library ALIAS PkgConfig::PNG)
    pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-unix-2.0)
    add_library(orvel::gio_library ALIAS PkgConfig::GIO)
    pkg_check_modules(PIXBUF REQUIRED IMPORTED_TARGET gdk-pixbuf-2.0)
    add_library(orvel::pixbuf_library ALIAS PkgConfig::PIXBUF)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Core DBus Gui Qml Quick Svg Widgets)
endif()
if(ORVEL_TESTS OR ORVEL_FUZZ)
    find_package(GTest REQUIRED CONFIG)
endif()
if(ORVEL_BENCH)
    find_package(benchmark REQUIRED CONFIG)
endif()
