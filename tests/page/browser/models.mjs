// Models made for the tests: sizes that no example has, names that nobody should trust, and files that the library refuses.
import { readFileSync } from "node:fs";
import { example, rtifed } from "./program.mjs";

const repeat = (count, line) => Array.from({ length: count }, (_, i) => line(i)).join("\n");

// A file that loads, with more clauses after the first class of each section.
function federation(name, { spaces = "", objects = "", interactions = "" }) {
    return rtifed(["new", name]).text
        .replace(/\(spaces\n/, text => text + spaces + "\n")
        .replace(/\(class RTIprivate\)\n/, text => text + objects + "\n")
        .replace(/\(class RTIprivate reliable \w+\)\n/, text => text + interactions + "\n");
}

// Each sets window.hacked if a browser ever takes it for markup, script or style; a name cannot contain a double quote.
const markup = [
    "</script><script>hacked=1</script>",
    "<img src=x onerror=hacked=1>",
    "<!--<script>hacked=1//",
    "'onmouseover='hacked=1",
    "javascript:hacked=1",
    "{{script}}", "{{data}}", "]]>", "</style><style>*{display:none}</style>", "&lt;b&gt; &amp; &#60;",
];

const awkward = [
    "__proto__", "constructor", "toString", "hasOwnProperty", "0", "-1", "null", "undefined",
    "a/b", "a%2Fb", "100%", "#overview", "?q=1", "a b  c", "..", "\\u003c", "$&", "$1",
    "\u0130stanbul", "stra\u00dfe", "\u00c4rger", "\u00e4rger", "\u65e5\u672c\u8a9e\u306e\u540d\u524d", "\u05e9\u05dc\u05d5\u05dd-name",
    "\u202egnp", "line\u2028separator", "\ufb01sh", "e\u0301tat", "\ud83d\udea2", "\u200b", "findings", "changes", "object",
    "Camel" + "HumpsOfAName".repeat(30), "unbroken".repeat(40),
];

function hostile() {
    const names = [...markup, ...awkward];
    // The name of a class cannot contain a dot.
    const classes = names.filter(name => !name.includes("."));
    return federation(`"${markup[0]}"`, {
        spaces: repeat(names.length, i => `;; ${names[i]}\n(space "${names[i]}" (dimension "${names[i]}"))`) +
            "\n(space Repeated (dimension first)) (space Repeated (dimension second))",
        objects: repeat(classes.length, i => `;; ${classes[i]}\n(class "${classes[i]}"` +
            ` (attribute "${names[i]}.x" reliable receive "${names[i]}")) ;; ${markup[i % markup.length]}`),
        interactions: repeat(classes.length, i => `(class "${classes[i]}" reliable receive (parameter "${names[i]}"))`),
    });
}

const chain = (level, count) => level === count ? "" :
    `(class Level${level} (attribute OfLevel${level} reliable receive)\n${chain(level + 1, count)})`;

// Some 10,000 declarations: a class with many subclasses, one with many members, and a tree of the usual width.
function wide() {
    return federation("Wide", {
        objects: `(class ManyChildren\n${repeat(5000, i => `(class Child${i})`)})\n` +
            `(class ManyMembers\n${repeat(2000, i => `(attribute Member${i} reliable receive)`)})\n` +
            repeat(30, i => `(class Group${i}\n${repeat(50, j => `(class Kind${i}x${j} (attribute Value${i}x${j} reliable receive))`)})`),
    });
}

const faulty = () => federation("Faulty", {
    objects: repeat(120, i => `(class Faulty${i} (attribute Wrong reliable soon) (attribute privilegeToDelete reliable receive))`),
});

// The harbour, later: every kind of change that a comparison tells apart, among them a class that is gone.
function harbourLater() {
    const text = readFileSync(example("harbour.fed"), "utf8");
    const change = (from, to) => later => {
        if (!from.test(later)) throw new Error(`harbour.fed has no ${from}`);
        return later.replace(from, to);
    };
    return [
        change(/\(class GasTanker[\s\S]*?\n {12}\)\n/, ""),
        change(/(\(class Craft\n)/, "$1(attribute Owner reliable receive)\n"),
        change(/(\(class Craft\n)/, "(class Buoy (attribute Light reliable receive))\n$1"),
        change(/HullNumber( +)reliable timestamp/, "HullNumber$1best_effort receive"),
        change(/\(dimension channel\)/, "(dimension frequency)"),
        change(/\(class Ferry\b/, "(class FerryBoat"),
    ].reduce((later, apply) => apply(later), text);
}

/** The text of each model by the name of its file. */
export function models() {
    const harbour = readFileSync(example("harbour.fed"), "utf8");
    return {
        "hostile.fed": hostile(),
        "deep.fed": federation("Deep", { objects: chain(0, 200) }),
        "wide.fed": wide(),
        "faulty.fed": faulty(),
        "later.fed": harbourLater(),
        "unclosed.fed": harbour.slice(0, harbour.length / 2),
        "bare.fed": "(FED (Federation \"\") (FEDversion v1.3) (objects) (interactions))\n",
        "empty.fed": "",
        "letter.fed": "Dear colleagues,\n\nplease find the model attached (it's in the other mail).\n\nKind regards\n",
        "binary.fed": Buffer.from(Array.from({ length: 4096 }, (_, i) => (i * 7919 + 200) % 256)),
        "latin.fed": Buffer.from(federation("Latin", { objects: "(class Stra\u00dfe (attribute Gr\u00f6\u00dfe reliable receive))" }), "latin1"),
    };
}

/** A model with about this number of declarations, for measurements. */
export function sized(declarations) {
    const groups = Math.ceil(declarations / 110);
    return federation("Sized", {
        objects: repeat(groups, i => `(class Group${i}\n${repeat(10, j => `(class Kind${i}x${j}\n` +
            `${repeat(10, k => `(attribute Value${k}Of${j} reliable receive)`)})`)})`),
    });
}

/** A model of 60,000 declarations, half of them classes, so that neither classes nor members are few. */
export const large = () => federation("Large", {
    objects: repeat(300, i => `(class Group${i}\n${repeat(100, j => `(class Kind${i}x${j} (attribute Value${i}x${j} reliable receive))`)})`),
});
