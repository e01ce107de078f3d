// Elements are made by createElement, and texts set as text only: nothing from the model is ever read as markup.

// Without tabs and line ends, which comments have, and the joiners of some scripts.
const UNSEEN = /([\u0000-\u0008\u000b-\u001f\u007f-\u009f\u00ad\u061c\u180e\u200b\u200e\u200f\u2028-\u202e\u2060-\u206f\ufeff])/;

/**
 * Makes an element. Of the attributes, `on...` are functions that listen to an event, true is an attribute without a value,
 * and null or false is none. Children are elements, texts, lists of these, or null.
 */
function make(tag, attributes, ...children) {
    const element = document.createElement(tag);
    for (const name of Object.keys(attributes || {})) {
        const value = attributes[name];
        if (value === null || value === undefined || value === false) continue;
        if (name.startsWith("on")) element.addEventListener(name.slice(2), value);
        else element.setAttribute(name, value === true ? "" : value);
    }
    append(element, children);
    return element;
}

function append(element, children) {
    for (const child of children) {
        if (child === null || child === undefined || child === "") continue;
        if (Array.isArray(child)) append(element, child);
        else if (typeof child === "string" && UNSEEN.test(child)) element.append(...withUnseen(child));
        else element.append(child);
    }
}

/**
 * Shows the codes of characters that nobody sees, or that reorder the text around them. The style adds the codes, so that copied
 * text has the characters only; and keeps the effect of a character within its element.
 */
function withUnseen(text) {
    return text.split(UNSEEN).map((piece, i) => {
        if (i % 2 === 0) return piece;
        return make("span", {"class": "unseen", "data-code": "U+" + piece.charCodeAt(0).toString(16).toUpperCase().padStart(4, "0")},
            document.createTextNode(piece));
    });
}

/** Replaces everything in an element. */
function fill(element, ...children) {
    element.textContent = "";
    append(element, children);
}

/** A name that a line may break before its words and dots, but not within a word. */
function breakable(name) {
    const breaks = new Set(humpsOf(name));
    const pieces = [];
    let begin = 0;
    for (let i = 1; i < name.length; ++i) {
        if (name[i] !== "." && !(breaks.has(i) && name[i - 1] !== ".")) continue;
        pieces.push(name.slice(begin, i), make("wbr"));
        begin = i;
    }
    pieces.push(name.slice(begin));
    return pieces;
}

/** The name with the matched ranges marked. */
function marked(name, ranges) {
    const pieces = [];
    let end = 0;
    for (const [from, to] of ranges) {
        pieces.push(name.slice(end, from), make("mark", null, name.slice(from, to)));
        end = to;
    }
    pieces.push(name.slice(end));
    return pieces;
}

/** Text for screen readers only. */
function spoken(text) {
    return make("span", {class: "spoken"}, text);
}

function byId(id) {
    return document.getElementById(id);
}
