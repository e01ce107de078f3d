import { readdirSync, readFileSync } from "node:fs";
import css from "@eslint/css";
import html from "@html-eslint/eslint-plugin";

// Plain rules: in scripts, what is never used, never declared or compared by accident is a mistake. tool/page/ holds the page's
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
// In templates: what browsers and assistive technology misunderstand.
const markup = `
    no-abstract-roles no-accesskey-attrs no-aria-hidden-body no-aria-hidden-on-focusable no-duplicate-attrs no-duplicate-class
    no-duplicate-id no-duplicate-in-head no-empty-headings no-heading-inside-button no-ineffective-attrs no-inline-styles
    no-invalid-attr-value no-invalid-entity no-invalid-role no-multiple-h1 no-nested-interactive no-non-scalable-viewport
    no-obsolete-attrs no-obsolete-tags no-positive-tabindex no-redundant-role no-script-style-type no-skip-heading-levels
    quotes require-button-type require-closing-tags require-doctype require-input-label require-lang
    require-li-container require-meta-charset require-meta-viewport require-title`.trim().split(/\s+/);
const globals = names => Object.fromEntries(names.split(" ").map(name => [name, "readonly"]));

// The files of the page's script are joined into one function, so that a name may come from another file.
const page = new URL("../../tool/page/", import.meta.url);
const declared = readdirSync(page).filter(name => name.endsWith(".js") && name !== "index.js").flatMap(name =>
    [...readFileSync(new URL(name, page), "utf8").matchAll(/^(?:function|class|const|let) (\w+)/gm)].map(([, word]) => word));

// A page has several styles, too, and a variable of one may be declared in another.
const variables = new Set(readdirSync(page).filter(name => name.endsWith(".css")).flatMap(name =>
    readFileSync(new URL(name, page), "utf8").match(/--[\w-]+(?=:)/g) || []));
const declaredVariables = {
    create: context => ({
        "Function[name=var] > Identifier"(node) {
            if (!variables.has(node.name)) context.report({ node, message: `No style declares the variable ${node.name}.` });
        },
    }),
};

// What browsers may ignore without harm: colours of controls, comfort in selecting, the breaks of printed pages.
const beyondBaseline = {
    allowAtRules: ["page"],
    allowProperties: [
        "accent-color", "forced-color-adjust", "text-size-adjust", "user-select", "break-after", "page-break-after", "page-break-inside"],
};

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
    {
        files: ["tool/page/*.css"],
        plugins: { css, page: { rules: { "declared-variables": declaredVariables } } },
        language: "css/css",
        rules: {
            ...css.configs.recommended.rules,
            "css/no-important": "off",
            "css/no-invalid-properties": ["error", { allowUnknownVariables: true }],
            "css/use-baseline": ["error", beyondBaseline],
            "page/declared-variables": "error",
        },
    },
    {
        // Mistakes only: layout rules take the marks such as {{data}}, which are texts to the linter, for badly laid out content.
        files: ["tool/page/*.html"],
        plugins: { html },
        language: "html/html",
        rules: Object.fromEntries(markup.map(rule => [`html/${rule}`, "error"])),
    },
];
