// SPDX-License-Identifier: MIT
// Reads every note of a folder with a common reader of such headers and measures how long that takes, the best of a few
// rounds. Prints one JSON object.
import { readFileSync, readdirSync } from 'node:fs';
import matter from 'gray-matter';

const [folder, rounds] = [process.argv[2], Number(process.argv[3] ?? 5)];
let best = Infinity;
let notes = 0;
for (let round = 0; round < rounds; ++round) {
    matter.clearCache();
    const started = process.hrtime.bigint();
    notes = 0;
    for (const name of readdirSync(folder).sort()) {
        const parsed = matter(readFileSync(`${folder}/${name}`, 'utf8'));
        if (typeof parsed.data.id === 'string') ++notes;
    }
    best = Math.min(best, Number(process.hrtime.bigint() - started) / 1e6);
}
console.log(JSON.stringify({ notes, load_ms: Math.round(best * 10) / 10 }));
