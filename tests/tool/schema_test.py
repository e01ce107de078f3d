"""Validates JSON output against the schemas, and the contents of `rtifed json`. Usage: schema_test.py PROGRAM DOCS EXAMPLES"""

import json
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

import jsonschema

program, docs, examples = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])


def validate(document, kind, folder=docs):
    schema = json.loads((folder / (kind + ".schema.json")).read_text())
    resolver = jsonschema.RefResolver(docs.as_uri() + "/", schema)  # finds the schemas that this one refers to
    validator = jsonschema.Draft202012Validator(schema, resolver=resolver)
    validator.check_schema(validator.schema)
    validator.validate(document)


def model(contents, status, *options):
    with tempfile.NamedTemporaryFile() as file:
        file.write(contents)
        file.flush()
        run = subprocess.run([program, "json", *options, file.name], capture_output=True)
    assert run.returncode == status, (run.returncode, run.stderr)
    document = json.loads(run.stdout.decode("utf-8", "strict"))
    assert run.stdout.decode() == json.dumps(document, indent=2, ensure_ascii=False) + "\n"
    validate(document, "model")
    assert document.pop("file") == file.name
    return document


def without_places(value):
    if isinstance(value, dict):
        return {key: without_places(inner) for key, inner in value.items() if key != "place"}
    return [without_places(item) for item in value] if isinstance(value, list) else value


for example in examples.glob("*.fed"):
    document = model(example.read_bytes(), 0, "--effective")
    for classes, members, effective in (("objectClasses", "attributesFrom", "effectiveAttributes"),
                                        ("interactionClasses", "parametersFrom", "effectiveParameters")):
        own = members.replace("From", "")
        by_name = {node["name"]: node for node in document[classes]}
        for node in document[classes]:
            above = by_name[node["parent"]][effective] if node["parent"] else []
            expected = above + [{"name": member["name"], "declaredBy": node["name"]} for member in node[own]]
            assert node[effective] == expected, node["name"]
            assert [member["name"] for at in node[members] for member in document[classes][at][own]] == \
                [member["name"] for member in expected], node["name"]
    with tempfile.NamedTemporaryFile() as image:
        subprocess.run([program, "save", example, image.name], check=True)
        restored = model(pathlib.Path(image.name).read_bytes(), 0, "--effective")
    places = {json.dumps(item["place"]) for item in restored["objectClasses"] + restored["spaces"]}
    assert places == {"null"}
    assert without_places(restored) == without_places(document)

refused = model(b'(FED (Federation "\xff\x01") (FEDversion v) (objects (class A (attribute a slow)))', 1)
assert refused["federation"] == "\ufffd\x01" and not refused["loads"] and refused["checksum"] is None
assert refused["objectClasses"][0]["attributes"] == [
    {"name": "a", "handle": None, "place": {"line": 1, "column": 68}, "transportation": "slow", "ordering": None,
     "space": None}]
model(b"\x7fELF\0\0", 1)

with tempfile.TemporaryDirectory() as folder:
    old, new, wrong = str(examples / "harbour.fed"), folder + "/new.fed", folder + "/wrong.fed"
    changed = pathlib.Path(old).read_text().replace("(class Ferry", "(class Barge) (class Ferry", 1)
    pathlib.Path(new).write_text(changed.replace("(class Tanker", "(class Tank", 1).replace("v1.3", "v1.4"))
    pathlib.Path(wrong).write_text("(FED (Federation F) (objects (class A (attribute a slow)) (class A)))")
    for kind, status, arguments in (("diff", 1, ["diff", old, new]), ("diff", 1, ["diff", old, wrong]),
                                    ("findings", 1, ["check", old, wrong]), ("findings", 2, ["check", wrong, folder + "/none"]),
                                    ("statistics", 2, ["check", "--statistics", wrong, folder + "/none"])):
        run = subprocess.run([program, arguments[0], "--format", "json", *arguments[1:]], stdout=subprocess.PIPE)
        assert run.returncode == status, arguments
        validate(json.loads(run.stdout), kind)

    # The data of a page is made of the documents of other commands.
    for arguments in ([new], [wrong, "--against", old], [new, "--against", old]):
        page = subprocess.run([program, "html", *arguments], capture_output=True).stdout.decode("utf-8", "strict")
        data = json.loads(page.split('<script id="data" type="application/json">')[1].split("</script")[0])
        validate(data, "data", docs.parent / "tool/page")
        for finding in data["findings"]:
            assert finding["rule"] in data["rules"] and finding.pop("of", "none") != "none"
            assert len(finding.pop("furtherOf")) == len(finding["furtherPlaces"])
        validate({"formatVersion": 2, "failures": [], "files": [{
            "file": arguments[0], "findings": data["findings"], "loads": data["model"]["loads"], "errors": 0, "warnings": 0, "fixable": 0,
            "notShown": 0, "suppressed": 0}]}, "findings")

    # Machine formats list every finding, and are valid whatever is in names and texts.
    hostile = bytes(folder, "utf-8") + b"/\x01\xff\n<&\"']]>[x](y)%25.fed"
    name = b"\xff\x02\xef\xbf\xbe]]>&amp;<x>'\xe2\x80\xae[x](http://y)"
    with open(hostile, "wb") as file:
        file.write(b"(FED (Federation F) (FEDversion v) (objects (class ObjectRoot"
                   + b"".join(b"(attribute \"%s%d\" slow%d receive)" % (name, i, i) for i in range(99)) + b")))")
    for fail_on, failures in (("error", 100), ("warning", 102)): # with the missing MOM, privilegeToDelete and RTIprivate
        outputs = {kind: subprocess.run([program, "check", "--fail-on", fail_on, "--format", kind, hostile],
                                        stdout=subprocess.PIPE).stdout for kind in ("json", "sarif", "gitlab", "junit")}
        documents = {kind: json.loads(outputs[kind]) for kind in ("json", "sarif", "gitlab")}
        validate(documents["json"], "findings")
        assert len(documents["json"]["files"][0]["findings"]) == 102
        assert len(documents["sarif"]["runs"][0]["results"]) == 102
        assert len({entry["fingerprint"] for entry in documents["gitlab"]}) == len(documents["gitlab"]) == 102
        suite, = xml.etree.ElementTree.fromstring(outputs["junit"])
        assert suite.get("tests") == str(len(suite)) == "102"
        assert suite.get("failures") == str(len(suite.findall("testcase/failure"))) == str(failures)
        assert suite.get("name").endswith("/\\x01\\xff\n<&\"']]>[x](y)%25.fed")
