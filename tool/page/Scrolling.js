// Where the reader was on each page of the history.

/**
 * The browser restores the scroll position before the script has made the page that it belongs to, so the script does it. Each
 * entry of the history gets a number, and the last position under this number is remembered.
 */
class Scrolling {
    constructor() {
        this.positions = new Map();
        this.last = 0;
        this.current = this.number();
        if ("scrollRestoration" in history) history.scrollRestoration = "manual";
        window.addEventListener("scroll", () => this.positions.set(this.current, window.scrollY), {passive: true});
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
        return this.positions.has(this.current) ? this.positions.get(this.current) : null;
    }
}
