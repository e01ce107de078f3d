// The search over all names: which names a text finds, and which of them first.

// How well a name matches, from the best. Within one of these, shorter names come first, and the MOM last.
const RANK = {exact: 0, initials: 1, prefix: 2, humpsFromStart: 3, atHump: 4, humps: 5, inside: 6, anything: 7};

const SEPARATORS = /[./\s]+/; // between the names of classes in a query
const MAX_SKIPPED = 7; // classes between the parts of a query such as "Craft.Position" that count in the order

/** All names of a model: classes with their members, spaces with their dimensions. */
function createIndex(model) {
    const entries = [];
    const entryOfNode = new Map();
    let hasSeparators = false; // in the names of classes
    for (const forest of forestsOf(model)) {
        for (const node of forest.nodes) {
            const entry = createEntry(node, null, node.own);
            entries.push(entry);
            entryOfNode.set(node, entry);
            hasSeparators = hasSeparators || SEPARATORS.test(node.own);
            for (const member of node.members) entries.push(createEntry(node, member, member.name));
        }
    }
    return {entries, entryOfNode, hasSeparators, lastQuery: null, lastEntries: []};
}

function createEntry(node, member, name) {
    return {node, member, name, lower: foldForSearch(name), starts: humpsOf(name)};
}

const failedPairs = new Set(); // of one call of matchHumps; making a set for each name would take most of its time

/**
 * Matches a query such as "merVes" or "MV" with the words of a name: each piece of the query is a prefix of a word, in their
 * order; words may be skipped. A longer piece is tried before a shorter one. Pairs of positions that failed are remembered:
 * without that, names of many equal words would take exponential time. Returns the matched ranges, or null.
 */
function matchHumps(lower, starts, query) {
    failedPairs.clear();
    return matchFrom(lower, starts, query, 0, 0);
}

function matchFrom(lower, starts, query, from, hump) {
    if (from === query.length) return [];
    const key = from * starts.length + hump;
    if (failedPairs.has(key)) return null;
    for (let h = hump; h < starts.length; ++h) {
        if (lower[starts[h]] !== query[from]) continue;
        const end = h + 1 < starts.length ? starts[h + 1] : lower.length;
        let length = 1;
        while (starts[h] + length < end && from + length < query.length &&
               lower[starts[h] + length] === query[from + length]) ++length;
        for (; length > 0; --length) {
            const rest = matchFrom(lower, starts, query, from + length, h + 1);
            if (rest) return [[starts[h], starts[h] + length], ...rest];
        }
    }
    failedPairs.add(key);
    return null;
}

/** The first word that begins with the query, or undefined. */
function wordWith(lower, starts, query) {
    return starts.find(start => lower.startsWith(query, start));
}

/** Returns {rank, ranges} for a folded query, or null. */
function matchName(entry, query) {
    if (query === "") return {rank: RANK.anything, ranges: []};
    const {lower, starts} = entry;
    const at = lower.indexOf(query);
    if (at === 0) return {rank: lower.length === query.length ? RANK.exact : RANK.prefix, ranges: [[0, query.length]]};
    const humps = query.length > 1 ? matchHumps(lower, starts, query) : null;
    if (humps && humps[0][0] === starts[0]) return {rank: RANK.humpsFromStart, ranges: humps};
    const word = at < 0 ? undefined : wordWith(lower, starts, query);
    if (word !== undefined) return {rank: RANK.atHump, ranges: [[word, word + query.length]]};
    if (humps) return {rank: RANK.humps, ranges: humps};
    return at < 0 ? null : {rank: RANK.inside, ranges: [[at, at + query.length]]};
}

/**
 * Counts the superclasses of an entry that the query leaves out: 0 for a complete path. Returns -1 if the superclasses do not
 * match the qualifiers in their order. Taking the nearest class that matches is right: it leaves the most
 * classes to the remaining parts.
 */
function skippedClasses(index, entry, qualifiers) {
    let skipped = 0;
    let node = entry.member === null ? entry.node.parent : entry.node;
    for (let i = qualifiers.length - 1; i >= 0; --i) {
        while (node && !matchQualifier(index, node, qualifiers[i])) {
            node = node.parent;
            ++skipped;
        }
        if (!node) return -1;
        node = node.parent;
    }
    return skipped;
}

/** Remembers the answer: all members of a class ask about the same classes. */
function matchQualifier(index, node, {text, matches}) {
    if (!matches.has(node)) {
        const {lower, starts} = index.entryOfNode.get(node);
        matches.set(node, lower.includes(text) || matchHumps(lower, starts, text) !== null);
    }
    return matches.get(node);
}

/**
 * A query may be a name, or names of classes before it: "craft.position", "tug towline", "Craft/Position". Names may contain the
 * same characters, so the text as a whole is tried first.
 */
function parseQuery(text) {
    const whole = foldForSearch(text.trim());
    const parts = whole.split(SEPARATORS);
    if (parts.length > 1 && parts[0] === "") parts.shift();
    const qualifiers = parts.slice(0, -1).map(part => ({text: part, matches: new Map()}));
    return {whole, name: parts[parts.length - 1], qualifiers, isCapitals: /^[A-Z]{2,}$/.test(text.trim())};
}

/** Whether the words of a name begin with the letters of a query in capitals: who types "PE" rather means PhysicalEntity than Period. */
function hasInitials({lower, starts}, query) {
    return query.isCapitals && starts.length >= query.whole.length &&
        [...query.whole].every((letter, i) => lower[starts[i]] === letter);
}

/** Returns {rank, ranges, skipped}, or null. */
function matchEntry(index, entry, query) {
    if (entry.lower !== query.whole && hasInitials(entry, query)) {
        return {rank: RANK.initials, ranges: entry.starts.slice(0, query.whole.length).map(at => [at, at + 1])};
    }
    if (query.qualifiers.length === 0 || entry.lower.includes(query.whole)) return matchName(entry, query.whole);
    const part = matchName(entry, query.name);
    const skipped = part ? skippedClasses(index, entry, query.qualifiers) : -1;
    if (skipped >= 0) return {rank: part.rank, ranges: part.ranges, skipped};
    return isFullName(index, entry, query.whole) ? {rank: RANK.anything, ranges: []} : null;
}

/** Whether a query is the full name of a class or member, if the names in it contain separators themselves. */
function isFullName(index, {node, member, lower}, query) {
    if (!index.hasSeparators && !SEPARATORS.test(lower)) return false;
    return (foldForSearch(node.name) + (member === null ? "" : "." + lower)).trim() === query;
}

/** Lower scores come first. */
function scoreOf(entry, rank, skipped) {
    return ((((rank * (MAX_SKIPPED + 1) + Math.min(skipped, MAX_SKIPPED)) * 2 + Number(entry.node.mom)) * 2 +
             Number(entry.member !== null)) * 2 + Number(entry.node.removed)) * 256 + Math.min(entry.name.length, 255);
}

/**
 * Returns the best `limit` entries with their matched ranges, and the number of all that match. A name that matches a query also
 * matches its beginning, so while the user types on, only the names found last are searched. Score and position go into one
 * number for sorting, because typed arrays sort numbers without a call for each comparison.
 */
function search(index, text, limit) {
    const query = parseQuery(text);
    if (query.whole === "") return {total: 0, results: []};
    const isName = query.qualifiers.length === 0;
    const continues = index.lastQuery !== null && isName && query.whole.startsWith(index.lastQuery);
    const matching = [];
    const scores = [];
    for (const entry of continues ? index.lastEntries : index.entries) {
        const match = matchEntry(index, entry, query);
        if (!match) continue;
        scores.push(scoreOf(entry, match.rank, match.skipped || 0) * 0x1000000 + matching.length);
        matching.push(entry);
    }
    index.lastQuery = isName ? query.whole : null;
    index.lastEntries = isName ? matching : [];
    const best = new Float64Array(scores).sort().subarray(0, limit);
    const results = Array.from(best, key => {
        const entry = matching[key % 0x1000000];
        return {entry, ranges: matchEntry(index, entry, query).ranges};
    });
    return {total: matching.length, results};
}
