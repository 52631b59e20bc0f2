#!/usr/bin/env python3
"""Configures the preset for macOS, as far as a machine that is none can: with a compiler that only
says it is for macOS, and Qt's packages of this machine. Then asks what a build would do."""

import json
import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[3]
SUPPORT = ROOT / "tests/macos/configure"
# What a build of the program cannot do without.
WANTED = {
    "the entry": r"app/CMakeFiles/orvelkit\.dir/mac_main\.mm\.o",
    "the back end": r"platform/macos/CMakeFiles/platform_macos\.dir/mac_event_tap\.mm\.o",
    "the views": r"settings_view\.dir/settings_content\.cpp\.o",
    "the command line": r"orvel_cli\.dir/cli/front_door\.cpp\.o",
    "the link of the program": r" -o orvelkit .*libplatform_macos\.a",
}
# What belongs to other systems only.
UNWANTED = r"platform_x11|Qt6(?:Widgets|DBus)|/x11/"


def run(words):
    done = subprocess.run(words, cwd=ROOT, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, words))}\n{done.stdout}{done.stderr}")
    return done.stdout


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    shutil.rmtree(build, ignore_errors=True)
    presets = json.loads((ROOT / "CMakePresets.json").read_text(encoding="utf-8"))
    preset, = (p for p in presets["configurePresets"] if p["name"] == "macos")
    variables = {**preset["cacheVariables"],
                 "CMAKE_TOOLCHAIN_FILE": SUPPORT / "toolchain.cmake",
                 "CMAKE_PROJECT_INCLUDE": SUPPORT / "system.cmake",
                 "CMAKE_LIBRARY_ARCHITECTURE": "x86_64-linux-gnu",
                 "QT_NO_PACKAGE_VERSION_CHECK": "TRUE"}
    run(["cmake", "-S", ROOT, "-B", build, "-G", "Ninja", *(f"-D{k}={v}" for k, v in variables.items())])
    plan = run(["ninja", "-C", build, "-t", "commands", "programs"])
    missing = [what for what, pattern in WANTED.items() if not re.search(pattern, plan)]
    foreign = re.search(UNWANTED, plan)
    if missing or foreign:
        sys.exit(f"a build for macOS lacks {missing}" if missing
                 else f"a build for macOS has '{foreign[0]}', which is of another system")


if __name__ == "__main__":
    main()
