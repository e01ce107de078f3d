// The first page: the name and fingerprints of the model, whether it loads, its size, and its main classes.

const FINDINGS_AT_FIRST = 5;
const ITEMS_AT_ONCE = 60;

/** The numbers of a forest with and without the MOM. */
function countsOf(forest) {
    const live = forest.nodes.filter(node => !node.removed);
    const own = live.filter(node => !node.mom);
    const members = nodes => nodes.reduce((sum, node) => sum + node.members.length, 0);
    return {
        classes: own.length, members: members(own),
        momClasses: live.length - own.length, momMembers: members(live) - members(own)
    };
}

/** The head of a table from the heading of each column, and its class. */
function headRow(...columns) {
    return make("thead", null, make("tr", null, columns.map(([heading, name]) =>
        make("th", {scope: "col", class: name}, heading))));
}

function countsTable(model) {
    const rows = forestsOf(model).map(forest => {
        const {memberNoun, title} = KINDS[forest.kind];
        const noun = forest.kind === "space" ? "space" : "class";
        const counts = countsOf(forest);
        return make("tr", null, make("th", {scope: "row"}, title),
            make("td", {class: "number"}, numeral(counts.classes)),
            make("td", null, counted(counts.members, memberNoun)),
            make("td", {class: "mom"}, counts.momClasses === 0 ? "none" : counted(counts.momClasses, noun) +
                (counts.momMembers > 0 ? " with " + counted(counts.momMembers, memberNoun) : "")));
    });
    return make("div", {class: "wide"}, make("table", {class: "counts"},
        headRow([spoken("Kind")], ["Without MOM", "number"], ["Members"], [make("abbr", {title: "Management Object Model"}, "MOM")]),
        make("tbody", null, rows)));
}

function identity(page) {
    const {model} = page.data;
    const handles = model.loads ? "the same in every process that loads this model" : "not known, because the file does not load";
    return make("dl", {class: "facts"},
        fact("File", make("span", {class: "file"}, breakable(model.file))),
        fact("FED version", model.version),
        fact("Handles", handles),
        fact("Checksum", model.checksum && make("code", null, model.checksum)),
        fact("SHA-256", model.sha256 && make("code", {class: "digest"}, model.sha256)));
}

/** How the attributes and interactions of the federation are delivered, without those of the MOM. */
function deliveryTable(model) {
    const counts = new Map();
    const note = (column, {transportation, ordering}) => {
        const key = (transportation || "none") + " " + (ordering || "none");
        if (!counts.has(key)) counts.set(key, {transportation, ordering, attributes: 0, interactions: 0});
        ++counts.get(key)[column];
    };
    for (const node of model.object.nodes) {
        if (!node.mom && !node.removed) node.members.forEach(member => note("attributes", member));
    }
    for (const node of model.interaction.nodes) {
        if (!node.mom && !node.removed) note("interactions", node.data);
    }
    if (counts.size === 0) return null;
    const rows = [...counts.values()].sort((a, b) => b.attributes + b.interactions - a.attributes - a.interactions);
    const number = count => make("td", {class: "number"}, count === 0 ? "" : numeral(count));
    return make("section", null, make("h2", null, "Delivery"),
        make("div", {class: "wide"}, make("table", {class: "delivery-counts"},
            headRow(["Transportation"], ["Ordering"], ["Attributes", "number"], ["Interactions", "number"]),
            make("tbody", null, rows.map(row => make("tr", null, make("td", null, row.transportation || "none"),
                make("td", null, row.ordering || "none"), number(row.attributes), number(row.interactions)))))));
}

function findingsSummary(page) {
    const {findings} = page.data;
    if (findings.length === 0) return null;
    const first = groupByRule(findings).map(group => group.findings[0]).slice(0, FINDINGS_AT_FIRST);
    return make("section", null, make("h2", null, "What to look at"),
        first.map(finding => findingBox(page, finding, {withSubject: true, withSeverity: true})),
        make("p", null, make("a", {href: "#findings"},
            findings.length === first.length ? "Findings with explanations" : "All findings: " + summaryOf(findings))));
}

/** The comment about all classes or spaces of a kind; null if there is none. */
function commentOf(page, kind) {
    return page.onlyChanges ? null : documentation(page.remarks.documentationOfKind(kind));
}

/** The classes directly below the root, which are the subjects that a federation is about. */
function subjects(page, forest) {
    const top = shownNodes(page, joined(forest.roots.map(root => root.children)))
        .filter(node => !node.mom && fold(node.own) !== "rtiprivate");
    const comment = commentOf(page, forest.kind);
    if (top.length === 0 && comment === null) return null;
    return make("section", {class: "contents"}, make("h2", null, KINDS[forest.kind].title), comment,
        longList(make("ul", {class: "classes"}), top, node => classItem(page, node), ITEMS_AT_ONCE));
}

/** A class in a list: its name, its size and its comment. */
function classItem(page, node) {
    const {memberNoun} = KINDS[node.kind];
    const sizes = [node.members.length > 0 ? counted(node.members.length, memberNoun) : "",
                   node.numBelow > 0 ? counted(node.numBelow, "class") + " below" : ""].filter(text => text !== "");
    const name = linkTo(node, null, null, breakable(node.own));
    return make("li", null, signMark(page.marks.signOf(node)), node.removed ? make("del", null, name) : name, " ",
        make("span", {class: "sizes"}, sizes.join(", ")), documentation(page.remarks.documentationOf(node)));
}

function spaceItem(page, node) {
    return make("li", null, signMark(page.marks.signOf(node)), linkTo(node, null, null, breakable(node.own)), " ",
        make("span", {class: "sizes"}, node.members.map(member => member.name).join(", ") || "no dimensions",
            node.mom ? ", of the MOM" : ""),
        documentation(page.remarks.documentationOf(node)));
}

function spacesList(page) {
    const nodes = shownNodes(page, page.model.space.nodes);
    const comment = commentOf(page, "space");
    if (nodes.length === 0 && comment === null) return null;
    return make("section", {class: "contents"}, make("h2", null, KINDS.space.title), comment,
        longList(make("ul", {class: "classes"}), nodes, node => spaceItem(page, node), ITEMS_AT_ONCE));
}

function federationName(page) {
    return page.data.model.federation || fileName(page.data.model.file);
}

function overviewPage(page) {
    const {model, data} = page;
    return {
        title: "",
        content: [
            make("p", {class: "kind"}, data.model.federation ? "Federation" : "File"),
            make("h1", {tabindex: "-1"}, breakable(federationName(page))),
            documentation(page.remarks.documentationOfFile),
            verdictBox(page, true),
            identity(page),
            make("section", null, make("h2", null, "In this model"), countsTable(model),
                make("p", {class: "note"}, "The check reports ", data.findings.length === 0 ? "no errors and no warnings."
                    : [make("a", {href: "#findings"}, summaryOf(data.findings)), "."])),
            findingsSummary(page),
            make("div", {class: "pair"}, subjects(page, model.object), subjects(page, model.interaction)),
            spacesList(page),
            deliveryTable(model),
            make("footer", null, "Made by " + data.program)
        ]
    };
}
