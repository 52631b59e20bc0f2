#!/usr/bin/env python3
"""Back ends are twins: every port has a file of the same stem in each, methods in the same order.

A port is a header in platform/ with a pure virtual method. A gap that is known and explained
stands in KNOWN_GAPS; a gap that was closed must leave it.
"""

import re

from sources import Finding, Source, blank_comments_and_texts, code_files, main

BACK_ENDS = {"memory": "memory_", "x11": "x11_", "macos": "mac_"}
# (back end, port): why it is absent.
KNOWN_GAPS = {}


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


def check(sources, gaps=None):
    gaps = KNOWN_GAPS if gaps is None else gaps
    by_path = {s.path: s for s in sources}
    ports = [s for s in sources
             if re.fullmatch(r"platform/\w+\.hpp", s.path) and port_methods(s.text)]
    present = {b for b in BACK_ENDS if any(p.startswith(f"platform/{b}/{BACK_ENDS[b]}") for p in by_path)}
    findings = []
    for port in ports:
        stem = port.path[len("platform/"):-len(".hpp")]
        for back_end in sorted(present):
            base = f"platform/{back_end}/{BACK_ENDS[back_end]}{stem}"
            twins = [by_path[base + s] for s in (".hpp", ".cpp", ".mm") if base + s in by_path]
            known = (back_end, stem) in gaps
            if not twins and not known:
                findings.append(Finding(port.path, 1, f"no {base}.*"))
            if twins and known:
                findings.append(Finding(twins[0].path, 1, "is there: take it out of KNOWN_GAPS"))
            for twin in twins:
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
    assert check([port, other], {("memory", "screens"): "why"}) == []
    assert "take it out" in check([port, twin], {("memory", "screens"): "why"})[0].text


if __name__ == "__main__":
    main("mirror", check, self_test, code_files)
