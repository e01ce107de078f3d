// A real browser without a network, and pages in it that must stay silent.
import assert from "node:assert/strict";
import { pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

const flags = ["--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync"];

// The sandbox needs rights that containers, and root, often do not have. The pages are our own.
export const launch = () => chromium.launch({ executablePath: process.env.CHROMIUM || "/usr/bin/chromium", chromiumSandbox: false, args: flags });

export const phone = { viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true, deviceScaleFactor: 2 };
export const dark = { colorScheme: "dark" };

/**
 * Opens a page from disk and waits until its script has shown it. Its complaints are anything that a silent page does not do: messages
 * on the console, errors, requests, dialogs, further windows, violations of its policy. An index may lead to the pages of its folder.
 * The function watch runs in the page before its script.
 */
export async function open(browser, file, { hash = "", index = false, watch = () => {}, ...options } = {}) {
    const address = pathToFileURL(file).href;
    const expected = request => request.url().split("#")[0] === address ||
        (index && request.isNavigationRequest() && request.url().startsWith(new URL(".", address).href));
    const context = await browser.newContext({ offline: true, viewport: { width: 1280, height: 800 }, acceptDownloads: false, ...options });
    const complaints = [];
    const complain = (kind, text) => complaints.push(`${kind}: ${text}`);
    const page = await context.newPage();
    page.setDefaultTimeout(10_000);
    context.on("page", other => complain("window", other.url()));
    page.on("console", message => complain("console", message.text()));
    page.on("pageerror", error => complain("error", error.stack));
    page.on("dialog", dialog => { complain("dialog", dialog.message()); dialog.dismiss(); });
    page.on("request", request => expected(request) || complain("request", request.url()));
    await page.addInitScript(() => addEventListener("securitypolicyviolation", event => console.log(`policy: ${event.violatedDirective}`)));
    await page.addInitScript(watch);
    try {
        await page.goto(address + hash);
        if (!index) await page.waitForFunction(() => document.documentElement.dataset.ready);
    } catch (error) {
        throw new Error([`${file} did not open: ${error.message}`, ...complaints].join("\n"));
    }
    return { page, complaints, close: () => context.close() };
}

/** Checks that a list of faults is empty, with the first few of them as the message. */
export function none(faults, what) {
    if (faults.length > 0) assert.fail([`${faults.length} ${what}`, ...faults.slice(0, 8)].join("\n"));
}

/** Runs test(page) on a page that must have stayed silent at its end. */
export async function quietly(browser, file, options, test) {
    const { page, complaints, close } = await open(browser, file, options);
    try {
        await test(page);
        none(complaints, "complaints");
        assert.equal(await page.evaluate(() => window.hacked), undefined);
    } finally {
        await close();
    }
}

/** Goes to an address within the page, such as #object/ObjectRoot or an empty one, and waits until it is shown. */
export async function visit(page, hash) {
    await page.evaluate(target => new Promise(shown => {
        const before = location.href;
        addEventListener("hashchange", () => requestAnimationFrame(shown), { once: true });
        location.hash = target;
        if (location.href === before || target === "" && !before.includes("#")) requestAnimationFrame(shown);
    }), hash);
}

/** The text of the heading of what is shown. */
export const heading = page => page.locator("main :is(h1, h2)").first().innerText();
