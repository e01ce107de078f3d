// Elements are made by createElement, and texts set as text only: nothing from the model is ever read as markup.

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
        else element.append(child);
    }
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
