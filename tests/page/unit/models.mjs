// Small models for the tests, in the form of the page's data.

let line = 0;
const place = () => ({ line: ++line, column: 1 });

/** A class: its full name, its members as a list of names, and the superclass by the name. */
function classOf(list, name, members, memberKey, from, more) {
    const parent = [...list].reverse().find(other => name.toLowerCase().startsWith(other.name.toLowerCase() + ".")) || null;
    const index = list.length;
    const inherited = parent ? parent[from] : [];
    return {
        name, handle: index + 1, place: place(), parent: parent && parent.name,
        [memberKey]: members.map((member, i) => ({ name: member, handle: i + 1, place: place(), ...more })),
        [from]: members.length > 0 ? [...inherited, index] : inherited,
    };
}

/** Makes a model of {object: {class: [attributes]}, interaction: {class: [parameters]}, space: {space: [dimensions]}}. */
export function modelOf({ object = {}, interaction = {}, space = {} }) {
    const delivery = { transportation: "reliable", ordering: "timestamp", space: null };
    const objectClasses = [];
    for (const [name, members] of Object.entries(object))
        objectClasses.push(classOf(objectClasses, name, members, "attributes", "attributesFrom", delivery));
    const interactionClasses = [];
    for (const [name, members] of Object.entries(interaction))
        interactionClasses.push({ ...classOf(interactionClasses, name, members, "parameters", "parametersFrom", {}), ...delivery });
    const spaces = Object.entries(space).map(([name, dimensions], i) => ({
        name, handle: i + 1, place: place(),
        dimensions: dimensions.map((dimension, number) => ({ name: dimension, handle: number, place: place() })),
    }));
    return { file: "test.fed", loads: true, federation: "Test", version: "v1.3", objectClasses, interactionClasses, spaces };
}

/** Numbers that look random but are the same in each run. */
export function generator(seed) {
    let state = seed;
    return limit => {
        state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
        return Math.floor((state / 2 ** 32) * limit);
    };
}

const LETTERS = ["a", "B", "Z", "q", "1", "_", "-", ".", "/", "#", "%", ";", " ", "é", "名", "<", "\"", "\u2028"];

export function hostileName(random) {
    return Array.from({ length: 1 + random(6) }, () => LETTERS[random(LETTERS.length)]).join("");
}

/** A tree of classes whose names and members are hostile, without two names that differ in case only. */
export function hostileModel(random, size) {
    const object = { ObjectRoot: ["privilegeToDelete"] };
    const known = new Set(["objectroot"]);
    while (Object.keys(object).length < size) {
        const above = Object.keys(object)[random(Object.keys(object).length)];
        const name = `${above}.${hostileName(random)}`;
        const folded = name.replace(/[A-Z]/g, letter => letter.toLowerCase());
        if (known.has(folded)) continue;
        known.add(folded);
        object[name] = Array.from({ length: random(4) }, (_, i) => hostileName(random) + i);
    }
    return modelOf({ object });
}
