import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import Module, { createRequire } from 'node:module';

const folder = new URL('..', import.meta.url);
const json = (name) => JSON.parse(readFileSync(new URL(name, folder), 'utf8'));
const manifest = json('package.json');

// What an editor without trust in the open folder offers to the bundled extension: anything may be asked, nothing happens.
function fakeEditor(registered) {
    const get = (target, key) => (key in target ? target[key] : (target[key] = anything()));
    const anything = () => new Proxy(class {}, { get, apply: anything });
    const editor = anything();
    editor.commands = { registerCommand: (name, action) => registered.set(name, action) };
    editor.EventEmitter = class { event = () => {}; fire() {} dispose() {} };
    editor.Range = class { constructor(start, end) { Object.assign(this, { start, end }); } };
    editor.window = {
        createOutputChannel: () => ({}),
        activeTextEditor: undefined,
        showInformationMessage: (message) => (editor.shown = message),
        showErrorMessage: assert.fail,
    };
    editor.workspace = {
        isTrusted: false,
        registerTextDocumentContentProvider: () => ({}),
        onDidSaveTextDocument: () => ({}),
        onDidGrantWorkspaceTrust: () => ({}),
        onDidChangeConfiguration: () => ({}),
    };
    return editor;
}

test('the bundle registers all commands of the manifest and runs nothing in a folder that is not trusted', async () => {
    const registered = new Map();
    const editor = fakeEditor(registered);
    const load = Module._load;
    Module._load = (name, ...rest) => (name === 'vscode' ? editor : load(name, ...rest));
    const extension = createRequire(import.meta.url)(fileURLToPath(new URL(manifest.main, folder)));
    Module._load = load;
    await extension.activate({ subscriptions: [] });
    assert.deepEqual([...registered.keys()].sort(), manifest.contributes.commands.map((c) => c.command).sort());
    await registered.get('rtifed.fix')();
    assert.equal(editor.shown, 'Open a FED file first.');

    // A FED file is open.
    const good = readFileSync(new URL('../../examples/minimal.fed', folder), 'utf8');
    const text = good.replace('timestamp', 'time_stamp');
    const document = { languageId: 'fed', fileName: 'minimal.fed', version: 1, getText: () => text, positionAt: (n) => n };
    let fixed;
    editor.workspace.getConfiguration = () => ({ get: (name, otherwise) => otherwise });
    editor.window.activeTextEditor = { document, edit: (change) => change({ replace: (range, by) => (fixed = { range, by }) }) };
    await registered.get('rtifed.fix')();
    assert.equal(fixed.by, good);
    assert.deepEqual({ ...fixed.range }, { start: 0, end: text.length });
    await extension.deactivate();
});

test('all settings of the manifest are documented in the README', () => {
    const readme = readFileSync(new URL('README.md', folder), 'utf8');
    for (const name of Object.keys(manifest.contributes.configuration.properties)) assert.ok(readme.includes(`\`${name}\``), name);
});

test('a line break indents after a clause that is open on its line', () => {
    const rules = json('language-configuration.json');
    const [comment, between, open] = rules.onEnterRules.map((rule) => new RegExp(rule.beforeText));
    const increase = new RegExp(rules.indentationRules.increaseIndentPattern);
    for (const [line, opens] of [
        ['  (class A', true],
        ['  (class "a) b"  ;; (x)', true],
        ['  (class A (attribute b reliable receive)', true],
        ['  (attribute b reliable receive)', false],
        ['  (space S (dimension "(d"))', false],
        ['  ;; (class A', false],
        ['  )', false],
        ['(FED (Federation x) (FEDversion v1.3)', true],
    ]) {
        for (const pattern of [between, open, increase]) assert.equal(pattern.test(line), opens, line);
    }
    assert.ok(comment.test('  ;; a comment'));
    assert.ok(!comment.test('(FED  ;; a comment'));
    assert.ok(new RegExp(rules.indentationRules.decreaseIndentPattern).test('   )'));
});

test('the patterns for open clauses take time in proportion to the line', () => {
    const { beforeText } = json('language-configuration.json').onEnterRules[2];
    const start = performance.now();
    for (const part of ['(', '((', '"(', '() ', '(a) "', 'a ']) new RegExp(beforeText).test(part.repeat(3000));
    assert.ok(performance.now() - start < 2000);
});

test('the problem matcher reads what check writes', () => {
    const { regexp } = manifest.contributes.problemMatchers[0].pattern;
    const { stdout } = spawnSync('rtifed', ['check', '--format', 'concise', '-'], { input: '(FED (Federation F))', encoding: 'utf8' });
    assert.deepEqual(stdout.match(new RegExp(regexp, 'm')).slice(1, 5), ['-', '1', '2', 'error']);
    assert.equal(stdout.match(new RegExp(regexp, 'gm')).length, stdout.match(/error: /g).length);
});

test('what a snippet inserts is a clause of the place that it is for', () => {
    const inObjects = (text) => `(objects ${text})`;
    const inClass = (text) => `(objects (class A\n${text}\n))`;
    const inInteraction = (text) => `(interactions (class A reliable receive\n${text}\n))`;
    const places = {
        class: inObjects, interaction: (text) => `(interactions ${text})`, space: (text) => `(spaces ${text})`,
        attribute: inClass, 'attribute-space': inClass, parameter: inInteraction, allow: inClass,
    };
    for (const { prefix, body } of Object.values(json('snippets/fed.json'))) {
        const text = body
            .join('\n')
            .replace(/\$\{\d+\|([^,|]*)[^}]*\}/g, '$1') // the first choice
            .replace(/\$\{\d+:([^}]*)\}/g, '$1')
            .replace(/\$\d/g, '');
        const input = `(FED (Federation F) (FEDversion v1.3) ${places[prefix](text)})`;
        const { status, stdout, stderr } = spawnSync('rtifed', ['calls', '-'], { input, encoding: 'utf8' });
        assert.equal(status, 0, `${prefix}: ${text}\n${stdout}${stderr}`);
    }
});
