#!/usr/bin/env python3
"""Writes text stubs of the system's libraries for the linker.

What they export comes from data that others made (the type definitions of npm, the symbols of
libc++ and musl), never from what our objects use: a name that does not exist stays undefined.
"""

import argparse
import pathlib
import re
import subprocess

# Frameworks and the letter of their version.
_FRAMEWORKS = {
    "AppKit": "C", "Foundation": "C", "CoreFoundation": "A", "CoreGraphics": "A",
    "ApplicationServices": "A", "Carbon": "A", "CoreServices": "A", "IOKit": "A",
    "ServiceManagement": "A", "ScreenCaptureKit": "A",
}
# Names that only compilers and loaders speak of.
_COMPILER = {
    "libSystem": """__NSConcreteStackBlock __NSConcreteGlobalBlock ___stack_chk_fail
        ___stack_chk_guard dyld_stub_binder __Unwind_Resume __Block_object_assign
        __Block_object_dispose __Block_copy __Block_release __availability_version_check _bzero
        ___isPlatformVersionAtLeast _mach_task_self_ ___error""",
    "libobjc": """_objc_msgSend _objc_msgSendSuper2 _objc_alloc _objc_alloc_init _objc_retain
        _objc_release _objc_autorelease _objc_autoreleaseReturnValue
        _objc_retainAutoreleasedReturnValue _objc_unsafeClaimAutoreleasedReturnValue
        _objc_claimAutoreleasedReturnValue _objc_retainAutoreleaseReturnValue
        _objc_retainAutorelease _objc_retainBlock _objc_storeStrong _objc_storeWeak _objc_initWeak
        _objc_destroyWeak _objc_copyWeak _objc_moveWeak _objc_loadWeak _objc_loadWeakRetained
        _objc_autoreleasePoolPush _objc_autoreleasePoolPop _objc_enumerationMutation
        _objc_getProperty _objc_setProperty_atomic _objc_setProperty_atomic_copy
        _objc_setProperty_nonatomic _objc_setProperty_nonatomic_copy _objc_opt_class
        _objc_opt_isKindOfClass _objc_opt_new _objc_opt_self _objc_opt_respondsToSelector
        _objc_terminate _objc_begin_catch _objc_end_catch _objc_exception_throw
        __objc_empty_cache __objc_empty_vtable ___objc_personality_v0 _objc_getClass
        _objc_sync_enter _objc_sync_exit _objc_copyStruct _objc_copyCppObjectAtomic""",
    "CoreFoundation": "___CFConstantStringClassReference ___NSArray0__ ___NSDictionary0__",
}


def _write_stub(path, install_name, symbols, classes=()):
    def row(kind, names):
        listed = ", ".join(f"'{n}'" for n in sorted(names))
        return f"    {kind}: [ {listed} ]\n" if names else ""

    targets = "[ x86_64-macos, arm64-macos ]"
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(
        f"--- !tapi-tbd\ntbd-version: 4\ntargets: {targets}\ninstall-name: '{install_name}'\n"
        f"current-version: 1\ncompatibility-version: 1\nexports:\n  - targets: {targets}\n"
        + row("symbols", symbols) + row("objc-classes", classes) + "...\n", encoding="utf-8")


def _exported(types, framework):
    text = (types / f"{framework}.d.ts").read_text(encoding="utf-8")
    functions = set(re.findall(r"^declare function (\w+)\(", text, re.M))
    # Constants with a literal value are no symbols.
    data = set(re.findall(r"^declare (?:const|var|let) (\w+): (?!\{)", text, re.M))
    classes = set(re.findall(r"^declare class (\w+)", text, re.M))
    return {"_" + name for name in functions | data}, classes


def _defined(library, is_dynamic):
    listed = subprocess.run(["nm", "-D" if is_dynamic else "-g", "--defined-only", library],
                            capture_output=True, text=True, check=True).stdout
    rows = (line.split() for line in listed.splitlines())
    return {"_" + row[-1].split("@")[0] for row in rows if len(row) == 3}


def _compiler_names(library):
    return set(_COMPILER.get(library, "").split())


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("types", type=pathlib.Path, help="folder of the package's types")
    parser.add_argument("debian", type=pathlib.Path, help="folder of unpacked Debian packages")
    parser.add_argument("out", type=pathlib.Path, help="root of the stubs")
    parser.add_argument("qt", nargs="*", help="libraries of Qt, as they are installed here")
    options = parser.parse_args()

    for framework, version in _FRAMEWORKS.items():
        symbols, classes = _exported(options.types, framework)
        place = f"System/Library/Frameworks/{framework}.framework"
        _write_stub(options.out / place / f"{framework}.tbd",
                    f"/{place}/Versions/{version}/{framework}",
                    symbols | _compiler_names(framework), classes)
    llvm = options.debian / "usr/lib/llvm-19/lib"
    _write_stub(options.out / "usr/lib/libc++.tbd", "/usr/lib/libc++.1.dylib",
                _defined(llvm / "libc++.so.1.0", True) | _defined(llvm / "libc++abi.so.1.0", True))
    _write_stub(options.out / "usr/lib/libSystem.tbd", "/usr/lib/libSystem.B.dylib",
                _defined(options.debian / "usr/lib/x86_64-linux-musl/libc.a", False)
                | _exported(options.types, "Runtime")[0] | _compiler_names("libSystem"))
    _write_stub(options.out / "usr/lib/libobjc.tbd", "/usr/lib/libobjc.A.dylib",
                _compiler_names("libobjc"), {"NSObject"})

    for name in options.qt:
        # The C++ library of this machine marks functions that return its strings.
        symbols = {symbol.replace("B5cxx11", "")
                   for symbol in _defined(f"/usr/lib/x86_64-linux-gnu/lib{name}.so", True)}
        _write_stub(options.out / f"usr/lib/lib{name}.tbd", f"/usr/lib/lib{name}.dylib", symbols)


if __name__ == "__main__":
    main()
