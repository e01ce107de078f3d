import assert from "node:assert/strict";
import { test } from "node:test";

import { generator, hostileModel, modelOf } from "./models.mjs";
import { load } from "./script.mjs";

const { createIndex, createModel, humpsOf, matchHumps, search } = load("createIndex", "createModel", "humpsOf", "matchHumps", "search");

const harbour = createModel(modelOf({
    object: {
        "ObjectRoot": ["privilegeToDelete"],
        "ObjectRoot.Craft": ["Position", "Velocity"],
        "ObjectRoot.Craft.MerchantVessel": ["HullNumber", "Fuel.Left"],
        "ObjectRoot.Craft.Tug": ["TowlineLoad"],
        "ObjectRoot.Berth": ["Position", "MooredVessel"],
        "ObjectRoot.Manager": ["Position"],
        "ObjectRoot.Manager.Federate": ["FederateHandle"],
    },
    interaction: { "InteractionRoot": [], "InteractionRoot.VesselReport": ["ReportingPoint"] },
    space: { Area51: ["easting"], "Pilot Boats": [] },
}));

const pathOf = ({ entry: { node, member } }) => member === null ? node.name : `${node.name}/${member.name}`;
const find = (index, text, limit = 100) => search(index, text, limit).results.map(pathOf);

test("names are cut into words", () => {
    for (const [name, words] of [
        ["MerchantVessel", "Merchant Vessel"], ["HLAMomDefaultSpace", "HLA Mom Default Space"], ["Fuel_left", "Fuel_ left"],
        ["Area51", "Area 51"], ["MK48Torpedo", "MK 48 Torpedo"], ["SONAR", "SONAR"], ["aB", "a B"], ["_x", "x"], ["", ""],
    ]) {
        const starts = humpsOf(name);
        assert.equal(starts.map((start, i) => name.slice(start, starts[i + 1])).join(" "), words, name);
    }
});

test("the best matches come first", () => {
    const vessel = "ObjectRoot.Craft.MerchantVessel";
    for (const [query, ...expected] of [
        ["mv", vessel, "ObjectRoot.Berth/MooredVessel"],
        ["merVes", vessel],
        ["MERCHANTVESSEL", vessel],
        ["vessel", "InteractionRoot.VesselReport", vessel, "ObjectRoot.Berth/MooredVessel"], // a prefix before a later word
        ["tug", "ObjectRoot.Craft.Tug"],
        ["owl", "ObjectRoot.Craft.Tug/TowlineLoad"], // within a word
        ["position", "ObjectRoot.Craft/Position", "ObjectRoot.Berth/Position", "ObjectRoot.Manager/Position"], // the MOM last
        ["berth.pos", "ObjectRoot.Berth/Position"],
        ["craft hull", `${vessel}/HullNumber`], // skips a class
        ["ObjectRoot.Craft/Position", "ObjectRoot.Craft/Position"],
        ["fuel.left", `${vessel}/Fuel.Left`], // a name with a separator
        ["pilot boats", "Pilot Boats"],
        ["a51", "Area51"],
        ["craft.tug.", "ObjectRoot.Craft.Tug/TowlineLoad"], // what is in a class
        ["vm"], ["zz"], [""], ["  "],
    ])
        assert.deepEqual(find(createIndex(harbour), query), expected, query);
});

test("the limit bounds the results, not the count", () => {
    const found = search(createIndex(harbour), "e", 3);
    assert.equal(found.results.length, 3);
    assert.ok(found.total > 10);
});

test("typing on finds the same as typing at once", () => {
    const typed = createIndex(harbour);
    for (const query of ["p", "po", "pos", "po", "posi", "x", "v", "ve", "ve.", "ver", "verr"]) {
        assert.deepEqual(find(typed, query), find(createIndex(harbour), query), query);
    }
});

test("every name is found by itself and by its full name, whatever is in it", () => {
    const random = generator(17);
    for (let round = 0; round < 20; ++round) {
        const index = createIndex(createModel(hostileModel(random, 30)));
        for (const entry of index.entries) {
            const full = entry.node.name + (entry.member === null ? "" : `.${entry.member.name}`);
            for (const query of [entry.name, entry.name.toUpperCase(), full]) {
                if (query.trim() === "" || query.toUpperCase().length !== query.length) continue;
                const { results } = search(index, query, Infinity);
                assert.ok(results.some(result => result.entry === entry), JSON.stringify([query, full]));
            }
        }
    }
});

test("the marked letters are those of the query, in its order", () => {
    const index = createIndex(harbour);
    for (const query of ["mv", "merves", "ESS", "hullnum", "r", "tolo"]) {
        for (const { entry, ranges } of search(index, query, 100).results) {
            assert.equal(ranges.map(([from, to]) => entry.name.slice(from, to)).join("").toLowerCase(), query.toLowerCase());
            ranges.forEach(([from], i) => assert.ok(i === 0 || from >= ranges[i - 1][1]));
        }
    }
});

test("a name of many equal words takes no exponential time", () => {
    const name = "Aa".repeat(100);
    assert.equal(matchHumps(name.toLowerCase(), humpsOf(name), "a".repeat(60) + "b"), null);
});
