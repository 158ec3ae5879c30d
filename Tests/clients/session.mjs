// Drives "tarvo mcp" with the protocol's official clients, of the handshake revisions and of the stateless one: an
// agent looks around a staged home, proposes a cleanup, is declined, is accepted, and puts back what was set aside.
// Usage: node session.mjs TARVO
import assert from 'node:assert/strict';
import { existsSync, mkdirSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { Client as LegacyClient } from '@modelcontextprotocol/sdk/client/index.js';
import { StdioClientTransport as LegacyTransport } from '@modelcontextprotocol/sdk/client/stdio.js';
import { ElicitRequestSchema } from '@modelcontextprotocol/sdk/types.js';
import { Client } from '@modelcontextprotocol/client';
import { StdioClientTransport } from '@modelcontextprotocol/client/stdio';

const tarvo = process.argv[2];

function stagedHome() {
    const home = mkdtempSync(join(tmpdir(), 'tarvo-clients-'));
    mkdirSync(join(home, '.cache/uv'), { recursive: true });
    mkdirSync(join(home, 'Documents/old'), { recursive: true });
    writeFileSync(join(home, '.cache/uv/wheel'), Buffer.alloc(3000000, 'x'));
    writeFileSync(join(home, 'Documents/old/letter.txt'), Buffer.alloc(2000000, 'y'));
    return home;
}

function serverOf(home, more = []) {
    return { command: tarvo, args: ['mcp', '--home', home, '--idioma', 'en', ...more], stderr: 'inherit' };
}

const info = { name: 'official-client', version: '1' };

// Both kinds give { client, answer }: `answer.action` is what the user will say to the next question.
async function handshakeClient(home, canAsk, more) {
    const answer = { action: 'decline', questions: [] };
    const client = new LegacyClient(info, { capabilities: canAsk ? { elicitation: {} } : {} });
    if (canAsk) {
        client.setRequestHandler(ElicitRequestSchema, (request) => {
            answer.questions.push(request.params.message);
            return { action: answer.action, ...(answer.action === 'accept' ? { content: {} } : {}) };
        });
    }
    await client.connect(new LegacyTransport(serverOf(home, more)));
    return { client, answer };
}

async function statelessClient(home, canAsk, more) {
    const answer = { action: 'decline', questions: [] };
    const client = new Client(info, {
        capabilities: canAsk ? { elicitation: { form: {} } } : {},
        versionNegotiation: { mode: { pin: '2026-07-28' } },
    });
    if (canAsk) {
        client.setRequestHandler('elicitation/create', (request) => {
            answer.questions.push(request.params.message);
            return { action: answer.action, ...(answer.action === 'accept' ? { content: {} } : {}) };
        });
    }
    await client.connect(new StdioClientTransport(serverOf(home, more)));
    return { client, answer };
}

async function call(client, name, args = {}) {
    const result = await client.callTool({ name, arguments: args });
    return { problem: result.isError ? result.content[0].text : undefined, ...result.structuredContent };
}

async function wholeSession(connect) {
    const home = stagedHome();
    const { client, answer } = await connect(home, true);
    assert.equal(client.getServerVersion().name, 'tarvo-ai');
    const { tools } = await client.listTools();
    assert.ok(tools.every((tool) => tool.title && tool.description && tool.outputSchema && tool.annotations));
    assert.deepEqual(
        tools.filter((tool) => !tool.annotations.readOnlyHint).map((tool) => tool.name),
        ['clean', 'restore', 'archive']);

    assert.equal((await call(client, 'analyze_disk')).items[0].id, 'uv-cache');
    assert.equal((await call(client, 'list_folder', { path: '~/Documents' })).skipped[0], 'old');
    assert.equal((await call(client, 'explain_folder', { path: '.cache/uv' })).source, 'catalogue');
    assert.deepEqual((await call(client, 'what_grew')).items, []);
    assert.match((await call(client, 'help', { question: 'how do I undo a cleanup?' })).text, /tarvo undo/);
    assert.match((await call(client, 'list_folder', { path: '/etc' })).problem, /outside your home folder/);

    const { plan, items } = await call(client, 'propose_cleanup');
    const chosen = { plan, items: items.map((item) => item.id) };
    for (const action of ['decline', 'cancel']) {
        answer.action = action;
        assert.match((await call(client, 'clean', chosen)).problem,
            action === 'decline' ? /said no/ : /closed without an answer/);
        assert.ok(existsSync(join(home, '.cache/uv/wheel')));
    }
    answer.action = 'accept';
    const cleaned = await call(client, 'clean', chosen);
    assert.equal(cleaned.outcomes[0].status, 'done');
    assert.ok(!existsSync(join(home, '.cache/uv/wheel')));
    assert.match(answer.questions.at(-1), /^official-client asks to clean 3 MB with Tarvo AI\.\nRecreates itself/);

    const archived = await call(client, 'archive', { path: '~/Documents/old' });
    assert.ok(existsSync(archived.archive) && !existsSync(join(home, 'Documents/old')));
    const held = await call(client, 'list_set_aside');
    const restored = await call(client, 'restore', { items: [held.items[0].id] });
    assert.deepEqual(restored, { problem: undefined, done: 1, failures: [] });
    assert.ok(existsSync(join(home, 'Documents/old/letter.txt')));
    await client.close();
    rmSync(home, { recursive: true });
}

async function withoutQuestions(connect) {
    const home = stagedHome();
    const { client } = await connect(home, false);
    const { plan } = await call(client, 'propose_cleanup');
    assert.match((await call(client, 'clean', { plan })).problem, /in their terminal; do not run it for them: tarvo clean --home/);
    assert.ok(existsSync(join(home, '.cache/uv/wheel')));
    await client.close();
    const readOnly = await connect(home, true, ['--read-only']);
    assert.ok((await readOnly.client.listTools()).tools.every((tool) => tool.annotations.readOnlyHint));
    await assert.rejects(readOnly.client.callTool({ name: 'clean', arguments: { plan } }), /Unknown tool/);
    await readOnly.client.close();
    rmSync(home, { recursive: true });
}

for (const connect of [handshakeClient, statelessClient]) {
    await wholeSession(connect);
    await withoutQuestions(connect);
    console.log(`${connect.name}: all is well`);
}
