#!/usr/bin/env python3
"""Calls that have one place: clocks, sleeping, `shared`, the environment, `new`, output, threads."""

import re
from dataclasses import dataclass

from sources import Finding, expect, main


@dataclass(frozen=True)
class Ban:
    what: str
    pattern: str
    allowed: str  # Paths in which the call has its place.


_PROGRAMS = r"app/(?:main\.cpp|mac_main\.mm|session_main\.cpp)|app/(?:cli|session|mac)/"

BANS = (
    Ban("a clock: ask RunLoop for the time",
        r"\b(?:system_clock|steady_clock|high_resolution_clock)\s*::\s*now\b"
        r"|\b(?:gettimeofday|clock_gettime)\s*\(|(?<![\w.>:])(?:std::|::)?time\s*\(\s*(?:nullptr|NULL|0|&)",
        r"platform/(?!memory/|base/)|tests/|tools/|bench/"),
    Ban("sleeping: poll with a deadline or use a timer",
        r"\b(?:sleep_for|sleep_until)\s*\(|(?<![\w.>:])(?:::)?(?:usleep|nanosleep|sleep)\s*\(",
        r"tests/support/poll_until|tools/rig/poll_until"),
    Ban("`shared`: pass what is needed to the constructor",
        r"::\s*shared\s*\(\s*\)",
        r"app/|[a-z_]+/view/|platform/base/shared_instance|platform/macos/|tests/"),
    Ban("the environment: read it at the front door or in a back end",
        r"\b(?:secure_)?getenv\s*\(|\bsetenv\s*\(|\bputenv\s*\(|\bunsetenv\s*\(",
        rf"{_PROGRAMS}|platform/(?!memory/|base/)|tests/|tools/|bench/"),
    Ban("a bare new: use std::make_unique or a value",
        r"(?<!operator )\bnew\s+(?:\(\w+\)\s*)?[A-Za-z_:]",
        r"[a-z_]+/view/|platform/(?:qt|x11|macos)/|tests/(?:view|session|qt)/"),
    Ban("a bare delete: use an owner", r"(?<!= )(?<!operator )\bdelete\s+[A-Za-z_*(]|\bdelete\s*\[\]",
        r"platform/(?:qt|x11|macos)/"),
    Ban("output: use the Log port",
        r"\bstd::(?:cout|cerr|clog)\b|(?<![\w:.>])(?:std::)?(?:printf|puts|fputs|fprintf|perror)\s*\(",
        rf"{_PROGRAMS}|app/replay/|app/record/|platform/|tests/|tools/|bench/"),
    Ban("a thread: use RunLoop's background queue",
        r"\bstd::(?:thread|jthread|async)\b|\bpthread_create\b",
        r"platform/(?!memory/|base/)|tests/|tools/|bench/"),
    Ban("a child process: use TaskRunner",
        r"(?<![\w:.>])(?:std::|::)?(?:system|popen|fork|vfork|execv\w*|execl\w*|posix_spawnp?)\s*\(",
        rf"{_PROGRAMS}|platform/(?!memory/|base/)|tests/|tools/|bench/"),
    Ban("static state: a member, or constexpr",
        r"^\s+static\s+(?!const\b|constexpr\b|inline\b|_?assert|void\b|auto\b)[\w:<>,\s*&]+?\s+\w+\s*(?:=|\{|;)",
        r"platform/|tests/|tools/|bench/|[a-z_]+/view/"),
)


def check(sources):
    findings = []
    for source in sources:
        bans = [ban for ban in BANS if not re.match(ban.allowed, source.path)]
        for number, line in enumerate(source.code_lines(), 1):
            findings += [Finding(source.path, number, ban.what)
                         for ban in bans if re.search(ban.pattern, line)]
    return findings


def self_test():
    bad = {
        "auto t = std::chrono::steady_clock::now();": "clock",
        "auto t = std::time(nullptr);": "clock",
        "std::this_thread::sleep_for(1s);": "sleeping",
        "usleep(10);": "sleeping",
        "OrvelEngine::shared().start();": "shared",
        'auto home = std::getenv("HOME");': "environment",
        "auto* p = new Panel(1);": "bare new",
        "delete panel_;": "bare delete",
        'std::cout << "x";': "output",
        "std::jthread worker;": "thread",
        'std::system("ls");': "child process",
        "    static int counter = 0;": "static state",
    }
    for line, wanted in bad.items():
        expect(check, "engine/a.cpp", line, wanted)
    expect(check, "tests/engine/a_test.cpp", "sleep(1);", "sleeping")
    expect(check, "platform/memory/m.cpp", "auto t = std::chrono::system_clock::now();", "clock")
    fine = """
        // The new panel sleeps; sleep(1) and std::cout are only words here.
        auto text = "new Panel, printf(x), getenv(y)";
        Panel(const Panel&) = delete;
        auto due = runLoop.now() + renewal(1);
        static constexpr int kLimit = 3;
        static void helper();
        auto apps = workspace.time(3);
        int newCount = 1'000;
    """
    expect(check, "engine/a.cpp", fine)
    expect(check, "platform/x11/a.cpp", "auto t = std::chrono::steady_clock::now();")


if __name__ == "__main__":
    main("banned calls", check, self_test)
