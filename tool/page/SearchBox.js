// The search field and the list of names below it.

const MAX_RESULTS = 100;

/** A combobox: the focus stays in the field, and aria-activedescendant names the result that Enter opens. */
class SearchBox {
    constructor({model, open, leave}) {
        this.model = model;
        this.open = open;
        this.leave = leave;
        this.input = byId("query");
        this.list = byId("results");
        this.panel = byId("found");
        this.count = byId("count");
        this.index = null;
        this.results = [];
        this.active = -1;
        this.input.addEventListener("focus", () => this.onFocus());
        this.input.addEventListener("input", () => this.find());
        this.input.addEventListener("keydown", event => this.onKey(event));
        this.input.addEventListener("blur", () => this.close());
        this.panel.addEventListener("mousedown", event => event.preventDefault()); // keeps the focus in the field
        this.list.addEventListener("click", event => this.onClick(event));
    }

    focus() {
        this.input.focus();
        this.input.select();
    }

    /** The index is made when somebody begins to search, not while the page opens. */
    onFocus() {
        if (!this.index) this.index = createIndex(this.model);
        if (this.input.value.trim() !== "") this.find();
    }

    find() {
        if (!this.index) this.index = createIndex(this.model);
        const {total, results} = search(this.index, this.input.value, MAX_RESULTS);
        this.results = results;
        fill(this.list, results.map((result, index) => this.makeOption(result, index)));
        this.list.scrollTop = 0;
        const isEmpty = this.input.value.trim() === "";
        this.list.hidden = total === 0;
        this.panel.hidden = isEmpty;
        this.input.setAttribute("aria-expanded", String(!isEmpty && total > 0));
        this.count.textContent = isEmpty ? "" : this.describe(total);
        this.activate(total > 0 ? 0 : -1);
    }

    describe(total) {
        if (total === 0) return "No name matches. Parts of names and first letters find names too: MV finds MerchantVessel.";
        return total <= MAX_RESULTS ? counted(total, "name") : "The best " + MAX_RESULTS + " of " + counted(total, "name");
    }

    makeOption({entry, ranges}, index) {
        const {node, member} = entry;
        const classPath = member === null ? node.parent && node.parent.name : node.name;
        const kind = member === null ? KINDS[node.kind].noun : KINDS[node.kind].memberNoun;
        return make("div", {
            "role": "option", "id": "option-" + index, "aria-selected": "false", "class": "option",
            "data-link": linkOf(node, member && member.name)
        },
            make("span", {class: node.removed ? "name removed" : "name"}, marked(entry.name, ranges)), " ",
            make("span", {class: "kind"}, kind + (node.removed ? ", removed" : node.mom ? ", MOM" : "")), " ",
            classPath ? make("span", {class: "path"}, breakable(classPath)) : null);
    }

    activate(index) {
        const before = this.list.children[this.active];
        if (before) before.setAttribute("aria-selected", "false");
        this.active = index;
        const option = this.list.children[index];
        if (!option) {
            this.input.removeAttribute("aria-activedescendant");
            return;
        }
        option.setAttribute("aria-selected", "true");
        this.input.setAttribute("aria-activedescendant", option.id);
        option.scrollIntoView({block: "nearest"});
    }

    close() {
        this.panel.hidden = true;
        this.list.hidden = true;
        this.input.setAttribute("aria-expanded", "false");
        this.input.removeAttribute("aria-activedescendant");
    }

    onKey(event) {
        const steps = {ArrowDown: 1, ArrowUp: -1};
        if (event.key === "Escape") {
            this.close();
            this.leave();
        } else if (event.key === "Enter") {
            this.openResult(this.active);
        } else if (event.key in steps && this.results.length > 0) {
            if (this.panel.hidden) this.find();
            else this.activate((this.active + steps[event.key] + this.results.length) % this.results.length);
        } else {
            return;
        }
        event.preventDefault();
    }

    onClick(event) {
        const option = event.target.closest("[role=option]");
        if (option) this.openResult(Number(option.id.slice("option-".length)));
    }

    openResult(index) {
        const result = this.results[index];
        if (!result || this.panel.hidden) return;
        this.close();
        this.input.value = "";
        this.results = [];
        this.open(result.entry.node, result.entry.member);
    }
}
