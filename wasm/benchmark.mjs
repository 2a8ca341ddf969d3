// Measures every operation of the module on one thread, on random pixels and with the list's defaults, as bench/ does of the
// library; prints lines like its own: size,picture,peer,op,best_mpx_s,median_mpx_s.
//
//   node benchmark.mjs FENNIC.WASM SECONDS FILTER [SIZE]
import {readFileSync} from 'node:fs';
import {performance} from 'node:perf_hooks';

import {apply, Bitmap, load, measure, operations} from './fennic.mjs';

const [file, seconds, filter, side = 1024] = process.argv.slice(2), size = Number(side);
await load(readFileSync(file));

// A quarter transparent, a half opaque, a quarter between.
function randomBitmap(seed) {
    const bitmap = new Bitmap(size, size), {pixels} = bitmap;
    let state = 2463534242 + Math.imul(2654435769, seed);
    const random = () => {
        state ^= state << 13;
        state ^= state >>> 17;
        return (state ^= state << 5) >>> 0;
    };
    for (let i = 0; i < pixels.length; i += 4) {
        const kind = random() >>> 30, bytes = random(), a = kind === 0 ? 0 : kind === 1 ? 1 + (bytes >>> 24) % 254 : 255;
        const channels = [0, 8, 16].map(shift => Math.floor((bytes >> shift & 255) * a / 255));
        pixels.set([...channels, a], i);
    }
    return bitmap;
}

const bitmaps = Array.from({length: 9}, (_, seed) => randomBitmap(seed));
const destination = bitmaps[0], before = destination.pixels.slice();
// Nothing but its middle, for the searches for bounds.
const framed = new Bitmap(size, size), margin = size >> 3;
for (let y = margin; y < size - margin; ++y) {
    const from = 4 * (y * size + margin), to = 4 * (y * size + size - margin);
    framed.pixels.set(before.subarray(from, to), from);
}
const searches = ['outside', 'cut-off'];

function timed(operation, parameters) {
    const {name, written} = operation, run = written < 0 ? measure : apply, others = bitmaps.slice(1), times = [];
    const pictures = operation.bitmaps.map((_, i) => i === Math.max(written, 0) ? destination : others.shift());
    const given = searches.includes(name) ? [framed] : pictures;
    for (const end = performance.now() + 1000 * seconds; performance.now() < end || times.length < 5;) {
        destination.pixels.set(before);
        const start = performance.now();
        run(name, given, parameters);
        times.push(performance.now() - start);
    }
    return times.sort((a, b) => a - b);
}

const rate = time => (size * size / 1000 / time).toFixed(2);
for (const operation of operations) {
    if (['geometry', 'inner'].includes(operation.kind) || !new RegExp(filter).test(operation.name)) continue;
    const numbered = operation.parameters.find(each => each.default === undefined), [first, last] = numbered?.range ?? [0, 0];
    for (let number = first; number <= last; ++number) {
        const times = timed(operation, numbered && {[numbered.name]: number});
        const name = numbered ? `${operation.name}-${number}` : operation.name;
        console.log(`${size},random,wasm,${name},${rate(times[0])},${rate(times[times.length >> 1])}`);
    }
}
