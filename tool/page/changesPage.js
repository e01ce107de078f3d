// The page with all changes of a comparison, in the groups and words of `rtifed diff`.

const CHANGES_AT_ONCE = 50;

function changeGroup(page, group) {
    const {changes} = page.data.difference;
    const first = changes[group.changes[0].change];
    if (group.changes.length === 1) { // which the headline names
        const place = first.kind === "unclear" ? ": " + placeText(first.newPlace || first.oldPlace) : "";
        return make("section", {class: "change"},
            make("h3", null, signMark(group.sign), linkOfChange(page, first, group.headline), place),
            first.contents.length > 0 ? contentsOf(page, first) : null);
    }
    return make("section", {class: "change"},
        make("h3", null, signMark(group.sign), breakable(group.headline)),
        longList(make("ul", {class: "changes"}), group.changes, item =>
            make("li", null, linkOfChange(page, changes[item.change], item.text)), CHANGES_AT_ONCE));
}

/** The declarations that were added or removed with a class or space. */
function contentsOf(page, change) {
    return make("details", null, make("summary", null, counted(change.contents.length, "declaration") + " in it"),
        longList(make("ul", {class: "changes"}), change.contents, element =>
            make("li", null, linkOfChange(page, element, element.in + "." + element.name)), CHANGES_AT_ONCE));
}

function changesPage(page) {
    const {difference, wording} = page.data;
    if (!difference) {
        return {title: "Changes", content: [make("h1", {tabindex: "-1"}, "Changes"),
            make("p", null, "This page was made without an older version to compare with (rtifed html --against).")]};
    }
    const meanings = ["incompatible", "additions", "renumbered", "relabelled"];
    const titles = {incompatible: "Removed or changed", additions: "Added", renumbered: "Handles", relabelled: "Names"};
    const sections = meanings.map(meaning => {
        const groups = wording.groups.filter(group => group.meaning === meaning);
        return groups.length === 0 ? null : make("section", null, make("h2", null, titles[meaning]),
            groups.map(group => changeGroup(page, group)));
    });
    return {title: "Changes", content: [make("h1", {tabindex: "-1"}, "Changes"), verdictBox(page, false), sections]};
}
