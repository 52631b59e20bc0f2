"""What the declaration headers declare, as clang understood them."""

import re
from dataclasses import dataclass, field

# How a value is passed: i8…u64, f32, f64, bool, ptr, void, or "struct NAME".
_PLAIN = {
    "char": "i8", "signed char": "i8", "unsigned char": "u8", "short": "i16",
    "unsigned short": "u16", "int": "i32", "unsigned int": "u32", "long": "i64",
    "unsigned long": "u64", "long long": "i64", "unsigned long long": "u64", "float": "f32",
    "double": "f64", "bool": "bool", "_Bool": "bool", "void": "void", "BOOL": "bool",
}
_QUALIFIERS = re.compile(
    r"\b(?:const|volatile|__unsafe_unretained|__strong|__autoreleasing|__kindof|enum|struct)\b")


@dataclass
class Function:
    returns: str
    parameters: list


@dataclass
class Enumerator:
    enum: str  # Name of the enumeration or option type; empty when it has none.
    value: int


@dataclass
class Property:
    kind: str
    getter: str


@dataclass
class Class:
    methods: dict = field(default_factory=dict)  # "+selector" or "-selector" to Function
    properties: dict = field(default_factory=dict)  # "+name" or "-name" to Property


@dataclass
class Declarations:
    functions: dict = field(default_factory=dict)
    enumerators: dict = field(default_factory=dict)
    strings: dict = field(default_factory=dict)  # macros that stand for a text
    variables: dict = field(default_factory=dict)
    classes: dict = field(default_factory=dict)

    def names(self):
        """Every declared thing as (kind, name)."""
        for kind, things in (("function", self.functions), ("enumerator", self.enumerators),
                             ("string", self.strings), ("variable", self.variables)):
            yield from ((kind, name) for name in things)
        for name, declared in self.classes.items():
            yield "class", name
            yield from (("method", f"{m[0]}[{name} {m[1:]}]") for m in declared.methods)
            yield from (("property", f"{p[0]}[{name} {p[1:]}]") for p in declared.properties)


class _Reader:
    """Walks clang's JSON in the order of the text, which is what its file names rely on."""

    def __init__(self, folder):
        self.folder = folder
        self.file = ""
        self.typedefs = {}
        self.enum_kinds = {}
        self.last_option_type = ""
        self.found = Declarations()

    def kind_of(self, type_node):
        spelled = type_node["qualType"]
        if spelled.strip() == "BOOL":
            return "bool"
        return self._resolve(type_node.get("desugaredQualType", spelled))

    def _resolve(self, spelled):
        text = _QUALIFIERS.sub("", spelled).strip()
        is_reference = re.search(r"[*^\[]", text) or re.search(r"\bNS\w+<", text)
        if is_reference or text in ("id", "instancetype", "Class", "SEL") or text.startswith("id<"):
            return "ptr"
        if text in _PLAIN:
            return _PLAIN[text]
        if text in self.enum_kinds:
            return self.enum_kinds[text]
        if text in self.typedefs and self.typedefs[text] != text:
            return self._resolve(self.typedefs[text])
        return f"struct {text}"

    def read(self, node):
        self._follow_location(node)
        is_ours = self.file.startswith(self.folder)
        reader = getattr(self, "_read_" + node.get("kind", ""), None)
        if reader:
            reader(node, is_ours)
        for child in node.get("inner", []):
            self.read(child) if node["kind"] in ("TranslationUnitDecl", "LinkageSpecDecl") \
                else self._skip(child)

    def _skip(self, node):
        self._follow_location(node)
        for child in node.get("inner", []):
            self._skip(child)

    def _follow_location(self, node):
        for key in ("loc", "range"):
            self._follow(node.get(key))

    def _follow(self, location):
        if not isinstance(location, dict):
            return
        for key, value in location.items():
            if key == "file":
                self.file = value
            elif key != "includedFrom":
                self._follow(value)

    def _read_TypedefDecl(self, node, _):
        self.typedefs[node["name"]] = node["type"].get("desugaredQualType", node["type"]["qualType"])
        self.last_option_type = node["name"]

    def _read_FunctionDecl(self, node, is_ours):
        if is_ours and node.get("storageClass") != "static":
            returned = {"qualType": node["type"]["qualType"].split("(")[0]}
            self.found.functions[node["name"]] = self._function(returned, node)

    def _function(self, returned, node):
        parameters = [c for c in node.get("inner", []) if c["kind"] == "ParmVarDecl"]
        return Function(self.kind_of(returned), [self.kind_of(p["type"]) for p in parameters])

    def _read_VarDecl(self, node, is_ours):
        if is_ours and node.get("storageClass") == "extern":
            self.found.variables[node["name"]] = self.kind_of(node["type"])

    def _read_EnumDecl(self, node, is_ours):
        fixed = node.get("fixedUnderlyingType")
        name = node.get("name", "")
        if name:
            self.enum_kinds[name] = self.kind_of(fixed) if fixed else "u32"
        if not is_ours:
            return
        value = -1
        for constant in node.get("inner", []):
            if constant["kind"] == "EnumConstantDecl":
                written = _written_value(constant)
                value = value + 1 if written is None else written
                # An option's enumerators follow the type that they belong to.
                self.found.enumerators[constant["name"]] = Enumerator(
                    name or (self.last_option_type if fixed else ""), value)

    def _read_ObjCInterfaceDecl(self, node, is_ours):
        if not is_ours or not node.get("inner"):
            return
        declared = self.found.classes.setdefault(node["name"], Class())
        for member in node["inner"]:
            if member["kind"] == "ObjCMethodDecl" and not member.get("isImplicit"):
                sign = "-" if member.get("instance") else "+"
                declared.methods[sign + member["name"]] = self._function(member["returnType"], member)
            elif member["kind"] == "ObjCPropertyDecl":
                sign = "+" if member.get("class") else "-"
                getter = member.get("getter", {}).get("name", member["name"])
                declared.properties[sign + member["name"]] = Property(
                    self.kind_of(member["type"]), getter)

    _read_ObjCProtocolDecl = _read_ObjCInterfaceDecl


def _written_value(node):
    if "value" in node:
        return int(node["value"])
    for child in node.get("inner", []):
        value = _written_value(child)
        if value is not None:
            return value
    return None


def read_declarations(ast, header_texts, folder):
    """`folder` holds the declaration headers; what stands elsewhere does not count."""
    reader = _Reader(folder)
    reader.read(ast)
    for text in header_texts:
        reader.found.strings.update(re.findall(r'#define (k\w+) (?:CFSTR\()?"([^"]*)"', text))
    return reader.found
