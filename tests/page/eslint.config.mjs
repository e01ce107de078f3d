import { readdirSync, readFileSync } from "node:fs";

// Plain rules without plug-ins: what is never used, never declared or compared by accident is a mistake. tool/page/ holds the page's
// script, which any browser of the last years must read, and therefore ES2017; the tests here run in Node.
const mistakes = {
    "array-callback-return": "error",
    "consistent-return": "error",
    "eqeqeq": "error",
    "no-dupe-keys": "error",
    "no-shadow": "error",
    "no-undef": "error",
    "no-unused-vars": ["error", { vars: "local" }],
    "no-var": "error",
    "prefer-const": "error",
};
const globals = names => Object.fromEntries(names.split(" ").map(name => [name, "readonly"]));

// The files of the page's script are joined into one function, so that a name may come from another file.
const page = new URL("../../tool/page/", import.meta.url);
const declared = readdirSync(page).filter(name => name.endsWith(".js") && name !== "index.js").flatMap(name =>
    [...readFileSync(new URL(name, page), "utf8").matchAll(/^(?:function|class|const|let) (\w+)/gm)].map(([, word]) => word));
const browser = "window document location history performance URIError";

export default [
    {
        files: ["tool/page/*.js"],
        languageOptions: { ecmaVersion: 2017, sourceType: "script", globals: globals([browser, ...declared].join(" ")) },
        rules: {
            ...mistakes,
            "no-shadow": ["error", { builtinGlobals: false }],
            "no-restricted-properties": ["error", ...["innerHTML", "outerHTML", "insertAdjacentHTML", "write"].map(property => ({ property }))],
        },
    },
    {
        // Functions that a browser test runs in the page see the page's names.
        files: ["tests/page/**/*.mjs"],
        languageOptions: {
            ecmaVersion: 2023,
            sourceType: "module",
            globals: globals("process console URL Buffer performance setTimeout window document location addEventListener requestAnimationFrame InputEvent MutationObserver PerformanceObserver"),
        },
        rules: mistakes,
    },
];
