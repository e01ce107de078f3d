// The tree of classes and spaces beside the page.

const ROWS_AROUND = 12;        // rows made above and below the visible ones, so that scrolling shows no gaps
const OPEN_AT_FIRST = 80;       // a model with more classes begins with only the first level open
const INDENTED_LEVELS = 11;   // deeper indentation would leave no space for names
const TYPING_PAUSE = 700;      // milliseconds after which typed letters begin a new name

/** Sections such as "Object classes" have no page of their own. */
function isOpenable(item) {
    return item.own !== undefined;
}

/**
 * A tree in which only the visible rows are elements. `rows` lists all unfolded rows in order; each row has the same height, so
 * the position of the scrollbar says which rows are visible. Rebuilding some 60 rows at each scroll step is cheap; keeping rows
 * and moving them would be more code and not faster.
 *
 * The tree itself has the focus and names its active row (aria-activedescendant), because the element of a row disappears when
 * it is scrolled out of view.
 */
class TreeView {
    constructor(element, {sections, describe, shows, open}) {
        this.element = element;
        this.sections = sections;
        this.describe = describe;
        this.shows = shows;
        this.open = open;
        this.onlyChanges = false;
        this.unfolded = new Set(sections);
        this.rows = [];
        this.active = 0;
        this.selected = null;
        this.typed = "";
        this.typedAt = 0;
        this.space = make("div", {class: "rows", role: "presentation"});
        fill(element, this.space);
        this.unfoldAtFirst();
        this.listen();
    }

    unfoldAtFirst() {
        for (const section of this.sections) {
            const all = section.children.reduce((sum, root) => sum + root.numBelow + 1, 0) <= OPEN_AT_FIRST;
            const unfold = node => {
                if (node.children.length === 0 || node.mom) return;
                this.unfolded.add(node);
                if (all) node.children.forEach(unfold);
            };
            section.children.forEach(unfold);
        }
    }

    listen() {
        this.element.addEventListener("scroll", () => this.draw(), {passive: true});
        this.element.addEventListener("keydown", event => this.onKey(event));
        this.element.addEventListener("mousedown", event => this.onMouseDown(event));
        this.element.addEventListener("click", event => this.onClick(event));
        this.element.addEventListener("focus", () => this.onFocus());
        window.addEventListener("resize", () => this.draw());
    }

    childrenOf(item) {
        return this.onlyChanges ? item.children.filter(child => this.shows(child)) : item.children;
    }

    /** Lists the rows anew after folding or filtering; the active and the selected row stay the same things. */
    update() {
        const active = this.rows[this.active] && this.rows[this.active].item;
        this.rows = [];
        const add = (items, level) => {
            items.forEach((item, position) => {
                const children = this.childrenOf(item);
                this.rows.push({item, level, position, size: items.length, isParent: children.length > 0});
                if (this.unfolded.has(item)) add(children, level + 1);
            });
        };
        add(this.sections.filter(section => this.childrenOf(section).length > 0), 1);
        this.active = Math.max(0, this.rows.findIndex(row => row.item === active));
        this.draw();
    }

    setOnlyChanges(only) {
        this.onlyChanges = only;
        this.update();
        this.showRow(this.active);
    }

    /** Selects the item that the page shows, and unfolds its ancestors. */
    select(item) {
        this.selected = item;
        if (item) this.unfoldAround(item);
        this.update();
        const index = item ? this.rows.findIndex(row => row.item === item) : -1;
        if (index >= 0) this.activate(index);
    }

    unfoldAround(item) {
        const section = this.sections.find(candidate => candidate.kind === item.kind);
        this.unfolded.add(section);
        for (let above = item.parent; above; above = above.parent) this.unfolded.add(above);
    }

    /** Measured, because the style makes rows higher for fingers. */
    rowHeight() {
        if (!this.height) {
            const probe = make("div", {class: "row", role: "presentation"}, "x");
            this.space.append(probe);
            this.height = probe.getBoundingClientRect().height;
            probe.remove();
        }
        return this.height || 28;
    }

    draw() {
        const height = this.rowHeight();
        const first = Math.max(0, Math.floor(this.element.scrollTop / height) - ROWS_AROUND);
        const last = Math.min(this.rows.length, first + Math.ceil(this.element.clientHeight / height) + 2 * ROWS_AROUND);
        this.space.style.height = this.rows.length * height + "px";
        fill(this.space, this.rows.slice(first, last).map((row, offset) => this.makeRow(row, first + offset, height)));
        const isDrawn = this.active >= first && this.active < last;
        if (isDrawn) this.element.setAttribute("aria-activedescendant", "row-" + this.active);
        else this.element.removeAttribute("aria-activedescendant");
    }

    makeRow(row, index, height) {
        const {link, title, classes, content} = this.describe(row.item, this.unfolded.has(row.item));
        const element = make("a", {
            "id": "row-" + index, "class": ["row", ...classes, index === this.active ? "active" : ""].join(" "),
            "role": "treeitem", "href": link, "tabindex": "-1", "title": title,
            "aria-level": row.level, "aria-posinset": row.position + 1, "aria-setsize": row.size,
            "aria-selected": String(row.item === this.selected),
            "aria-expanded": row.isParent ? String(this.unfolded.has(row.item)) : null
        }, make("span", {class: row.isParent ? "twisty" : "twisty none", "aria-hidden": "true"}), content);
        element.style.top = index * height + "px";
        element.style.paddingLeft = Math.min(row.level - 1, INDENTED_LEVELS) * 14 + 8 + "px";
        return element;
    }

    activate(index) {
        this.active = Math.max(0, Math.min(this.rows.length - 1, index));
        this.showRow(this.active);
        this.draw();
    }

    showRow(index) {
        const height = this.rowHeight();
        const visible = this.element.clientHeight;
        if (visible === 0) return; // the tree is not displayed
        if (index * height < this.element.scrollTop) this.element.scrollTop = Math.max(0, (index - 1) * height);
        else if ((index + 1) * height > this.element.scrollTop + visible) {
            this.element.scrollTop = (index + 2) * height - visible;
        }
    }

    /** The height may have changed while the tree was hidden, on a phone. */
    shown() {
        this.height = 0;
        this.draw();
        this.showRow(this.active);
        this.draw();
    }

    onFocus() {
        this.showRow(this.active);
        this.draw();
    }

    /** Rows are made anew while the button is down, so the focus goes to the tree, not to a row. */
    onMouseDown(event) {
        if (event.button !== 0 || !event.target.closest("[role=treeitem]")) return;
        event.preventDefault();
        this.element.focus({preventScroll: true});
    }

    onClick(event) {
        const element = event.target.closest("[role=treeitem]");
        if (!element || event.ctrlKey || event.metaKey || event.shiftKey) return;
        event.preventDefault();
        const index = Number(element.id.slice("row-".length));
        this.active = index;
        if (event.target.closest(".twisty:not(.none)") || !isOpenable(this.rows[index].item)) this.toggle(index);
        else this.enter(index);
    }

    toggle(index) {
        const {item} = this.rows[index];
        if (!this.unfolded.delete(item)) this.unfolded.add(item);
        this.update();
    }

    enter(index) {
        const {item} = this.rows[index];
        if (!isOpenable(item)) {
            this.toggle(index);
        } else {
            this.draw();
            this.open(item);
        }
    }

    onKey(event) {
        if (event.ctrlKey || event.metaKey || event.altKey || this.rows.length === 0) return;
        const page = Math.max(1, Math.floor(this.element.clientHeight / this.rowHeight()) - 1);
        const steps = {ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -this.rows.length, End: this.rows.length};
        if (event.key in steps) this.activate(this.active + steps[event.key]);
        else if (event.key === "ArrowRight") this.goRight();
        else if (event.key === "ArrowLeft") this.goLeft();
        else if (event.key === "Enter" || event.key === " ") this.enter(this.active);
        else if (event.key.length === 1 && event.key !== "/") this.type(event.key);
        else return;
        event.preventDefault();
    }

    goRight() {
        const row = this.rows[this.active];
        if (!row.isParent) return;
        if (this.unfolded.has(row.item)) this.activate(this.active + 1);
        else this.toggle(this.active);
    }

    goLeft() {
        const row = this.rows[this.active];
        if (row.isParent && this.unfolded.has(row.item)) {
            this.toggle(this.active);
            return;
        }
        let index = this.active - 1;
        while (index >= 0 && this.rows[index].level >= row.level) --index;
        if (index >= 0) this.activate(index);
    }

    /** Goes to the next visible row that begins with the letters typed in a row. */
    type(letter) {
        const now = Date.now();
        this.typed = (now - this.typedAt > TYPING_PAUSE ? "" : this.typed) + fold(letter);
        this.typedAt = now;
        const from = this.active + (this.typed.length === 1 ? 1 : 0);
        const begins = row => fold(isOpenable(row.item) ? row.item.own : row.item.title).startsWith(this.typed);
        const after = this.rows.findIndex((row, index) => index >= from && begins(row));
        const found = after >= 0 ? after : this.rows.findIndex(begins);
        if (found >= 0) this.activate(found);
    }
}
