// libfennic in a browser or in Node.js: bitmaps in the memory of fennic.wasm, and the operations on them. fennic.d.ts says what
// each name is for.

const maths = {
    atan: Math.atan,
    cos: Math.cos,
    exp2: x => 2 ** x,
    fmod: (x, y) => x % y,  // exact, by the language's definition
    sin: Math.sin,
    tan: Math.tan,
};
const limit = 1024;  // megabytes, the bound that the module is linked with
const mostElements = 16;
const refusals = {
    '-1': 'the arguments would lead outside of the bitmaps',
    '-3': 'there is no memory left for it',
};

let module;
let byName;
let addressOf;

export const operations = [];

export async function load(bytes) {
    if (module) return;
    const {exports} = await WebAssembly.instantiate(await compiled(bytes), {env: maths});
    if (module) return;
    const text = new Uint8Array(exports.memory.buffer, exports.list(), exports.listLength());
    const [, ...rows] = JSON.parse(new TextDecoder().decode(text));
    rows.forEach(([kind, name, frame, family, traits, parameters, summary, native], place) => {
        if (kind === 'ABORT') return;
        operations.push({
            kind: kind.toLowerCase(),
            name,
            family,
            summary,
            native: native === 'none' ? null : native,
            frame,
            traits: traits.split(' ').filter(Boolean),
            place,
            ...argumentsIn(parameters, kind, frame),
        });
    });
    byName = new Map(operations.map(operation => [operation.name, operation]));
    module = exports;
}

async function compiled(bytes = new URL('fennic.wasm', import.meta.url)) {
    if (bytes instanceof WebAssembly.Module) return bytes;
    if (!(bytes instanceof URL)) return WebAssembly.compile(bytes);
    if (bytes.protocol === 'file:') return WebAssembly.compile(await (await import('node:fs/promises')).readFile(bytes));
    const answer = await fetch(bytes);
    if (!answer.ok) throw new Error(`load: ${bytes} answers ${answer.status}`);
    return WebAssembly.compile(await answer.arrayBuffer());
}

// Which bitmaps an operation takes and which one it writes, and its other parameters, as the list writes them:
// name:type=default[low..high].
function argumentsIn(text, kind, frame) {
    const bitmaps = [], parameters = [];
    let written = kind === 'MEASURE' || kind === 'GEOMETRY' ? -1 : 0;
    const grammar = /(\w+):(\w+(?:\[\d*\])?)(?:=([^\s[]+))?(?:\[(.+?)\.\.(.+?)\])?/g;
    for (const [, name, type, usual, low, high] of text.matchAll(grammar)) {
        if (type === 'bitmap') {
            if (usual === 'result') written = bitmaps.length;
            bitmaps.push(name);
        } else if (type !== 'object') {
            parameters.push(parameter(name, type, usual, low, high));
        }
    }
    if (!bitmaps.length && frame !== 'none') bitmaps.push(...(frame === 'pair' ? ['base', 'layer'] : ['bitmap']));
    return {bitmaps, written, parameters};
}

function parameter(name, type, usual, low, high) {
    if (type.includes('[')) {
        const elements = usual ? usual.split(',').map(Number) : Array(parseInt(type.split('[')[1])).fill(0);
        return {name, type: type.replace(/\d/, ''), default: elements};
    }
    if (usual.includes('..')) return {name, type, range: usual.split('..').map(Number)};
    const range = low && {range: [low, high].map(Number).sort((a, b) => a - b)};
    return {name, type, default: single(type, usual), ...range};
}

// A number, a truth, or what depends on the picture.
function single(type, text) {
    if (type === 'boolean') return text === 'true';
    return /^(width|height)/.test(text) ? text : Number(text);
}

// A default, which may depend on the picture: width, height/2, width*5/12.
function usualValue(value, bitmap) {
    if (typeof value !== 'string') return value;
    const [, side, factors] = value.match(/^(width|height)(.*)$/);
    let number = bitmap[side];
    for (const [, sign, factor] of factors.matchAll(/([*/])(\d+)/g)) number = sign === '*' ? number * factor : number / factor;
    return number;
}

const loaded = () => module ?? fail(Error, 'the library is not loaded: await load() first');

function fail(Type, words) {
    throw new Type(`fennic: ${words}`);
}

function size(value, what, most) {
    if (!Number.isInteger(value) || value < 0 || value > most)
        fail(RangeError, `${what} of ${value} is not one from 0 to ${most}`);
    return value;
}

const sizeOf = ({width, height}) => `${width} x ${height}`;

export class Bitmap {
    #address;

    constructor(width, height, pixels, stride = 4 * width) {
        this.width = size(width, 'a width', 2 ** 30 - 1);
        this.height = size(height, 'a height', 2 ** 31 - 1);
        this.stride = size(stride, 'a stride', 2 ** 32 - 1);
        if (stride < 4 * width) fail(RangeError, `a stride of ${stride} is less than ${width} pixels of 4 bytes`);
        const length = stride * height;
        const areBytes = ArrayBuffer.isView(pixels) && pixels.BYTES_PER_ELEMENT === 1 && pixels.length === length;
        if (pixels !== undefined && !areBytes) {
            fail(TypeError, `the pixels of ${sizeOf(this)} are a Uint8ClampedArray or Uint8Array of ${length} bytes`);
        }
        this.#address = loaded().create(width, height, stride);
        if (!this.#address) {
            const needed = Math.ceil(length / 2 ** 20);
            fail(RangeError, `a bitmap of ${sizeOf(this)} is too large: of ${limit} MB for all bitmaps it needs ${needed}`);
        }
        Object.freeze(this);
        if (pixels) this.pixels.set(pixels);
    }

    get pixels() {
        return new Uint8ClampedArray(module.memory.buffer, module.pixels(addressOf(this)), this.stride * this.height);
    }

    get isFreed() {
        return this.#address === 0;
    }

    free() {
        if (this.#address) module.destroy(this.#address);
        this.#address = 0;
    }

    static {
        addressOf = bitmap => {
            if (!(bitmap instanceof Bitmap)) fail(TypeError, `${bitmap} is no Bitmap`);
            return bitmap.#address || fail(Error, 'a bitmap that has been freed');
        };
    }
}

function operationNamed(name) {
    loaded();
    return byName.get(name) ?? fail(RangeError, `no operation is called ${name}`);
}

// The call as the list writes it: bitmaps, of which each may be null, and values in the order of the parameters, of which
// arrays may be null or of another length. No argument can hurt the library; what it answers is its own: the status or the
// measured number, and the arrays as they are afterwards.
export function call(name, bitmaps, values) {
    const operation = operationNamed(name), floats = [];
    const most = operation.bitmaps.length, addresses = bitmaps.map(bitmap => (bitmap === null ? 0 : addressOf(bitmap)));
    if (addresses.length > most) fail(TypeError, `${name} takes ${most} bitmaps, not ${addresses.length}`);
    // The one bitmap whose size the library takes the caller's word for.
    if (operation.frame === 'nine' && bitmaps[2]?.pixels.length < 4 * bitmaps[0]?.width * bitmaps[0]?.height) {
        fail(RangeError, `${name}: the ${operation.bitmaps[2]} is smaller than the ${operation.bitmaps[0]}`);
    }
    module.begin();
    addresses.forEach(address => module.giveBitmap(address));
    const arrays = [];
    operation.parameters.forEach(({type}, i) => {
        const value = values[i];
        if (!type.endsWith(']')) {
            module.giveNumber(type === 'int' ? value | 0 : type === 'boolean' ? Number(Boolean(value)) : Number(value));
            return;
        }
        const length = value?.length ?? -1;
        if (length > mostElements) fail(RangeError, `${name}: an array of ${length} elements is longer than ${mostElements}`);
        const address = module.giveArray(length), Elements = type === 'int[]' ? Int32Array : Float32Array;
        if (value) new Elements(module.memory.buffer, address, length).set(value);
        arrays.push(() => value && Array.from(new Elements(module.memory.buffer, address, length)));
    });
    const result = module.call(operation.place);
    return {result, arrays: arrays.map(elements => elements())};
}

// The bitmaps, where the operation can do with them.
function fitting({name, bitmaps: names, frame}, given) {
    const bitmaps = Array.isArray(given) ? given : given ? [given] : [];
    if (bitmaps.length !== names.length) {
        fail(TypeError, `${name} takes ${names.length} bitmaps (${names.join(', ')}), not ${bitmaps.length}`);
    }
    bitmaps.forEach(addressOf);
    const [first] = bitmaps, isSmaller = bitmap => bitmap.width < first.width || bitmap.height < first.height;
    const [isWrong, wrong] = frame === 'pair' ? [isSmaller, 'smaller than its'] :
                                                [bitmap => sizeOf(bitmap) !== sizeOf(first), 'of another size than the'];
    const at = bitmaps.findIndex(isWrong);
    if (at >= 0) {
        const [is, than] = [bitmaps[at], first].map(sizeOf);
        fail(RangeError, `${name}: the ${names[at]} of ${is} is ${wrong} ${names[0]} of ${than}`);
    }
    return bitmaps;
}

// The value of a parameter, where it is one of its type.
function checked(operation, {name, type, default: usual}, given, bitmap) {
    const value = given[name] ?? usualValue(usual, bitmap);
    const refuse = wanted => fail(TypeError, `${operation.name}: ${name} has to be ${wanted}, not ${value}`);
    if (value === undefined) refuse(`given: ${type}`);
    const fits = {
        int: each => Number.isInteger(each) && each === (each | 0),
        float: each => typeof each === 'number' && !Number.isNaN(each),
        boolean: each => typeof each === 'boolean',
    };
    fits.double = fits.float;
    if (!type.endsWith('[]')) return fits[type](value) ? value : refuse(`of type ${type}`);
    const isArray = Array.isArray(value) || ArrayBuffer.isView(value);
    const good = isArray && value.length === usual.length && Array.from(value).every(fits[type.slice(0, -2)]);
    return good ? value : refuse(`an array of ${usual.length} of type ${type.slice(0, -2)}`);
}

function run(operation, given, parameters) {
    const bitmaps = fitting(operation, given);
    const known = operation.parameters.map(({name}) => name), picture = bitmaps[Math.max(operation.written, 0)];
    const unknown = Object.keys(parameters).find(name => !known.includes(name));
    if (unknown) fail(TypeError, `${operation.name} has no parameter ${unknown}`);
    const values = operation.parameters.map(parameter => checked(operation, parameter, parameters, picture));
    return call(operation.name, bitmaps, values);
}

export function apply(name, bitmaps, parameters = {}) {
    const operation = operationNamed(name);
    if (operation.written < 0) fail(TypeError, `${name} changes no bitmap: measure() answers it`);
    const {result} = run(operation, bitmaps, parameters);
    if (result < 0) fail(result === -1 ? RangeError : Error, `${name}: ${refusals[result] ?? `status ${result}`}`);
}

export function measure(name, bitmaps, parameters = {}) {
    const operation = operationNamed(name);
    if (operation.written >= 0) fail(TypeError, `${name} measures nothing: apply() makes it`);
    const {result, arrays} = run(operation, bitmaps, parameters);
    if (operation.frame === 'rectangle') return arrays[0];
    if (operation.frame === 'value') return result;
    const named = operation.parameters.filter(({type}) => type === 'int[]').map(({name}, i) => [name, arrays[i]]);
    return {result, ...Object.fromEntries(named)};
}

// Both directions round to the nearest value.
export function premultiply(pixels) {
    for (let i = 0; i < pixels.length; i += 4) {
        const a = pixels[i + 3];
        for (let c = i; a < 255 && c < i + 3; ++c) pixels[c] = (pixels[c] * a + 127) / 255 | 0;
    }
    return pixels;
}

export function straighten(pixels) {
    for (let i = 0; i < pixels.length; i += 4) {
        const a = pixels[i + 3];
        for (let c = i; a < 255 && c < i + 3; ++c) pixels[c] = a && Math.min((pixels[c] * 255 + (a >> 1)) / a, 255) | 0;
    }
    return pixels;
}
