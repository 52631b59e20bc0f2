#!/usr/bin/env python3
"""Includes follow the arrows: app > overlay, clipboard, finder_menu, settings_ui > engine > ports.

CMake checks the same for links; this one sees the includes, which need no link.
"""

import re

from sources import ROOMS, Finding, expect, includes, main

RANK = {"platform": 0, "preferences": 1, "engine": 2, "overlay": 3, "clipboard": 3,
        "finder_menu": 3, "settings_ui": 3, "app": 4}
PREFERENCE_HEADERS = ("app/preference_keys.hpp", "app/preferences.hpp")
# The programs choose a back end and parse options; everything else in app/ is a room.
PROGRAM_PARTS = re.compile(r"^app/(main\.cpp|mac_main\.mm|session_main\.cpp|cli/|session/|mac/|replay/|record/)")
QT_PLACES = re.compile(r"^(?:[a-z_]+/view/|platform/(?:qt|x11|macos)/|tests/(?:view|session|qt|x11|macos|support)/|tools/|bench/)")
OS_NAMES = re.compile(r"#\s*(?:el)?if.*\b(__APPLE__|__MACH__|__linux__|_WIN32|__unix__|TARGET_OS_\w+|Q_OS_\w+)")

STANDARD_HEADERS = frozenset("""
algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
cinttypes climits clocale cmath codecvt compare complex concepts condition_variable coroutine
csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque
exception execution expected filesystem format forward_list fstream functional future
initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
memory_resource mutex new numbers numeric optional ostream print queue random ranges ratio regex
scoped_allocator semaphore set shared_mutex source_location span sstream stack stdexcept stop_token
streambuf string string_view system_error thread tuple type_traits typeindex typeinfo unordered_map
unordered_set utility valarray variant vector version
""".split())


def is_room_code(path):
    return path.split("/")[0] in (*ROOMS, "app") and "/view/" not in path


def layer(path):
    if path in PREFERENCE_HEADERS or path == "app/preferences.cpp":
        return "preferences"
    return path.split("/", 1)[0]


def check_target(source, name):
    """What is wrong with this project header being included here, or None."""
    own, theirs = layer(source.path), layer(name)
    if own not in RANK or theirs not in RANK:
        return None
    if PROGRAM_PARTS.match(source.path):
        return None
    if theirs == "platform":
        back_end = re.match(r"platform/(memory|x11|qt|macos|plist)/", name)
        if back_end and is_room_code(source.path):
            return f"rooms see ports only, not the back end in {name}"
        return None
    if own == theirs:
        return None
    if RANK[theirs] >= RANK[own]:
        return f"{own} may not include {name}: it is not below {own}"
    return None


def check_rule_header(source, name):
    if not name.startswith("engine/rules/") or source.path.startswith("tests/"):
        return None
    if source.path == "engine/rule_table.cpp" or source.path.startswith("engine/rules/"):
        return None
    return f"only engine/rule_table.cpp includes {name}"


def check_packaged(source, name):
    if re.match(r"(Q[A-Za-z]+|Qt[A-Za-z]*/.+)$", name) and not QT_PLACES.match(source.path):
        return f"Qt (<{name}>) belongs into */view, platform/qt and the native back ends"
    if is_room_code(source.path) and not PROGRAM_PARTS.match(source.path) \
            and name not in STANDARD_HEADERS:
        return f"rooms use the standard library only, not <{name}>"
    return None


def check_own_header_first(source, all_paths):
    if not source.path.endswith(".cpp"):
        return None
    header = source.path[:-4] + ".hpp"
    if header not in all_paths:
        return None
    first = next(includes(source), None)
    if first and first[1] != header:
        return Finding(source.path, first[0], f"its own header {header} comes first")
    return None


def check(sources):
    findings = []
    all_paths = {s.path for s in sources}
    for source in sources:
        first = check_own_header_first(source, all_paths)
        if first:
            findings.append(first)
        for line, name, quoted in includes(source):
            if quoted:
                problems = [check_target(source, name), check_rule_header(source, name)]
                if "/" not in name and is_room_code(source.path):
                    problems.append(f'include "{name}" by its path from the top folder')
            else:
                problems = [check_packaged(source, name)]
            findings += [Finding(source.path, line, p) for p in problems if p]
        if not source.path.startswith("platform/"):
            for line, text in enumerate(source.code_lines(), 1):
                match = OS_NAMES.search(text)
                if match:
                    findings.append(Finding(source.path, line,
                                            f"{match.group(1)} outside platform/"))
    return findings


def self_test():
    expect(check, "engine/a.cpp", '#include "overlay/b.hpp"\n', "not below engine")
    expect(check, "overlay/a.cpp", '#include "clipboard/b.hpp"\n', "not below overlay")
    expect(check, "platform/screens.hpp", '#include "engine/event.hpp"\n', "not below platform")
    expect(check, "engine/a.cpp", '#include "platform/memory/m.hpp"\n', "ports only")
    expect(check, "engine/a.cpp", "#include <QString>\n", "Qt")
    expect(check, "overlay/a.cpp", "#include <X11/Xlib.h>\n", "standard library only")
    expect(check, "app/main.cpp", "#include <QApplication>\n", "Qt")
    expect(check, "engine/a.cpp", '#include "b.hpp"\n', "by its path")
    expect(check, "engine/event_callback.cpp", '#include "engine/rules/redo.hpp"\n', "rule_table")
    expect(check, "app/application.cpp", "#ifdef X\n#if defined(__APPLE__)\n#endif\n", "__APPLE__")
    expect(check, "engine/a.cpp",
           '#include <vector>\n#include "app/preferences.hpp"\n#include "platform/log.hpp"\n')
    expect(check, "overlay/view/a.cpp", '#include <QObject>\n#include "overlay/a.hpp"\n')
    expect(check, "platform/x11/a.cpp", "#include <X11/Xlib.h>\n#ifdef __linux__\n#endif\n")


if __name__ == "__main__":
    main("layering", check, self_test)
