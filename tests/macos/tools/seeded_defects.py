#!/usr/bin/env python3
"""Proves that the checks can fail: puts one mistake at a time into a copy of a source and sees
that the check that is named for it finds it; the checks have passed without the mistake."""

import argparse
import concurrent.futures
import os
import pathlib
import shutil
import subprocess
import sys
from dataclasses import dataclass

ROOT = pathlib.Path(__file__).resolve().parents[3]
DECLARATIONS = ROOT / "tests/macos/decl"
BACK_END = ROOT / "platform/macos"


@dataclass(frozen=True)
class Defect:
    what: str
    source: str  # below platform/macos, or below tests/macos/decl for a declaration
    right: str
    wrong: str
    check: str
    test: str = ""  # the test over the fakes that must fail
    says: str = ""  # what another check must say, so that it fails for this reason


DEFECTS = (
    Defect("wrong bit in the event mask", "mac_event_tap.mm",
           "(request_.options), request_.mask,",
           "(request_.options), request_.mask ^ CGEventMaskBit(kCGEventScrollWheel),",
           "run over fakes", "MacEventTapTest.SitsAtTheHeadOfTheSessionWithExactlyTheMaskAskedFor"),
    Defect("bytes of a media key's data1 swapped", "mac_event_poster.mm",
           "data1:key.data1",
           "data1:((key.data1 & 0xFF) << 8) | ((key.data1 >> 8) & 0xFF) | (key.data1 & ~0xFFFF)",
           "run over fakes", "MacEventPosterTest.AMediaKeyIsASystemDefinedEventWithItsData"),
    Defect("tap not enabled again after a time-out", "mac_event_tap.mm",
           "if (isWanted_ && !isTooSoon) CGEventTapEnable(port_.get(), true);",
           "static_cast<void>(isTooSoon);",
           "run over fakes", "MacEventTapTest.ComesBackAtOnceWhenATimeOutSwitchedItOff"),
    Defect("permission asked for by a tap that needs none", "mac_tap_guard.mm",
           "kProbeMask = CGEventMaskBit(kCGEventKeyDown)", "kProbeMask = CGEventMaskBit(kCGEventNull)",
           "run over fakes", "MacEventTapTest.BeingTakenOutOfTheListIsNoticedAlthoughTheQuickAnswerIsStale"),
    Defect("pointer counted from the top left", "mac_input_state.mm",
           "return {location.x, location.y};",
           "return {location.x, NSScreen.mainScreen.frame.size.height - location.y};",
           "run over fakes", "MacInputStateTest.CountsThePointerFromTheBottomLeft"),
    Defect("result of a Create function never released", "mac_text_caret.mm",
           "const CfRef<AXUIElementRef> system(AXUIElementCreateSystemWide());",
           "const AXUIElementRef lost = AXUIElementCreateSystemWide();\n"
           "        AXUIElementSetMessagingTimeout(lost, 1);\n"
           "        const CfRef<AXUIElementRef> system(AXUIElementCreateSystemWide());",
           "analyzer", says="leak"),
    Defect("result of a Copy function retained in a holder", "mac_input_sources.mm",
           "source(TISCopyCurrentKeyboardInputSource());",
           "source(CfRef<TISInputSourceRef>::retaining(TISCopyCurrentKeyboardInputSource()));",
           "run over fakes", "MacInputSourcesTest.DescribesTheCurrentSource"),
    Defect("wrong selector in a source", "mac_login_items.mm",
           "mainAppService registerAndReturnError:&error", "mainAppService registerWithError:&error", "type check", says="registerWithError:"),
    Defect("wrong selector in a declaration", "common/AppKit/AppKit.h",
           "- (BOOL)activateWithOptions:", "- (BOOL)activateWithOption:", "declarations", says="activateWithOption:"),
    Defect("wrong text of a constant", "common/ApplicationServices/ApplicationServices.h",
           'CFSTR("AXPosition")', 'CFSTR("AXOrigin")', "declarations", says="AXOrigin"),
    Defect("mark of own events dropped", "mac_event_poster.mm",
           "    mark(event.get(), key.userData);\n    return event;", "    return event;",
           "run over fakes", "MacEventPosterTest.PostsKeysInOrderWhereHardwareEventsEnter"),
    Defect("tap not in the common modes", "mac_event_tap.mm",
           "CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes)",
           "CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopDefaultMode)",
           "run over fakes", "MacEventTapTest.HearsKeysAlsoWhileAMenuIsTracked"),
    Defect("block put on the wrong queue", "mac_run_loop.mm",
           "dispatch_async(dispatch_get_main_queue(), onMain(std::move(task)));",
           "dispatch_async(backgroundQueue(), onMain(std::move(task)));",
           "run over fakes", "MacRunLoopTest.PostedTasksRunOnTheMainThread"),
    Defect("passwords recorded", "mac_session.mm",
           "return session.isSecureInput || session.isLocked;", "return session.isLocked;",
           "run over fakes", "MacRecordingTest.StopsWhileSecureInputIsOnOrTheScreenIsLocked"),
    Defect("views not told that they are on screen", "mac_panels.mm",
           "        contents_.setShown(spec_.id, true);\n        [window() makeKeyAndOrderFront:nil];",
           "        [window() makeKeyAndOrderFront:nil];",
           "run over fakes", "MacPanelsTest.TellsItsContentsWhenTheyComeOnScreenAndGo"),
    Defect("call that needs a newer system than promised", "mac_window_images.mm",
           "if (@available(macOS 14.0, *)) return", "if (number != 0) return", "type check", says="only available on macOS 14.0"),
    Defect("function that the system does not have", "mac_caps_lock.mm",
           "IOServiceClose(connection);", "IOServiceCloseAll(connection);", "link", says="IOServiceCloseAll"),
)


class Checker:
    def __init__(self, out, downloads):
        self.out, self.downloads = out, downloads
        self.folder = out / "defects"
        shutil.rmtree(self.folder, ignore_errors=True)

    def command(self, words):
        environment = os.environ | {"ASAN_OPTIONS": "detect_leaks=0", "HOME": str(self.folder)}
        done = subprocess.run(words, cwd=self.out, capture_output=True, text=True, timeout=300,
                              env=environment, check=False)
        return done.returncode == 0, done.stdout + done.stderr

    def copy_with(self, defect, text):
        place = self.folder / defect.what.replace(" ", "_").replace("'", "")
        place.mkdir(parents=True, exist_ok=True)
        copy = place / pathlib.Path(defect.source).name
        copy.write_text(text, encoding="utf-8")
        return copy

    def passes(self, defect, text):
        """Whether the check named for the defect passes on this text, and what it said."""
        run = {"type check": self.types, "analyzer": self.analyzer, "link": self.link,
               "declarations": self.declarations, "run over fakes": self.fakes}[defect.check]
        return run(defect, self.copy_with(defect, text))

    def types(self, _, copy):
        return self.command(["clang++-19", "@flags.arm64", "-fsyntax-only", copy])

    def analyzer(self, _, copy):
        return self.command(["clang++-19", "@flags.arm64", "-include-pch", "arm64.pch", "@flags.analyzer",
                             copy])

    def declarations(self, defect, copy):
        place = copy.parent / "decl"
        shutil.copytree(DECLARATIONS, place, dirs_exist_ok=True)
        shutil.copy(copy, place / defect.source)
        flags = (self.out / "flags.arm64").read_text(encoding="utf-8")
        (copy.parent / "flags").write_text(flags.replace(str(DECLARATIONS), str(place)),
                                           encoding="utf-8")
        ok, ast = self.command(["clang++-19", f"@{copy.parent}/flags", "-fsyntax-only", "-Xclang",
                                "-ast-dump=json", place / "all.mm"])
        (copy.parent / "all.json").write_text(ast, encoding="utf-8")
        return self.command(
            ["python3", ROOT / "tests/macos/tools/check_declarations.py", copy.parent / "all.json",
             "--headers", place, "--npm", self.downloads / "npm/types", "--fpc",
             self.downloads / "debian/usr/share/fpcsrc/3.2.2/packages", "--allow",
             ROOT / "tests/macos/declaration_allow_list.txt"]) if ok else (ok, ast)

    def objects(self, kind, defect, replacement):
        mine = f"{kind}/platform.macos.{defect.source}.o"
        listed = (self.out / f"objects.{kind}").read_text(encoding="utf-8").split()
        return [replacement if name == mine else name for name in listed]

    def link(self, defect, copy):
        text = copy.read_text(encoding="utf-8")
        # Declared, so that only the linker can know.
        copy.write_text(text.replace("namespace orvel::macos {\n",
                                     'extern "C" int IOServiceCloseAll(io_connect_t);\n'
                                     "namespace orvel::macos {\n", 1), encoding="utf-8")
        ok, said = self.command(["clang++-19", "@flags.arm64", "-c", copy, "-o", f"{copy}.o"])
        if not ok:
            return True, f"does not compile: {said}"
        return self.command(["ld64.lld-19", "-dylib", "@flags.link", "-o", f"{copy}.dylib",
                             *self.objects("types_on_arm64", defect, f"{copy}.o")])

    def fakes(self, defect, copy):
        ok, said = self.command(["clang++-19", "@flags.fakes", "-include-pch", "fakes.pch", "-c",
                                 copy, "-o", f"{copy}.o"])
        if not ok:
            return True, f"does not compile: {said}"
        ok, said = self.command(["clang++-19", *self.objects("run_over_fakes", defect, f"{copy}.o"),
                                 "@flags.fake_link", "-o", f"{copy}.program"])
        if not ok:
            return True, f"does not link: {said}"
        return self.command([f"{copy}.program", f"--gtest_filter={defect.test}",
                             "--gtest_fail_fast"])


def judge(checker, defect):
    """Empty when the check tells right from wrong."""
    folder = DECLARATIONS if defect.check == "declarations" else BACK_END
    right = (folder / defect.source).read_text(encoding="utf-8")
    if right.count(defect.right) != 1:
        return f"'{defect.right}' stands {right.count(defect.right)} times in {defect.source}"
    passed, said = checker.passes(defect, right.replace(defect.right, defect.wrong))
    if passed:
        return f"not noticed: {said[-500:]}"
    reason = f"[  FAILED  ] {defect.test}" if defect.test else defect.says
    return "" if reason in said else f"fails, but not for saying '{reason}': {said[-500:]}"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("out", type=pathlib.Path, help="folder of a finished run of the checks")
    parser.add_argument("downloads", type=pathlib.Path)
    options = parser.parse_args()

    checker = Checker(options.out.resolve(), options.downloads.resolve())
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        judged = pool.map(lambda defect: judge(checker, defect), DEFECTS)
        for defect, problem in zip(DEFECTS, judged):
            failed = failed or bool(problem)
            caught = problem or f"caught by {defect.check}" + (f": {defect.test}" if defect.test else "")
            print(f"  {'FAILED ' if problem else ''}{defect.what}: {caught}")
    print(f"  {len(DEFECTS)} defects seeded")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
