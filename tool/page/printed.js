// The whole model as one document, for printing from the overview.

function printedClass(page, {node, rows}, columns) {
    const {data} = node;
    const delivery = node.kind === "interaction" ? [data.transportation, data.ordering, data.space] : [];
    const handle = page.hasHandles && !node.removed ? "handle " + data.handle : "";
    return make("section", {class: "printed-class"},
        make("h3", null, signMark(page.marks.signOf(node)), breakable(node.name), " ",
            make("span", {class: "sizes"}, [handle, ...delivery].filter(text => text).join(", "))),
        documentation(page.remarks.documentationOf(node)),
        page.remarks.findingsOf(node).map(finding => findingBox(page, finding, {withSeverity: true})),
        rows.length === 0 ? null : make("table", {class: "members " + node.kind}, tableHead(node.kind, columns),
            make("tbody", null, rows.map(row => makeRows(page, row, columns, null)))));
}

/** Classes in the order of the tree: each before its subclasses. */
function inTreeOrder(forest) {
    const ordered = [];
    const rest = [...forest.roots].reverse();
    while (rest.length > 0) {
        const node = rest.pop();
        ordered.push(node);
        rest.push(...[...node.children].reverse());
    }
    return ordered;
}

/** All tables of one kind have the same columns, so that they are aligned. */
function printedForest(page, forest) {
    const classes = shownNodes(page, inTreeOrder(forest)).map(node => ({node, rows: ownRows(page, node)}));
    const columns = columnsOf(page, forest.kind, joined(classes.map(({rows}) => rows)));
    return make("section", null, make("h2", null, KINDS[forest.kind].title),
        commentOf(page, forest.kind),
        classes.map(printed => printedClass(page, printed, columns)));
}

function printedModel(page) {
    return make("div", {class: "printed"}, forestsOf(page.model)
        .filter(({kind, nodes}) => nodes.length > 0 || commentOf(page, kind) !== null)
        .map(forest => printedForest(page, forest)));
}

/** Shows all items of long lists: paper has no buttons. An item may contain a list of its own. */
function unfoldAll(main) {
    const nextButton = () => main.querySelector("button.more:not([hidden])");
    for (let button = nextButton(); button; button = nextButton()) button.click();
    for (const details of main.querySelectorAll("details")) details.open = true;
}

/** Made only when somebody prints, because it is as long as the model. */
function preparePrinting(main, printsWhole) {
    let printed = null;
    const remove = () => {
        if (printed) printed.remove();
        printed = null;
    };
    window.addEventListener("beforeprint", () => {
        remove();
        printed = printsWhole();
        if (printed) main.append(printed);
        else unfoldAll(main);
    });
    window.addEventListener("afterprint", remove);
}
