"""The Pascal units of Debian's fpc-source, translated from the system's headers up to about 2013.
They know widths and the texts of string constants; what is newer is not in them."""

import glob
import re

_KINDS = {
    "UInt8": "u8", "SInt8": "i8", "UInt16": "u16", "SInt16": "i16", "UInt32": "u32",
    "SInt32": "i32", "UInt64": "u64", "SInt64": "i64", "Float32": "f32", "Float64": "f64",
    "CGFloat": "f64", "Boolean": "u8", "CBool": "bool", "cbool": "bool", "UnivPtr": "ptr",
    "UniChar": "u16", "CFIndex": "i64", "CFTypeRef": "ptr", "CFTypeID": "u64", "OSStatus": "i32",
    "pid_t": "i32", "size_t": "u64", "boolean_t": "u32", "float32": "f32", "NSInteger": "i64",
    "NSUInteger": "u64", "ObjCBOOL": "bool", "id": "ptr", "SEL": "ptr", "pobjc_class": "ptr",
    "cshort": "i16", "cushort": "u16", "cint": "i32", "cuint": "u32", "clong": "i64",
    "culong": "u64", "single": "f32", "double": "f64", "cfloat": "f32", "cdouble": "f64",
    "pointer": "ptr", "OpaqueCBlock": "ptr", "NSTimeInterval": "f64", "pchar": "ptr",
    "char": "i8", "CGPoint": "struct", "CGRect": "struct", "CGSize": "struct",
    "NSPoint": "struct", "NSRect": "struct", "NSSize": "struct",
}
_REFERENCE = re.compile(r"(?:Ref|Ptr|CallBack|Callback|Proxy|UPP)$")
_UNKNOWN = "?"


def _agree(ours, theirs):
    if theirs == _UNKNOWN:
        return True
    if theirs == "struct":
        return ours.startswith("struct ")
    # A boolean is one byte, whatever it is called.
    same = {"bool": "u8", "i8": "u8"}
    return same.get(ours, ours) == same.get(theirs, theirs)


def _without_comments(text):
    text = re.sub(r"\(\*.*?\*\)", "", text, flags=re.S)
    return re.sub(r"\{(?!\$).*?\}", "", text, flags=re.S)


def _read_all(pattern):
    texts = []
    for path in sorted(glob.glob(pattern)):
        with open(path, encoding="utf-8", errors="replace") as file:
            texts.append(file.read())
    return _without_comments("\n".join(texts))


class PascalUnits:
    name = "fpc"

    def __init__(self, packages):
        units = _read_all(f"{packages}/univint/src/*.pas")
        cocoa = "\n".join(_read_all(f"{packages}/cocoaint/src/{framework}/*.inc")
                          for framework in ("appkit", "foundation"))
        both = units + "\n" + cocoa
        self.types = dict(re.findall(r"^\s*(\w+)\s*=\s*(\^?\w+)\s*;", both, re.M))
        self.constants = {name: value.strip() for name, value in
                          re.findall(r"^\s*(\w+)\s*=\s*([^;]+);", both, re.M)}
        self.texts = dict(re.findall(r"\{\$definec (\w+) CFSTRP?\('([^']*)'\)\}", units))
        self.externals = set(re.findall(r"'_(\w+)'", units))
        self.functions = self._read_functions(units)
        self.parents, self.methods = {}, {}
        self._read_classes(cocoa)

    def _read_functions(self, units):
        pattern = re.compile(
            r"^(?:function|procedure)\s+\w+\s*(?:\((.*?)\))?\s*(?::\s*(\w+))?\s*;"
            r"\s*external name '_(\w+)'", re.M | re.S)
        return {m[3]: (self._parameters(m[1] or ""), m[2]) for m in pattern.finditer(units)}

    def _parameters(self, text):
        kinds = []
        for group in filter(None, (part.strip() for part in text.split(";"))):
            names, _, type_name = group.partition(":")
            is_reference = re.match(r"(?:var|const)\b", names)
            kind = "ptr" if is_reference else self._kind(type_name)
            kinds += [kind] * (names.count(",") + 1)
        return kinds

    def _kind(self, text, depth=0):
        text = (text or "").strip()
        if text in _KINDS:
            return _KINDS[text]
        if text.startswith("^") or _REFERENCE.search(text):
            return "ptr"
        following = self.types.get(text)
        return self._kind(following, depth + 1) if following and depth < 8 else _UNKNOWN

    def _read_classes(self, cocoa):
        pattern = re.compile(
            r"^\s*(\w+)\s*=\s*objc(class|category|protocol)\s*(?:external)?\s*(?:name '\w+')?\s*"
            r"\(([^)]*)\)(.*?)^\s*end;", re.M | re.S)
        for match in pattern.finditer(cocoa):
            parent = match[3].split(",")[0].strip()
            owner = parent if match[2] == "category" else match[1]
            if owner == match[1]:
                self.parents[owner] = parent
            methods = self.methods.setdefault(owner, {})
            for static, arguments, returned, selector in re.findall(
                    r"(class )?(?:function|procedure) \w+\s*(?:\(([^)]*)\))?\s*(?::\s*(\w+))?;"
                    r"\s*message '([^']+)'", match[4]):
                methods[("+" if static else "-") + selector] = (self._parameters(arguments), returned)

    def function(self, name, ours):
        if name not in self.functions:
            return None
        return self._differences(ours, *self.functions[name])

    def enumerator(self, name, ours):
        value = self._value(self.constants.get(name, ""))
        if value is None:
            return None
        return [] if (value - ours.value) % 2**32 == 0 else [f"{ours.value}, there {value}"]

    def _value(self, text, depth=0):
        if re.fullmatch(r"-?\d+", text):
            return int(text)
        if re.fullmatch(r"\$[0-9A-Fa-f]+", text):
            return int(text[1:], 16)
        shifted = re.fullmatch(r"(\d+) shl (\d+)", text)
        if shifted:
            return int(shifted[1]) << int(shifted[2])
        four_letters = re.fullmatch(r"FourCharCode\('(.{4})'\)", text)
        if four_letters:
            return int.from_bytes(four_letters[1].encode("mac-roman"), "big")
        following = self.constants.get(text)
        return self._value(following, depth + 1) if following and depth < 5 else None

    def string(self, name, text):
        if name not in self.texts:
            return None
        return [] if self.texts[name] == text else [f"'{text}', there '{self.texts[name]}'"]

    def variable(self, name):
        return [] if name in self.externals else None

    def has_class(self, name):
        return name in self.methods

    def _find(self, owner, selector):
        for _ in range(8):
            found = self.methods.get(owner, {}).get(selector)
            if found:
                return found
            owner = self.parents.get(owner)
        return None

    def method(self, owner, selector, ours):
        found = self._find(owner, selector)
        return None if found is None else self._differences(ours, *found)

    def property(self, owner, name, ours):
        found = self._find(owner, name) or self._find(owner, name[0] + ours.getter)
        if found is None:
            return None
        kind = self._kind(found[1] or "")
        return [] if _agree(ours.kind, kind) else [f"{ours.kind}, there {kind}"]

    def _differences(self, ours, parameters, returned):
        if len(parameters) != len(ours.parameters):
            return [f"{len(ours.parameters)} parameters, there {len(parameters)}"]
        differences = [f"parameter {i} {mine}, there {theirs}"
                       for i, (mine, theirs) in enumerate(zip(ours.parameters, parameters), 1)
                       if not _agree(mine, theirs)]
        if returned and not _agree(ours.returns, self._kind(returned)):
            differences.append(f"returns {ours.returns}, there {returned}")
        return differences
