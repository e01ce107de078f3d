// Where the reader was on each page of the history.

/**
 * The browser restores the scroll position before the script has made the page that it belongs to, so the script does it. Each
 * entry of the history gets a number, and the last position under this number is remembered.
 */
class Scrolling {
    constructor() {
        this.positions = new Map();
        this.last = 0;
        this.arrive();
        if ("scrollRestoration" in history) history.scrollRestoration = "manual";
        window.addEventListener("scroll", () => this.note(), {passive: true});
    }

    /** A link to "#" scrolls to the top before the script learns that the address has changed: that is no choice of the reader. */
    note() {
        if (location.href === this.address) this.positions.set(this.current, window.scrollY);
    }

    number() {
        if (!history.state || history.state.entry === undefined) {
            history.replaceState({entry: ++this.last + "-" + Date.now()}, "");
        }
        return history.state.entry;
    }

    /** To be called when the address has changed. Returns the position of a page that was shown before, else null. */
    arrive() {
        this.current = this.number();
        this.address = location.href;
        return this.positions.has(this.current) ? this.positions.get(this.current) : null;
    }
}
