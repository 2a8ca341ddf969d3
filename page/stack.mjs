// The operations of a stack, one after the other, over a copy of the base; as the command line does each.
import {apply, Bitmap, operations} from '../wasm/fennic.mjs';

// A step is {module, recipes, values}: the operation's name in the module, and what is made of the picture for each bitmap.
export function run(base, layer, steps, onStep = () => {}) {
    const made = [], bitmap = ({width, height, pixels}) => {
        const each = new Bitmap(width, height, pixels);
        made.push(each);
        return each;
    };
    try {
        const result = bitmap(base), over = steps.some(({recipes}) => recipes.includes('layer')) ? bitmap(layer) : null;
        const milliseconds = [];
        let exceeds = false;
        steps.forEach(({module, recipes, values}, i) => {
            onStep(i);
            const kept = made.length, before = {width: base.width, height: base.height, pixels: result.pixels};
            const needed = recipes.map(recipe => recipe === 'input' || recipe.startsWith('shifted'));
            const sources = needed.some(Boolean) ? {...before, pixels: before.pixels.slice()} : null;
            const bitmaps = recipes.map((recipe, place) => {
                if (!needed[place]) return recipe === 'layer' ? over : result;
                return bitmap(recipe === 'input' ? sources : shifted(sources, ...recipe.match(/-?\d+/g).map(Number)));
            });
            const start = performance.now();
            apply(module, bitmaps, values);
            milliseconds.push(performance.now() - start);
            made.splice(kept).forEach(each => each.free());
            exceeds ||= i < steps.length - 1 && exceedsAlpha(result.pixels);
        });
        return {width: base.width, height: base.height, pixels: result.pixels.slice(), milliseconds, exceeds};
    } finally {
        made.forEach(each => each.free());
    }
}

// Moved to the right and down; what comes in from outside is the nearest pixel.
function shifted({width, height, pixels}, right, down) {
    const from = new Uint32Array(pixels.buffer), to = new Uint32Array(from.length);
    const clamp = (value, most) => Math.max(0, Math.min(value, most));
    for (let y = 0; y < height; ++y) {
        const row = clamp(y - down, height - 1) * width;
        for (let x = 0; x < width; ++x) to[y * width + x] = from[row + clamp(x - right, width - 1)];
    }
    return {width, height, pixels: new Uint8ClampedArray(to.buffer)};
}

// What no file can keep: straight colours end at 255.
function exceedsAlpha(pixels) {
    for (let i = 0; i < pixels.length; i += 4) {
        if (Math.max(pixels[i], pixels[i + 1], pixels[i + 2]) > pixels[i + 3]) return true;
    }
    return false;
}

// About how many plain operations on one pixel a run takes: whether to make a person wait for it.
export function effort({width, height}, steps) {
    const each = ({module, values}) => {
        const operation = operations.find(({name}) => name === module);
        if (!operation.traits.includes('costly')) return 4;
        const [{name, default: usual}] = operation.parameters;
        return (2 * (values[name] ?? usual) + 1) ** 2;
    };
    return width * height * steps.reduce((sum, step) => sum + each(step), 0);
}
