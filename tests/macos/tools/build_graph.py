#!/usr/bin/env python3
"""Writes the graph of the checks for ninja. Every rule is one named check."""

import argparse
import pathlib
import re

import qt_views

ROOT = pathlib.Path(__file__).resolve().parents[3]
TESTS = ROOT / "tests/macos"
DEPLOYMENT_TARGET = "13.4"
FRAMEWORKS = ("AppKit", "Foundation", "CoreFoundation", "CoreGraphics", "ApplicationServices",
              "Carbon", "CoreServices", "IOKit", "ServiceManagement", "ScreenCaptureKit")
# Headers that nearly every source includes; read once for the checks that repeat a type check.
COMMON_HEADERS = ("AppKit/AppKit.h", "chrono", "condition_variable", "filesystem", "functional",
                  "map", "memory", "mutex", "optional", "span", "string", "string_view", "variant",
                  "vector")


# What rooms include besides.
ROOM_HEADERS = ("algorithm", "array", "charconv", "iostream", "sstream")


def warnings():
    """The project's own, as its other compilers get them."""
    text = (ROOT / "cmake/OrvelWarnings.cmake").read_text(encoding="utf-8")
    common = re.search(r"set\(flags(.*?)\)", text, re.S)[1]
    clang = re.search(r"else\(\)\s*list\(APPEND flags(.*?)\)", text, re.S)[1]
    return [*common.split(), *clang.split(), "-Wunguarded-availability"]


class Graph:
    def __init__(self, out, downloads):
        self.out, self.downloads, self.root = out, downloads, ROOT
        self.lines = ["ninja_required_version = 1.10"]
        self.targets = {}  # name of a check: what it makes

    def rule(self, name, command, description, **more):
        self.lines += [f"rule {name}", f"  command = {command}", f"  description = {description}"]
        self.lines += [f"  {key} = {value}" for key, value in more.items()]

    def build(self, outputs, rule, inputs, implicit=(), **variables):
        needs = f" | {' '.join(map(str, implicit))}" if implicit else ""
        self.lines.append(f"build {outputs}: {rule} {' '.join(map(str, inputs))}{needs}")
        self.lines += [f"  {key} = {value}" for key, value in variables.items()]

    def check(self, name, output):
        self.targets.setdefault(name, []).append(output)

    def text(self):
        phonies = [f"build check_{name}: phony {' '.join(outputs)}"
                   for name, outputs in self.targets.items()]
        return "\n".join([*self.lines, *phonies, f"default {' '.join('check_' + name for name in self.targets)}", ""])


def write_if_changed(path, text):
    """A file that is written anew makes ninja build what depends on it."""
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")


def flags_file(graph, name, flags):
    """Keeps the flags in a file, so that a failure shows a command that can be read."""
    write_if_changed(graph.out / f"flags.{name}", "\n".join(map(str, flags)) + "\n")
    return f"clang++-19 @flags.{name}"


def header_only_libraries(graph):
    """A folder with the header-only libraries and nothing else of this machine."""
    folder = graph.out / "libraries"
    folder.mkdir(exist_ok=True)
    for name in ("rapidjson", "CLI"):
        link = folder / name
        if not link.is_symlink():
            link.symlink_to(f"/usr/include/{name}")
    return folder


def apple_compiler(graph, arch):
    debian = graph.downloads / "debian/usr"
    libcxx = debian / "lib/llvm-19/include/c++/v1"
    includes = [graph.downloads / "libcxx", libcxx, TESTS / "shim/libc",
                debian / "include/x86_64-linux-musl", TESTS / "decl/apple", TESTS / "decl/common",
                header_only_libraries(graph)]
    return flags_file(graph, arch, [
        "-target", f"{arch}-apple-macos{DEPLOYMENT_TARGET}", "-std=c++20",
        "-fobjc-arc", "-fblocks", "-D_GNU_SOURCE", "-include", TESTS / "shim/libc/apple_pre.h",
        "-nostdlibinc", "-nostdinc++", *(f"-isystem {i}" for i in includes), f"-I{ROOT}",
        *warnings()])


def fake_compiler(graph):
    includes = [TESTS / "fakes/include", TESTS / "decl/common", ROOT, "/usr/include/GNUstep"]
    return flags_file(graph, "fakes", [
        "-std=c++20", "-fobjc-runtime=gcc", "-fblocks", "-fexceptions",
        "-fobjc-exceptions", "-D_NATIVE_OBJC_EXCEPTIONS", "-DGNUSTEP", "-DGNUSTEP_BASE_LIBRARY=1",
        "-DGNU_RUNTIME=1", "-fconstant-string-class=NSConstantString",
        "-fsanitize=address,undefined", "-fno-sanitize-recover=all", "-fno-omit-frame-pointer",
        f"-fsanitize-ignorelist={ROOT}/cmake/sanitizer_ignore.txt",
        "-gline-tables-only", "-O0", "-Wno-everything", *(f"-I{i}" for i in includes),
        "-idirafter", "/usr/lib/gcc/x86_64-linux-gnu/12/include"])


def list_objects(graph, kind, names):
    """For the checks that put another object in the place of one of them."""
    write_if_changed(graph.out / f"objects.{kind}", "\n".join(names) + "\n")


def object_name(source):
    return str(source.relative_to(ROOT)).replace("/", ".") + ".o"


def program_sources():
    """What app/CMakeLists.txt and the rooms' put into the program on macOS, but for the back end."""
    folders = ["platform/memory", "engine", "overlay", "clipboard", "finder_menu", "settings_ui", "app"]
    elsewhere = re.compile(r"/view/|^app/(main|session_main|cli/session_program)\.cpp$|^app/session/")
    found = sorted(path for folder in folders for path in (ROOT / folder).rglob("*")
                   if path.suffix in (".cpp", ".mm"))
    return [path for path in found if not elsewhere.search(str(path.relative_to(ROOT)))
            and not qt_views.is_qt(path.relative_to(ROOT))]


def add_rules(graph):
    rooms = apple_compiler(graph, "arm64") + " -DORVEL_VERSION='\"0.0.0\"' -DORVEL_WEBSITE='\"\"'"
    graph.rule("room_prefix", f"{rooms} -MD -MF $out.d -x c++-header $in -o $out",
               "common headers (rooms)", deps="gcc", depfile="$out.d")
    graph.rule("room", f"{rooms} -include-pch rooms.pch -MD -MF $out.d -c $in -o $out",
               "type check (arm64): $in", deps="gcc", depfile="$out.d")
    # What the standard library does inside is not looked into: it takes nearly all the time and
    # owns no Core Foundation objects.
    write_if_changed(graph.out / "flags.analyzer", "--analyze -Xclang -analyzer-output=text "
                     "-Xclang -analyzer-werror -Xclang -analyzer-config "
                     "-Xclang c++-stdlib-inlining=false\n")
    for arch in ("arm64", "x86_64"):
        compiler = apple_compiler(graph, arch)
        depends = {"deps": "gcc", "depfile": "$out.d"}
        # The prefix of objects has the standard library alone: a framework that a source forgets to
        # import shows.
        graph.rule(f"compile_{arch}", f"{compiler} -include-pch standard.pch -MD -MF $out.d -c $in -o $out",
                   f"type check ({arch}): $in", **depends)
        graph.rule(f"prefix_{arch}",
                   f"{compiler} -MD -MF $out.d -x objective-c++-header $in -o $out",
                   f"common headers ({arch})", **depends)
        graph.rule(f"types_{arch}",
                   f"{compiler} -include-pch $prefix -MD -MF $out.d -MT $out -fsyntax-only $in && touch $out",
                   f"type check ({arch}): $in", **depends)
        graph.rule(f"analyze_{arch}",
                   f"{compiler} -include-pch $prefix @flags.analyzer $in && touch $out", f"analyzer: $in")
        graph.rule(f"ast_{arch}",
                   f"{compiler} -MD -MF $out.d -MT $out -fsyntax-only -Xclang -ast-dump=json $in >$out",
                   "reading the declarations", **depends)
    fakes = fake_compiler(graph)
    graph.rule("fake_prefix", f"{fakes} -MD -MF $out.d -x objective-c++-header $in -o $out",
               "common headers (fakes)", deps="gcc", depfile="$out.d")
    graph.rule("fake", f"{fakes} $options -MD -MF $out.d -c $in -o $out", "for the fakes: $in",
               deps="gcc", depfile="$out.d")
    link_flags(graph)
    graph.rule("fake_link", "clang++-19 @$out.objects @flags.fake_link -o $out", "link over fakes",
               rspfile="$out.objects", rspfile_content="$in")
    graph.rule("fake_run", f"{TESTS}/tools/run_over_fakes.sh $in $out", "run over fakes")
    qt_views.add_rules(graph, {arch: apple_compiler(graph, arch) for arch in ("arm64", "x86_64")}, fakes)
    graph.rule("declarations", "python3 $tool $in $data && touch $out", "$what")
    graph.rule("stubs", "python3 $in $arguments && touch $out", "stubs for the linker")
    graph.rule("link", "ld64.lld-19 $kind @flags.link -o $out @$out.objects", "link: $out",
               rspfile="$out.objects", rspfile_content="$in")


def link_flags(graph):
    write_if_changed(graph.out / "flags.link", "\n".join([
        "-arch arm64", f"-platform_version macos {DEPLOYMENT_TARGET} 15.0", "-syslibroot stubs",
        *(f"-framework {f}" for f in FRAMEWORKS), *(f"-l{q}" for q in qt_views.LIBRARIES),
        "-lobjc -lc++ -lSystem"]) + "\n")
    # The runtime's blocks go before those of GNUstep.
    write_if_changed(graph.out / "flags.fake_link", "\n".join([
        "-fsanitize=address,undefined", "-fuse-ld=lld-19", "-L/usr/lib/gcc/x86_64-linux-gnu/12",
        "-lBlocksRuntime -lgnustep-base -lobjc", *(f"-l{q}" for q in qt_views.LIBRARIES),
        "-lgmock -lgtest -lpthread"]) + "\n")


def add_declarations(graph):
    graph.build("declarations/all.json", "ast_arm64", [TESTS / "decl/all.mm"])
    tools = sorted((TESTS / "tools").glob("*.py"))
    data = (f"--headers {TESTS}/decl --npm {graph.downloads}/npm/types "
            f"--fpc {graph.downloads}/debian/usr/share/fpcsrc/3.2.2/packages "
            f"--allow {TESTS}/declaration_allow_list.txt")
    tool = TESTS / "tools/check_declarations.py"
    graph.build("declarations/public_data.ok", "declarations", ["declarations/all.json"],
                [*tools, TESTS / "declaration_allow_list.txt"], tool=tool, data=data,
                what="declarations against public data")
    graph.check("declarations", "declarations/public_data.ok")
    graph.build("declarations/mistakes.ok", "declarations", ["declarations/all.json"], tools, tool=tool,
                data=data + " --self-test", what="mistakes seeded into the declarations")
    graph.check("declarations", "declarations/mistakes.ok")


def write_prefix(graph, name, headers):
    prefix = graph.out / name
    write_if_changed(prefix, "".join(f"#include <{h}>\n" for h in headers))
    return prefix


def add_object(graph, source):
    output = f"types_on_arm64/{object_name(source)}"
    if source.suffix == ".mm":
        graph.build(output, "compile_arm64", [source], ["standard.pch"])
    else:
        graph.build(output, "room", [source], ["rooms.pch"])
    return output


def add_apple_builds(graph, sources):
    standard = [h for h in COMMON_HEADERS if "/" not in h]
    graph.build("standard.pch", "prefix_arm64", [write_prefix(graph, "standard_prefix.hpp", standard)])
    graph.build("rooms.pch", "room_prefix",
                [write_prefix(graph, "room_prefix.hpp", [*standard, *ROOM_HEADERS])])
    prefix = write_prefix(graph, "prefix.hpp", COMMON_HEADERS)
    for arch in ("arm64", "x86_64"):
        graph.build(f"{arch}.pch", f"prefix_{arch}", [prefix])
    objects = []
    for source in sources:
        name = object_name(source)
        add_object(graph, source)
        graph.check("types_on_arm64", f"types_on_arm64/{name}")
        objects.append(f"types_on_arm64/{name}")
        if source.suffix != ".mm":
            continue
        graph.build(f"types_on_x86_64/{name}", "types_x86_64", [source], ["x86_64.pch"], prefix="x86_64.pch")
        graph.check("types_on_x86_64", f"types_on_x86_64/{name}")
        # After the type check, so that a mistake is reported once and in its own words.
        graph.build(f"analyzer/{name}", "analyze_arm64", [source],
                    ["arm64.pch", f"types_on_arm64/{name}"],
                    prefix="arm64.pch")
        graph.check("analyzer", f"analyzer/{name}")
    stubs = TESTS / "tools/link_stubs.py"
    graph.build("stubs.ok", "stubs", [stubs],
                arguments=f"{graph.downloads}/npm/types {graph.downloads}/debian stubs "
                          + " ".join(qt_views.LIBRARIES))
    list_objects(graph, "types_on_arm64", objects)
    graph.build("link/libmacos.dylib", "link", objects, ["stubs.ok"], kind="-dylib")
    graph.check("link", "link/libmacos.dylib")
    return objects


def add_program(graph, back_end_objects):
    """The rooms, which are the same on every system, and the entry of macOS: the whole program."""
    objects = list(back_end_objects)
    for source in program_sources():
        output = add_object(graph, source)
        graph.check("types_on_arm64", output)
        objects.append(output)
    objects += qt_views.add_apple_builds(graph, ROOT)
    graph.build("link/orvelkit", "link", objects, ["stubs.ok"], kind="-execute")
    graph.check("link", "link/orvelkit")


def add_fakes(graph, sources):
    graph.build("fakes.pch", "fake_prefix",
                [write_prefix(graph, "fake_prefix.hpp", ("gmock/gmock.h", *COMMON_HEADERS))])
    objects = []
    # What of the command line meets the system.
    app = [ROOT / "app/mac/mac_recording.mm", ROOT / "app/preferences.cpp", ROOT / "platform/memory/event_names.cpp",
           *(ROOT / "app/record").glob("*.cpp"), ROOT / "app/cli/prefs_command.cpp",
           ROOT / "app/cli/preference_text.cpp"]
    own = [*app, *(TESTS / "fakes").glob("*.mm"), *(TESTS / "fakes").glob("*.cpp"),
           *(TESTS / "run").glob("*.mm"), *(ROOT / "tests/platform").glob("mac_*.mm")]
    own = [path for path in own if not qt_views.is_qt(path.relative_to(ROOT))]
    for source in [*sources, *sorted(own)]:
        name = f"run_over_fakes/{object_name(source)}"
        if source.suffix == ".mm":
            graph.build(name, "fake", [source], ["fakes.pch"], options="-include-pch fakes.pch")
        else:
            graph.build(name, "fake", [source], options="-x c++")
        objects.append(name)
    objects += qt_views.add_fakes(graph, ROOT)
    list_objects(graph, "run_over_fakes", objects)
    graph.build("run_over_fakes/program", "fake_link", objects)
    graph.build("run_over_fakes/report.xml", "fake_run", ["run_over_fakes/program"])
    graph.check("run_over_fakes", "run_over_fakes/report.xml")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("out", type=pathlib.Path)
    parser.add_argument("downloads", type=pathlib.Path)
    options = parser.parse_args()

    graph = Graph(options.out.resolve(), options.downloads.resolve())
    back_end = sorted(path for path in (ROOT / "platform/macos").iterdir()
                      if path.suffix in (".mm", ".cpp")
                      and not qt_views.is_qt(path.relative_to(ROOT)))
    shared = sorted([*(ROOT / "platform").glob("*.cpp"), *(ROOT / "platform/base").glob("*.cpp")])
    add_rules(graph)
    add_declarations(graph)
    add_program(graph, add_apple_builds(graph, back_end + shared))
    add_fakes(graph, back_end + shared)
    (graph.out / "build.ninja").write_text(graph.text(), encoding="utf-8")


if __name__ == "__main__":
    main()
