"""Holds the page of the file formats, the schemas and the files against each other.

usage: check_formats.py CHECKOUT FOLDER

CHECKOUT has the schemas, the page and what ships; every configuration below FOLDER was written by
the program. Prints each fault and ends with 1 if there is one.
"""

import json
import re
import sys
from pathlib import Path

try:
    from jsonschema import Draft202012Validator
except ImportError:
    print("skipped: python3-jsonschema is not installed")
    sys.exit(77)

NAMES = {
    ".lumenfold-site": "site",
    ".lumenfold-project": "project",
    ".lumenfold": "manifest",
    ".lumenfold-built": "build-record",
}
faults = []


def keys_of(schema, prefix=""):
    """The keys that a schema names, as the page spells them: "a", "a.b", "a[].b", "*"."""
    keys = set()
    members = list(schema.get("properties", {}).items())
    if isinstance(schema.get("additionalProperties"), dict):
        members.append(("*", schema["additionalProperties"]))
    for name, value in members:
        key = f"{prefix}.{name}" if prefix else name
        keys |= {key} | keys_of(value, key)
    for choice in schema.get("anyOf", []):
        keys |= keys_of(choice, prefix)
    if "items" in schema:
        keys |= keys_of(schema["items"], prefix + "[]")
    return keys


def keys_of_page(page):
    """The keys of each table that stands under the name of a schema."""
    sections = re.split(r"^Schema: `(.*)\.schema\.json`$", page, flags=re.M)
    return {
        name: set(re.findall(r"^\| `(.*?)` \|", table, flags=re.M))
        for name, table in zip(sections[1::2], sections[2::2])
    }


def check(path, validator):
    for fault in validator.iter_errors(json.loads(path.read_text("utf-8"))):
        faults.append(f"{path}: {fault.json_path}: {fault.message}")


def main(checkout, folder):
    validators = {}
    for path in (checkout / "schemas").glob("*.schema.json"):
        schema = json.loads(path.read_text("utf-8"))
        Draft202012Validator.check_schema(schema)
        validators[path.name.removesuffix(".schema.json")] = Draft202012Validator(schema)

    page = keys_of_page((checkout / "docs/file-formats.md").read_text("utf-8"))
    if set(page) != set(validators):
        faults.append(f"the page tells of {sorted(page)}, schemas of {sorted(validators)}")
    for name in sorted(set(page) & set(validators)):
        for key in sorted(page[name] ^ keys_of(validators[name].schema)):
            where = "page" if key in page[name] else "schema"
            faults.append(f"{name}: only the {where} has {key}")

    seen = set()
    for root in (checkout / "examples", folder):
        for path in root.rglob(".lumenfold*"):
            if path.is_file():
                check(path, validators[NAMES[path.name]])
                seen.add((root, path.name))
    missing = {
        (root, name) for root in (checkout / "examples", folder) for name in list(NAMES)[:3]
    }
    faults.extend(f"no {name} below {root}" for root, name in sorted(missing - seen))
    for path in (checkout / "ext/corvel/themes").glob("*.json"):
        check(path, validators["theme"])

    for name, right in {
        "build-record": {"format": 1, "tag": "1.0.0", "commit": "0", "built": "2026-01-20T09:30:00Z"},
        "update-manifest": {"version": "1.0.0", "platforms": {"linux-x86_64": {"url": "u"}}},
    }.items():
        if not validators[name].is_valid(right):
            faults.append(f"{name}: refuses {right}")

    # A schema that takes anything would not be noticed otherwise.
    for name, wrong in {
        "site": {"policies": [{"slug": "../x"}]},
        "project": {"slug": "a", "facts": [{"preset": "other"}]},
        "manifest": {"build": {"topics": [{"slug": "a"}]}},
        "build-record": {"format": 2, "tag": "1.0"},
        "theme": {"T": {"Gradient": ["#fff"]}},
        "update-manifest": {"version": 1},
    }.items():
        if validators[name].is_valid(wrong):
            faults.append(f"{name}: takes {wrong}")


main(Path(sys.argv[1]), Path(sys.argv[2]))
print(*faults, sep="\n")
sys.exit(1 if faults else 0)
