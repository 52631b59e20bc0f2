"""The part of the graph that meets Qt: what fills the panels. Qt's headers and libraries are those
of Debian; what macOS needs of them is the same on every system."""

import re

LIBRARIES = ("Qt6Core", "Qt6Gui", "Qt6Qml", "Qt6Quick", "Qt6Svg")
_INCLUDES = "/usr/include/x86_64-linux-gnu/qt6"
_MODULES = ("QtCore", "QtGui", "QtNetwork", "QtOpenGL", "QtQml", "QtQmlIntegration", "QtQmlModels",
            "QtQuick", "QtSvg")
_MOC = "/usr/lib/qt6/libexec/moc"
# platform/qt has more, for X11.
_SOURCES = re.compile(r"^(?!tests/)[a-z_]+/view/.*\.cpp$|^platform/qt/(?:panel_view|spring|symbol_icons)\.cpp$"
                      r"|^platform/qt/controls/.*\.cpp$|^platform/macos/mac_(?:qt|quick)_.*\.mm$"
                      r"|^app/mac/mac_resident\.mm$")
_TESTS = re.compile(r"^tests/macos/(?:run/quick_.*|fakes/fake_qt_.*)\.mm$")
_MAIN = "tests/macos/run/main.mm"


def is_qt(path):
    return any(pattern.match(str(path)) for pattern in (_SOURCES, _TESTS)) or str(path) == _MAIN


def _flags():
    return " ".join(f"-isystem {_INCLUDES}/{module}" for module in ("", *_MODULES))


def _object(folder, path):
    return f"{folder}/{str(path).replace('/', '.')}.o"


def _find(root, pattern):
    return sorted(path.relative_to(root) for top in root.iterdir()
                  if top.is_dir() and not top.name.startswith((".", "build"))
                  for path in top.rglob("*") if pattern.match(str(path.relative_to(root))))


def add_rules(graph, compilers, fakes):
    common = {"deps": "gcc", "depfile": "$out.d"}
    for arch, compiler in compilers.items():
        graph.rule(f"qt_prefix_{arch}", f"{compiler} {_flags()} -MD -MF $out.d -x objective-c++-header "
                   "$in -o $out", f"Qt's headers ({arch})", **common)
        # One prefix serves both languages.
        graph.rule(f"qt_{arch}", f"{compiler} {_flags()} -include-pch qt_{arch}.pch -MD -MF $out.d "
                   "$options -x objective-c++ -c $in -o $out", f"type check ({arch}): $in", **common)
    graph.rule("qt_analyze", f"{compilers['arm64']} {_flags()} -include-pch qt_arm64.pch "
               "@flags.analyzer $in && touch $out",
               "analyzer: $in")
    graph.rule("moc", f"{_MOC} -I{graph.root} {_flags().replace('-isystem ', '-I')} $in -o $out", "moc: $in")
    graph.rule("qt_fake", f"{fakes} {_flags()} -include-pch fakes.pch -MD -MF $out.d "
               "-x objective-c++ -c $in -o $out", "for the fakes: $in",
               **common)


def _add_prefixes(graph):
    prefix = graph.out / "qt_prefix.hpp"
    headers = ("AppKit/AppKit.h", "QQmlEngine", "QQuickWindow", "QQuickItem", "QGuiApplication")
    text = "".join(f"#include <{header}>\n" for header in headers)
    if not prefix.exists() or prefix.read_text(encoding="utf-8") != text:
        prefix.write_text(text, encoding="utf-8")
    for arch in ("arm64", "x86_64"):
        graph.build(f"qt_{arch}.pch", f"qt_prefix_{arch}", [prefix])


def add_apple_builds(graph, root):
    """Types on both architectures, the analyzer; returns the objects for the whole program."""
    _add_prefixes(graph)
    objects = []
    for path in _find(root, _SOURCES):
        for arch in ("arm64", "x86_64"):
            if arch == "x86_64" and path.suffix != ".mm":
                continue
            output = _object(f"types_on_{arch}", path)
            graph.build(output, f"qt_{arch}", [root / path], [f"qt_{arch}.pch"])
            graph.check(f"types_on_{arch}", output)
        objects.append(_object("types_on_arm64", path))
        if path.suffix == ".mm":
            output = _object("analyzer", path)
            graph.build(output, "qt_analyze", [root / path], ["qt_arm64.pch", objects[-1]])
            graph.check("analyzer", output)
    for path in _find(root, re.compile(r"^(?!tests/)(?:[a-z_]+/view|platform/qt/controls)/.*\.hpp$")):
        if "Q_OBJECT" not in (root / path).read_text(encoding="utf-8"):
            continue
        source = f"moc/{str(path).replace('/', '.')}.cpp"
        graph.build(source, "moc", [root / path])
        # What moc writes does not meet our warnings.
        graph.build(f"{source}.o", "qt_arm64", [source], ["qt_arm64.pch"], options="-w")
        objects.append(f"{source}.o")
    return objects


def add_fakes(graph, root):
    """What is run with a real Qt, which draws into memory; returns the objects."""
    paths = [path for path in _find(root, _SOURCES)
             if str(path) == "platform/qt/panel_view.cpp" or path.name.startswith("mac_quick_")]
    objects = []
    for path in [*paths, *_find(root, _TESTS), _MAIN]:
        objects.append(_object("run_over_fakes", path))
        graph.build(objects[-1], "qt_fake", [root / path], ["fakes.pch"])
    return objects
