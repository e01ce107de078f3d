// The page of a routing space.

function useItem(page, {node, member}) {
    const name = linkTo(node, member && member.name, null, breakable(member ? member.name : node.own));
    const owner = member ? node : node.parent;
    return make("li", null, name, " ", make("span", {class: "sizes"}, owner ? breakable(owner.name) : null));
}

function usesSection(page, title, uses) {
    if (uses.length === 0) return null;
    return make("section", null, countedHeading(title, uses.length),
        longList(make("ul", {class: "classes"}), uses, use => useItem(page, use), 200));
}

function spacePage(page, {node, member, missingMember}) {
    const removed = missingMember ? findMember(removedFrom(page, node), missingMember) : null;
    const isFound = findNode(node.forest, node.name) === node; // of several spaces with the same name, names mean the first
    const uses = isFound && page.spaceUses.get(fold(node.name)) || [];
    const table = membersTable(page, node, {withInherited: false, target: member || removed});
    return {
        node,
        title: node.own,
        content: [
            headingOf(page, node),
            missingMember && !removed ? missingMemberNotice(node, missingMember) : null,
            classNews(page, node),
            documentation(page.remarks.documentationOf(node)),
            findingsAt(page, node),
            make("dl", {class: "facts"},
                fact("Handle", node.data.handle === null || node.removed ? null : String(node.data.handle)),
                declaredFact(page, node),
                fact("Used by", uses.length === 0 ? "nothing" : null)),
            make("section", null, countedHeading("Dimensions", node.members.length),
                table || make("p", {class: "note"}, page.onlyChanges ? "No changed dimensions." : "This space has no dimensions.")),
            usesSection(page, "Attributes in this space", uses.filter(use => use.member)),
            usesSection(page, "Interaction classes in this space", uses.filter(use => !use.member))
        ]
    };
}
