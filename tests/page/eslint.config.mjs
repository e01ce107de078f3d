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

export default [
    {
        files: ["tool/page/*.js"],
        languageOptions: { ecmaVersion: 2017, sourceType: "script", globals: globals("window document location history") },
        // The files are joined into one function, so that a name may come from another file.
        rules: { ...mistakes, "no-undef": "off", "no-restricted-properties": ["error", { property: "innerHTML" }] },
    },
    {
        files: ["tests/page/**/*.mjs"],
        languageOptions: { ecmaVersion: 2023, sourceType: "module", globals: globals("process console URL Buffer performance window document location history") },
        rules: mistakes,
    },
];
