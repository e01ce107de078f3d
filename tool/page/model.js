// The model as the page uses it: the lists of classes in the data become trees, and names find their classes.

const KINDS = {
    object: {
        classes: "objectClasses", members: "attributes", from: "attributesFrom",
        noun: "object class", memberNoun: "attribute", title: "Object classes"
    },
    interaction: {
        classes: "interactionClasses", members: "parameters", from: "parametersFrom",
        noun: "interaction class", memberNoun: "parameter", title: "Interaction classes"
    },
    space: {
        classes: "spaces", members: "dimensions", from: null,
        noun: "space", memberNoun: "dimension", title: "Routing spaces"
    }
};

/** Whether a text, which may be anything, is one of the kinds. */
function isKind(text) {
    return Object.keys(KINDS).includes(text);
}

const MOM_SPACE = "hlamomdefaultspace";

/** The name without those of its superclasses. */
function ownName(name, parent) {
    if (parent && name.startsWith(parent.name + ".")) return name.slice(parent.name.length + 1);
    return name.slice(name.lastIndexOf(".") + 1);
}

/** Whether a class belongs to the Management Object Model, which is the same in every federation: Manager and all below it. */
function isMom(own, parent) {
    return Boolean(parent) && (parent.mom || (!parent.parent && fold(own) === "manager"));
}

function createNode(kind, data, index, parent, forest) {
    const isSpace = kind === "space";
    const own = isSpace ? data.name : ownName(data.name, parent);
    return {
        kind, data, index, parent, forest, own,
        name: data.name,
        level: parent ? parent.level + 1 : 0,
        children: [],
        members: data[KINDS[kind].members],
        numBelow: 0,
        mom: isSpace ? fold(own) === MOM_SPACE : isMom(own, parent),
        removed: false
    };
}

/** The trees of one kind. Of several nodes with the same name, the first is found by it. */
function createForest(kind, list) {
    const forest = {kind, nodes: [], roots: [], byName: new Map(), byFoldedName: new Map()};
    list.forEach((data, index) => {
        const parent = kind === "space" || data.parent === null ? null : findNode(forest, data.parent);
        const node = createNode(kind, data, index, parent, forest);
        addNode(forest, node);
    });
    return forest;
}

function addNode(forest, node) {
    forest.nodes.push(node);
    (node.parent ? node.parent.children : forest.roots).push(node);
    if (!forest.byName.has(node.name)) forest.byName.set(node.name, node);
    const folded = fold(node.name);
    if (!forest.byFoldedName.has(folded)) forest.byFoldedName.set(folded, node);
}

/** Finds a class or space by its full name, if need be in another letter case. */
function findNode(forest, name) {
    return forest.byName.get(name) || forest.byFoldedName.get(fold(name)) || null;
}

function findMember(members, name) {
    const folded = fold(name);
    return members.find(member => member.name === name) || members.find(member => fold(member.name) === folded) || null;
}

/** The classes from which a class has members, itself first, then upwards. */
function declarersOf(node) {
    const from = KINDS[node.kind].from;
    if (!from) return [node];
    return node.data[from].map(index => node.forest.nodes[index]).reverse();
}

function countInherited(node) {
    return declarersOf(node).reduce((sum, declarer) => declarer === node ? sum : sum + declarer.members.length, 0);
}

/** The superclasses from the root down, without the class itself. */
function ancestorsOf(node) {
    const ancestors = [];
    for (let above = node.parent; above; above = above.parent) ancestors.unshift(above);
    return ancestors;
}

/** Counts the descendants of each class. Nodes come after their superclasses, so one pass from the end is enough. */
function countBelow(forest) {
    for (const node of forest.nodes) node.numBelow = 0;
    for (let i = forest.nodes.length - 1; i >= 0; --i) {
        const node = forest.nodes[i];
        if (node.parent && !node.removed) node.parent.numBelow += node.numBelow + 1;
    }
}

/**
 * Moves the classes and spaces that exist only in the older model into the trees of the newer one, marked as removed, so that
 * they can be shown where they were. `isRemoved` decides by kind and name.
 */
function adoptRemoved(forest, before, isRemoved) {
    for (const old of before.nodes) {
        if (findNode(forest, old.name) || !isRemoved(old.kind, old.name)) continue;
        old.removed = true;
        old.parent = old.parent && (old.parent.removed ? old.parent : findNode(forest, old.parent.name));
        old.children = [];
        addNode(forest, old);
    }
}

function createModel(data) {
    return {
        data,
        object: createForest("object", data.objectClasses),
        interaction: createForest("interaction", data.interactionClasses),
        space: createForest("space", data.spaces)
    };
}

function forestsOf(model) {
    return [model.object, model.interaction, model.space];
}

/** The attributes and interaction classes that use each space, by the folded name of the space. */
function collectSpaceUses(model) {
    const uses = new Map();
    const add = (space, use) => {
        if (!space) return;
        const key = fold(space);
        if (!uses.has(key)) uses.set(key, []);
        uses.get(key).push(use);
    };
    for (const node of model.object.nodes) {
        if (node.removed) continue;
        for (const attribute of node.members) add(attribute.space, {node, member: attribute});
    }
    for (const node of model.interaction.nodes) {
        if (!node.removed) add(node.data.space, {node, member: null});
    }
    return uses;
}
