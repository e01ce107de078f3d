// Links into the page. They name classes and members, so that they hold in a page of a later version of the model too.

/** The fragment without "#" of a class, a space or one of its members. */
function linkOf(node, memberName) {
    const link = node.kind + "/" + encodeURIComponent(node.name) + numberOfDuplicate(node);
    return memberName === undefined || memberName === null ? link : link + "/" + encodeURIComponent(memberName);
}

/** A file that is refused may declare a name more than once: the second and later ones get their position in the model. */
function numberOfDuplicate(node) {
    return findNode(node.forest, node.name) === node || node.removed ? "" : ";" + node.index;
}

function decoded(text) {
    try {
        return decodeURIComponent(text);
    } catch (error) {
        if (error instanceof URIError) return text; // typed by hand: a name may contain "%"
        throw error;
    }
}

/** Parses a fragment into {view, name, member, index}; for a page without a class only `view` is set. */
function parseLink(fragment) {
    const text = fragment.replace(/^#/, "");
    const parts = text.split("/");
    if (parts.length === 1) return {view: text === "" ? "overview" : decoded(text)};
    const numbered = /^(.*);(\d+)$/.exec(parts[1]);
    return {
        view: parts[0],
        name: decoded(numbered ? numbered[1] : parts[1]),
        index: numbered ? Number(numbered[2]) : null,
        member: parts.length > 2 ? decoded(parts.slice(2).join("/")) : null
    };
}

/**
 * Finds the class, space or member of a link. Returns {view, node, member, declarer}, or {view: "missing", ...} if this version
 * of the model does not have it; a class that exists but lacks the member is shown with `missingMember`.
 */
function resolveLink(model, link) {
    if (link.name === undefined) {
        return ["overview", "findings", "changes"].includes(link.view) ? link : {view: "missing", link};
    }
    const forest = isKind(link.view) ? model[link.view] : null;
    const numbered = forest && link.index !== null ? forest.nodes[link.index] : null;
    const node = numbered && fold(numbered.name) === fold(link.name) ? numbered : forest && findNode(forest, link.name);
    if (!node) return {view: "missing", link};
    if (link.member === null) return {view: link.view, node};
    for (const declarer of declarersOf(node)) {
        const member = findMember(declarer.members, link.member);
        if (member) return {view: link.view, node, member, declarer};
    }
    return {view: link.view, node, missingMember: link.member};
}
