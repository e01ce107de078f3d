// The table of attributes, parameters or dimensions.

const MEMBERS_AT_ONCE = 500;

/** The columns of a table, without those in which all rows are empty: heading, class of the cells, and content of a cell. */
function columnsOf(page, kind, rows) {
    const columns = [
        {title: "Handle", name: "handle", cell: row => changedValue(changeOfKind(row.changes, "renumbered") ||
            changeOfKind(row.changes, "reordered"), row.member.handle === null ? null : String(row.member.handle))}
    ];
    if (kind === "object") {
        columns.push(
            {title: "Transportation", name: "delivery", cell: row =>
                changedValue(changeOfKind(row.changes, "transportation"), row.member.transportation)},
            {title: "Ordering", name: "delivery", cell: row =>
                changedValue(changeOfKind(row.changes, "ordering"), row.member.ordering)});
    }
    if (rows.some(row => row.member.space || changeOfKind(row.changes, "space"))) {
        columns.push({title: "Space", name: "space", cell: row =>
            changedValue(changeOfKind(row.changes, "space"), spaceLink(page, row.member.space))});
    }
    if (rows.some(row => row.documentation !== "")) {
        columns.push({title: "Comment", name: "comment", cell: row => row.documentation});
    }
    return columns.filter(column => column.name !== "handle" || page.hasHandles);
}

/** The values of a row: a member of `node`, declared by `declarer`. */
function rowOf(page, node, declarer, member, memberIndex) {
    const mark = page.marks.ofMember(declarer, member.name);
    return {
        node, declarer, member, isRemoved: false,
        sign: declarer.removed ? "-" : mark.sign,
        changes: mark.changes,
        documentation: page.remarks.documentationOf(declarer, memberIndex),
        findings: page.remarks.findingsOf(declarer, memberIndex)
    };
}

function removedFrom(page, node) {
    return removedMembers(page.marks, node, page.before && findNode(page.before[node.kind], node.name));
}

function ownRows(page, node) {
    const rows = node.members.map((member, index) => rowOf(page, node, node, member, index));
    return rows.concat(removedFrom(page, node).map(member => ({
        node, declarer: node, member, isRemoved: true, sign: "-", documentation: "", findings: [],
        changes: page.marks.ofMember(node, member.name).changes
    })));
}

/** One group for each superclass that declares members, the nearest first. */
function inheritedGroups(page, node) {
    return declarersOf(node).filter(declarer => declarer !== node && declarer.members.length > 0).map(declarer => ({
        declarer, rows: declarer.members.map((member, index) => rowOf(page, node, declarer, member, index))
    }));
}

function makeMemberRow(page, row, columns, target) {
    const isTarget = target !== null && row.member === target;
    const name = linkTo(row.declarer, row.member.name, {class: "name"}, breakable(row.member.name));
    const change = changeOfKind(row.changes, "renamed");
    const cells = columns.map(column => make("td", {"class": column.name, "data-title": column.title}, column.cell(row)));
    return make("tr", {
        "data-link": linkOf(row.node, row.member.name),
        "class": [isTarget ? "target" : "", MEANING_OF_SIGN[row.sign] || ""].join(" ").trim() || null,
        "aria-current": isTarget ? "true" : null
    }, make("th", {scope: "row", class: "name"}, signMark(row.sign), row.sign === "-" ? make("del", null, name) : name,
        change ? make("span", {class: "was"}, "was ", change.from) : null, memberHints(page, row)), cells);
}

/** The guesses of the comparison about a member that was added or removed. */
function memberHints(page, row) {
    return row.changes.map(change => {
        const hint = renameHint(page, change) || movedHint(row, change);
        return hint === null ? null : make("span", {class: "was"}, hint);
    });
}

function movedHint(row, change) {
    if (change.kind === "moved up") return "moved up from " + change.from;
    if (change.movedDownTo.length === 0) return null;
    if (!row.isRemoved) return "moved down from " + change.in;
    return "moved down to " + (change.movedDownTo.length === 1 ? change.movedDownTo[0].in
        : counted(change.movedDownTo.length, "class"));
}

/** The row of a member, and a row for its findings. */
function makeRows(page, row, columns, target) {
    const findings = row.findings.length === 0 ? null : make("tr", {class: "findings"},
        make("td", {colspan: columns.length + 1}, row.findings.map(finding => findingBox(page, finding, {withSeverity: true}))));
    return [makeMemberRow(page, row, columns, target), findings];
}

function tableHead(kind, columns) {
    return make("thead", null, make("tr", null, make("th", {scope: "col"}, capitalized(KINDS[kind].memberNoun)),
        columns.map(column => make("th", {scope: "col", class: column.name}, column.title))));
}

function groupHeading(declarer, count, columns) {
    return make("tr", {class: "group"}, make("th", {scope: "rowgroup", colspan: columns.length + 1},
        "Inherited from ", linkTo(declarer, null, null, breakable(declarer.own)), " ",
        make("span", {class: "number"}, numeral(count))));
}

/**
 * The table of the members of a class or space; null if it has none. Inherited ones follow the own ones, below a heading for
 * each superclass.
 */
function membersTable(page, node, {withInherited, target}) {
    const shows = row => !page.onlyChanges || row.sign !== "" || row.member === target;
    const own = ownRows(page, node).filter(shows);
    const groups = (withInherited ? inheritedGroups(page, node) : [])
        .map(({declarer, rows}) => ({declarer, rows: rows.filter(shows)})).filter(({rows}) => rows.length > 0);
    if (own.length === 0 && groups.length === 0) return null;
    const all = joined([own, ...groups.map(group => group.rows)]);
    const columns = columnsOf(page, node.kind, all);
    const table = make("table", {class: "members " + node.kind}, tableHead(node.kind, columns));
    // A link to a member must find its row, however far down it is.
    const atOnce = target ? Infinity : MEMBERS_AT_ONCE;
    const parts = [longList(make("tbody"), own, row => makeRows(page, row, columns, target), atOnce)];
    for (const group of groups) {
        const body = make("tbody", null, groupHeading(group.declarer, group.rows.length, columns));
        parts.push(longList(body, group.rows, row => makeRows(page, row, columns, target), atOnce));
    }
    append(table, parts.map(([body]) => body));
    return [make("div", {class: "wide"}, table), parts.map(([, button]) => button)];
}
