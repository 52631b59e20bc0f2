#!/usr/bin/env python3
"""Sees that the property lists of the bundle say what the program relies on, and that the script
makes the bundle as macOS wants it; Apple's and Qt's tools are stood in for."""

import json
import pathlib
import plistlib
import re
import struct
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[3]
PACKAGING = ROOT / "packaging/macos"
problems = []


def expect(is_so, problem):
    if not is_so:
        problems.append(problem)


def read_list(path):
    """By the library of the settings file and by another."""
    checked = subprocess.run(["plistutil", "-i", path, "-o", "/dev/null"], capture_output=True, text=True,
                             check=False)
    expect(checked.returncode == 0, f"{path}: plistutil refuses it: {checked.stderr}")
    return plistlib.loads(path.read_bytes())


def first(pattern, path):
    found = re.search(pattern, (ROOT / path).read_text(encoding="utf-8"))
    expect(found, f"{path}: nothing like {pattern}")
    return found[1] if found else ""


def check_lists():
    info = read_list(PACKAGING / "Info.plist")
    presets = json.loads((ROOT / "CMakePresets.json").read_text(encoding="utf-8"))["configurePresets"]
    oldest = next(p for p in presets if p["name"] == "macos")["cacheVariables"]["CMAKE_OSX_DEPLOYMENT_TARGET"]
    wanted = {
        "CFBundleExecutable": "orvelkit",
        "CFBundleIdentifier": first(r'kBundleIdentifier = "([^"]+)"', "platform/macos/mac_user_defaults.hpp"),
        "CFBundleName": "orvelkit",
        "CFBundlePackageType": "APPL",
        "LSMinimumSystemVersion": oldest,
        "LSUIElement": True,
        "NSPrincipalClass": "NSApplication",
    }
    for key, value in wanted.items():
        expect(info.get(key) == value, f"Info.plist: {key} is {info.get(key)!r}, not {value!r}")
    expect(info.get("NSAppleEventsUsageDescription"), "Info.plist: no reason for controlling other programs")
    rights = read_list(PACKAGING / "orvel.entitlements")
    # More rights would be more to misuse; a sandbox would keep the tap out.
    expect(rights == {"com.apple.security.automation.apple-events": True}, f"orvel.entitlements: {rights}")


def check_icon():
    """Every picture has the pixels that its type stands for, from the smallest to the largest."""
    icon = (PACKAGING / "orvelkit.icns").read_bytes()
    expect(icon[:4] == b"icns" and struct.unpack(">I", icon[4:8])[0] == len(icon), "orvelkit.icns: no such file")
    pixels = {"icp4": 16, "icp5": 32, "ic11": 32, "ic12": 64, "ic07": 128, "ic13": 256, "ic08": 256,
              "ic14": 512, "ic09": 512, "ic10": 1024}
    at = 8
    while at < len(icon):
        kind, size = icon[at:at + 4].decode(), struct.unpack(">I", icon[at + 4:at + 8])[0]
        width, height = struct.unpack(">II", icon[at + 24:at + 32])
        wanted = pixels.pop(kind, None)
        expect(width == height == wanted, f"orvelkit.icns: {kind} has {width} by {height} pixels")
        at += size
    expect(not pixels, f"orvelkit.icns: {', '.join(pixels)} missing")


def check_scripts():
    scripts = sorted(PACKAGING.glob("*.sh"))
    checked = subprocess.run(["shellcheck", *scripts], capture_output=True, text=True, check=False)
    expect(checked.returncode == 0, checked.stdout)


def check_bundle(folder):
    tools, calls = folder / "tools", folder / "calls"
    tools.mkdir()
    for name in ("codesign", "macdeployqt"):
        tool = tools / name
        tool.write_text(f'#!/bin/sh\necho {name} "$@" >>{calls}\n', encoding="utf-8")
        tool.chmod(0o755)
    deploy = tools / "macdeployqt"
    deploy.write_text(deploy.read_text(encoding="utf-8") + 'mkdir -p "$1/Contents/Frameworks/Qt.framework"\n'
                      'touch "$1/Contents/Frameworks/lib.dylib"\n', encoding="utf-8")
    program = folder / "orvelkit"
    program.write_text("#!/bin/sh\n", encoding="utf-8")
    program.chmod(0o755)
    script = PACKAGING / "make_app_bundle.sh"
    made = subprocess.run([script, folder, folder / "out", "Identity"], capture_output=True, text=True,
                          env={"PATH": f"{tools}:/usr/bin:/bin"}, check=False)
    expect(made.returncode == 0, f"make_app_bundle.sh: {made.stderr}")
    if made.returncode != 0:
        return
    contents = folder / "out/orvelkit.app/Contents"
    info = read_list(contents / "Info.plist")
    expect((contents / f"Resources/{info['CFBundleIconFile']}.icns").exists(), "the bundle has no icon")
    version = first(r"VERSION (\d+\.\d+\.\d+)", "CMakeLists.txt")
    expect(info["CFBundleVersion"] == version, f"the bundle is of version {info['CFBundleVersion']}")
    expect((contents / "MacOS/orvelkit").stat().st_mode & 0o111, "the program in the bundle cannot be run")
    lines = calls.read_text(encoding="utf-8").splitlines()
    expect(lines[0].startswith("macdeployqt") and "settings_ui/view" in lines[0], f"first call: {lines[0]}")
    signed = [line.split()[-1] for line in lines if "--sign" in line]
    order = [name.rsplit("/", 1)[-1] for name in signed]
    expect(order == ["lib.dylib", "Qt.framework", "orvelkit.app"], f"signed in the order {order}")
    expect("--entitlements" in lines[-2] and "--options runtime" in lines[-2], f"signed by {lines[-2]}")
    expect(lines[-1].startswith("codesign --verify"), f"last call: {lines[-1]}")
    absent = subprocess.run([script, folder / "nothing", folder / "out"], capture_output=True, text=True,
                            check=False)
    expect(absent.returncode == 1 and "build the preset" in absent.stderr, "a missing build goes unnoticed")


def main():
    check_lists()
    check_icon()
    check_scripts()
    with tempfile.TemporaryDirectory() as folder:
        check_bundle(pathlib.Path(folder))
    print("\n".join(problems))
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
