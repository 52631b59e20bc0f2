#!/usr/bin/env python3
"""Back ends are twins: every port has a file of the same stem in each, methods in the same order.

A port is a header in platform/ with a pure virtual method. A complete back end may lack no port;
the gaps of the others are listed. Methods stand in the port's order in all of them.
"""

import re

from sources import Finding, Source, blank_comments_and_texts, code_files, main

BACK_ENDS = {"memory": "memory_", "x11": "x11_", "macos": "mac_"}
COMPLETE = ("memory",)


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


def check(sources):
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
    assert check([port, plain, twin]) == []
    assert "another order" in check([port, swapped])[0].text
    assert "no platform/memory/memory_screens" in check([port, other])[0].text
    real = Source("platform/x11/x11_other.hpp", "")
    assert check([port, twin, real]) == []
    assert gaps([port, twin, real]) == {"memory": [], "x11": ["screens"]}


if __name__ == "__main__":
    main("mirror", check, self_test)
    for back_end, missing in gaps(code_files()).items():
        if missing:
            print(f"        {back_end} lacks {len(missing)}: {', '.join(missing)}")
