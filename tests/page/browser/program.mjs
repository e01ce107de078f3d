// The program under test, and the folders of these tests.
import { spawnSync } from "node:child_process";
import { mkdirSync } from "node:fs";
import { fileURLToPath } from "node:url";
import path from "node:path";

const root = fileURLToPath(new URL("../../..", import.meta.url));
const program = process.env.RTIFED;

/** Where pages and screenshots go. */
export const output = path.join(root, "build/pages");
mkdirSync(output, { recursive: true });

export const examples = path.join(root, "examples");
export const example = name => path.join(examples, name);

/** Runs the program. Throws if its exit status is neither 0 nor 1, which it has for a model that does not load. */
export function rtifed(args) {
    if (!program) throw new Error("the variable RTIFED names no program; use scripts/pages");
    const run = spawnSync(program, args, { encoding: "utf8", maxBuffer: 1 << 30 });
    if (run.status !== 0 && run.status !== 1) throw new Error(`rtifed ${args.join(" ")}: ${run.stderr || run.error}`);
    return { status: run.status, text: run.stdout };
}

/** What rtifed json prints of a model. */
export const modelOf = file => JSON.parse(rtifed(["json", file]).text);

/** Writes the page of a model, and returns its path. */
export function makePage(file, ...more) {
    const page = path.join(output, `${path.basename(file)}${more.length ? "-changes" : ""}.html`);
    rtifed(["html", ...more, file, "-o", page]);
    return page;
}
