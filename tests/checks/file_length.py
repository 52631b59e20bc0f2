#!/usr/bin/env python3
"""Files that are too long to read in one go."""

import re

from sources import ROOT, Finding, Source, expect, main, tracked_files

LIMITS = (
    (r"^tests/.*\.(?:cpp|hpp|mm|qml)$", 500),
    (r"^engine/rules/.*\.(?:cpp|hpp)$", 220),
    (r"\.hpp$", 250),
    (r"\.(?:cpp|mm)$", 450),
    (r"\.qml$", 260),
)
# Tables of data grow with what they list.
TABLES = re.compile(
    r"^(?:platform/base/(?:key_codes|event_flags)|engine/(?:key_codes|event_flags|rule_table)|settings_ui/(?:feature_cards|keyboard_drawing)"
    r"|app/preference_keys|app/replay/(?:call|query)_table|tests/macos/)")


def measured_files():
    return [Source(path, (ROOT / path).read_text(encoding="utf-8"))
            for path in tracked_files() if any(re.search(p, path) for p, _ in LIMITS)]


def check(sources):
    findings = []
    for source in sources:
        if TABLES.match(source.path):
            continue
        limit = next((n for pattern, n in LIMITS if re.search(pattern, source.path)), None)
        length = source.text.count("\n")
        if limit and length > limit:
            findings.append(Finding(source.path, limit + 1,
                                    f"{length} lines, more than {limit}: split it by what it does"))
    return findings


def self_test():
    expect(check, "engine/a.cpp", "\n" * 451, "451 lines")
    expect(check, "engine/a.hpp", "\n" * 251, "251 lines")
    expect(check, "engine/rules/a.cpp", "\n" * 221, "221 lines")
    expect(check, "overlay/view/A.qml", "\n" * 261, "261 lines")
    expect(check, "tests/engine/a_test.cpp", "\n" * 501, "501 lines")
    expect(check, "engine/a.cpp", "\n" * 450)
    expect(check, "engine/key_codes.hpp", "\n" * 900)


if __name__ == "__main__":
    main("file length", check, self_test, measured_files)
