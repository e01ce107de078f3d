// The functions of the page's script, for tests without a browser: the files are joined as the build joins them, except the
// last one, which opens the page.
import { readFileSync } from "node:fs";

const folder = new URL("../../../tool/page/", import.meta.url);

/** The files of the script in their order, as the build reads them. */
export function scriptFiles() {
    const list = /set\(RTIFED_MODEL_SCRIPTS\s([^)]*)\)/.exec(readFileSync(new URL("files.cmake", folder), "utf8"))[1];
    return list.trim().split(/\s+/);
}

/** Returns the named functions and classes of the script. */
export function load(...names) {
    const files = scriptFiles().filter(name => name !== "main.js");
    const text = files.map(name => readFileSync(new URL(name, folder), "utf8")).join("");
    return new Function(`"use strict"; ${text}; return {${names.join(", ")}};`)();
}
