// What a person does with a page: search, walk the tree by keyboard, follow links and go back, print; and with pages of differences
// and folders.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdirSync, readdirSync, writeFileSync } from "node:fs";
import path from "node:path";
import { after, before, test } from "node:test";
import { heading, launch, none, open, quietly, visit } from "./browser.mjs";
import { large, models } from "./models.mjs";
import { example, makePage, modelOf, output, rtifed } from "./program.mjs";

const folder = path.join(output, "use");
mkdirSync(folder, { recursive: true });
const texts = models();
const write = name => { writeFileSync(path.join(folder, name), texts[name]); return path.join(folder, name); };
const harbour = example("harbour.fed");
const page = makePage(harbour);
const craft = "#object/ObjectRoot.Craft";
const merchant = `${craft}.MerchantVessel`;

let browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

const address = shown => shown.evaluate(() => location.hash);
const focused = shown => shown.evaluate(() => document.activeElement.getAttribute("role") || document.activeElement.tagName.toLowerCase());

/** The tree's item that assistive technology takes for the current one: the focused one, or the one that the focused tree names. */
const current = shown => shown.evaluate(() => {
    const active = document.activeElement;
    const item = active.getAttribute("role") === "treeitem" ? active : document.getElementById(active.getAttribute("aria-activedescendant"));
    return item && { link: item.getAttribute("href"), expanded: item.getAttribute("aria-expanded"), level: +item.getAttribute("aria-level") };
});

test("search: what is typed, and what comes first", () => quietly(browser, page, {}, async shown => {
    for (const [typed, first] of [
        ["merchantvessel", merchant], ["MERCHANTVESSEL", merchant], ["MV", merchant], ["merVes", merchant], ["chantVes", merchant],
        ["Craft", "#object/ObjectRoot.Craft"], ["craft.merchantvessel", merchant],
        ["tanklevels", `${merchant}.Tanker/TankLevels`], ["easting", "#space/ApproachArea/easting"],
    ]) {
        await shown.locator("input[type=search]").fill(typed);
        assert.equal("#" + await shown.locator("[role=option]").first().getAttribute("data-link"), first, typed);
    }
    await shown.locator("input[type=search]").fill("nothing has this name");
    assert.equal(await shown.locator("[role=option]").count(), 0);
    assert.match(await shown.locator("body").innerText(), /\b(no|nothing)\b/i);
}));

test("search by keyboard", () => quietly(browser, page, {}, async shown => {
    await shown.keyboard.press("/");
    assert.equal(await focused(shown), "combobox");
    assert.equal(await shown.locator("input[type=search]").inputValue(), "");
    await shown.keyboard.type("vessel");
    const chosen = () => shown.evaluate(() => {
        const option = document.getElementById(document.activeElement.getAttribute("aria-activedescendant"));
        return option && { link: option.dataset.link, selected: option.getAttribute("aria-selected") };
    });
    await shown.keyboard.press("ArrowDown");
    const second = await chosen();
    assert.equal(second.selected, "true");
    await shown.keyboard.press("ArrowDown");
    assert.notEqual((await chosen()).link, second.link);
    await shown.keyboard.press("ArrowUp");
    await shown.keyboard.press("Enter");
    assert.equal(await address(shown), "#" + second.link);
    assert.equal(await shown.locator("[role=option]:visible").count(), 0);
    await shown.keyboard.press("/");
    await shown.keyboard.press("Escape");
    assert.notEqual(await focused(shown), "combobox");
}));

test("the tree by keyboard alone", () => quietly(browser, page, {}, async shown => {
    for (let i = 0; i < 40 && !["tree", "treeitem"].includes(await focused(shown)); ++i) await shown.keyboard.press("Tab");
    const press = async key => { await shown.keyboard.press(key); return current(shown); };
    await press("Home");
    const last = await press("End");
    const first = await press("Home");
    assert.notDeepEqual(first, last);
    // A letter moves to the next item that begins with it; the arrows open, enter, leave and close.
    for (let i = 0; i < 20 && (await current(shown)).link !== craft; ++i) await press("c");
    let at = await current(shown);
    assert.equal(at.link, craft);
    if (at.expanded === "false") at = await press("ArrowRight");
    assert.equal(at.expanded, "true");
    const inside = await press("ArrowRight");
    assert.equal(inside.level, at.level + 1);
    if (inside.expanded === "true") await press("ArrowLeft");
    assert.equal((await press("ArrowLeft")).link, craft);
    assert.equal((await press("ArrowLeft")).expanded, "false");
    await press("Enter");
    assert.equal(await address(shown), craft);
    assert.match(await heading(shown), /Craft/);
    const items = await shown.locator("[role=treeitem]").evaluateAll(all => all.map(item =>
        [item.getAttribute("aria-setsize"), item.getAttribute("aria-posinset"), item.getAttribute("aria-level"), item.href]));
    for (const [size, position, level, link] of items) assert.ok(+size >= +position && +position >= 1 && +level >= 1, link);
    assert.equal(await shown.locator("[role=treeitem][aria-selected=true]").getAttribute("href"), craft);
}));

test("back, forward, and addresses as people keep them", () => quietly(browser, page, { hash: `${merchant}/HullNumber` }, async shown => {
    assert.match(await heading(shown), /MerchantVessel/);
    assert.match(await shown.title(), /MerchantVessel/);
    assert.equal(await shown.locator("[aria-current=true]").getAttribute("data-link"), `${merchant.slice(1)}/HullNumber`);
    await shown.locator(`main a[href="#object/ObjectRoot.Craft"]`).first().click();
    await shown.waitForFunction(() => document.querySelector("main :is(h1, h2)").textContent.includes("Craft"));
    await visit(shown, "#space/RadioTraffic");
    await shown.goBack();
    assert.equal(await address(shown), "#object/ObjectRoot.Craft");
    await shown.goBack();
    assert.match(await heading(shown), /MerchantVessel/);
    await shown.goForward();
    assert.match(await heading(shown), /Craft/);
    await visit(shown, "#object/objectroot.CRAFT.merchantvessel/hullnumber");
    assert.match(await heading(shown), /MerchantVessel/);
    assert.equal(await shown.locator("[aria-current=true]").getAttribute("data-link"), `${merchant.slice(1)}/HullNumber`);
    for (const wrong of ["#object/ObjectRoot.Submarine", "#space/%", "#nonsense", "#object/", "#space/__proto__"]) {
        await visit(shown, wrong);
        assert.match(await shown.locator("main").innerText(), /\b(no|nothing)\b/i, wrong);
    }
    await visit(shown, "#object/ObjectRoot.Craft/Displacement");
    assert.match(await heading(shown), /Craft/);
    assert.match(await shown.locator("main").innerText(), /\bno\b.*Displacement/i);
    await visit(shown, "#findings");
    assert.match(await heading(shown), /finding/i);
}));

test("inherited members", () => quietly(browser, page, { hash: merchant }, async shown => {
    const rows = () => shown.locator("main tr[data-link]").evaluateAll(all => all.map(row => row.dataset.link));
    await shown.locator("#inherited").setChecked(false);
    const own = await rows();
    assert.equal(own.length, 5);
    await shown.locator("#inherited").setChecked(true);
    const all = await rows();
    assert.equal(all.length, own.length + 11);
    await shown.locator("main table a[href='#object/ObjectRoot.Craft']").first().click();
    await shown.waitForFunction(() => !document.querySelector("main :is(h1, h2)").textContent.includes("Merchant"));
    // A link to an inherited member shows it, whatever the switch says.
    await visit(shown, merchant);
    await shown.locator("#inherited").setChecked(false);
    await visit(shown, `${merchant}/Heading`);
    assert.equal(await shown.locator("main tr[aria-current=true]").count(), 1);
    assert.ok(await shown.locator("#inherited").isChecked());
    // It shows it there only, and until the reader switches it off.
    await shown.goBack();
    assert.deepEqual([await shown.locator("#inherited").isChecked(), await rows()], [false, own]);
    await shown.goForward();
    await shown.locator("#inherited").setChecked(false);
    assert.deepEqual(await rows(), own);
    await shown.locator("#inherited").setChecked(true);
    assert.deepEqual(await rows(), all);
}));

test("back finds the place where the reader was", () => quietly(browser, page, { hash: merchant }, async shown => {
    const scrolled = () => shown.evaluate(() => new Promise(done => requestAnimationFrame(() => done(window.scrollY))));
    const scrollTo = async y => { await shown.evaluate(to => window.scrollTo(0, to), y); assert.equal(await scrolled(), y); };
    const follow = async (link, title) => {
        await link.click();
        await shown.waitForFunction(text => document.querySelector("main h1").textContent.includes(text), title);
        assert.equal(await scrolled(), 0, `the top of ${title}`);
    };
    await shown.setViewportSize({ width: 1280, height: 400 });
    await scrollTo(150);
    await follow(shown.getByRole("link", { name: "Overview", exact: true }), "HarbourApproach");
    await scrollTo(200);
    await follow(shown.getByRole("link", { name: "Findings" }), "Findings");
    await shown.goBack();
    assert.match(await heading(shown), /HarbourApproach/);
    assert.equal(await scrolled(), 200);
    await shown.goBack();
    assert.match(await heading(shown), /MerchantVessel/);
    assert.equal(await scrolled(), 150);
}));

test("printing", async () => {
    const printed = async (hash, model = page) => {
        const file = path.join(folder, "print.pdf");
        await quietly(browser, model, { hash }, async shown => {
            const links = await shown.locator("[role=treeitem]").count();
            await shown.pdf({ path: file, format: "A4" });
            assert.equal(await shown.locator("[role=treeitem]").count(), links, "the page after printing");
        });
        return execFileSync("pdftotext", ["-layout", file, "-"], { encoding: "utf8" }).replace(/\s/g, "");
    };
    const { objectClasses, interactionClasses } = modelOf(harbour);
    const whole = await printed("");
    for (const { name } of [...objectClasses, ...interactionClasses]) assert.ok(whole.includes(name), name);
    for (const name of ["ApproachArea", "TankLevels", "refrigerated"]) assert.ok(whole.includes(name), name);
    const one = await printed(merchant);
    assert.ok(one.includes("DangerousGoods") && !one.includes("TankLevels"), "only the class that is shown");
    // On the screen, the long lists of these pages are not whole.
    assert.equal(new Set((await printed("#object/ObjectRoot.ManyMembers", makePage(write("wide.fed")))).match(/Member\d+/g)).size, 2000);
    assert.equal(new Set((await printed("#findings", makePage(write("faulty.fed")))).match(/Faulty\d+/g)).size, 120);
});

test("findings, and a file that the library refuses", async () => {
    await quietly(browser, makePage(write("faulty.fed")), {}, async shown => {
        assert.match(await shown.locator("[role=alert], .refused").first().innerText(), /refuse|load/i);
        await visit(shown, "#findings");
        await shown.locator("summary").first().click(); // the further places of a mistake
        const all = await shown.locator("main").innerText();
        for (const text of ["2 errors", "unknown-ordering", "Faulty7.Wrong", 'unknown ordering "soon"']) assert.ok(all.includes(text), text);
        // The keyboard stays in the list, also when the button for more of it goes.
        const button = shown.locator("details[open] + button, details[open] button").first();
        await button.focus();
        for (let presses = 0; await button.isVisible(); ++presses) {
            assert.ok(presses < 5);
            await shown.keyboard.press("Enter");
            await shown.evaluate(() => new Promise(done => requestAnimationFrame(() => requestAnimationFrame(done))));
            assert.ok(await shown.evaluate(() => document.activeElement.closest("details") !== null), await focused(shown));
        }
        await visit(shown, "#object/ObjectRoot.Faulty7");
        assert.match(await shown.locator("main").innerText(), /unknown ordering "soon"/);
    });
});

test("a comparison", async () => {
    const later = makePage(write("later.fed"), "--against", harbour);
    await quietly(browser, later, {}, async shown => {
        assert.match(await shown.locator("main").innerText(), /incompatible/i);
        await visit(shown, "#changes");
        const changes = await shown.locator("main").innerText();
        for (const name of ["GasTanker", "FerryBoat", "Buoy", "frequency", "best_effort"]) assert.ok(changes.includes(name), name);
        const items = await shown.locator("[role=treeitem]").count();
        await shown.locator("#only-changes").setChecked(true);
        const links = await shown.locator("[role=treeitem]").evaluateAll(all => all.map(item => item.getAttribute("href")));
        assert.ok(links.length < items || links.length < 20, `${links.length} of ${items}`);
        assert.ok(links.some(link => link.endsWith("Buoy")) && !links.some(link => link.endsWith("ServiceCraft")), links.join());
        // The lists of classes in the page leave out what the tree leaves out.
        const listed = () => shown.locator("main ul.classes a").evaluateAll(all => all.map(a => a.getAttribute("href").replace(/.*[./]/, "")));
        for (const [hash, changed, same] of [
            ["", ["Craft", "Buoy", "RadioTraffic"], ["Pilot", "Facility", "Towage", "Supervision"]],
            [craft, ["MerchantVessel"], ["ServiceCraft"]],
            [merchant, ["Tanker", "FerryBoat"], ["ContainerVessel"]],
        ]) {
            await visit(shown, hash);
            for (const only of [true, false, true]) {
                await shown.locator("#only-changes").setChecked(only);
                const names = new Set(await listed());
                assert.deepEqual(changed.filter(name => !names.has(name)), [], hash);
                assert.deepEqual(same.filter(name => names.has(name)), only ? [] : same, hash);
            }
        }
        await visit(shown, `${merchant}.Tanker.GasTanker`);
        assert.match(await heading(shown), /GasTanker/);
        assert.match(await shown.locator("main").innerText(), /removed[\s\S]*BoilOffRate/i);
        await visit(shown, `${merchant}/HullNumber`);
        assert.match(await shown.locator("main").innerText(), /best_effort/);
        await visit(shown, "#object/ObjectRoot.NeverThere");
        assert.match(await shown.locator("main").innerText(), /\bno\b/i);
    });
});

test("a comparison with a file that is not understood to its end", async () => {
    const unclosed = write("unclosed.fed");
    const { changes } = JSON.parse(rtifed(["diff", "--format", "json", harbour, unclosed]).text);
    const { line } = changes.find(change => change.kind === "unclear").newPlace;
    await quietly(browser, makePage(unclosed, "--against", harbour), { hash: "#changes" }, async shown => {
        assert.match(await shown.locator("main").innerText(), new RegExp(`not understood.*\\bline ${line}\\b`));
    });
});

test("a model of 10,000 declarations keeps a small tree", () => quietly(browser, makePage(write("wide.fed")), {}, async shown => {
    const items = () => shown.locator("[role=treeitem]").count();
    for (const hash of ["#object/ObjectRoot.ManyChildren", "#object/ObjectRoot.ManyChildren.Child4321", "#object/ObjectRoot.Group17.Kind17x31"]) {
        await visit(shown, hash);
        assert.ok(await items() < 200);
    }
    const selected = shown.locator("[role=treeitem][aria-selected=true]");
    assert.match(await selected.getAttribute("href"), /Kind17x31$/);
    assert.ok(await selected.isVisible());
    await selected.click();
    for (const key of ["Home", "ArrowDown", "*", "End", "PageUp"]) {
        await shown.keyboard.press(key);
        assert.ok(await items() < 200, key);
        assert.ok(await current(shown), `${key} keeps a current item`);
    }
    await shown.locator("input[type=search]").fill("e4");
    assert.ok(await items() < 200);
}));

test("the index compares with an older folder, and shows everything in windows of any width", async () => {
    const older = path.join(folder, "older models"), newer = path.join(folder, "newer"), site = path.join(folder, "compared");
    for (const [parent, names] of [[older, ["later.fed", "<b>gone.fed"]], [newer, ["later.fed", "faulty.fed"]]]) {
        mkdirSync(parent, { recursive: true });
        for (const name of names) writeFileSync(path.join(parent, name), texts[name] || texts["later.fed"]);
    }
    rtifed(["html", newer, "-o", site, "--against", older]);
    for (const width of [320, 700, 970, 1220, 1280, 1920]) {
        await quietly(browser, path.join(site, "index.html"), { index: true, viewport: { width, height: 800 } }, async index => {
            assert.equal(await index.locator("h1").innerText(), "Models in newer");
            assert.equal(await index.locator("caption").innerText(), `Compared with ${older}`);
            assert.equal(await index.locator("#count").innerText(), "2 models, 1 removed");
            const code = index.locator("tr", { hasText: "later" }).locator(".fingerprint code");
            const digits = await code.getAttribute("title");
            assert.equal(await code.innerText(), digits.slice(0, 12), `at ${width}`);
            assert.ok(await code.isVisible());
            assert.ok(await index.evaluate(() => document.documentElement.scrollWidth <= window.innerWidth), `at ${width}`);
            const hidden = await index.locator("button, a, input").evaluateAll(all => all.filter(element => {
                const [box] = element.getClientRects(); // of the first line of a link
                const top = document.elementFromPoint(box.x + box.width / 2, box.y + box.height / 2);
                return box.bottom < window.innerHeight && !element.contains(top);
            }).map(element => element.outerHTML));
            none(hidden, "focus stops that nobody sees");
            await index.fill("#filter", digits);
            assert.equal(await index.locator("#count").innerText(), "1 of 2 models, 0 of 1 removed");
        });
    }
});

// The bounds are some ten times what a busy machine takes. A step that is quadratic in the declarations, however cheap, takes more.
test("a model of 60,000 declarations opens and is searched in time", t => {
    const file = path.join(folder, "large.fed");
    writeFileSync(file, large());
    return quietly(browser, makePage(file), {}, async shown => {
        const opening = +await shown.evaluate(() => document.documentElement.dataset.ready);
        const slowest = await shown.evaluate(async () => {
            const field = document.querySelector("input[type=search]");
            let longest = 0;
            for (const text of ["v", "va", "val", "Value", "value9OfX", "group29.value4", "V2x", "e4", "nothing of that"]) {
                const start = performance.now();
                field.value = text;
                field.dispatchEvent(new InputEvent("input", { bubbles: true }));
                await new Promise(requestAnimationFrame);
                longest = Math.max(longest, performance.now() - start);
            }
            return longest;
        });
        t.diagnostic(`${opening} ms of script, slowest keystroke ${Math.round(slowest)} ms`);
        assert.ok(opening < 2000, `${opening} ms of script`);
        assert.ok(slowest < 1000, `a keystroke took ${Math.round(slowest)} ms`);
    });
});

test("the index of a folder", async () => {
    const fedFiles = path.join(folder, "models"), pages = path.join(folder, "pages");
    mkdirSync(path.join(fedFiles, "older"), { recursive: true });
    for (const name of ["later.fed", "faulty.fed", "hostile.fed"]) writeFileSync(path.join(fedFiles, name), texts[name]);
    writeFileSync(path.join(fedFiles, "older", "# 1 & 50%.fed"), texts["later.fed"]);
    rtifed(["html", fedFiles, "-o", pages]);
    assert.deepEqual(readdirSync(pages).sort(), ["faulty.fed.html", "hostile.fed.html", "index.html", "later.fed.html", "older"]);
    for (const javaScriptEnabled of [false, true]) {
        const { page: index, complaints, close } = await open(browser, path.join(pages, "index.html"), { javaScriptEnabled, index: true });
        const links = await index.locator("table th a[href]").evaluateAll(all => all.map(a => a.href));
        assert.equal(links.length, 4);
        assert.match(await index.locator("tr", { hasText: "faulty" }).innerText(), /error/);
        none(complaints, "complaints");
        await index.locator("a", { hasText: "50%" }).click();
        assert.match(decodeURIComponent(index.url()), /\/older\/# 1 & 50%\.fed\.html$/);
        assert.match(await index.title(), /HarbourApproach/);
        if (javaScriptEnabled) {
            await index.waitForFunction(() => document.documentElement.dataset.ready);
            assert.match(await heading(index), /HarbourApproach/);
        }
        await close();
    }
});
