// The page of an object or interaction class.

function classFacts(page, node) {
    const changes = page.marks.changesOf(node);
    const {data} = node;
    const was = kind => changeOfKind(changes, kind);
    return make("dl", {class: "facts"},
        fact("Full name", make("span", {class: "full"}, breakable(node.name))),
        fact("Handle", page.hasHandles && !node.removed ? changedValue(was("renumbered"), String(data.handle)) : null),
        node.kind === "object" ? null : [
            fact("Transportation", changedValue(was("transportation"), data.transportation)),
            fact("Ordering", changedValue(was("ordering"), data.ordering)),
            fact("Space", changedValue(was("space"), spaceLink(page, data.space)) || "none")],
        declaredFact(page, node));
}

/** A sentence for each change of the class itself. */
function classNews(page, node) {
    const news = page.marks.changesOf(node).map(change => {
        const hint = renameHint(page, change);
        if (change.kind === "added") return ["Added in this version", hint ? [", ", hint] : null, "."];
        if (change.kind === "removed") return ["Removed in this version", hint ? [", ", hint] : null, "."];
        if (change.kind === "renamed") return ["Spelt " + change.from + " before."];
        if (change.kind === "moved up") return ["The " + change.subject + " " + change.name + " moved up to " + change.to + "."];
        if (change.kind === "superclass") return ["The superclass was " + change.from + " before."];
        return null;
    }).filter(text => text !== null);
    const sign = page.marks.signOf(node);
    if (news.length === 0 && sign === "-") news.push("Removed in this version.");
    if (news.length === 0 && sign === "+") news.push("Added in this version.");
    return news.length === 0 ? null
        : make("div", {class: "news " + (MEANING_OF_SIGN[sign] || "changed")}, news.map(text => make("p", null, text)));
}

/** Where the class is declared, in the file that has it. */
function declaredFact(page, node) {
    if (!node.data.place) return null;
    return fact("Declared", placeText(node.data.place), node.removed ? " of " + page.data.difference.old.file : null);
}

function inheritedSwitch(page, node, withInherited) {
    const inherited = countInherited(node);
    if (inherited === 0) return null;
    return make("label", {class: "switch"},
        make("input", {type: "checkbox", id: "inherited", checked: withInherited, onchange: event => {
            page.withInherited = page.inheritedHere = event.target.checked;
            page.showAgain();
            byId("inherited").focus({preventScroll: true});
        }}), " Show " + numeral(inherited) + " inherited");
}

function membersSection(page, node, withInherited, target) {
    const {memberNoun} = KINDS[node.kind];
    const table = membersTable(page, node, {withInherited, target});
    const inherited = countInherited(node);
    return make("section", null,
        make("div", {class: "heading"},
            countedHeading(capitalized(plural(memberNoun)), node.members.length), inheritedSwitch(page, node, withInherited)),
        noteOnMembers(page, node, table !== null, inherited), table);
}

/** Says why there is no table, or that everything in it is inherited. */
function noteOnMembers(page, node, hasTable, numInherited) {
    const {members} = KINDS[node.kind];
    const note = text => make("p", {class: "note"}, text);
    if (!hasTable && page.onlyChanges) return note("No changed " + members + ".");
    if (node.members.length > 0) return null;
    if (numInherited > 0) return note("This class declares no " + members + " of its own.");
    return hasTable ? null : note("This class has no " + members + ".");
}

function subclassesSection(page, node) {
    const children = shownNodes(page, node.children);
    if (children.length === 0) return null;
    return make("section", null,
        countedHeading("Subclasses", children.length),
        longList(make("ul", {class: "classes"}), children, child => classItem(page, child), 100));
}

function missingMemberNotice(node, name) {
    return make("p", {class: "missing"}, "This version of the class has no " + KINDS[node.kind].memberNoun + " ",
        make("strong", null, breakable(name)), ".");
}

function headingOf(page, node) {
    const name = node.removed ? make("del", null, breakable(node.own)) : breakable(node.own);
    return [
        make("p", {class: "kind"}, capitalized(KINDS[node.kind].noun), node.mom ? " of the Management Object Model" : null),
        make("h1", {tabindex: "-1"}, signMark(page.marks.signOf(node)), name)
    ];
}

function classPage(page, {node, member, declarer, missingMember}) {
    // A link to an inherited member shows it, but the reader can still switch it off.
    const withInherited = page.inheritedHere === null ? page.withInherited || (declarer || node) !== node : page.inheritedHere;
    const removed = missingMember ? findMember(removedFrom(page, node), missingMember) : null;
    return {
        node,
        title: member ? node.own + "." + member.name : node.own,
        content: [
            pathOf(node),
            headingOf(page, node),
            missingMember && !removed ? missingMemberNotice(node, missingMember) : null,
            classNews(page, node),
            documentation(page.remarks.documentationOf(node)),
            findingsAt(page, node),
            classFacts(page, node),
            membersSection(page, node, withInherited, member || removed),
            subclassesSection(page, node)
        ]
    };
}
