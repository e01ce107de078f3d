// Prints how fast pages open and how much memory they take, each as the median of several openings. The models are those
// of the folders in MODELS, and generated ones.
import { readdirSync, readFileSync, statSync, writeFileSync } from "node:fs";
import path from "node:path";
import { launch, open } from "./browser.mjs";
import { sized } from "./models.mjs";
import { declarations } from "./declarations.mjs";
import { makePage, modelOf, output } from "./program.mjs";

const median = numbers => numbers.sort((a, b) => a - b)[numbers.length >> 1];

/** The resident memory of the processes that draw pages, in MB: that of our page is the largest of them. */
async function residentMemory(browser) {
    const session = await browser.newBrowserCDPSession();
    const { processInfo } = await session.send("SystemInfo.getProcessInfo");
    await session.detach();
    return Math.max(...processInfo.filter(each => each.type === "renderer").map(each =>
        +readFileSync(`/proc/${each.id}/status`, "utf8").match(/VmRSS:\s*(\d+)/)[1] / 1024));
}

/** Runs in the page: notes when the script has shown it. The first paint may be the bar alone, while the data still arrives. */
function noteReady() {
    new MutationObserver(() => { window.readyAt = performance.now(); }).observe(document, { subtree: true, attributeFilter: ["data-ready"] });
}

/** Opens a page in a browser of its own, as a person who follows a link from a mail. */
async function opening(file) {
    const browser = await launch();
    try {
        const { page, close } = await open(browser, file, { watch: noteReady });
        const session = await page.context().newCDPSession(page);
        await session.send("Performance.enable");
        const [script, paint, shown] = await page.evaluate(() => new Promise(done => new PerformanceObserver(entries => {
            const painted = entries.getEntriesByName("first-contentful-paint")[0];
            if (painted) done([+document.documentElement.dataset.ready, painted.startTime, window.readyAt]);
        }).observe({ type: "paint", buffered: true })));
        const resident = await residentMemory(browser);
        await session.send("HeapProfiler.collectGarbage");
        const { metrics } = await session.send("Performance.getMetrics");
        const heap = metrics.find(each => each.name === "JSHeapUsedSize").value / (1 << 20);
        await close();
        return { script, paint, shown, heap, resident };
    } finally {
        await browser.close();
    }
}

const files = (process.env.MODELS || "").split(":").filter(Boolean)
    .flatMap(folder => readdirSync(folder).filter(name => name.endsWith(".fed")).map(name => path.join(folder, name)));
for (const size of [500, 10_000, 100_000]) {
    files.push(path.join(output, `${size}.fed`));
    writeFileSync(files.at(-1), sized(size));
}
console.log("| model | declarations | page (kB) | script (ms) | first paint (ms) | all shown (ms) | heap (MB) | process (MB) |\n|---|--:|--:|--:|--:|--:|--:|--:|");
for (const file of files) {
    const page = makePage(file);
    const runs = [];
    for (let i = 0; i < 5; ++i) runs.push(await opening(page));
    const cells = ["script", "paint", "shown", "heap", "resident"].map(key => Math.round(median(runs.map(run => run[key]))));
    console.log(`| ${[path.basename(file), declarations(modelOf(file)).length, Math.round(statSync(page).size / 1000), ...cells].join(" | ")} |`);
}
