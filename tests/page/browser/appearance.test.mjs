// How pages look to people with different screens and senses: rules of accessibility, no sideways scrolling, and screenshots for a
// person to look at, in build/pages/.
import assert from "node:assert/strict";
import { mkdirSync, writeFileSync } from "node:fs";
import path from "node:path";
import { after, before, test } from "node:test";
import axe from "axe-core";
import { dark, launch, none, open, phone, visit } from "./browser.mjs";
import { models } from "./models.mjs";
import { example, makePage, output, rtifed } from "./program.mjs";

const folder = path.join(output, "appearance");
mkdirSync(folder, { recursive: true });
const texts = models();
const write = name => { writeFileSync(path.join(folder, name), texts[name]); return path.join(folder, name); };

let browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

const searching = text => shown => shown.locator("input[type=search]").fill(text);
const harbour = makePage(example("harbour.fed"));
const later = makePage(write("later.fed"), "--against", example("harbour.fed"));
const hostile = makePage(write("hostile.fed"));
// The views, each with its page, its address, and what is done then.
const views = {
    overview: [harbour, ""],
    class: [harbour, "#object/ObjectRoot.Craft.MerchantVessel.Tanker/TankLevels"],
    interaction: [harbour, "#interaction/InteractionRoot.RadioCall"],
    space: [harbour, "#space/ApproachArea"],
    search: [harbour, "", searching("ves")],
    "nothing-found": [harbour, "", searching("zzz")],
    findings: [makePage(write("faulty.fed")), "#findings"],
    changes: [later, "#changes"],
    "changed-class": [later, "#object/ObjectRoot.Craft.MerchantVessel"],
    "removed-class": [later, "#object/ObjectRoot.Craft.MerchantVessel.Tanker.GasTanker"],
    hostile: [hostile, `#object/${encodeURIComponent(`ObjectRoot.${"unbroken".repeat(40)}`)}`],
    "hostile-findings": [hostile, "#findings"],
    deep: [makePage(write("deep.fed")), `#object/ObjectRoot.${Array.from({ length: 200 }, (_, i) => `Level${i}`).join(".")}`],
    letter: [makePage(write("letter.fed")), ""],
    bare: [makePage(write("bare.fed")), ""],
};
// Each screen with the rules of accessibility that may be broken there and not on another screen; none if the browser chooses colours.
const screens = {
    desktop: [{}, {}],
    dark: [dark, { runOnly: ["color-contrast"] }],
    phone: [phone, {}],
    contrast: [{ forcedColors: "active" }, null],
};

/** The rules of accessibility that what a page shows breaks. */
async function violations(page, rules) {
    if (!rules) return [];
    const found = await page.evaluate(options => window.axe.run(options), { resultTypes: ["violations"], ...rules });
    return found.violations.flatMap(({ id, nodes }) => nodes.slice(0, 3).map(node => `${id}: ${node.html.slice(0, 200)}: ${node.failureSummary}`));
}

/** Opens each page once, and reports what is wrong with each of its views: broken rules, sideways scrolling, links without a text. */
async function look(screen, options, rules) {
    const problems = [];
    for (const file of new Set(Object.values(views).map(([each]) => each))) {
        const { page, close } = await open(browser, file, options);
        await page.evaluate(axe.source);
        for (const [name, [, hash, act]] of Object.entries(views).filter(([, [each]]) => each === file)) {
            await visit(page, hash);
            if (act) await act(page);
            await page.screenshot({ path: path.join(output, `${name}-${screen}.png`) });
            const tooWide = await page.evaluate(() => document.documentElement.scrollWidth - document.documentElement.clientWidth);
            if (tooWide > 0) problems.push(`${name}: ${tooWide} pixels too wide`);
            const unseen = await page.locator("main a").evaluateAll(all => all.filter(a => a.offsetParent && a.getBoundingClientRect().width < 4).map(a => a.href));
            problems.push(...unseen.map(href => `${name}: nobody can see the link ${href}`));
            problems.push(...(await violations(page, rules)).map(text => `${name}: ${text}`));
        }
        await close();
    }
    return problems;
}

for (const [screen, [options, rules]] of Object.entries(screens)) {
    test(screen, async () => none(await look(screen, options, rules), "faults"));
}

// 320 pixels are what is left of 1280 at a zoom of 400 %.
test("zoom", async () => {
    for (const [name, [file, hash]] of Object.entries(views)) {
        const { page, close } = await open(browser, file, { hash, viewport: { width: 320, height: 256 }, deviceScaleFactor: 4 });
        assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 320, name);
        await close();
    }
});

test("index", async () => {
    const pages = path.join(folder, "pages");
    rtifed(["html", folder, "-o", pages]);
    for (const [screen, [options, rules]] of Object.entries(screens)) {
        const { page, complaints, close } = await open(browser, path.join(pages, "index.html"), { index: true, ...options });
        await page.screenshot({ path: path.join(output, `index-${screen}.png`) });
        none(complaints, "complaints");
        await page.evaluate(axe.source);
        none(await violations(page, rules), "violations");
        assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= document.documentElement.clientWidth), screen);
        await close();
    }
});
