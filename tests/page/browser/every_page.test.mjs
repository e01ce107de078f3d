// The page of each model - the examples, the models made for these tests, and those of the folders in MODELS - stays silent, finds
// all names, and shows each declaration under its address.
import assert from "node:assert/strict";
import { mkdirSync, readdirSync, writeFileSync } from "node:fs";
import path from "node:path";
import { after, before, test } from "node:test";
import { launch, none, quietly } from "./browser.mjs";
import { declarations, sample } from "./declarations.mjs";
import { models } from "./models.mjs";
import { examples, makePage, modelOf, output } from "./program.mjs";

const made = path.join(output, "models");
mkdirSync(made, { recursive: true });
for (const [name, text] of Object.entries(models())) writeFileSync(path.join(made, name), text);
const folders = [examples, made, ...(process.env.MODELS || "").split(":").filter(Boolean)];
const files = folders.flatMap(folder => readdirSync(folder).filter(name => name.endsWith(".fed")).map(name => path.join(folder, name)));

const mostResults = 100;
const mostTime = 2000; // ms of script until a page is shown, some ten times what a busy machine takes

let browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

/** The addresses of the results of each search, in the page: types each text as a whole. */
const search = (page, texts) => page.evaluate(queries => {
    const field = document.querySelector("input[type=search]");
    const results = [];
    for (const query of queries) {
        field.value = query;
        field.dispatchEvent(new InputEvent("input", { bubbles: true }));
        results.push([...document.querySelectorAll("[role=option]")].map(option => option.dataset.link));
    }
    field.value = "";
    field.dispatchEvent(new InputEvent("input", { bubbles: true }));
    return results;
}, texts);

/** What the page shows at each address: the heading, the marked member, and the addresses that its links lead to. */
const show = (page, links) => page.evaluate(async addresses => {
    const shown = [];
    for (const address of addresses) {
        if (location.hash !== "#" + address) {
            const changed = new Promise(done => addEventListener("hashchange", done, { once: true }));
            location.hash = "#" + address;
            await changed;
        }
        const main = document.querySelector("main");
        const heading = main.querySelector("h1, h2");
        shown.push({
            heading: heading && heading.textContent,
            marked: [...main.querySelectorAll("[aria-current=true]")].map(row => row.dataset.link),
            links: [...main.querySelectorAll("a[href]")].map(a => a.getAttribute("href")),
        });
    }
    return shown;
}, links);

/** The declarations of a name that a search for it misses. Of more than the page lists, any may be left out, but not all. */
const missing = (results, links) => {
    const missed = links.filter(link => !results.includes(link));
    return results.length === mostResults && missed.length < links.length ? [] : missed;
};

for (const file of files) {
    test(path.basename(file), async t => {
        const all = declarations(modelOf(file));
        await quietly(browser, makePage(file), {}, async page => {
            const time = +await page.evaluate(() => document.documentElement.dataset.ready);
            t.diagnostic(`${all.length} declarations, ${time} ms of script`);
            assert.ok(time < mostTime, `${time} ms of script`);

            const names = [...new Set((all.length > 1500 ? sample(all, 300) : all).map(each => each.name))];
            const found = await search(page, names);
            const missed = names.flatMap((name, i) => missing(found[i], all.filter(each => each.name === name).map(each => each.link)));
            none(missed, "declarations that a search for their name misses");

            const tried = sample(all, 100);
            const shown = await show(page, tried.map(each => each.link));
            const linked = new Set();
            tried.forEach(({ link, shownBy, member }, i) => {
                assert.ok(shown[i].heading.includes(shownBy), `${link} shows ${shown[i].heading}`);
                if (member) assert.deepEqual(shown[i].marked, [link], link);
                shown[i].links.forEach(href => linked.add(href));
            });
            const known = new Set(["#", "#findings", ...all.map(each => `#${each.link}`)]);
            none([...linked].filter(href => !known.has(href)), "links to what the model does not declare");
        });
    });
}
