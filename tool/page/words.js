// How numbers, nouns and names are written, and other small things.

function plural(noun) {
    return noun + (noun.endsWith("s") ? "es" : "s");
}

/** "1,204" */
function numeral(number) {
    return number.toLocaleString("en-GB");
}

/** "1 class", "1,204 classes". */
function counted(number, noun) {
    return numeral(number) + " " + (number === 1 ? noun : plural(noun));
}

/** Folds a name as lookups do: only the letters A to Z are the same in any case. */
function fold(name) {
    return /[\u0080-\uffff]/.test(name) ? name.replace(/[A-Z]+/g, letters => letters.toLowerCase()) : name.toLowerCase();
}

/** Folds a name or a query for searching, all letters. Offsets in the result hold in the name too. */
function foldForSearch(name) {
    const lower = name.toLowerCase();
    return lower.length === name.length ? lower : fold(name);
}

function isLetterOrDigit(code) {
    return (code >= 97 && code <= 122) || (code >= 65 && code <= 90) || (code >= 48 && code <= 57) || code > 127;
}

function isUpper(code) {
    return code >= 65 && code <= 90;
}

function isDigit(code) {
    return code >= 48 && code <= 57;
}

/**
 * The offsets at which the words of a name begin: at a capital after another letter, at the last capital of several before a
 * small letter ("HLAMom" is "HLA" and "Mom"), at the first digit of several, and after punctuation.
 */
function humpsOf(name) {
    const starts = [];
    let before = 0;
    for (let i = 0; i < name.length; ++i) {
        const code = name.charCodeAt(i);
        const after = i + 1 < name.length ? name.charCodeAt(i + 1) : 0;
        const begins = !isLetterOrDigit(before) ||
            (isUpper(code) && (!isUpper(before) || (isLetterOrDigit(after) && !isUpper(after) && !isDigit(after)))) ||
            (isDigit(code) && !isDigit(before));
        if (begins && isLetterOrDigit(code)) starts.push(i);
        before = code;
    }
    return starts;
}

function joined(lists) {
    const all = [];
    for (const list of lists) {
        for (const item of list) all.push(item);
    }
    return all;
}

/** The last part of a path, for "/" and "\". */
function fileName(path) {
    return path.slice(Math.max(path.lastIndexOf("/"), path.lastIndexOf("\\")) + 1);
}
