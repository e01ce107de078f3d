// The extension starts the language server `rtifed lsp` and adds two commands that run other commands of the program.

import * as vscode from 'vscode';
import { LanguageClient, RevealOutputChannelOn } from 'vscode-languageclient/node';
import { run, resolveProgram } from './program';
import { TreeDocuments } from './tree';

let client: LanguageClient | undefined;
let output: vscode.OutputChannel;

export async function activate(context: vscode.ExtensionContext): Promise<void> {
    output = vscode.window.createOutputChannel('FED');
    const trees = new TreeDocuments(textOfTree);
    context.subscriptions.push(
        output,
        trees,
        vscode.commands.registerCommand('rtifed.showTree', () => withFedEditor((editor) => trees.show(editor.document))),
        vscode.commands.registerCommand('rtifed.fix', () => withFedEditor(fix)),
        vscode.commands.registerCommand('rtifed.restart', restart),
        vscode.workspace.onDidGrantWorkspaceTrust(() => void start()),
        vscode.workspace.onDidChangeConfiguration((event) => {
            if (event.affectsConfiguration('rtifed.path') || event.affectsConfiguration('rtifed.arguments')) void restart();
        }),
    );
    // A folder can bring settings, and a setting names the program to run.
    if (vscode.workspace.isTrusted) await start();
}

export async function deactivate(): Promise<void> {
    await client?.stop();
}

function settings(): vscode.WorkspaceConfiguration {
    return vscode.workspace.getConfiguration('rtifed');
}

function program(): string {
    return resolveProgram(settings().get('path', 'rtifed'), vscode.workspace.workspaceFolders?.[0]?.uri.fsPath);
}

async function start(): Promise<void> {
    client = new LanguageClient(
        'rtifed',
        'FED',
        { command: program(), args: settings().get('arguments', ['lsp']) },
        {
            documentSelector: [{ language: 'fed' }],
            outputChannel: output,
            revealOutputChannelOn: RevealOutputChannelOn.Never,
            initializationOptions: settings(),
            synchronize: { configurationSection: 'rtifed' },
        },
    );
    try {
        await client.start();
    } catch (error) {
        client = undefined;
        void reportFailure(`The language server cannot be started: ${(error as Error).message}`);
    }
}

async function restart(): Promise<void> {
    await client?.stop().catch(() => undefined); // one that has ended by itself cannot be stopped
    client = undefined;
    if (vscode.workspace.isTrusted) await start();
}

async function withFedEditor(action: (editor: vscode.TextEditor) => Promise<void>): Promise<void> {
    const editor = vscode.window.activeTextEditor;
    if (editor?.document.languageId !== 'fed') {
        void vscode.window.showInformationMessage('Open a FED file first.');
        return;
    }
    try {
        await action(editor);
    } catch (error) {
        void reportFailure((error as Error).message);
    }
}

async function reportFailure(message: string): Promise<void> {
    const openSettings = 'Open Settings';
    if ((await vscode.window.showErrorMessage(`rtifed: ${message}`, openSettings)) === openSettings)
        await vscode.commands.executeCommand('workbench.action.openSettings', 'rtifed.path');
}

async function textOfTree(document: vscode.TextDocument): Promise<string> {
    const result = await run(program(), ['tree', '--stdin-name', document.fileName, '-'], document.getText());
    return result.output + result.errors;
}

/** Replaces the text by what `rtifed fix` makes of it, as one step that can be undone. */
async function fix(editor: vscode.TextEditor): Promise<void> {
    const document = editor.document;
    const before = document.getText();
    const version = document.version;
    const result = await run(program(), ['fix', '--stdin-name', document.fileName, '-'], before);
    if (result.status === 2 || (result.output === '' && before !== '')) throw new Error(result.errors || 'no fixed text');
    const summary = result.errors.trimEnd().split('\n').pop();
    if (result.output === before) {
        void vscode.window.showInformationMessage(summary || 'rtifed: nothing to fix safely.');
        return;
    }
    if (document.version !== version) throw new Error('The text has changed meanwhile; run the command again.');
    const whole = new vscode.Range(document.positionAt(0), document.positionAt(before.length));
    await editor.edit((edit) => edit.replace(whole, result.output));
    if (summary) void vscode.window.showInformationMessage(summary);
}
