"""Mistakes seeded into every declaration at once, to see how many of them are noticed."""

import copy

_OTHER_WIDTH = {"u32": "u64", "i32": "i64", "u64": "u32", "i64": "i32", "u16": "u64",
                "f32": "f64", "f64": "f32", "u8": "u32"}


def _drop_parameter(declared):
    for name, function in declared.functions.items():
        if function.parameters:
            function.parameters.pop()
            yield "function", name


def _pointer_to_integer(declared):
    for name, function in declared.functions.items():
        if "ptr" in function.parameters:
            function.parameters[function.parameters.index("ptr")] = "u64"
            yield "function", name


def _width(declared):
    for name, function in declared.functions.items():
        for i, kind in enumerate(function.parameters):
            if kind in _OTHER_WIDTH:
                function.parameters[i] = _OTHER_WIDTH[kind]
                yield "function", name
                break


def _enumerator_value(declared):
    for name, enumerator in declared.enumerators.items():
        enumerator.value += 1
        yield "enumerator", name


def _string_text(declared):
    for name in declared.strings:
        declared.strings[name] += "x"
        yield "string", name


def _selector(declared):
    for owner, members in declared.classes.items():
        for selector in list(members.methods):
            wrong = selector[:-1] + "Q:" if selector.endswith(":") else selector + "Q"
            members.methods[wrong] = members.methods.pop(selector)
            yield "method", f"{wrong[0]}[{owner} {wrong[1:]}]"


def _property_type(declared):
    for owner, members in declared.classes.items():
        for name, declared_property in members.properties.items():
            declared_property.kind = "i32" if declared_property.kind == "ptr" else "ptr"
            yield "property", f"{name[0]}[{owner} {name[1:]}]"


# What is seeded, how, and the share that must be noticed. Widths are known to one source only.
_MUTATIONS = (
    ("dropped parameter", _drop_parameter, 1.0),
    ("pointer to integer", _pointer_to_integer, 1.0),
    ("integer width", _width, 0.6),
    ("enumerator value", _enumerator_value, 0.95),
    ("text of a string", _string_text, 0.95),
    ("selector", _selector, 1.0),
    ("type of a property", _property_type, 1.0),
)


def self_test(declared, find):
    """`find` gives what is wrong with declarations; true when enough is noticed."""
    passed = True
    for what, seed, share in _MUTATIONS:
        changed = copy.deepcopy(declared)
        seeded = set(seed(changed))
        noticed = seeded & find(changed).keys()
        enough = len(noticed) >= share * len(seeded)
        passed = passed and enough
        print(f"  {what:20} {len(seeded):3} seeded, {len(noticed):3} noticed"
              f"{'' if enough else f'  TOO FEW, wanted {share:.0%}'}")
    return passed
