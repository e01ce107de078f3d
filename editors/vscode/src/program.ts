import { spawn } from 'node:child_process';
import * as os from 'node:os';
import * as path from 'node:path';

export interface Result {
    status: number;
    output: string;
    errors: string;
}

/** Replaces `~` and `${workspaceFolder}` in a configured path. */
export function resolveProgram(configured: string, folder: string | undefined): string {
    const name = configured.trim() || 'rtifed';
    const expanded = name.replaceAll('${workspaceFolder}', folder ?? '.');
    return /^~[/\\]/.test(expanded) ? path.join(os.homedir(), expanded.slice(2)) : expanded;
}

/** Runs a program on a text. A program that runs but fails is a result; one that cannot be run is an error. */
export function run(program: string, args: readonly string[], input: string): Promise<Result> {
    return new Promise((resolve, reject) => {
        const child = spawn(program, args, { stdio: 'pipe' });
        const output: Buffer[] = [];
        const errors: Buffer[] = [];
        child.stdout.on('data', (chunk: Buffer) => output.push(chunk));
        child.stderr.on('data', (chunk: Buffer) => errors.push(chunk));
        child.on('error', (error) => reject(new Error(`cannot run "${program}": ${error.message}`)));
        child.on('close', (status) =>
            resolve({ status: status ?? 2, output: Buffer.concat(output).toString(), errors: Buffer.concat(errors).toString() }),
        );
        child.stdin.on('error', () => undefined); // the program may end before it has read everything
        child.stdin.end(input);
    });
}
