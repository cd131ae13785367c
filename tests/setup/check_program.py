"""Runs the set-up program and holds what it writes against the published schemas.

    check_program.py <kelvo-setup> <schemas folder>
"""

import json
import pathlib
import subprocess
import sys
import tempfile

import jsonschema

program, schemas = sys.argv[1], pathlib.Path(sys.argv[2])
files = {"soc2-mesh-bondgraph.json": "soc2-mesh.schema.json", "roles-bondgraph.json": "roles.schema.json"}
failures = 0


def run(arguments, code, out="", err=""):
    global failures
    ran = subprocess.run([program, *map(str, arguments)], capture_output=True, text=True, timeout=30)
    if ran.returncode != code or out not in ran.stdout or err not in ran.stderr:
        failures += 1
        print(f"{arguments}: {ran}")


def valid(folder):
    for name, schema in files.items():
        document = json.loads((folder / name).read_text(encoding="utf-8"))
        jsonschema.validate(document, json.loads((schemas / schema).read_text(encoding="utf-8")))
    return json.loads((folder / "soc2-mesh-bondgraph.json").read_text(encoding="utf-8"))


with tempfile.TemporaryDirectory() as place:
    place = pathlib.Path(place)
    for length, criteria in (("short", 13), ("long", 27)):
        run(["--starter", length, "--organisation", "Ada & Co", place / length], 0, f"{criteria} criteria, 4 roles")
        assert valid(place / length)["organisation"] == "Ada & Co"
    run(["--starter", "short", place / "long"], 1, err="roles-bondgraph.json is there already. Nothing was written.")
    assert len(valid(place / "long")["nodes"]) == 27

    own = place / "list.csv"
    own.write_text("id;title\nCC6 access;One\n9;Two\n", encoding="utf-8")
    run([own, place / "own"], 1, err="Line 2 of list.csv: the id “CC6 access” holds a blank.\nLine 3 of list.csv: ")
    assert not (place / "own").exists()
    own.write_text("id;title\nCC6-access;One\n", encoding="utf-8")
    run([own, place / "own"], 0, "1 criterion, 2 roles")
    assert "organisation" not in valid(place / "own")
    run([place / "none.csv", place / "none"], 1, err="none.csv: No such file or directory.")

    catalog = place / "catalog.JSON"
    catalog.write_text('{"catalog":{"controls":[{"id":"a","title":"T"}]}}', encoding="utf-8")
    run([catalog, place / "catalog"], 0, "1 criterion, 2 roles")
    valid(place / "catalog")

    run(["--help"], 0, "usage:")
    run(["--version"], 0, "kelvo-setup ")
    for wrong in ([], [own], ["--starter", "tiny", place], ["--starter"], ["--more", own, place]):
        run(wrong, 2, err="usage:")
sys.exit(1 if failures else 0)
