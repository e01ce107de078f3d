// Opens the page: reads the data, and shows the class or page that the address names.

const started = performance.now();

/** The state that all pages share: the data, the model made of it, and the choices of the reader. */
function createPage(data) {
    const page = {
        data, model: createModel(data.model), before: null, marks: new Marks(data.difference),
        withInherited: false, // the reader's choice for all classes
        inheritedHere: null, // the same for the class that is shown, if the reader chose there
        onlyChanges: false
    };
    if (data.before) {
        page.before = createModel(data.before);
        for (const kind of Object.keys(KINDS)) {
            adoptRemoved(page.model[kind], page.before[kind], (...element) => page.marks.isRemoved(...element));
        }
    }
    forestsOf(page.model).forEach(countBelow);
    page.marks.spread(page.model);
    page.remarks = new Remarks(data);
    page.remarks.spread(page.model);
    page.spaceUses = collectSpaceUses(page.model);
    page.hasHandles = data.model.loads;
    return page;
}

function noticeOf({data, model}) {
    const isEmpty = forestsOf(model).every(forest => forest.nodes.length === 0);
    const notices = [];
    if (!data.model.loads) {
        const errors = countSeverity(data.findings, "error");
        notices.push(make("p", null, make("strong", null, "The library refuses this file"),
            errors > 0 ? [": ", make("a", {href: "#findings"}, counted(errors, "error"))] : null,
            isEmpty ? ". Nothing in it can be shown." : ". The page shows what can be understood of it, without handles."));
    }
    if (!data.complete && !isEmpty) {
        notices.push(make("p", null, "Parts of the file could not be understood, so classes or members may be missing here."));
    }
    return notices.length === 0 ? null : make("section", {"class": "refused", "aria-label": "About this file"}, notices);
}

/** The links in the bar. */
function placesOf({data}) {
    const errors = countSeverity(data.findings, "error");
    const severity = errors > 0 ? "error" : data.findings.length > 0 ? "warning" : "none";
    return [
        data.index ? make("a", {href: data.index}, "All models") : null,
        make("a", {href: "#"}, "Overview"),
        make("a", {href: "#findings", class: severity}, "Findings ", make("span", {class: "number"}, String(data.findings.length))),
        data.difference ? make("a", {href: "#changes"}, "Changes ",
            make("span", {class: "number"}, numeral(data.difference.changes.length))) : null
    ];
}

function missingPage({link}) {
    const kind = isKind(link.view) ? KINDS[link.view] : null;
    return {title: "Not found", content: [
        make("h1", {tabindex: "-1"}, "Not in this version"),
        make("p", {class: "missing"}, kind
            ? ["This version of the model has no " + kind.noun + " ", make("strong", null, breakable(link.name)), "."]
            : "This address names nothing in the model."),
        make("p", null, make("a", {href: "#"}, "To the overview"))]};
}

const PAGES = {
    overview: overviewPage, findings: findingsPage, changes: changesPage,
    object: classPage, interaction: classPage, space: spacePage, missing: (page, found) => missingPage(found)
};

/** How the tree shows a section, class or space. */
function describeItem(page, item, isUnfolded) {
    if (!isOpenable(item)) {
        const count = item.children.length === 0 ? 0 : item.forest.nodes.filter(node => !node.removed).length;
        const name = make("span", {class: "name"}, item.title);
        return {link: "#", title: null, classes: ["section"], content: [name, numberOf(count, KINDS[item.kind].noun, "")]};
    }
    const sign = page.marks.signOf(item);
    const severity = page.remarks.severityOf(item);
    const hidden = severity === "" && !isUnfolded ? page.remarks.severityBelow(item) : "";
    const {memberNoun} = KINDS[item.kind];
    const isChangedBelow = sign === "" && page.marks.below.has(item);
    return {
        link: "#" + linkOf(item),
        title: item.name + ": " + counted(item.members.length, memberNoun) +
            (item.numBelow > 0 ? ", " + counted(item.numBelow, "class") + " below" : ""),
        classes: [item.mom ? "mom" : "", item.removed ? "removed" : ""].filter(name => name !== ""),
        content: [make("span", {class: "name"}, item.own), signMark(sign),
            isChangedBelow ? flag("below", "changes below") : null,
            severity ? flag("flag " + severity, severity) : null,
            hidden ? flag("flag hollow " + hidden, hidden + " below") : null,
            numberOf(item.numBelow, "class", " below")]
    };
}

/** A coloured dot in the tree. */
function flag(classes, meaning) {
    return make("span", {class: classes, title: meaning}, spoken(" " + meaning));
}

/** A number at the end of a row; screen readers also hear the noun. */
function numberOf(count, noun, where) {
    return count === 0 ? null : [
        make("span", {"class": "number", "aria-hidden": "true"}, numeral(count)),
        spoken(" " + counted(count, noun) + where)];
}

function sectionsOf(model) {
    return forestsOf(model).map(forest => ({kind: forest.kind, title: KINDS[forest.kind].title, children: forest.roots, forest}));
}

/** Shows pages in the document and moves between them. */
class Reader {
    constructor(page) {
        this.page = page;
        this.main = byId("main");
        this.scrolling = new Scrolling();
        this.keepsFocus = true;
        page.showAgain = () => this.show();
        this.tree = new TreeView(byId("tree"), {
            sections: sectionsOf(page.model),
            describe: (item, isUnfolded) => describeItem(page, item, isUnfolded),
            shows: item => page.marks.shows(item),
            open: item => this.openFromTree(item)
        });
        this.search = new SearchBox({
            model: page.model,
            open: (node, member) => this.go(linkOf(node, member && member.name)),
            leave: () => this.main.focus({preventScroll: true})
        });
        this.fillBar();
        this.listen();
        preparePrinting(this.main, () => this.view === "overview" ? printedModel(page) : null);
    }

    fillBar() {
        fill(byId("home"), federationName(this.page));
        fill(byId("places"), placesOf(this.page));
        fill(byId("notice"), noticeOf(this.page));
        byId("filter").hidden = !this.page.data.difference;
    }

    listen() {
        window.addEventListener("hashchange", () => this.arrive());
        document.addEventListener("keydown", event => this.onKey(event));
        byId("menu").addEventListener("click", () => this.showSide(!this.isSideShown()));
        byId("skip").addEventListener("click", () => this.main.focus());
        byId("only-changes").addEventListener("change", event => this.setOnlyChanges(event.target.checked));
    }

    setOnlyChanges(only) {
        this.page.onlyChanges = only;
        this.tree.setOnlyChanges(only);
        this.show();
    }

    /** Shows the page of the address, scrolled to the top or to its last position. */
    arrive() {
        const position = this.scrolling.arrive();
        this.page.inheritedHere = null;
        this.showSide(false);
        this.show();
        window.scrollTo(0, position === null ? 0 : position);
        const target = this.main.querySelector("tr.target");
        const isBelow = target !== null && target.getBoundingClientRect().bottom > window.innerHeight;
        if (position === null && isBelow) target.scrollIntoView({block: "center"});
        if (!this.keepsFocus) this.main.querySelector("h1").focus({preventScroll: true});
        this.keepsFocus = false;
    }

    show() {
        const found = resolveLink(this.page.model, parseLink(location.hash));
        const shown = PAGES[found.view](this.page, found);
        this.view = found.view;
        fill(this.main, shown.content);
        document.title = (shown.title ? shown.title + " \u2013 " : "") + federationName(this.page);
        this.tree.select(shown.node || null);
        const address = found.view === "overview" ? "#" : "#" + found.view;
        for (const link of byId("places").children) {
            if (link.getAttribute("href") === address) link.setAttribute("aria-current", "page");
            else link.removeAttribute("aria-current");
        }
    }

    go(link) {
        if (location.hash === "#" + link) this.arrive();
        else location.hash = link;
    }

    /** In a wide window the focus stays in the tree, so that the arrow keys go on. */
    openFromTree(item) {
        this.keepsFocus = !this.isSideShown();
        this.go(linkOf(item));
    }

    isSideShown() {
        return document.body.classList.contains("side-shown");
    }

    /** On a phone the tree covers the page while it is shown. */
    showSide(shown) {
        if (shown === this.isSideShown()) return;
        document.body.classList.toggle("side-shown", shown);
        byId("menu").setAttribute("aria-expanded", String(shown));
        if (!shown) return;
        this.tree.shown();
        byId("tree").focus({preventScroll: true});
    }

    onKey(event) {
        if (event.ctrlKey || event.metaKey || event.altKey) return;
        if (event.key === "Escape" && this.isSideShown()) {
            this.showSide(false);
            byId("menu").focus();
        } else if (event.key === "/" && !isTextField(event.target)) {
            event.preventDefault();
            this.search.focus();
        }
    }
}

function isTextField(element) {
    return element.tagName === "TEXTAREA" || (element.tagName === "INPUT" && element.type !== "checkbox");
}

function openPage() {
    const reader = new Reader(createPage(JSON.parse(byId("data").textContent)));
    reader.arrive();
    document.documentElement.dataset.ready = String(Math.round(performance.now() - started));
}

openPage();
