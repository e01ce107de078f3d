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
    let shown = 0;
    for (const row of rows) {
        const text = row.textContent.toLowerCase();
        row.hidden = !words.every(word => text.includes(word));
        if (!row.hidden) ++shown;
    }
    const models = rows.length === 1 ? " model" : " models";
    count.textContent = (shown === rows.length ? "" : shown + " of ") + rows.length + models;
}

Array.from(table.tHead.rows[0].cells).forEach(makeSortable);
filter.hidden = rows.length < 2;
filter.addEventListener("input", applyFilter);
applyFilter();
document.documentElement.dataset.ready = String(Math.round(performance.now() - started));
