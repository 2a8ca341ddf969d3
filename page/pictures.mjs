// Pictures of the page, with premultiplied pixels as bitmaps have them; from PNG files and back without a lost bit.
import {convertIndexedToRgb, decode, encode} from 'fast-png';
import {Unzlib} from 'fflate';
import {premultiply, straighten} from '../wasm/fennic.mjs';

export const mostPixels = 2 ** 24;
export const mostBytes = 2 ** 27;

const signature = [0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a];
export const isPng = bytes => signature.every((byte, i) => bytes[i] === byte);

export function checkSize(width, height) {
    if (width * height > mostPixels) {
        const most = mostPixels / 2 ** 20;
        throw new RangeError(`${width} × ${height} pixels are too many for this page, which takes ${most} million`);
    }
    if (!(width * height > 0)) throw new RangeError(`a picture of ${width} × ${height} pixels is damaged`);
}

export const canRead = ({depth, interlaced}) => !interlaced || depth >= 8;

// The head, which the format puts first, and the compressed data.
export function headOf(bytes) {
    const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength), data = [];
    if (bytes.length < 33) throw new RangeError('the PNG is cut short');
    const [depth, type, , , interlaced] = bytes.subarray(24, 29);
    const head = {width: view.getUint32(16), height: view.getUint32(20), depth, type, interlaced, hasProfile: false};
    for (let at = 8; at + 8 <= bytes.length; at += 12 + view.getUint32(at)) {
        const name = String.fromCharCode(...bytes.subarray(at + 4, at + 8));
        if (name === 'iCCP') head.hasProfile = true;
        if (name === 'IDAT') data.push(bytes.subarray(at + 8, at + 8 + view.getUint32(at)));
        if (name === 'IEND') break;
    }
    return {...head, data};
}

export function fromPng(bytes) {
    const head = headOf(bytes), {width, height, depth} = head, notes = [];
    checkSize(width, height);
    checkLength(head);
    let png;
    try {
        png = decode(bytes, {checkCrc: true});
        if (png.palette) png = {...png, data: convertIndexedToRgb(png), channels: png.palette[0].length, depth: 8};
    } catch (error) {
        throw new RangeError(`the PNG is damaged (${error.message}); export it again`);
    }
    if (depth === 16) notes.push('It has 16 bits a channel, of which 8 are taken.');
    if (head.hasProfile) notes.push('Its colour profile is not followed here, but by the command line.');
    return {width, height, pixels: premultiply(straight(png)), notes};
}

// A small file may hold more data than any memory: it is counted before it is taken.
function checkLength({width, height, depth, type, interlaced, data}) {
    const channels = [1, 0, 3, 1, 2, 0, 4][type] ?? 0;
    const rows = (w, h) => w && h ? h * (1 + Math.ceil(w * channels * depth / 8)) : 0;
    const passes = [[0, 0, 8, 8], [4, 0, 8, 8], [0, 4, 4, 8], [2, 0, 4, 4], [0, 2, 2, 4], [1, 0, 2, 2], [0, 1, 1, 2]];
    const side = (length, first, step) => Math.ceil(Math.max(length - first, 0) / step);
    const lengths = passes.map(([x, y, dx, dy]) => rows(side(width, x, dx), side(height, y, dy)));
    const expected = interlaced ? lengths.reduce((sum, each) => sum + each, 0) : rows(width, height);
    const damaged = () => new RangeError('the PNG is damaged; export it again');
    let length = 0;
    const counter = new Unzlib(chunk => {
        length += chunk.length;
        if (length > expected) throw damaged();
    });
    try {
        for (const part of data) {
            for (let at = 0; at < part.length; at += 2 ** 14) counter.push(part.subarray(at, at + 2 ** 14));
        }
        counter.push(new Uint8Array(0), true);
    } catch {
        throw damaged();
    }
    if (length !== expected) throw damaged();
}

// Straight red, green, blue and alpha of 8 bits, whatever the file has.
function straight({width, height, data, channels, depth, transparency}) {
    const pixels = new Uint8ClampedArray(4 * width * height), most = 2 ** depth - 1, half = most >> 1;
    const row = depth < 8 ? Math.ceil(width * depth / 8) : 0;
    const sample = (i, channel) => {
        if (depth >= 8) return data[i * channels + channel];
        const x = i % width, byte = data[Math.floor(i / width) * row + (x * depth >> 3)];
        return byte >> 8 - depth - (x * depth & 7) & most;
    };
    const colours = channels < 3 ? 1 : 3, hasAlpha = channels % 2 === 0;
    const clear = [...transparency ?? []], isClear = i => clear.length && clear.every((value, c) => sample(i, c) === value);
    const to8 = depth === 8 ? value => value : value => Math.floor((value * 255 + half) / most);
    for (let i = 0; i < width * height; ++i) {
        for (let c = 0; c < 3; ++c) pixels[4 * i + c] = to8(sample(i, colours === 1 ? 0 : c));
        pixels[4 * i + 3] = hasAlpha ? to8(sample(i, channels - 1)) : isClear(i) ? 0 : 255;
    }
    return pixels;
}

export function toPng({width, height, pixels}) {
    return encode({width, height, channels: 4, depth: 8, data: new Uint8Array(straighten(pixels.slice()).buffer)});
}

// Halved by area average while more than twice the size, then bicubic, on premultiplied pixels, or edges would darken.
export function scaled(picture, width, height) {
    let from = {...picture, pixels: Float32Array.from(picture.pixels)};
    while (from.width >= 2 * width || from.height >= 2 * height) {
        const [w, h] = [[from.width, width], [from.height, height]].map(([side, goal]) => side >= 2 * goal ? side >> 1 : side);
        from = turned(resampled(turned(resampled(from, w, w < from.width ? mean : cubic)), h, h < from.height ? mean : cubic));
    }
    from = turned(resampled(turned(resampled(from, width, cubic)), height, cubic));
    const pixels = Uint8ClampedArray.from(from.pixels);
    for (let i = 0; i < pixels.length; ++i) pixels[i] = Math.min(pixels[i], pixels[i | 3]);
    return {width, height, pixels};
}

const mean = () => [0, 0.5, 0.5, 0];
function cubic(t) {
    const near = d => (1.5 * d - 2.5) * d * d + 1, far = d => ((-0.5 * d + 2.5) * d - 4) * d + 2;
    return [far(1 + t), near(t), near(1 - t), far(2 - t)];
}

// Along rows: four neighbours each, weighted by where the new pixel's centre lies between the middle two.
function resampled({width, height, pixels}, newWidth, weigh) {
    if (newWidth === width) return {width, height, pixels};
    const result = new Float32Array(4 * newWidth * height);
    for (let x = 0; x < newWidth; ++x) {
        const centre = (x + 0.5) * width / newWidth - 0.5, first = Math.floor(centre), weights = weigh(centre - first);
        const columns = weights.map((_, i) => Math.max(0, Math.min(first - 1 + i, width - 1)));
        for (let y = 0; y < height; ++y) {
            for (let c = 0; c < 4; ++c) {
                let sum = 0;
                for (let i = 0; i < 4; ++i) sum += weights[i] * pixels[4 * (y * width + columns[i]) + c];
                result[4 * (y * newWidth + x) + c] = sum;
            }
        }
    }
    return {width: newWidth, height, pixels: result};
}

function turned({width, height, pixels}) {
    const result = new Float32Array(pixels.length);
    for (let y = 0; y < height; ++y) {
        for (let x = 0; x < width; ++x) {
            for (let c = 0; c < 4; ++c) result[4 * (x * height + y) + c] = pixels[4 * (y * width + x) + c];
        }
    }
    return {width: height, height: width, pixels: result};
}
