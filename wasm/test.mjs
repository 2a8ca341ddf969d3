// The module gives the bytes of tests/digests.txt, tests/examples.txt and tests/answers.txt, and refuses in words what it
// cannot do.
//
//   node test.mjs FENNIC.WASM
import assert from 'node:assert/strict';
import {readFileSync} from 'node:fs';
import {test} from 'node:test';

import {Digest, linesOf, written} from './digests.mjs';
import {apply, Bitmap, call, load, measure, operations, premultiply, straighten} from './fennic.mjs';

const guard = 0xa5, megabyte = 2 ** 20;

assert.throws(() => new Bitmap(1, 1), /not loaded/);
await assert.rejects(load(new Uint8Array(8)), WebAssembly.CompileError);
await Promise.all([load(readFileSync(process.argv[2])), load(readFileSync(process.argv[2]))]);
const byName = new Map(operations.map(operation => [operation.name, operation]));

function randomNumbers() {
    let state = 2463534242;
    const next = () => {
        state ^= state << 13;
        state ^= state >>> 17;
        return (state ^= state << 5) >>> 0;
    };
    return {next, below: end => (next() >>> 8) % end};
}

const pixelOf = {
    valid({below}) {
        const a = below(4) ? below(256) : 255 * below(2);
        return [below(a + 1), below(a + 1), below(a + 1), a];
    },
    arbitrary({next}) {
        const word = next();
        return [word, word >> 8, word >> 16, word >> 24];
    },
    extreme: ({below}) => [0, 0, 0, 0].map(() => [0, 1, 2, 127, 128, 129, 253, 254, 255][below(9)]),
    wide: random => pixelOf[random.below(2) ? 'valid' : 'arbitrary'](random),
};

// Bitmaps as the digests were recorded over: five rows, a base and a layer at a time, tight and padded.
function picturesOf(column) {
    const random = randomNumbers(), pictures = [];
    for (const width of column === 'wide' ? [255, 300, 513, 1100] : Array.from({length: 41}, (_, i) => i)) {
        for (const padding of [0, 12]) {
            const pair = [4 * width + padding, 4 * width + padding + 8].map(stride => {
                return {width, stride, pixels: new Uint8Array(5 * stride).fill(guard)};
            });
            for (let i = 0; i < 5 * width; ++i) {
                const y = Math.floor(i / width), x = i % width;
                for (const {stride, pixels} of pair) pixels.set(pixelOf[column](random), y * stride + 4 * x);
            }
            pictures.push(pair);
        }
    }
    return pictures;
}

const bitmapOf = ({width, stride, pixels}) => new Bitmap(width, 5, pixels, stride);

function digestOf({operation, values}, pictures) {
    const digest = new Digest(), first = Math.max(operation.written, 0);
    for (const [base, layer] of pictures) {
        const bitmaps = operation.bitmaps.map((_, i) => bitmapOf(i !== first && i % 2 ? layer : base));
        let {result, arrays} = call(operation.name, bitmaps, values);
        if (operation.frame === 'rectangle')
            for (const each of arrays[0]) result = 4096 * result + each;
        const [low, high] = new Uint32Array(Float64Array.of(result).buffer);
        if (operation.written < 0)
            digest.add(low ^ high, high);
        else
            assert.equal(result, 0);
        const after = bitmaps[first].pixels, isPacked = operation.traits.includes('packed');
        const words = new Uint32Array(after.buffer, after.byteOffset, after.length / 4);
        for (let row = 0, length = base.stride / 4; row < 5 * length; row += length) {
            words.subarray(row, row + base.width).forEach(word => digest.add(word));
            assert(isPacked || words.subarray(row + base.width, row + length).every(word => word === guard * 0x01010101));
        }
        bitmaps.forEach(bitmap => bitmap.free());
    }
    return digest.text();
}

test('digests are those of the table', context => {
    const rows = linesOf('digests.txt').map(line => line.split(' : ')), platform = {};
    const columns = ['valid', 'arbitrary', 'extreme', 'domain', 'wide'];
    for (const [place, column] of columns.entries()) {
        if (column === 'domain') continue;
        const pictures = picturesOf(column);
        for (const [text, digests] of rows) {
            const made = written(text), {name, traits} = made.operation;
            const same = digestOf(made, pictures) === digests.split(' ')[place];
            if (traits.includes('platform'))
                (platform[name] ??= []).push(same);
            else
                assert(same, `${text}, column ${column}`);
        }
    }
    // Recorded with glibc's functions; those of Node.js 18, 20 and 22 make no difference.
    for (const [name, all] of Object.entries(platform)) {
        context.diagnostic(
            `${name}, by the host's functions: ${all.filter(Boolean).length} of ${all.length} digests are the same`);
    }
    assert(Object.values(platform).flat().every(Boolean), 'the host\'s mathematical functions make other bytes');
    const digested = new Set(rows.map(([text]) => text.split(' ')[0]));
    for (const {name, bitmaps} of operations) assert(digested.has(name) || !bitmaps.length, `${name} has no digest`);
    assert(rows.length > 200);
});

// Rows of pixels; one pixel stands for rows long enough for the vector loop and its rest.
function pictureOf(text) {
    let rows = text.trim().split('|').map(row => row.trim().split(/\s+/).map(pixel => {
        const channels = pixel.split(',').map(Number);
        return channels.length === 4 ? channels : [channels[0], channels[0], channels[0], 255];
    }));
    if (rows.length === 1 && rows[0].length === 1) rows = [0, 1].map(() => Array(67).fill(rows[0][0]));
    return {width: rows[0].length, height: rows.length, pixels: Uint8Array.from(rows.flat(2))};
}

for (const [file, least] of [['examples.txt', 200], ['answers.txt', 50]]) {
    test(`${file}, to the byte`, () => {
        // Of the answers, some are those of functions that take no bitmap and stand in no list.
        const lines = linesOf(file).filter(line => byName.has(line.split(' ')[0]));
        for (const line of lines) {
            const [, text, pictures, expected] = line.match(/^(.*?) : (.*?) = (.*)$/);
            const {operation, values} = written(text);
            const given = pictures.split('&').filter(each => each.trim() !== '-').map(pictureOf);
            assert.equal(given.length, operation.bitmaps.length, line);
            const bitmaps = given.map(({width, height, pixels}) => new Bitmap(width, height, pixels));
            const {result, arrays} = call(operation.name, bitmaps, values);
            if (operation.written >= 0) {
                assert.equal(result, 0, line);
                given[operation.written] = pictureOf(expected);
            } else {
                const answers = operation.frame === 'rectangle' ? [] : [Number(Math.fround(result).toPrecision(6))];
                const words = expected.split(' ').map(word => word[0] === '[' ? JSON.parse(word) : Number(word));
                assert.deepEqual([...answers, ...arrays], words, line);
            }
            given.forEach(({pixels}, i) => assert.deepEqual(Buffer.from(bitmaps[i].pixels), Buffer.from(pixels), line));
            bitmaps.forEach(bitmap => bitmap.free());
        }
        assert(lines.length > least);
    });
}

test('defaults, names and answers', () => {
    const icon = new Bitmap(4, 2), texture = new Bitmap(5, 2);
    icon.pixels.fill(255);
    texture.pixels.fill(128);
    apply('multiply', [icon, texture]);
    assert.deepEqual([...icon.pixels.subarray(28)], [191, 191, 191, 255]);
    assert.deepEqual(measure('cut-off', icon), [0, 0, 3, 1]);
    assert.equal(measure('visible', [icon]), 8);
    const square = measure('icon-info', [], {box: [0, 0, 119, 99]});
    assert.deepEqual(square, {result: 1, box: [0, 0, 120, 100], square: [0, 10, 120, 120]});
    for (const {name, written: place, bitmaps, parameters} of operations) {
        const given = bitmaps.map(() => new Bitmap(9, 7)), numbered = parameters.find(each => each.default === undefined);
        (place < 0 ? measure : apply)(name, given, numbered && {[numbered.name]: numbered.range[0]});
        given.forEach(bitmap => bitmap.free());
    }
    [icon, texture].forEach(bitmap => bitmap.free());
});

test('damaged calls are refused in words, and change nothing', () => {
    const bitmap = new Bitmap(3, 3), low = new Bitmap(3, 2), freed = new Bitmap(1, 1), other = new Bitmap(2, 4);
    freed.free();
    freed.free();
    bitmap.pixels.fill(77);
    const cases = [
        [() => apply('frobnicate', bitmap), /no operation is called frobnicate/],
        [() => apply('get-hsv', bitmap), /no operation/],
        [() => apply('median', bitmap), /measure\(\) answers/],
        [() => measure('invert', bitmap), /apply\(\) makes/],
        [() => apply('darken', bitmap), /takes 2 bitmaps \(base, layer\), not 1/],
        [() => apply('invert', [bitmap, low]), /takes 1 bitmaps/],
        [() => apply('invert'), /not 0/],
        [() => apply('invert', {width: 3}), /is no Bitmap/],
        [() => apply('invert', freed), /has been freed/],
        [() => freed.pixels, /has been freed/],
        [() => apply('darken', [bitmap, low]), /layer of 3 x 2 is smaller than its base of 3 x 3/],
        [() => apply('sharpen', [bitmap, low]), /another size than the source/],
        [() => apply('emboss', operationsBitmaps('emboss', bitmap, 2, low)), /topRight .* another size/],
        [() => apply('relief', [bitmap, bitmap, other]), /subtrahend of 2 x 4/],
        [() => call('emboss', operationsBitmaps('emboss', bitmap, 2, low), []), /topRight is smaller/],
        [() => apply('pick-channel', bitmap, {channel: 9}), /outside of the bitmaps/],
        [() => apply('mode', [bitmap, bitmap]), /mode has to be given/],
        [() => apply('mode', [bitmap, bitmap], {mode: 2 ** 31}), /of type int, not 2147483648/],
        [() => apply('mode', [bitmap, bitmap], {mode: 3.5}), /of type int/],
        [() => apply('alpha', bitmap, {factor: NaN}), /of type float, not NaN/],
        [() => apply('alpha', bitmap, {factor: '1'}), /of type float/],
        [() => apply('alpha', bitmap, {faktor: 1}), /no parameter faktor/],
        [() => apply('crosshatch', bitmap, {clearBackground: 1}), /of type boolean/],
        [() => apply('vignette', bitmap, {centre: [1]}), /an array of 2 of type float/],
        [() => apply('vignette', bitmap, {color: [1, NaN]}), /an array of 2 of type int/],
        [() => call('vignette', [bitmap], [Array(17)]), /longer than 16/],
        [() => call('invert', [bitmap, bitmap], []), /takes 1 bitmaps/],
        [() => new Bitmap(-1, 1), /a width of -1/],
        [() => new Bitmap(1, NaN), /a height of NaN/],
        [() => new Bitmap(2 ** 30, 1), /a width/],
        [() => new Bitmap(4, 4, undefined, 15), /a stride of 15 is less than 4 pixels/],
        [() => new Bitmap(2, 2, new Uint8Array(15)), /Uint8Array of 16 bytes/],
        [() => new Bitmap(2, 2, new Uint32Array(16)), /Uint8Array of 16 bytes/],
        [() => new Bitmap(16384, 16384), /16384 x 16384 is too large: of 1024 MB for all bitmaps it needs 1024/],
        [() => new Bitmap(2 ** 30 - 1, 2 ** 31 - 1), /too large/],
    ];
    for (const [damaged, words] of cases) {
        const inWords = ({message}) => message.startsWith('fennic: ') && words.test(message);
        assert.throws(damaged, inWords, damaged.toString());
    }
    assert(bitmap.pixels.every(byte => byte === 77));
    for (const {name, bitmaps} of operations.filter(each => each.bitmaps.length)) {
        assert([0, -1].includes(call(name, bitmaps.map(() => null), []).result), `${name} without bitmaps`);
    }
    assert.equal(call('darken', [bitmap, low], []).result, -1);
    [bitmap, low, other].forEach(each => each.free());
});

const operationsBitmaps = (name, bitmap, place, other) => byName.get(name).bitmaps.map((_, i) => i === place ? other : bitmap);

// What is computed otherwise where a whole piece of a row is opaque: every pair of channels, with a pixel before each row that
// is opaque or is not.
test('opaque pieces become what the same pixels do elsewhere', () => {
    const width = 257, isBefore = i => i % width === 0, places = Array.from({length: 256 * width}, (_, i) => i);
    const pixelsOf = (channel, alpha) => Uint8Array.from(places.flatMap(i => {
        const c = isBefore(i) ? 0 : channel(i);
        return [c, c, c, isBefore(i) ? alpha : 255];
    }));
    const given = [255, 0].map(alpha => [pixelsOf(i => i % width - 1, alpha), pixelsOf(i => Math.floor(i / width), alpha)]);
    for (const {name, parameters} of operations.filter(({frame}) => frame === 'pair')) {
        const [first, last] = parameters[0]?.range ?? [0, 0];
        for (let number = first; number <= last; ++number) {
            const results = given.map(pair => {
                const [base, layer] = pair.map(pixels => new Bitmap(width, 256, pixels));
                call(name, [base, layer], [number || parameters[0]?.default]);
                for (let y = 0; y < 256; ++y) base.pixels.fill(0, base.stride * y, base.stride * y + 4);
                const after = Buffer.from(base.pixels);
                [base, layer].forEach(bitmap => bitmap.free());
                return after;
            });
            assert(results[0].equals(results[1]), `${name} ${number}`);
        }
    }
});

test('no number, array or size hurts what lies beside the bitmaps', () => {
    const {below} = randomNumbers(), pick = (...list) => list[below(list.length)];
    const integer = most =>
        Math.min(pick(-(2 ** 31), 2 ** 31 - 1, -1, 0, 255, 46341, 65536, below(9), below(9), below(9)), most);
    const real = () => pick(Infinity, -Infinity, NaN, 0, -1, 3.4e38, -3.4e38, 1e-45, below(3000) / 1000, below(3000) / 1000);
    for (const {name, bitmaps, parameters, written: place, frame, traits} of operations) {
        for (let round = 0; round < 60; ++round) {
            const width = below(20), height = below(20), one = frame === 'nine' || below(2);
            const given = [], between = [];
            for (const _ of bitmaps) {
                between.push(new Bitmap(5, 5, new Uint8Array(100).fill(guard)));
                const bitmap = one ? new Bitmap(width, height) : new Bitmap(below(20), below(20));
                bitmap.pixels.forEach((_, i, pixels) => pixels[i] = below(256));
                given.push(bitmap);
            }
            between.push(new Bitmap(5, 5, new Uint8Array(100).fill(guard)));
            const values = parameters.map(({type}) => {
                const number = () => type.startsWith('int') ? integer(traits.includes('costly') ? 12 : 2 ** 31 - 1) : real();
                return type.endsWith(']') ? pick(null, [], Array.from({length: 9}, number)) : number();
            });
            const {result} = call(name, given, values);
            assert(place < 0 || [0, -1, -3].includes(result), `${name} ${values} answers ${result}`);
            const areWhole = between.every(({pixels}) => pixels.every(byte => byte === guard));
            assert(areWhole, `${name} ${values} writes beside ${width} x ${height}`);
            [...given, ...between].forEach(bitmap => bitmap.free());
        }
    }
});

test('memory: bitmaps share no byte, are given back whole, and end at the bound', () => {
    const random = randomNumbers(), held = [];
    for (let step = 0; step < 3000; ++step) {
        if (held.length && random.below(2)) {
            const [bitmap, mark] = held.splice(random.below(held.length), 1)[0];
            assert(bitmap.pixels.every(byte => byte === mark));
            bitmap.free();
        } else {
            const bitmap = new Bitmap(random.below(40), random.below(60)), mark = 1 + random.below(255);
            assert(bitmap.pixels.every(byte => byte === 0));
            bitmap.pixels.fill(mark);
            held.push([bitmap, mark]);
        }
    }
    held.forEach(([bitmap]) => bitmap.free());
    const large = new Bitmap(8192, 16384), most = new Bitmap(8000, 8000);
    assert.throws(() => new Bitmap(8192, 9000), /too large/);
    assert.throws(() => apply('kuwahara', large), /no memory left/);
    large.free();
    most.free();
    // All of it is one piece again.
    new Bitmap(1000 * megabyte / 4096, 1024).free();
});

test('straight colour comes back', () => {
    for (let a = 0; a < 256; ++a) {
        for (let c = 0; c <= a; ++c) {
            const pixel = Uint8ClampedArray.of(c, a, 0, a);
            assert.deepEqual([...premultiply(straighten(pixel))], [c, a, 0, a]);
        }
    }
    assert.deepEqual([...premultiply(Uint8Array.of(200, 100, 1, 128))], [100, 50, 1, 128]);
    assert.deepEqual([...straighten(Uint8Array.of(200, 50, 1, 128))], [255, 100, 2, 128]);
});
