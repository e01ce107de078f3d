// Pieces that several pages consist of.

const MAX_STEPS = 16; // of a path
const PLACES_AT_ONCE = 50;
const FINDINGS_AT_ONCE = 4; // above the members of a class

function linkTo(node, memberName, attributes, ...content) {
    return make("a", Object.assign({href: "#" + linkOf(node, memberName)}, attributes), content);
}

/** The sign of a change with the word for screen readers; nothing for no sign. */
function signMark(sign) {
    if (sign === "") return null;
    const shown = sign === "-" ? "\u2212" : sign;
    return make("span", {class: "sign " + MEANING_OF_SIGN[sign], title: MEANING_OF_SIGN[sign]},
        make("span", {"aria-hidden": "true"}, shown), spoken(MEANING_OF_SIGN[sign] + " "));
}

/** The superclasses of a class as links; of very many, the first and the last. */
function pathOf(node) {
    const ancestors = ancestorsOf(node);
    if (ancestors.length === 0) return null;
    const steps = ancestors.map(above => make("li", null, linkTo(above, null, null, above.own)));
    const left = steps.length - MAX_STEPS;
    if (left > 1) steps.splice(MAX_STEPS / 2, left, make("li", null, "\u2026 " + counted(left, "class")));
    return make("nav", {"class": "path", "aria-label": "Superclasses"}, make("ol", null, steps));
}

/** A heading of a section, with the number of things in it. */
function countedHeading(title, count) {
    return make("h2", null, title, " ", make("span", {class: "number"}, numeral(count)));
}

/** A term with its value in a list of facts; nothing if there is no value. */
function fact(term, ...value) {
    const isEmpty = value.every(part => part === null || part === undefined || part === "");
    return isEmpty ? null : make("div", null, make("dt", null, term), make("dd", null, value));
}

/** The guess of the comparison that something was renamed; null for none. */
function renameHint(page, change) {
    if (!change.rename) return null;
    const likelihood = change.rename.likelihood === "probable" ? "probably" : "perhaps";
    const other = Object.assign({}, change, {name: change.rename.name});
    const verb = change.kind === "removed" ? " renamed to " : " renamed from ";
    return [likelihood, verb, linkOfChange(page, other, change.rename.name)];
}

/** Links a text to the class, space or member that a change is about; some changes are about the file as a whole. */
function linkOfChange(page, change, text) {
    const place = placeOfElement(change);
    const node = place && findNode(page.model[place.kind], place.name);
    return node ? linkTo(node, place.member, null, breakable(text)) : breakable(text);
}

/** A value that changed: the old one struck out before the new one. */
function changedValue(change, current) {
    if (!change) return current;
    const text = value => value === null ? "none" : String(value);
    return [make("del", null, spoken("was "), text(change.from)), " ",
            make("ins", null, spoken("is now "), current || text(change.to))];
}

function changeOfKind(changes, kind) {
    return changes.find(change => change.kind === kind) || null;
}

function spaceLink(page, name) {
    if (!name) return null;
    const node = findNode(page.model.space, name);
    return node ? linkTo(node, null, null, breakable(name)) : breakable(name);
}

function placeText(place) {
    return place ? "line " + place.line : "";
}

/** The comment that documents a declaration. Its lines are kept: people align text and tables in comments. */
function documentation(text) {
    return text === "" ? null : make("p", {class: "documentation"}, text);
}

/** One finding with all that the check says about it. A page of findings says the severity and explains the rule already. */
function findingBox(page, finding, {withSubject = false, withSeverity = false}) {
    const rule = page.data.rules[finding.rule];
    const severity = withSeverity ? [make("strong", {class: "severity"}, finding.severity), " "] : null;
    return make("div", {class: "finding " + finding.severity},
        make("p", {class: "where"}, severity, whereOf(page, finding, withSubject)),
        make("p", null, finding.text),
        withSubject ? furtherPlaces(page, finding) : null,
        finding.details.length === 0 ? null : make("ul", null, finding.details.map(text => make("li", null, text))),
        finding.notes.map(note => make("p", {class: "note"}, note.text, note.place ? ", " + placeText(note.place) : "")),
        finding.fixText ? make("p", {class: "note"}, "Fix: ", finding.fixText) : null,
        withSubject ? null : make("p", {class: "note"}, make("a", {href: "#findings"}, rule ? rule.title : finding.rule)));
}

/** The findings about a class or space; of very many the first few, so that the class itself stays in sight. */
function findingsAt(page, node) {
    return longList(make("div"), page.remarks.findingsOf(node),
        finding => findingBox(page, finding, {withSeverity: true}), FINDINGS_AT_ONCE);
}

/** The line of a finding and, with `withSubject`, a link to its declaration. */
function whereOf(page, finding, withSubject) {
    const subject = withSubject && finding.of ? subjectOf(page.model, finding.of) : null;
    return [placeText(finding.place), finding.place && subject ? ", " : null, subject];
}

function furtherPlaces(page, finding) {
    const [, ...further] = atEachPlace(finding);
    if (further.length === 0) return null;
    return make("details", null, make("summary", null, "Also at " + counted(further.length, "more place")),
        longList(make("ul"), further, other => make("li", null, whereOf(page, other, true)), PLACES_AT_ONCE));
}

/** The classes or spaces that are shown: with the switch "Only changes", those that changed and those above them. */
function shownNodes(page, nodes) {
    return page.onlyChanges ? nodes.filter(node => page.marks.shows(node)) : nodes;
}

/** A link to the declaration that a finding is about. */
function subjectOf(model, reference) {
    const [kind, index, memberIndex] = reference;
    const node = model[kind].nodes[index];
    if (!node) return null;
    const member = memberIndex === undefined ? null : node.members[memberIndex];
    return linkTo(node, member && member.name, null, breakable(member ? node.name + "." + member.name : node.name));
}

/** The verdict of the difference and the sentence that explains it. */
function verdictBox(page, withLink) {
    const {difference, wording} = page.data;
    if (!difference) return null;
    return make("section", {"class": "verdict " + difference.verdict, "aria-label": "Comparison"},
        make("p", null, make("strong", null, difference.verdict), ", compared with ",
            make("span", {class: "file"}, breakable(difference.old.file)),
            difference.handlesCompared || difference.verdict === "identical" ? "" : ", as far as it can be understood"),
        make("p", null, capitalized(wording.explanation),
            withLink && difference.changes.length > 0 ? [" ", make("a", {href: "#changes"},
                "See the changes")] : null));
}

function capitalized(text) {
    return text.charAt(0).toUpperCase() + text.slice(1);
}

function focusOn(element) {
    element.tabIndex = -1;
    element.focus({preventScroll: true});
}

/**
 * A list of which only the first items are made; a button makes more. A model may have thousands of findings or subclasses, of
 * which nobody reads all.
 */
function longList(list, items, makeItem, atOnce) {
    const button = make("button", {type: "button", class: "more"});
    let shown = 0;
    const more = () => {
        const next = items.slice(shown, shown + atOnce);
        append(list, next.map(makeItem));
        shown += next.length;
        const left = items.length - shown;
        button.textContent = "Show " + numeral(Math.min(left, atOnce)) + " more of " + numeral(left);
        button.hidden = left === 0;
    };
    button.addEventListener("click", () => {
        const last = list.lastElementChild;
        more();
        if (button.hidden) focusOn(last.nextElementSibling); // a hidden button loses the focus to the top of the page
    });
    more();
    return [list, button];
}
