// Drives "tarvo mcp" with the protocol's official clients, of the handshake revisions and of the stateless one, in both
// languages, and with its inspector: an agent looks around a staged home, reads documents and a prompt, proposes a
// cleanup, is declined, is accepted, and puts back what was set aside. Every answer is held against the schema that the
// server declares for it, by a validator that is not ours.
// Usage: node session.mjs TARVO
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, mkdirSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { Client as LegacyClient } from '@modelcontextprotocol/sdk/client/index.js';
import { StdioClientTransport as LegacyTransport } from '@modelcontextprotocol/sdk/client/stdio.js';
import { ElicitRequestSchema } from '@modelcontextprotocol/sdk/types.js';
import Ajv from 'ajv/dist/2020.js';
import addFormats from 'ajv-formats';

const tarvo = process.argv[2];

function stagedHome() {
    const home = mkdtempSync(join(tmpdir(), 'tarvo-clients-'));
    mkdirSync(join(home, '.cache/uv'), { recursive: true });
    mkdirSync(join(home, 'Documents/old'), { recursive: true });
    writeFileSync(join(home, '.cache/uv/wheel'), Buffer.alloc(3000000, 'x'));
    writeFileSync(join(home, 'Documents/old/letter.txt'), Buffer.alloc(2000000, 'y'));
    return home;
}

let language = 'en';
const said = (es, en) => (language === 'es' ? es : en);

function serverOf(home, more = []) {
    return { command: tarvo, args: ['mcp', '--home', home, '--idioma', language, ...more], stderr: 'inherit' };
}

const validator = new Ajv.default({ allErrors: true });
addFormats.default(validator);

// The schema with nothing allowed that it does not name, so that no field goes undeclared.
function strict(schema) {
    if (Array.isArray(schema) || typeof schema !== 'object') {
        return schema;
    }
    const copy = Object.fromEntries(Object.entries(schema).map(([key, value]) => [key, strict(value)]));
    if (schema.type !== 'object' || !schema.properties) {
        return copy;
    }
    const properties = Object.fromEntries(
        Object.entries(schema.properties).map(([key, value]) => [key, strict(value)]));
    return { ...copy, properties, additionalProperties: false };
}

const checks = new Map(); // By the names of the tools; which ones were used is counted.
function declare(tools) {
    for (const tool of tools) {
        validator.compile(tool.inputSchema);
        checks.set(tool.name, { fits: validator.compile(strict(tool.outputSchema)), count: 0 });
    }
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
    const { Client } = await import('@modelcontextprotocol/client');
    const { StdioClientTransport } = await import('@modelcontextprotocol/client/stdio');
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
    assert.ok(JSON.stringify(result).length <= 20000);
    if (result.structuredContent) {
        const check = checks.get(name);
        assert.ok(check.fits(result.structuredContent), `${name}: ${JSON.stringify(check.fits.errors)}`);
        check.count += 1;
    }
    return { problem: result.isError ? result.content[0].text : undefined, ...result.structuredContent };
}

async function documents(client, plan) {
    const { resources } = await client.listResources();
    assert.deepEqual(resources.map((each) => each.uri), ['tarvo://report', 'tarvo://plan', 'tarvo://history']);
    assert.equal((await client.listResourceTemplates()).resourceTemplates[0].uriTemplate, 'tarvo://plan/{plan}');
    const read = async (uri) => JSON.parse((await client.readResource({ uri })).contents[0].text);
    await assert.rejects(read('tarvo://report'), /analyze_disk/); // What was cleaned is no longer as it says.
    await call(client, 'analyze_disk');
    assert.ok((await read('tarvo://report')).home);
    assert.equal((await read('tarvo://plan')).plan, plan);
    assert.equal((await read(`tarvo://plan/${plan}`)).plan, plan);
    assert.equal((await read('tarvo://history')).outcomes.length, 2);
    await assert.rejects(read('tarvo://other'), /not found/i);

    const { prompts } = await client.listPrompts();
    assert.deepEqual(prompts.map((each) => each.name), ['free_space']);
    const { messages } = await client.getPrompt({ name: 'free_space', arguments: { gigabytes: '20' } });
    assert.match(messages[0].content.text, said(/^Libera 20 GB/, /^Free 20 GB/));
    await assert.rejects(client.getPrompt({ name: 'free_space', arguments: { gigabytes: 'all' } }));
}

// The inspector reads each answer anew and speaks the handshake.
function inspected() {
    const home = stagedHome();
    const inspect = (method, ...more) => {
        const program = fileURLToPath(new URL('node_modules/.bin/mcp-inspector', import.meta.url));
        const words = ['--cli', tarvo, 'mcp', '--home', home, '--idioma', language, '--method', method, ...more];
        return JSON.parse(execFileSync(program, words, { encoding: 'utf8', stdio: ['ignore', 'pipe', 'ignore'] }));
    };
    assert.equal(inspect('tools/list').tools.length, checks.size);
    assert.equal(inspect('resources/list').resources.length, 3);
    assert.equal(inspect('prompts/list').prompts.length, 1);
    for (const name of ['analyze_disk', 'what_grew', 'propose_cleanup', 'list_set_aside', 'what_was_cleaned']) {
        const { structuredContent } = inspect('tools/call', '--tool-name', name);
        assert.ok(checks.get(name).fits(structuredContent), name);
    }
    rmSync(home, { recursive: true });
}

async function wholeSession(connect) {
    const home = stagedHome();
    const { client, answer } = await connect(home, true);
    assert.equal(client.getServerVersion().name, 'tarvo-ai');
    const { tools } = await client.listTools();
    declare(tools);
    assert.ok(tools.every((tool) => tool.title && tool.description && tool.outputSchema && tool.annotations));
    assert.deepEqual(
        tools.filter((tool) => !tool.annotations.readOnlyHint).map((tool) => tool.name),
        ['clean', 'restore', 'archive']);

    assert.equal((await call(client, 'analyze_disk')).items[0].id, 'uv-cache');
    assert.equal((await call(client, 'list_folder', { path: '~/Documents' })).skipped[0], 'old');
    const page = async (offset) => (await call(client, 'list_folder', { path: '~', limit: 1, offset })).items;
    assert.notDeepEqual(await page(0), await page(1));
    assert.deepEqual(await page(100), []);
    assert.equal((await call(client, 'explain_folder', { path: '.cache/uv' })).source, 'catalogue');
    assert.deepEqual((await call(client, 'what_grew')).items, []);
    const { items: large } = await call(client, 'find_items', { kind: 'large', minBytes: 1 });
    assert.ok(large.length > 0 && large.every((item) => item.id.startsWith('archivo:')));
    const question = said('¿cómo deshago una limpieza?', 'how do I undo a cleanup?');
    assert.match((await call(client, 'help', { question })).text, said(/Para deshacer, pulsa/, /To undo, press/));
    assert.match((await call(client, 'list_folder', { path: '/etc' })).problem,
        said(/fuera de tu carpeta personal/, /outside your home folder/));

    const { plan, items } = await call(client, 'propose_cleanup');
    const chosen = { plan, items: items.map((item) => item.id) };
    for (const action of ['decline', 'cancel']) {
        answer.action = action;
        assert.match((await call(client, 'clean', chosen)).problem,
            action === 'decline' ? said(/ha dicho que no/, /said no/)
                : said(/cerrado sin respuesta/, /closed without an answer/));
        assert.ok(existsSync(join(home, '.cache/uv/wheel')));
    }
    answer.action = 'accept';
    const cleaned = await call(client, 'clean', chosen);
    assert.equal(cleaned.outcomes[0].status, 'done');
    assert.ok(!existsSync(join(home, '.cache/uv/wheel')));
    assert.match(answer.questions.at(-1),
        said(/^official-client pide limpiar 3 MB con Tarvo AI\.\nSe regenera solo/,
            /^official-client asks to clean 3 MB with Tarvo AI\.\nRecreates itself/));
    assert.deepEqual((await call(client, 'what_was_cleaned', { plan })).outcomes, cleaned.outcomes);

    const archived = await call(client, 'archive', { path: '~/Documents/old' });
    assert.ok(existsSync(archived.archive) && !existsSync(join(home, 'Documents/old')));
    const held = await call(client, 'list_set_aside');
    const restored = await call(client, 'restore', { items: [held.items[0].id] });
    assert.deepEqual(restored, { problem: undefined, done: 1, failures: [] });
    assert.ok(existsSync(join(home, 'Documents/old/letter.txt')));
    await documents(client, plan);
    assert.deepEqual([...checks].filter(([, check]) => check.count === 0), [], 'a tool was never checked');
    await client.close();
    rmSync(home, { recursive: true });
}

async function withoutQuestions(connect) {
    const home = stagedHome();
    const { client } = await connect(home, false);
    const { plan } = await call(client, 'propose_cleanup');
    assert.match((await call(client, 'clean', { plan })).problem, said(/en su terminal; no lo ejecutes tú: tarvo clean --home/,
            /in their terminal; do not run it for them: tarvo clean --home/));
    assert.ok(existsSync(join(home, '.cache/uv/wheel')));
    await client.close();
    const readOnly = await connect(home, true, ['--read-only']);
    assert.ok((await readOnly.client.listTools()).tools.every((tool) => tool.annotations.readOnlyHint));
    await assert.rejects(readOnly.client.callTool({ name: 'clean', arguments: { plan } }), /Unknown tool/);
    await readOnly.client.close();
    rmSync(home, { recursive: true });
}

// The newer client and the inspector do not run on what some distributions still have.
const isNodeNew = Number(process.versions.node.split('.')[0]) >= 20;
if (!isNodeNew) {
    console.log(`Node ${process.versions.node} is older than 20: without the stateless client and the inspector`);
}
for (language of ['en', 'es']) {
    for (const connect of isNodeNew ? [handshakeClient, statelessClient] : [handshakeClient]) {
        checks.clear();
        await wholeSession(connect);
        await withoutQuestions(connect);
        console.log(`${connect.name}, ${language}: all is well`);
    }
    if (isNodeNew) {
        inspected();
        console.log(`inspector, ${language}: all is well`);
    }
}
