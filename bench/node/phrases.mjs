// SPDX-License-Identifier: MIT
// Reads phrases, one a line, and measures how many a second the date parser understands. Prints one JSON object.
import { readFileSync } from 'node:fs';
import * as chrono from 'chrono-node';

const [file, rounds] = [process.argv[2], Number(process.argv[3] ?? 200)];
const phrases = readFileSync(file, 'utf8').split('\n').filter((line) => line.length > 0);
const now = new Date('2026-11-21T08:00:00.000Z');

let understood = 0;
for (const phrase of phrases) chrono.parse(phrase, now, { forwardDate: true }); // Warm up.
const started = process.hrtime.bigint();
for (let round = 0; round < rounds; ++round)
    for (const phrase of phrases) understood += chrono.parse(phrase, now, { forwardDate: true }).length > 0 ? 1 : 0;
const seconds = Number(process.hrtime.bigint() - started) / 1e9;
console.log(JSON.stringify({
    phrases: phrases.length * rounds,
    understood: understood / (phrases.length * rounds),
    phrases_per_second: Math.round((phrases.length * rounds) / seconds),
}));
