import * as vscode from 'vscode';

const scheme = 'rtifed-tree';

/** Read-only documents with the class trees of FED files. They follow the files when these are saved. */
export class TreeDocuments implements vscode.TextDocumentContentProvider, vscode.Disposable {
    private readonly changed = new vscode.EventEmitter<vscode.Uri>();
    private readonly registrations: vscode.Disposable[];
    readonly onDidChange = this.changed.event;

    constructor(private readonly textOf: (document: vscode.TextDocument) => Promise<string>) {
        this.registrations = [
            this.changed,
            vscode.workspace.registerTextDocumentContentProvider(scheme, this),
            vscode.workspace.onDidSaveTextDocument((document) => this.changed.fire(treeUri(document.uri))),
        ];
    }

    dispose(): void {
        this.registrations.forEach((registration) => registration.dispose());
    }

    async show(document: vscode.TextDocument): Promise<void> {
        const uri = treeUri(document.uri);
        this.changed.fire(uri);
        const tree = await vscode.workspace.openTextDocument(uri);
        await vscode.window.showTextDocument(tree, { viewColumn: vscode.ViewColumn.Beside, preserveFocus: true, preview: true });
    }

    async provideTextDocumentContent(uri: vscode.Uri): Promise<string> {
        return this.textOf(await vscode.workspace.openTextDocument(vscode.Uri.parse(uri.query, true)));
    }
}

/** The tab shows the last part of the path; the query names the FED file. */
function treeUri(file: vscode.Uri): vscode.Uri {
    return vscode.Uri.from({ scheme, path: `${file.path} (class trees)`, query: file.toString() });
}
