"""Type definitions of the npm package @nativescript/macos-node-api, made from the system's own
metadata. They tell numbers, booleans, structures and references apart, but not widths."""

import glob
import re

_STRUCTURES = {"CGPoint", "CGSize", "CGRect", "NSPoint", "NSSize", "NSRect", "CFRange",
               "_NSRange", "NSRange"}
_FRAMEWORKS = ("AppKit", "ApplicationServices", "Carbon", "CoreFoundation", "CoreGraphics",
               "CoreServices", "Foundation", "IOKit", "Runtime", "ScreenCaptureKit",
               "ServiceManagement")


def _split(arguments):
    """At the commas that stand outside of brackets."""
    parts, depth, part = [], 0, ""
    for character in arguments.replace("=>", "\1"):
        depth += (character in "(<{[") - (character in ")>}]")
        if character == "," and depth == 0:
            parts.append(part)
            part = ""
        else:
            part += character
    if part.strip():
        parts.append(part)
    return [p.replace("\1", "=>").strip() for p in parts]


def _kind(text):
    text = text.strip().removesuffix("| null").strip()
    if text.startswith("interop.Enum<"):
        return "number"
    if text in _STRUCTURES:
        return "structure"
    return {"number": "number", "boolean": "boolean", "void": "void"}.get(text, "reference")


def _coarse(kind):
    if kind.startswith("struct "):
        return "structure"
    if kind == "bool":
        return "boolean"
    return {"ptr": "reference", "void": "void"}.get(kind, "number")


def _agree(ours, theirs):
    coarse = _coarse(ours)
    # The older Boolean is an unsigned char there and a boolean here.
    return coarse == theirs or (ours == "u8" and theirs == "boolean")


def _parameter_kinds(arguments):
    named = [a for a in _split(arguments) if not a.startswith(("...", "this:"))]
    return [_kind(a.split(":", 1)[1]) for a in named]


class NpmTypes:
    name = "npm"

    def __init__(self, folder):
        self.functions, self.enums, self.variables = {}, {}, {}
        self.members, self.parents = {}, {}
        for framework in _FRAMEWORKS:
            for path in glob.glob(f"{folder}/{framework}.d.ts"):
                with open(path, encoding="utf-8") as file:
                    self._read(file.read())

    def _read(self, text):
        for name, arguments, returned in re.findall(
                r"^declare function (\w+)\((.*)\): (.*);$", text, re.M):
            self.functions.setdefault(name, (_parameter_kinds(arguments), _kind(returned)))
        for name, body in re.findall(r"^declare const (\w+): \{\n(.*?)^\};", text, re.M | re.S):
            values = re.findall(r"^  (\w+): (-?\d+),", body, re.M)
            self.enums.setdefault(name, {k: int(v) for k, v in values})
        self.variables.update(re.findall(
            r"^declare (?:const|var|let) (\w+): ([^{\n]+);", text, re.M))
        for name, parent, body in re.findall(
                r"^declare (?:abstract )?(?:class|interface) (\w+)(?: extends (\w+))?[^\n]*\{\n(.*?)^\}",
                text, re.M | re.S):
            self.members[name] = self.members.get(name, "") + body
            if parent:
                self.parents[name] = parent

    def function(self, name, ours):
        if name not in self.functions:
            return None
        parameters, returned = self.functions[name]
        return _differences(ours, parameters, returned)

    def enumerator(self, name, ours):
        """Names are abbreviated here: CGEventField.KeyboardEventKeycode."""
        values = self.enums.get(ours.enum, {})
        short = [k for k in values if name.lower().endswith(k.lower())]
        if short:
            value = values[max(short, key=len)]
        else:
            value = next((v for enum, members in self.enums.items() for k, v in members.items()
                          if name in (enum + k, "k" + enum + k, k)), None)
        if value is None:
            return None
        return [] if (value - ours.value) % 2**32 == 0 else [f"{ours.value}, there {value}"]

    def string(self, name, text):
        """Knows that the name exists, not what it stands for."""
        return None

    def variable(self, name):
        return [] if name in self.variables else None

    def has_class(self, name):
        return name in self.members

    def _member(self, owner, name, is_static):
        static = "static " if is_static else ""
        chain = owner
        while chain:
            found = self._own_member(chain, name, static)
            if found:
                return found
            chain = self.parents.get(chain)
        return self._own_member("NSObjectProtocol", name, static)

    def _own_member(self, owner, name, static):
        body = self.members.get(owner, "")
        method = re.search(
            rf"^  {static}{re.escape(name)}\??(?:<[^(\n]*?(?:\(\.\.\.args: any\) => any)?>)?"
            rf"\((.*)\): (.*);$", body, re.M)
        if method:
            return _parameter_kinds(method[1]), _kind(method[2])
        found = re.search(
            rf"^  {static}(?:readonly )?{re.escape(name)}\??: (.*);$", body, re.M) or re.search(
            rf"^  {static}get {re.escape(name)}\(\): (.*);$", body, re.M)
        return ([], _kind(found[1])) if found else None

    def method(self, owner, selector, ours):
        parts = selector[1:].split(":")
        name = parts[0] + "".join(p[:1].upper() + p[1:] for p in parts[1:])
        found = self._member(owner, name, selector[0] == "+")
        if found is None:
            return None
        parameters, returned = found
        return _differences(ours, parameters, returned)

    def property(self, owner, name, ours):
        is_static = name[0] == "+"
        found = self._member(owner, name[1:], is_static) or self._member(owner, ours.getter, is_static)
        if found is None:
            return None
        kind = found[1]
        return [] if _agree(ours.kind, kind) else [f"{ours.kind}, there {kind}"]


def _differences(ours, parameters, returned):
    if len(parameters) != len(ours.parameters):
        return [f"{len(ours.parameters)} parameters, there {len(parameters)}"]
    differences = [f"parameter {i} {mine}, there {theirs}"
                   for i, (mine, theirs) in enumerate(zip(ours.parameters, parameters), 1)
                   if not _agree(mine, theirs)]
    if not _agree(ours.returns, returned):
        differences.append(f"returns {ours.returns}, there {returned}")
    return differences
