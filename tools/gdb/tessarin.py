"""Shows the embedded platform's objects in gdb: strings, numbers, arrays, dictionaries, index sets, colours.

    (gdb) source tools/gdb/tessarin.py
    (gdb) print effects
    $1 = NSArray of 2 = {"Delay", "Reverb"}

Objects are read where they lie, so that it works on core dumps as well; no code of the program is run. The library
must have been built with debugging information.
"""

import gdb
import gdb.printing

# What one index set shows at most.
MOST_RANGES = 100


def type_named(name):
    return gdb.lookup_type("tessarin::" + name)


def is_handle(kind):
    """Whether a type is NSObject or derived from it."""
    kind = kind.strip_typedefs()
    if kind.code != gdb.TYPE_CODE_STRUCT:
        return False
    if kind.name == "tessarin::NSObject":
        return True
    return any(field.is_base_class and is_handle(field.type) for field in kind.fields())


def class_names(pointer):
    """The names of an object's class and of those that it is derived from, the root last."""
    record = pointer["isa"].cast(type_named("embedded::RuntimeClass").pointer())
    if bool(record["isMetaclass"]):
        return ["Class"]
    names = []
    while int(record) != 0:
        names.append(standard_string(record["name"]))
        record = record["superclass"]
    return names


def standard_string(value):
    text, length = value["_M_dataplus"]["_M_p"], int(value["_M_string_length"])
    return text.string("utf-8", "replace", length)


def storage(pointer, type_name):
    """The data that follows an object's header."""
    address = int(pointer) + type_named("Object").sizeof
    return gdb.Value(address).cast(type_named("embedded::" + type_name).pointer()).dereference()


def units_of(view):
    """The text of a StringView."""
    length_and_width = int(view["lengthAndWidth_"])
    length, is_wide = length_and_width >> 1, length_and_width & 1
    if length == 0:
        return ""
    units = bytes(gdb.selected_inferior().read_memory(int(view["units_"]), length << is_wide))
    return units.decode("utf-16-le", "replace") if is_wide else units.decode("latin-1")


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n") + '"'


class Plain:
    """An object of which only the class is shown."""

    def __init__(self, pointer, name):
        self.pointer = pointer
        self.name = name

    def to_string(self):
        return f"<{self.name}: {int(self.pointer):#x}>"


class String(Plain):
    def to_string(self):
        return quoted(units_of(storage(self.pointer, "StringStorage")["contents_"]))


class Number(Plain):
    def to_string(self):
        value = storage(self.pointer, "NumberValue")
        kind = str(value["kind"]).rsplit("::", 1)[-1]
        if kind == "boolean":
            return "YES" if int(value["integer"]) else "NO"
        if kind in ("float32", "float64"):
            return repr(float(value["real"]))
        integer = int(value["integer"])
        return str(integer + (1 << 64) if kind == "uint64" and integer < 0 else integer)


class Array(Plain):
    def data(self):
        return storage(self.pointer, "ArrayStorage")

    def to_string(self):
        return f"{self.name} of {int(self.data()['count'])}"

    def children(self):
        data = self.data()
        for index in range(int(data["count"])):
            yield str(index), data["items"][index]

    def display_hint(self):
        return "array"


class Dictionary(Plain):
    def data(self):
        return storage(self.pointer, "DictionaryStorage")

    def to_string(self):
        return f"{self.name} of {int(self.data()['count_'])}"

    def children(self):
        data = self.data()
        for index in range(int(data["size_"])):
            entry = data["entries_"][index]
            if int(entry["key"]["object_"]) != 0:  # not removed
                yield f"key {index}", entry["key"]
                yield f"object {index}", entry["object"]

    def display_hint(self):
        return "map"


class IndexSet(Plain):
    def to_string(self):
        ranges = []
        for first, last in self.runs(storage(self.pointer, "IndexSetStorage")["root_"]):
            if ranges and ranges[-1][1] + 1 == first:
                ranges[-1][1] = last
            elif len(ranges) == MOST_RANGES:
                return f"{self.name} {{{self.shown(ranges)}, ...}}"
            else:
                ranges.append([first, last])
        return f"{self.name} {{{self.shown(ranges)}}}"

    @staticmethod
    def shown(ranges):
        return ", ".join(str(first) if first == last else f"{first}-{last}" for first, last in ranges)

    def runs(self, pointer):
        """The runs of members in ascending order; neighbours may touch."""
        if int(pointer) == 0:
            return
        node = pointer.dereference()
        base, shift = int(node["base"]), int(node["shift"])
        stored = int(node["stored"])
        solid = int(node["occupied"]) & ~stored
        entries = (pointer + 1).cast(type_named("embedded::IndexSetNode::Entry").pointer())
        offset = int(node["offset"])
        is_scattered = offset == 0xFF
        for slot in range(64):
            bit = 1 << slot
            first = base + (slot << shift)
            if solid & bit:
                yield first, first + (1 << shift) - 1
            elif stored & bit:
                position = bin(stored & (bit - 1)).count("1") if is_scattered else slot - offset
                if shift == 6:
                    yield from self.runs_of_word(first, int(entries[position]["word"]))
                else:
                    yield from self.runs(entries[position]["child"])

    @staticmethod
    def runs_of_word(first, word):
        for index in range(64):
            if word >> index & 1:
                yield first + index, first + index


class Color(Plain):
    def to_string(self):
        data = storage(self.pointer, "ColorStorage")
        space = data["space"]["_M_payload"]
        if not bool(space["_M_engaged"]):
            return super().to_string()
        name = str(space["_M_payload"]["_M_value"]).rsplit("::", 1)[-1]
        count = 1 if name.endswith("Gray") else 4 if name.endswith("CMYK") else 3
        components = [float(data["components"]["_M_elems"][index]) for index in range(count)]
        return f"{self.name} {name} {' '.join(f'{each:g}' for each in components)}, alpha {float(data['alpha']):g}"


PRINTERS = {
    "NSString": String,
    "NSNumber": Number,
    "NSArray": Array,
    "NSDictionary": Dictionary,
    "NSIndexSet": IndexSet,
    "NSColor": Color,
}


class Nil:
    def to_string(self):
        return "nil"


def printer_of(value):
    """The printer of a handle, chosen by the class that its object is of."""
    pointer = value.cast(type_named("NSObject"))["object_"]
    if int(pointer) == 0:
        return Nil()
    try:
        names = class_names(pointer)
        for name in names:
            if name in PRINTERS:
                return PRINTERS[name](pointer, names[0])
        return Plain(pointer, names[0])
    except (gdb.error, gdb.MemoryError):
        return None  # no object any more, or no debugging information: as gdb shows it by itself


class Printers(gdb.printing.PrettyPrinter):
    def __init__(self):
        super().__init__("tessarin")

    def __call__(self, value):
        return printer_of(value) if is_handle(value.type) else None


gdb.printing.register_pretty_printer(gdb.current_objfile(), Printers(), replace=True)
