// Skia's CPU raster on one thread, by way of a canvas: lines like those of fennic_benchmark. The canvas may put draws off until
// somebody looks, so a draw is timed as the difference between many and few draws, each followed by a look at one pixel.
//
//   node skia.mjs FOLDER SECONDS PICTURES FILTER    (FOLDER has the module in npm/ and straight_pixels; PICTURES as
//   192,1024:icon)
import {execFileSync} from 'node:child_process';
import {createRequire} from 'node:module';
import {performance} from 'node:perf_hooks';

const [folder, seconds, pictures, filter] = process.argv.slice(2);
const {createCanvas, ImageData} = createRequire(folder + '/npm/')('@napi-rs/canvas');

const blends = ['darken', 'multiply', 'color-burn', 'lighten', 'screen', 'color-dodge', 'overlay', 'soft-light', 'hard-light',
    'difference', 'exclusion', 'hue', 'linear-dodge'];
const modes = {'linear-dodge': 'lighter'};  // where the canvas calls it otherwise
const rounds = 7;

function canvasOf(picture, number, size) {
    const bytes = execFileSync(folder + '/straight_pixels', [picture, number], {maxBuffer: Infinity});
    const canvas = createCanvas(size, size);
    canvas.getContext('2d').putImageData(new ImageData(new Uint8ClampedArray(bytes), size, size), 0, 0);
    return canvas;
}

const sorted = numbers => numbers.sort((a, b) => a - b);

for (const picture of pictures.split(',').filter(picture => picture !== '1')) {
    const [side, subject = 'random'] = picture.split(':'), size = Number(side);
    const base = canvasOf(picture, 0, size).getContext('2d'), layer = canvasOf(picture, 1, size);
    // Seconds for so many draws.
    const time = draws => {
        const start = performance.now();
        for (let i = 0; i < draws; ++i) base.drawImage(layer, 0, 0);
        base.getImageData(0, 0, 1, 1);
        return (performance.now() - start) / 1000;
    };
    for (const blend of blends.filter(name => new RegExp(filter).test(name))) {
        base.globalCompositeOperation = modes[blend] ?? blend;
        time(1);
        const draw = Math.max((time(3) - time(1)) / 2, 1e-6), more = Math.max(Math.ceil(seconds / rounds / draw), 2);
        const few = [], many = [];
        for (let round = 0; round < rounds; ++round) few.push(time(1)), many.push(time(1 + more));
        sorted(few), sorted(many);
        const rate = at => size * size * more / 1e6 / (many[at] - few[at]), median = rate(rounds >> 1);
        // The shortest times are of different rounds, so that their difference need not be the shortest.
        console.log(`${size},${subject},skia,${blend},${Math.max(rate(0), median).toFixed(2)},${median.toFixed(2)}`);
    }
}
