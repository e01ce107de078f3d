import assert from "node:assert/strict";
import { test } from "node:test";

import { generator, hostileModel, modelOf } from "./models.mjs";
import { load } from "./script.mjs";

const { createModel, linkOf, parseLink, resolveLink } = load("createModel", "linkOf", "parseLink", "resolveLink");

const harbour = createModel(modelOf({
    object: { "ObjectRoot": ["privilegeToDelete"], "ObjectRoot.Craft": ["Position"], "ObjectRoot.Craft.Tug": ["Load"] },
    interaction: { InteractionRoot: ["Time"] },
    space: { Area: ["x"] },
}));

/** What a fragment shows, as text: the class and member, with the class that declares the member. */
function shown(fragment) {
    const { view, node, member, declarer, missingMember } = resolveLink(harbour, parseLink(fragment));
    if (!node) return view;
    return [node.name, member ? `${declarer.name}/${member.name}` : "", missingMember ? `no ${missingMember}` : ""].filter(x => x).join(" ");
}

test("fragments name pages, classes and members", () => {
    for (const [fragment, expected] of [
        ["", "overview"], ["#", "overview"], ["#findings", "findings"], ["#changes", "changes"], ["#nothing", "missing"],
        ["#object/ObjectRoot.Craft", "ObjectRoot.Craft"],
        ["#object/objectroot.CRAFT/position", "ObjectRoot.Craft ObjectRoot.Craft/Position"],
        ["#object/ObjectRoot.Craft.Tug/Position", "ObjectRoot.Craft.Tug ObjectRoot.Craft/Position"], // inherited
        ["#object/ObjectRoot.Craft/Load", "ObjectRoot.Craft no Load"], // only a subclass has it
        ["#interaction/InteractionRoot/Time", "InteractionRoot InteractionRoot/Time"],
        ["#space/Area/x", "Area Area/x"],
        ["#object/InteractionRoot", "missing"], ["#object/", "missing"], ["#constructor/x", "missing"], ["#object/%", "missing"],
        ["#object/ObjectRoot;9", "ObjectRoot"], // a number that belongs to another version
    ])
        assert.equal(shown(fragment), expected, fragment);
});

test("the link of everything leads back to it, whatever is in the names", () => {
    const random = generator(4);
    for (let round = 0; round < 20; ++round) {
        const model = createModel(hostileModel(random, 30));
        for (const node of model.object.nodes) {
            assert.equal(resolveLink(model, parseLink("#" + linkOf(node))).node, node);
            for (const member of node.members) {
                const fragment = new URL("file:///page.html#" + linkOf(node, member.name)).hash; // as the browser returns it
                assert.equal(resolveLink(model, parseLink(fragment)).member, member, fragment);
            }
        }
    }
});

test("names declared twice have different links", () => {
    const data = modelOf({ object: { ObjectRoot: [] } });
    data.spaces = ["Area", "AREA", "Area"].map(name => ({ name, handle: null, place: null, dimensions: [] }));
    const model = createModel(data);
    for (const node of model.space.nodes) assert.equal(resolveLink(model, parseLink(linkOf(node))).node, node);
});
