// Which classes, spaces and members a difference concerns. The words for the changes come with the data.

const FORESTS_OF_SUBJECTS = {
    "space": "space", "dimension": "space", "object class": "object", "attribute": "object",
    "interaction class": "interaction", "parameter": "interaction"
};

const MEMBER_SUBJECTS = ["dimension", "attribute", "parameter"];

/** The length of the name makes keys unique: names may contain any character. */
function keyOfNode(kind, name) {
    return kind + "/" + name.length + "/" + fold(name);
}

function keyOfMember(kind, name, member) {
    return keyOfNode(kind, name) + "/" + fold(member);
}

/** The class, space or member that a change, or an element of its contents, is about; null for the federation and version. */
function placeOfElement(element) {
    const kind = FORESTS_OF_SUBJECTS[element.subject];
    if (!kind) return null;
    if (MEMBER_SUBJECTS.includes(element.subject)) return {kind, name: element.in, member: element.name};
    return {kind, name: element.in === "" ? element.name : element.in + "." + element.name, member: null};
}

function signOfChange(change) {
    return change.kind === "added" ? "+" : change.kind === "removed" ? "-" : "~";
}

const MEANING_OF_SIGN = {"+": "added", "-": "removed", "~": "changed"};

/**
 * The marks of a difference: for each class, space and member the changes that concern it, and a sign.
 * Anything added or removed as a whole has "+" or "-"; a class that changed, or some of whose members changed, has "~".
 *
 * Adding one class moves the handles of most others. So a new handle alone is no mark, unless handles are all that changed:
 * otherwise every class would have one, and nobody would find the changes that matter.
 */
class Marks {
    constructor(difference) {
        this.marks = new Map();
        this.below = new Set();
        if (!difference) return;
        this.onlyHandles = difference.changes.every(change => change.kind === "renumbered");
        for (const change of difference.changes) this.add(change);
    }

    add(change) {
        if (change.kind === "moved up") this.addMovedUp(change);
        else this.addElement(change, change);
        for (const element of change.contents) this.addElement(element, change);
        for (const element of change.movedDownTo) this.noteMember(element, change, "~");
    }

    /** The member is added to the superclass; the class that declared it has it still. */
    addMovedUp(change) {
        this.noteMember(Object.assign({}, change, {in: change.to}), change, "+");
        const {kind, name} = placeOfElement(change);
        this.note(keyOfNode(kind, name), change, "~");
    }

    addElement(element, change) {
        const place = placeOfElement(element);
        if (!place) return;
        const counts = change.kind !== "renumbered" || this.onlyHandles;
        const whole = element === change || change.kind === "added" || change.kind === "removed";
        if (place.member !== null) {
            this.noteMember(element, element === change ? change : null, counts ? signOfChange(change) : "");
        } else {
            this.note(keyOfNode(place.kind, place.name), element === change ? change : null,
                      counts && whole ? signOfChange(change) : "");
        }
    }

    noteMember(element, change, sign) {
        const {kind, name, member} = placeOfElement(element);
        this.note(keyOfMember(kind, name, member), change, sign);
        this.note(keyOfNode(kind, name), null, sign === "" ? "" : "~");
    }

    /** The first sign of a whole class stays: its members are among the contents of the same change. */
    note(key, change, sign) {
        const mark = this.marks.get(key) || {sign: "", changes: []};
        if (change) mark.changes.push(change);
        if (sign !== "" && mark.sign !== "+" && mark.sign !== "-") mark.sign = sign;
        this.marks.set(key, mark);
    }

    /** Notes for each class whether something below it changed, so that a closed class can show it. */
    spread(model) {
        for (const forest of forestsOf(model)) {
            for (const node of forest.nodes) {
                if (this.signOf(node) === "") continue;
                for (let above = node.parent; above && !this.below.has(above); above = above.parent) this.below.add(above);
            }
        }
    }

    isRemoved(kind, name) {
        const mark = this.marks.get(keyOfNode(kind, name));
        return mark !== undefined && mark.sign === "-";
    }

    signOf(node) {
        const mark = this.marks.get(keyOfNode(node.kind, node.name));
        return node.removed ? "-" : mark ? mark.sign : "";
    }

    changesOf(node) {
        const mark = this.marks.get(keyOfNode(node.kind, node.name));
        return mark ? mark.changes : [];
    }

    ofMember(node, memberName) {
        return this.marks.get(keyOfMember(node.kind, node.name, memberName)) || {sign: "", changes: []};
    }

    /** Whether the tree shows a node while it shows only changes. */
    shows(node) {
        return this.signOf(node) !== "" || this.below.has(node);
    }
}

/** The members that a class had in the older model and has no more, neither itself nor by inheritance. */
function removedMembers(marks, node, beforeNode) {
    if (!beforeNode || node.removed) return [];
    return beforeNode.members.filter(member =>
        marks.ofMember(node, member.name).sign === "-" && !findMember(node.members, member.name));
}
