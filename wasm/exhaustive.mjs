// Every blend over its whole domain, as tests/exhaustive.cpp walks it: the digests of the table.
//
//   node exhaustive.mjs FENNIC.WASM [FILTER]
import {readFileSync} from 'node:fs';

import {Digest, linesOf, written} from './digests.mjs';
import {Bitmap, call, load} from './fennic.mjs';

const [file, filter = '.'] = process.argv.slice(2);
await load(readFileSync(file));

// The pairs (c1, c2) of one pair of alphas, three to a pixel and as far apart as they can be.
function pairs(a1, a2) {
    const count = (a1 + 1) * (a2 + 1), length = Math.ceil(count / 3),
          words = [new Uint32Array(length), new Uint32Array(length)];
    for (let i = 0; i < length; ++i) {
        let pixel1 = a1 << 24, pixel2 = a2 << 24;
        for (let c = 0; c < 3; ++c) {
            const pair = Math.min(i + c * length, count - 1), c1 = pair / (a2 + 1) | 0;
            pixel1 |= c1 << 8 * c;
            pixel2 |= pair - c1 * (a2 + 1) << 8 * c;
        }
        words[0][i] = pixel1;
        words[1][i] = pixel2;
    }
    return words.map(each => new Uint8Array(each.buffer));
}

const rows = linesOf('digests.txt').map(line => line.split(' : ')).filter(([text]) => new RegExp(filter).test(text));
const blends = rows.map(([text, digests]) => ({text, ...written(text), expected: digests.split(' ')[3], all: new Digest()}))
                   .filter(({expected}) => expected !== '-');
for (let a1 = 0; a1 < 256; ++a1) {
    for (const blend of blends) blend.digest = new Digest();
    for (let a2 = 0; a2 < 256; ++a2) {
        const [base, layer] = pairs(a1, a2),
                     [changed, read] = [base, layer].map(bytes => new Bitmap(bytes.length / 4, 1, bytes));
        for (const {operation, values, digest} of blends) {
            changed.pixels.set(base);
            call(operation.name, [changed, read], values);
            const {buffer, byteOffset, length} = changed.pixels;
            digest.addWords(new Int32Array(buffer, byteOffset, length / 4));
        }
        changed.free();
        read.free();
    }
    for (const {all, digest} of blends) all.add(...digest.value());
}
const failed = blends.filter(({all, expected}) => all.text() !== expected);
for (const {text, all, expected} of failed) console.log(`${text}: ${all.text()}, recorded is ${expected}`);
console.log(`${blends.length} blends over their whole domain, ${failed.length} failed`);
process.exitCode = failed.length || !blends.length ? 1 : 0;
