#!/usr/bin/env python3
"""Back ends are twins: every port has a file of the same stem in each, methods in the same order.

A port is a header in platform/ with a pure virtual method. A complete back end may lack no port;
the gaps of the others are listed. Methods stand in the port's order in all of them. What a port
promises is stated once, in its contract suite, and every back end that has the port is held to it.
"""

import re

from sources import Finding, Source, blank_comments_and_texts, code_files, main

BACK_ENDS = {"memory": "memory_", "x11": "x11_", "macos": "mac_"}
COMPLETE = ("memory",)

# The names under which contract suites are instantiated, and the back end that each stands for.
INSTANCES = {"Memory": "memory", "Disk": "x11", "X11": "x11", "Mac": "macos",
             "Layouts": "x11", "Ibus": "x11", "Fcitx": "x11"}
# Ports that have no suite -> why.
WITHOUT_SUITE = {}
# Twins that no instance of their port's suite holds to it: (back end, port) -> why.
WITHOUT_INSTANCE = {
    ("x11", "haptics"): "no touchpad of an X11 session has a motor that programs can drive",
}


def methods(text, pattern):
    return re.findall(pattern, blank_comments_and_texts(text))


def port_methods(text):
    """Names of the pure virtual methods, in order of declaration."""
    return methods(text, r"\bvirtual\b[^;{}]*?\b(\w+)\s*\((?:[^;{}])*?\)[^;{}()]*=\s*0\s*;")


def override_methods(text):
    return methods(text, r"\b(\w+)\s*\([^;{}]*?\)\s*(?:const\s*)?(?:noexcept\s*)?override\b")


def check_order(port, twin):
    wanted = port_methods(port.text)
    found = [m for m in override_methods(twin.text) if m in wanted]
    in_order = [m for m in wanted if m in found]
    if found and found != in_order:
        return [Finding(twin.path, 1, f"methods in another order than {port.path}: {', '.join(found)}")]
    return []


def twins(port, back_end, by_path):
    base = f"platform/{back_end}/{BACK_ENDS[back_end]}{stem(port)}"
    return [by_path[base + suffix] for suffix in (".hpp", ".cpp", ".mm") if base + suffix in by_path]


def stem(port):
    return port.path[len("platform/"):-len(".hpp")]


def ports_of(sources):
    return [s for s in sources
            if re.fullmatch(r"platform/\w+\.hpp", s.path) and port_methods(s.text)]


def gaps(sources):
    """back end -> stems of the ports that it lacks; only back ends of which something exists."""
    by_path = {s.path: s for s in sources}
    started = [b for b, prefix in BACK_ENDS.items()
               if any(path.startswith(f"platform/{b}/{prefix}") for path in by_path)]
    return {b: [stem(p) for p in ports_of(sources) if not twins(p, b, by_path)] for b in started}


def suite_of(name):
    return "".join(word.capitalize() for word in name.split("_")) + "Contract"


def instances(sources):
    """(suite, back end or the unknown name) -> path, of every instance of a contract suite."""
    found = {}
    for source in sources:
        for name, suite in re.findall(
                r"\bINSTANTIATE_TYPED_TEST_SUITE_P\(\s*(\w+)\s*,\s*(\w+Contract)\s*,", source.text):
            found[suite, INSTANCES.get(name, name)] = source.path
    return found


def check_contracts(sources, without_instance):
    by_path = {s.path: s for s in sources}
    found = instances(sources)
    findings = [Finding(path, 1, f"{suite} is instantiated under {name}, which is no back end's name")
                for (suite, name), path in found.items() if name not in BACK_ENDS]
    for port in ports_of(sources):
        name = stem(port)
        if name in WITHOUT_SUITE:
            continue
        if f"tests/platform/contract/{name}_contract.hpp" not in by_path:
            findings.append(Finding(port.path, 1, f"no tests/platform/contract/{name}_contract.hpp"))
            continue
        for back_end in BACK_ENDS:
            is_held = (suite_of(name), back_end) in found
            is_excused = (back_end, name) in without_instance
            if is_excused and is_held:
                findings.append(Finding("tests/checks/mirror.py", 1,
                                        f"{back_end} is held to {name} and needs no excuse any more"))
            elif not is_excused and not is_held and twins(port, back_end, by_path):
                findings.append(Finding(port.path, 1, f"no test instantiates {suite_of(name)} for {back_end}"))
    return findings


def check(sources):
    return check_twins(sources) + check_contracts(sources, WITHOUT_INSTANCE)


def check_twins(sources):
    by_path = {s.path: s for s in sources}
    findings = [Finding(f"platform/{name}.hpp", 1, f"no platform/{b}/{BACK_ENDS[b]}{name}.*")
                for b, missing in gaps(sources).items() if b in COMPLETE for name in missing]
    for port in ports_of(sources):
        for back_end in BACK_ENDS:
            for twin in twins(port, back_end, by_path):
                findings += check_order(port, twin)
    return findings


def self_test():
    port = Source("platform/screens.hpp", """
        class Screens {
            virtual ~Screens() = default;
            virtual std::vector<Rect> frames() const = 0;
            virtual Subscription onChange(std::function<void()> told) = 0;
        };""")
    plain = Source("platform/plain.hpp", "struct Plain { int a = 0; };")
    twin = Source("platform/memory/memory_screens.hpp", """
        class MemoryScreens : public Screens {
            std::vector<Rect> frames() const override;
            Subscription onChange(std::function<void()> told) override;
        };""")
    swapped = Source(twin.path, """
        Subscription onChange(std::function<void()> told) override;
        std::vector<Rect> frames() const override;""")
    other = Source("platform/memory/memory_other.hpp", "")
    assert port_methods(port.text) == ["frames", "onChange"]
    assert check_twins([port, plain, twin]) == []
    assert "another order" in check_twins([port, swapped])[0].text
    assert "no platform/memory/memory_screens" in check_twins([port, other])[0].text
    real = Source("platform/x11/x11_other.hpp", "")
    assert check_twins([port, twin, real]) == []
    assert gaps([port, twin, real]) == {"memory": [], "x11": ["screens"]}
    self_test_contracts([port, plain, twin])


def self_test_contracts(twins_of_screens):
    def texts(*more, excuses=()):
        return [f.text for f in check_contracts([*twins_of_screens, *more], excuses)]

    def instance(name):
        return Source(f"tests/{name}.cpp",
                      f"INSTANTIATE_TYPED_TEST_SUITE_P({name}, ScreensContract, {name}Harness);")

    contract = Source("tests/platform/contract/screens_contract.hpp", "")
    excuse = {("memory", "screens"): "why"}
    assert texts() == ["no tests/platform/contract/screens_contract.hpp"]
    assert texts(contract) == ["no test instantiates ScreensContract for memory"]
    assert texts(contract, instance("Memory")) == []
    assert "no back end's name" in texts(contract, instance("Memory"), instance("Wayland"))[0]
    assert texts(contract, excuses=excuse) == []
    assert "no excuse" in texts(contract, instance("Memory"), excuses=excuse)[0]


if __name__ == "__main__":
    main("mirror", check, self_test)
    for back_end, missing in gaps(code_files()).items():
        if missing:
            print(f"        {back_end} lacks {len(missing)}: {', '.join(missing)}")
