// Skia's CPU raster on one thread, by way of a canvas: lines like those of fennic_benchmark. The canvas may put draws off until
// somebody looks, so a draw is timed as the difference between many and few draws, each followed by a look at one pixel.
//
//   node skia.mjs FOLDER SECONDS SIZES FILTER    (FOLDER has the module; SIZES as 192,1024)
import {createRequire} from 'node:module';
import {performance} from 'node:perf_hooks';

const [folder, seconds, sizes, filter] = process.argv.slice(2);
const {createCanvas, ImageData} = createRequire(folder + '/')('@napi-rs/canvas');

const blends = ['darken', 'multiply', 'color-burn', 'lighten', 'screen', 'color-dodge', 'overlay', 'soft-light', 'hard-light',
    'difference', 'exclusion', 'hue'];
const rounds = 7;

function randomCanvas(size) {
    const bytes = new Uint8ClampedArray(4 * size * size);
    for (let i = 0; i < bytes.length; ++i) bytes[i] = 256 * Math.random();
    // A quarter transparent, a half opaque, a quarter between.
    for (let i = 3; i < bytes.length; i += 4) bytes[i] = [0, bytes[i], 255, 255][Math.floor(4 * Math.random())];
    const canvas = createCanvas(size, size);
    canvas.getContext('2d').putImageData(new ImageData(bytes, size, size), 0, 0);
    return canvas;
}

const sorted = numbers => numbers.sort((a, b) => a - b);

for (const size of sizes.split(',').map(Number)) {
    const base = randomCanvas(size).getContext('2d'), layer = randomCanvas(size);
    // Seconds for so many draws.
    const time = draws => {
        const start = performance.now();
        for (let i = 0; i < draws; ++i) base.drawImage(layer, 0, 0);
        base.getImageData(0, 0, 1, 1);
        return (performance.now() - start) / 1000;
    };
    for (const blend of blends.filter(name => new RegExp(filter).test(name))) {
        base.globalCompositeOperation = blend;
        time(1);
        const draw = Math.max((time(3) - time(1)) / 2, 1e-6), more = Math.max(Math.ceil(seconds / rounds / draw), 2);
        const few = [], many = [];
        for (let round = 0; round < rounds; ++round) few.push(time(1)), many.push(time(1 + more));
        sorted(few), sorted(many);
        const rate = at => size * size * more / 1e6 / (many[at] - few[at]), median = rate(rounds >> 1);
        // The shortest times are of different rounds, so that their difference need not be the shortest.
        console.log(`${size},skia,${blend},${Math.max(rate(0), median).toFixed(2)},${median.toFixed(2)}`);
    }
}
