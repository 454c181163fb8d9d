#!/usr/bin/env python3
"""Reads the archives that write_archives has written with plistlib, which knows nothing of this library, and checks
the layout of each and what it holds.

    check_layout.py <directory>
"""
import pathlib
import plistlib
import sys

INT64_MIN, INT64_MAX, UINT64_MAX = -(2**63), 2**63 - 1, 2**64 - 1
TRACK_BYTES = b"\x00\x01\xff"


def instance(class_name, *further_classes, **values):
    """An object as it is compared: its class and those it is derived from, and what it encoded."""
    return ([class_name, *further_classes, "NSObject"], values)


def array(*items):
    return instance("NSArray", items=list(items))


def mutable_array(*items):
    return instance("NSMutableArray", "NSArray", items=list(items))


def dictionary(*entries):
    return instance("NSDictionary", entries=list(entries))


def date(seconds):
    return instance("NSDate", time=float(seconds))


def url(text):
    return instance("NSURL", base=None, relative=text)


def track(name, channel, following):
    return instance("ArchivedTrack", name=name, next=following, nothing=None, muted=True, channel=channel,
                    frames=INT64_MIN, pan=0.5, gain=0.125, bytes=TRACK_BYTES)


def transformed_value(**values):
    values = {key if key.startswith("TSR") else f"TSSRValueTransformer{key}": value for key, value in values.items()}
    return instance("TSSRTransformedValue", TSSRValueTransformerValueClass="NSNumber", **values)


# What each sample holds. An object that was met before stands as its number in the archive.
EXPECTED = {
    "strings": array("", "text", "\u00e9\u20ac\u05d0", "<&>\"'", "$class"),
    "mutable-string": instance("NSMutableString", "NSString", string="text"),
    "null": array(instance("NSNull"), 2),
    "text-null": instance("NSString", string="$null"),
    "booleans": array(True, False),
    "integers": array(0, 1, -1, 255, 65536, 2**32, INT64_MAX, INT64_MIN),
    "largest-integer": UINT64_MAX,
    "reals": array(2.5, -1e300, 0.25),
    "precise-real": 0.1,
    "data": array(b"", b"a\x00\xff"),
    "mutable-data": instance("NSMutableData", "NSData", data=b"abc"),
    "dates": array(date(0), date(86400), date(-86400)),
    "date-with-fraction": date(0.375),
    "urls": array(url("http://example.com/a%20b?c#d"), url("file:///a%20b/c")),
    "colors": array(instance("NSColor", NSColorSpace=1, NSRGB=b"1 0.5 0.25 0.75\0"),
                    instance("NSColor", NSColorSpace=2, NSRGB=b"0 0.125 1\0"),
                    instance("NSColor", NSColorSpace=3, NSWhite=b"0.3 0.5\0"),
                    instance("NSColor", NSColorSpace=4, NSWhite=b"0.75\0"),
                    instance("NSColor", NSColorSpace=6, NSCatalogName="Acme", NSColorName="accent")),
    "color-of-ink": instance("NSColor", NSColorSpace=5, NSCMYK=b"0.2 0.4 0.6 0.3 0.5\0"),
    "array": array("a", array(), array("b", array("c"))),
    "mutable-array": mutable_array("a", mutable_array()),
    "dictionary": dictionary(("key", "value"), ("items", array("item")), (1, "one")),
    "mutable-dictionary": instance("NSMutableDictionary", "NSDictionary", entries=[("$key", "value")]),
    "shared-objects": array(array("x"), 2, dictionary(("shared", 2))),
    "tracks": array(track("first", 1, track("second", 2, 2)), 5, track("third", 3, 2)),
    "track-without-next": track("last", 4, None),
    "nil": None,
    "transformed-value": transformed_value(TransformedValue=5),
    "transformed-value-described": transformed_value(TransformedValueDescription="a plain value"),
    "transformed-value-nil": transformed_value(TransformedValueDescription=None),
    "transformed-value-shorter-key": transformed_value(TransformedValue="ignored",
                                                       TSRValueTransformerTransformedValue="restored"),
}


class Archive:
    def __init__(self, document, is_binary):
        self.is_binary = is_binary
        assert set(document) == {"$version", "$archiver", "$top", "$objects"}, f"entries {sorted(document)}"
        assert document["$version"] == 100000 and document["$archiver"] == "NSKeyedArchiver"
        self.objects = document["$objects"]
        self.top = document["$top"]
        assert self.objects[0] == "$null", "the first object is not the one that stands for nil"
        self.met = set()

    def number(self, value):
        """The number of a reference; None for any other value."""
        if isinstance(value, plistlib.UID):
            assert self.is_binary, "XML has no UIDs"
            return value.data
        if isinstance(value, dict) and set(value) == {"CF$UID"}:
            assert not self.is_binary, "a UID has a form of its own in binary property lists"
            return value["CF$UID"]
        return None

    def value(self, value):
        number = self.number(value)
        return value if number is None else self.object(number)

    def object(self, number):
        assert 0 <= number < len(self.objects), f"reference to object {number}"
        if number == 0:
            return None
        if number in self.met:
            return self.objects[number] if not isinstance(self.objects[number], dict) else number
        self.met.add(number)
        contents = self.objects[number]
        if not isinstance(contents, dict):
            assert isinstance(contents, (str, bool, int, float, bytes)), f"object {number} is {contents!r}"
            return contents
        values = {key: value for key, value in contents.items() if key != "$class"}
        return (self.classes(self.number(contents["$class"])), self.readable(values))

    def classes(self, number):
        description = self.objects[number]
        assert set(description) == {"$classname", "$classes"}, f"class {description!r}"
        assert description["$classes"][0] == description["$classname"]
        assert description["$classes"][-1] == "NSObject"
        return description["$classes"]

    def readable(self, values):
        """What an object encoded, with the platform's keys as EXPECTED writes them."""
        if set(values) == {"NS.objects"}:
            return {"items": self.items(values["NS.objects"])}
        if set(values) == {"NS.keys", "NS.objects"}:
            keys, objects = self.items(values["NS.keys"]), self.items(values["NS.objects"])
            assert len(keys) == len(objects)
            return {"entries": list(zip(keys, objects))}
        result = {}
        for key, value in values.items():
            if key.startswith("NS."):
                key = key[3:]
            elif key.startswith("$"):
                assert key.startswith("$$"), f"key {key}"
                key = key[2:]
            result[key] = self.value(value)
        return result

    def items(self, references):
        assert all(self.number(each) is not None for each in references)
        return [self.value(each) for each in references]


def same_kind(found, expected):
    """Equality that tells True from 1 and 1 from 1.0."""
    if isinstance(expected, (list, tuple)):
        return type(found) is type(expected) and len(found) == len(expected) and all(map(same_kind, found, expected))
    if isinstance(expected, dict):
        return set(found) == set(expected) and all(same_kind(found[key], expected[key]) for key in expected)
    return type(found) is type(expected) and found == expected


def check(path, name, is_binary):
    document = path.read_bytes()
    begin = b"bplist00" if is_binary else b'<?xml version="1.0" encoding="UTF-8"?>\n<!DOCTYPE plist PUBLIC'
    assert document.startswith(begin), "the header"
    archive = Archive(plistlib.loads(document), is_binary)
    assert set(archive.top) == {"root"}
    root = archive.object(archive.number(archive.top["root"]))
    assert same_kind(root, EXPECTED[name]), f"found {root!r}, expected {EXPECTED[name]!r}"


def main():
    directory = pathlib.Path(sys.argv[1])
    paths = sorted(directory.glob("*.archive"))
    failures = 0
    for path in paths:
        name, form = path.name.split(".")[:2]
        try:
            check(path, name, form == "binary")
        except Exception as problem:  # pylint: disable=broad-except
            failures += 1
            print(f"{path.name}: {type(problem).__name__}: {problem}")
    print(f"{len(paths) - failures} of {len(paths)} archives are as they should be")
    missing = {f"{name}.{form}.archive" for name in EXPECTED for form in ("binary", "xml")} - {p.name for p in paths}
    if missing:
        print("not written:", *sorted(missing))
    sys.exit(1 if failures or missing else 0)


if __name__ == "__main__":
    main()
