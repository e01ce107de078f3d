// Writes the coloured parts of a text as LINE:FIRST:END:SCOPE, in UTF-16 units from 0, by the tokenizer of VS Code.
// Usage: node highlight.mjs INPUT OUTPUT

import { readFileSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import oniguruma from 'vscode-oniguruma';
import textmate from 'vscode-textmate';

const { loadWASM, OnigScanner, OnigString } = oniguruma;
await loadWASM(readFileSync(createRequire(import.meta.url).resolve('vscode-oniguruma/release/onig.wasm')));
const path = new URL('../syntaxes/fed.tmLanguage.json', import.meta.url);
const registry = new textmate.Registry({
    onigLib: Promise.resolve({
        createOnigScanner: (patterns) => new OnigScanner(patterns),
        createOnigString: (text) => new OnigString(text),
    }),
    loadGrammar: async () => textmate.parseRawGrammar(readFileSync(path, 'utf8'), path.pathname),
});
const grammar = await registry.loadGrammar('source.fed');

const [input, output] = process.argv.slice(2);
const parts = [];
let state = textmate.INITIAL;
const lines = readFileSync(input, 'utf8').replace(/^\ufeff/, '').split(/\r\n|\r|\n/);
lines.forEach((line, index) => {
    const result = grammar.tokenizeLine(line, state);
    state = result.ruleStack;
    for (const token of result.tokens)
        if (token.scopes.length > 1)
            parts.push(`${index + 1}:${token.startIndex}:${Math.min(token.endIndex, line.length)}:${token.scopes.at(-1)}`);
});
writeFileSync(output, parts.join('\n') + '\n');
