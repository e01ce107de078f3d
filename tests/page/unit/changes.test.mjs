import assert from "node:assert/strict";
import { test } from "node:test";

import { modelOf } from "./models.mjs";
import { load } from "./script.mjs";

const { adoptRemoved, countBelow, createModel, declarersOf, findNode, Marks, Remarks, removedMembers } =
    load("adoptRemoved", "countBelow", "createModel", "declarersOf", "findNode", "Marks", "Remarks", "removedMembers");

const change = (kind, subject, owner, name, more) =>
    ({ kind, subject, in: owner, name, contents: [], movedDownTo: [], rename: null, from: null, to: null, ...more });

const before = { object: { "Root": ["delete"], "Root.A": ["x", "y"], "Root.Gone": ["g"], "Root.Gone.Sub": ["s"], "Root.B": ["b"] } };
const after = { object: { "Root": ["delete"], "ROOT.A": ["x"], "Root.New": ["n"], "Root.B": ["b"], "Root.B.C": [] } };
const CHANGES = [
    change("renamed", "object class", "Root", "A"),
    change("removed", "attribute", "Root.A", "y"),
    change("removed", "object class", "Root", "Gone", {
        contents: [{ subject: "attribute", in: "Root.Gone", name: "g" }, { subject: "object class", in: "Root.Gone", name: "Sub" },
            { subject: "attribute", in: "Root.Gone.Sub", name: "s" }],
    }),
    change("added", "object class", "Root", "New", { contents: [{ subject: "attribute", in: "Root.New", name: "n" }] }),
    change("added", "object class", "Root.B", "C"),
    change("renumbered", "object class", "Root", "B", { from: 5, to: 4 }),
    change("renumbered", "attribute", "Root.B", "b", { from: 6, to: 3 }),
    change("renamed", "federation", "", "Other"),
];

function compared(changes) {
    const model = createModel(modelOf(after));
    const old = createModel(modelOf(before));
    const marks = new Marks({ changes });
    adoptRemoved(model.object, old.object, (kind, name) => marks.isRemoved(kind, name));
    countBelow(model.object);
    marks.spread(model);
    return { model, old, marks, find: name => findNode(model.object, name) };
}

test("classes and members have the sign of their change", () => {
    const { marks, find } = compared(CHANGES);
    const signs = names => names.map(name => `${name} ${marks.signOf(find(name))}`).join(", ");
    assert.equal(signs(["Root", "ROOT.A", "Root.Gone", "Root.Gone.Sub", "Root.New", "Root.B", "Root.B.C"]),
        "Root , ROOT.A ~, Root.Gone -, Root.Gone.Sub -, Root.New +, Root.B , Root.B.C +");
    const member = (name, memberName) => marks.ofMember(find(name), memberName).sign;
    assert.deepEqual([member("ROOT.A", "Y"), member("ROOT.A", "x"), member("Root.New", "n"), member("Root.Gone", "g"), member("Root.B", "b")],
        ["-", "", "+", "-", ""]);
    assert.deepEqual(marks.changesOf(find("Root.B")).map(({ kind }) => kind), ["renumbered"]); // shown on the page of the class
    assert.deepEqual(["Root", "Root.B", "Root.New"].map(name => marks.below.has(find(name))), [true, true, false]);
    assert.ok(marks.shows(find("Root.B")) && marks.shows(find("Root.Gone")));
});

test("members that moved are marked where they are declared now", () => {
    const { marks, find } = compared([
        change("moved up", "attribute", "Root.B.C", "b", { from: "Root.B.C", to: "Root.B" }),
        change("removed", "attribute", "Root", "x", { movedDownTo: [{ subject: "attribute", in: "ROOT.A", name: "x" }] }),
    ]);
    const member = (name, memberName) => marks.ofMember(find(name), memberName).sign;
    assert.deepEqual([member("Root.B", "b"), member("Root.B.C", "b"), member("ROOT.A", "x"), member("Root", "x")], ["+", "", "~", "-"]);
    assert.deepEqual(["Root", "ROOT.A", "Root.B", "Root.B.C"].map(name => marks.signOf(find(name))), ["~", "~", "~", "~"]);
});

test("new handles alone are marked if nothing else changed", () => {
    const { marks, find } = compared(CHANGES.filter(({ kind }) => kind === "renumbered"));
    assert.equal(marks.signOf(find("Root.B")), "~");
    assert.equal(marks.ofMember(find("Root.B"), "b").sign, "~");
});

test("removed classes are shown where they were, with their members", () => {
    const { model, old, marks, find } = compared(CHANGES);
    const gone = find("Root.Gone");
    assert.ok(gone.removed && gone.parent === find("Root") && gone.parent.children.includes(gone));
    assert.deepEqual(gone.children.map(({ name }) => name), ["Root.Gone.Sub"]);
    assert.deepEqual(declarersOf(gone.children[0]).map(({ name }) => name), ["Root.Gone.Sub", "Root.Gone", "Root"]);
    assert.deepEqual(removedMembers(marks, find("ROOT.A"), findNode(old.object, "Root.A")).map(({ name }) => name), ["y"]);
    assert.equal(model.object.nodes.length, 7);
    assert.equal(find("Root").numBelow, 4); // only those that are still there
});

test("findings are at what they are about, and seen from above it", () => {
    const { model } = compared([]);
    const remarks = new Remarks({
        findings: [
            { severity: "warning", of: ["object", 0, 0], furtherPlaces: [{ text: "too", place: { line: 9 } }], furtherOf: [["object", 4]] },
            { severity: "error", of: ["object", 3, 0], furtherPlaces: [], furtherOf: [] },
            { severity: "error", of: null, furtherPlaces: [], furtherOf: [] },
        ],
        documentation: [{ of: ["object", 3, 0], text: "one" }, { of: ["object", 3, 0], text: "two" }],
    });
    remarks.spread(model);
    const [root, , , b, c] = model.object.nodes;
    assert.deepEqual([root, b, c].map(node => remarks.severityOf(node)), ["warning", "error", "warning"]);
    assert.deepEqual(remarks.findingsOf(c).map(({ text, place }) => `${place.line} ${text}`), ["9 too"]);
    assert.deepEqual([root, b, c].map(node => remarks.severityBelow(node)), ["error", "warning", ""]);
    assert.equal(remarks.findingsOf(b).length, 0);
    assert.equal(remarks.findingsOf(b, 0).length, 1);
    assert.equal(remarks.documentationOf(b, 0), "one\ntwo");
});

test("the Management Object Model is the class Manager below a root, with everything in it", () => {
    const { object, space } = createModel(modelOf({
        object: { "Root": [], "Root.MANAGER": [], "Root.Manager.Federate": [], "Root.A": [], "Root.A.Manager": [], "Manager": [] },
        space: { Area: [], HLAmomDefaultSpace: [] },
    }));
    assert.deepEqual([...object.nodes, ...space.nodes].filter(({ mom }) => mom).map(({ name }) => name),
        ["Root.MANAGER", "Root.Manager.Federate", "HLAmomDefaultSpace"]);
});
