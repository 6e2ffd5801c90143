// SPDX-License-Identifier: MIT
// Holds real conversations with the built program and measures the walk of a request: typed line to tool result, end of
// speech to first reply sample, and memory. Arguments: program, recordings of requests. Prints one JSON object.
import { spawn } from 'node:child_process';
import { closeSync, fsyncSync, mkdtempSync, openSync, readFileSync, readdirSync, renameSync, rmSync, writeSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';

const [program, ...recordings] = process.argv.slice(2);
const typed = [
    'remind me tomorrow at 5 pm to call the dentist', 'remind me in 20 minutes to check the oven',
    'remind me on friday at 10:30 to send the report', 'remind me every monday at 8 am to take the bins out',
    'remind me tomorrow at noon to eat', 'remind me in two hours to drink some water',
    'remind me on the 21st at 9 am to renew the passport', 'remind me tomorrow at 6 pm to call mum',
];

const now = () => Number(process.hrtime.bigint()) / 1e6;
const median = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];
const round = (value) => (value === undefined ? null : Math.round(value * 100) / 100);

function home() {
    const folder = mkdtempSync(join(tmpdir(), 'quorvell-bench-'));
    const env = { ...process.env, HOME: folder, XDG_DATA_HOME: join(folder, 'data'), XDG_CONFIG_HOME: join(folder, 'config'), XDG_STATE_HOME: join(folder, 'state') };
    for (const name of ['OPENAI_API_KEY', 'QUORVELL_LIVE_HOST', 'DBUS_SESSION_BUS_ADDRESS']) delete env[name];
    return { folder, env };
}

// Peak resident memory in MB of a process and of its children, by the command's second word.
function memory(pid) {
    const of = (id) => Number(/VmHWM:\s+(\d+)/.exec(readFileSync(`/proc/${id}/status`, 'utf8'))?.[1] ?? 0) / 1024;
    const result = { assistant_mb: round(of(pid)) };
    for (const id of readdirSync('/proc').filter((name) => /^\d+$/.test(name))) {
        try {
            if (readFileSync(`/proc/${id}/stat`, 'utf8').split(') ')[1].split(' ')[1] === String(pid)) result.live_service_mb = round(of(id));
        } catch { /* it ended meanwhile */ }
    }
    return result;
}

function converse(args, env, onEvent, firstLine = '') {
    const child = spawn(program, args, { env, stdio: ['pipe', 'pipe', 'inherit'] });
    child.stdin.write(firstLine);
    createInterface({ input: child.stdout }).on('line', (line) => {
        try { onEvent(JSON.parse(line), child); } catch { /* not an event */ }
    });
    return new Promise((resolve) => child.on('close', resolve));
}

// What any program must pay for a durable file of this size in the same place.
function durableWrite(folder) {
    const times = [];
    for (let index = 0; index < 30; ++index) {
        const started = now();
        const file = openSync(join(folder, '.probe'), 'w');
        writeSync(file, 'x'.repeat(400));
        fsyncSync(file);
        closeSync(file);
        renameSync(join(folder, '.probe'), join(folder, 'probe'));
        const directory = openSync(folder, 'r');
        fsyncSync(directory);
        closeSync(directory);
        times.push(now() - started);
    }
    return median(times);
}

async function typedWalk() {
    const { folder, env } = home();
    const toResult = [], toReply = [];
    let sent = 0, next = 0, used = null, ready = null, answered = false;
    const started = now();
    const write = (child) => {
        if (next === typed.length) { used = memory(child.pid); child.stdin.end(); return; }
        sent = now();
        answered = false;
        child.stdin.write(typed[next++] + '\n');
    };
    await converse(['chat', '--json'], env, (event, child) => {
        if (event.event === 'phase' && event.phase === 'active') ready = now() - started;
        if (event.event === 'tool_result') toResult.push(now() - sent);
        if (event.event === 'words' && event.speaker === 'assistant' && sent && !answered) { answered = true; toReply.push(now() - sent); }
        if (event.event === 'reply') setTimeout(() => write(child), 50);
    }, 'hello\n'); // The first line opens the connection and is not measured.
    const write400 = durableWrite(folder);
    rmSync(folder, { recursive: true });
    return {
        start_to_ready_ms: round(ready), typed_line_to_tool_result_ms: round(median(toResult)),
        typed_line_to_reply_text_ms: round(median(toReply)), durable_write_alone_ms: round(write400),
        ratio_to_durable_write: round(median(toResult) / write400), conversations: toResult.length, ...used,
    };
}

async function spokenWalk() {
    const toSample = [];
    for (const recording of recordings) {
        const { folder, env } = home();
        let spoken = null;
        await converse(['talk', recording, '--reply', join(folder, 'reply.wav'), '--json'], env, (event) => {
            if (event.event === 'input_ended') spoken = event.ms;
            if (event.event === 'voice_started' && spoken !== null) toSample.push(event.ms - spoken);
        });
        rmSync(folder, { recursive: true });
    }
    return { recordings: recordings.length, answered: toSample.length, end_of_speech_to_first_reply_sample_ms: round(median(toSample)), worst_ms: round(Math.max(...toSample)) };
}

console.log(JSON.stringify({ typed: await typedWalk(), spoken: await spokenWalk() }));
