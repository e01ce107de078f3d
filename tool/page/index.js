// Sorts and filters the rows of the index, which are readable without a script too.

const started = performance.now();
const table = document.getElementById("models");
const rows = Array.from(table.tBodies[0].rows);
const filter = document.getElementById("filter");
const count = document.getElementById("count");

function textOf(row, column) {
    return row.cells[column].textContent;
}

/** Compares numbers by value and texts alphabetically. Empty cells come last in either direction. */
function compare(a, b, isDescending) {
    if (a === "" || b === "") return Number(a === "") - Number(b === "");
    const order = a.localeCompare(b, "en", {numeric: true});
    return isDescending ? -order : order;
}

function sortBy(heading) {
    const column = heading.cellIndex;
    const isDescending = heading.getAttribute("aria-sort") === "ascending";
    for (const other of heading.parentElement.cells) other.removeAttribute("aria-sort");
    heading.setAttribute("aria-sort", isDescending ? "descending" : "ascending");
    rows.sort((a, b) => compare(textOf(a, column), textOf(b, column), isDescending));
    table.tBodies[0].append(...rows);
}

function makeSortable(heading) {
    const button = document.createElement("button");
    button.type = "button";
    button.textContent = heading.textContent;
    button.addEventListener("click", () => sortBy(heading));
    heading.textContent = "";
    heading.append(button);
}

/** Shows the rows that contain all words of the filter. */
function applyFilter() {
    const words = filter.value.toLowerCase().split(/\s+/);
    for (const row of rows) {
        const text = row.textContent.toLowerCase();
        row.hidden = !words.every(word => text.includes(word));
    }
    const removed = rows.filter(row => row.dataset.state === "removed");
    const models = rows.filter(row => row.dataset.state !== "removed");
    const parts = [shownOf(models) + (models.length === 1 ? " model" : " models")];
    if (removed.length > 0) parts.push(shownOf(removed) + " removed");
    count.textContent = parts.join(", ");
}

/** "4", or "2 of 4" if some are hidden. */
function shownOf(some) {
    const shown = some.filter(row => !row.hidden).length;
    return (shown === some.length ? "" : shown + " of ") + some.length;
}

Array.from(table.tHead.rows[0].cells).forEach(makeSortable);
table.classList.add("sortable");
filter.hidden = rows.length < 2;
filter.addEventListener("input", applyFilter);
applyFilter();
document.documentElement.dataset.ready = String(Math.round(performance.now() - started));
