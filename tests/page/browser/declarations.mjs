// What a page must be able to find and show: each declaration of a model, with its address and its place in the page.

const encoded = (...parts) => parts.map(encodeURIComponent).join("/");
const ownName = className => className.slice(className.lastIndexOf(".") + 1);

function* ofClasses(kind, classes, members) {
    for (const each of classes) {
        yield { link: encoded(kind, each.name), name: ownName(each.name), shownBy: ownName(each.name) };
        for (const member of each[members])
            yield { link: encoded(kind, each.name, member.name), name: member.name, shownBy: ownName(each.name), member: true };
    }
}

// A second space with the same name is told apart by its position in the model.
function* ofSpaces(spaces) {
    for (const [i, space] of spaces.entries()) {
        const link = encoded("space", space.name) + (spaces.findIndex(each => each.name === space.name) < i ? `;${i}` : "");
        yield { link, name: space.name, shownBy: space.name };
        for (const dimension of space.dimensions)
            yield { link: `${link}/${encodeURIComponent(dimension.name)}`, name: dimension.name, shownBy: space.name, member: true };
    }
}

/** All declarations of a model as rtifed json prints it, in the order of the file's sections. A name may be there more than once. */
export function declarations(model) {
    return [
        ...ofSpaces(model.spaces),
        ...ofClasses("object", model.objectClasses, "attributes"),
        ...ofClasses("interaction", model.interactionClasses, "parameters"),
    ];
}

/** At most count of a list's elements, evenly spread, with its first and its last. */
export const sample = (list, count) => list.length <= count ? list :
    Array.from({ length: count }, (_, i) => list[Math.round(i * (list.length - 1) / (count - 1))]);
