// The live page in a browser: what it downloads, and what its calls make, is what the command line writes, pixel for pixel; it
// refuses what it cannot take and goes on. And, without one, the address of its state.
//
// usage: node test.mjs ROOT CHROMIUM     where build/gallery and build/release have been made; tools/setup.sh does it
import assert from 'node:assert/strict';
import {execFileSync} from 'node:child_process';
import {mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {join} from 'node:path';
import {after, before, test} from 'node:test';
import {pathToFileURL} from 'node:url';
import {decode, encode} from 'fast-png';
import {zlibSync} from 'fflate';
import puppeteer from 'puppeteer-core';
import {fromAddress, toAddress} from './state.mjs';

const [root, chromium] = process.argv.slice(2), scratch = mkdtempSync(join(tmpdir(), 'fennic-page-'));
const page = readFileSync(join(root, 'build/gallery/try.html'), 'utf8');
const data = JSON.parse(page.match(/<script type="application\/json" id="data">(.*?)<\/script>/s)[1]);

test('an address gives the state that it came from, and says what it cannot take', () => {
    for (const [address, same, refused = 0] of [
        ['', ''],
        ['#base=icon-map&layer=layer-paper&do=multiply', 'base=icon-map&layer=layer-paper&do=multiply'],
        ['#do=vignette:start=0.1:centre=0.5,0.4&do=!sepia', 'do=vignette:start=0.1:centre=0.5,0.4&do=!sepia'],
        ['#do=sepia:intensity=0.6', 'do=sepia'],
        ['#do=sepia:intensity=7&do=kuwahara:radius=2.4', 'do=sepia:intensity=1&do=kuwahara:radius=2'],
        ['#do=swirl:centreX=width/2:angle=-0.25', 'do=swirl:angle=-0.25'],
        ['#do=crosshatch:color=128:clearBackground=true', 'do=crosshatch:color=0x000080:clearBackground=true'],
        ['#do=exposure:exposure=0.30000000000000004', 'do=exposure:exposure=0.3'],
        ['#base=nobody&do=%E0%A4%A&do=get-hsv&do=sepia:x=1:intensity=a:intensity&do', 'do=sepia', 7],
        ['#do=vignette:centre=1&do=vignette:centre=1,&do=alpha:factor=Infinity', 'do=vignette&do=vignette&do=alpha', 3],
    ]) {
        const {refused: words, ...state} = fromAddress(address, data);
        assert.equal(toAddress(state), same);
        assert.equal(words.length, refused, `${address}: ${words}`);
        assert.deepEqual(fromAddress(same, data), {...state, refused: []});
    }
});

// Noise of every alpha, as other programs write it.
function foreign(width, height, channels, depth, more = {}) {
    const values = new (depth === 16 ? Uint16Array : Uint8Array)(width * height * channels);
    let seed = 1;
    for (let i = 0; i < values.length; ++i) {
        seed = Math.imul(seed, 1664525) + 1013904223 >>> 0;
        values[i] = seed >>> 32 - depth;
    }
    return encode({width, height, channels, depth, data: values}, more);
}

function chunk(name, bytes) {
    const out = Buffer.alloc(bytes.length + 12);
    out.writeUInt32BE(bytes.length);
    out.write(name, 4, 'latin1');
    Buffer.from(bytes).copy(out, 8);
    let sum = -1;
    for (const byte of out.subarray(4, -4)) {
        sum ^= byte;
        for (let bit = 0; bit < 8; ++bit) sum = sum & 1 ? sum >>> 1 ^ 0xedb88320 : sum >>> 1;
    }
    out.writeUInt32BE(~sum >>> 0, out.length - 4);
    return out;
}

function png(width, height, depth, type, pixels, ...chunks) {
    const head = Buffer.alloc(13);
    head.writeUInt32BE(width), head.writeUInt32BE(height, 4), head.writeUInt8(depth, 8), head.writeUInt8(type, 9);
    return Buffer.concat([Buffer.from('\x89PNG\r\n\x1a\n', 'latin1'), chunk('IHDR', head), ...chunks,
        chunk('IDAT', zlibSync(pixels)), chunk('IEND', [])]);
}

const whole = foreign(61, 47, 4, 8);
const files = {
    'foreign.png': whole,
    'deep and interlaced.png': foreign(33, 20, 4, 16, {interlace: 'Adam7'}),
    'palette.png': png(3, 2, 2, 3, [0, 0x1b, 0, 0xe4],
        chunk('PLTE', [255, 0, 9, 0, 128, 7, 3, 2, 1, 250, 251, 252]), chunk('tRNS', [128, 0, 7])),
    'grey.png': png(9, 2, 1, 0, [0, 0xa5, 0x80, 0, 0x3c, 0x00], chunk('tRNS', [0, 1])),
    'large.png': foreign(700, 500, 4, 8),
    'cut.png': whole.subarray(0, 5000),
    'flipped.png': whole.map((byte, i) => i === 3000 ? byte ^ 1 : byte),
    'huge.png': png(60000, 60000, 8, 6, [0]),
    'bomb.png': png(4, 4, 8, 6, new Uint8Array(2 ** 27)),
    'short.png': png(400, 400, 8, 6, new Uint8Array(100)),
    'text.png': Buffer.from('not a picture'),
};

let browser, tab;
const shown = [];

before(async () => {
    for (const [name, bytes] of Object.entries(files)) writeFileSync(join(scratch, name), bytes);
    const args = ['--no-sandbox', '--disable-gpu', '--disable-dev-shm-usage'];
    browser = await puppeteer.launch({executablePath: chromium, args});
    tab = await browser.newPage();
    tab.on('pageerror', error => assert.fail(error));
    tab.on('request', request => assert.match(request.url(), /^(file|blob|data):/));
    const client = await tab.createCDPSession();
    await client.send('Browser.setDownloadBehavior', {behavior: 'allow', downloadPath: scratch});
});

after(async () => {
    await browser?.close();
    rmSync(scratch, {recursive: true});
});

const text = id => tab.$eval(`#${id}`, element => element.textContent);
const settled = () => tab.waitForFunction(() => !document.documentElement.dataset.busy, {timeout: 20000});

async function open(address) {
    await tab.goto('about:blank');
    await tab.goto(`${pathToFileURL(join(root, 'build/gallery/try.html'))}#${address}`);
    await tab.waitForFunction(() => document.documentElement.dataset.ready, {timeout: 20000});
    await settled();
}

async function bring(which, name) {
    await (await tab.$(`#${which}-file`)).uploadFile(join(scratch, name));
    await tab.waitForFunction(() => document.documentElement.dataset.busy || document.getElementById('failure').textContent ||
        /\d × \d/.test(document.getElementById('base-notes').textContent + document.getElementById('layer-notes').textContent));
    await settled();
}

function pixels(bytes) {
    const {width, height, channels, depth, data: values} = decode(bytes);
    assert.deepEqual([channels, depth], [4, 8]);
    return {width, height, values: Buffer.from(values)};
}

async function downloaded() {
    const found = () => readdirSync(scratch).filter(name => name.endsWith('-fennic.png'));
    found().forEach(name => rmSync(join(scratch, name)));
    await tab.click('#download');
    for (let i = 0; i < 100 && !found().length; ++i) await new Promise(resolve => setTimeout(resolve, 50));
    return pixels(readFileSync(join(scratch, found()[0])));
}

// What the shown command writes, which runs where the pictures are.
async function commanded(folder) {
    const command = (await text('code-command')).replace(/\.\/fennic/g, `'${join(root, 'fennic')}'`);
    const out = join(scratch, 'out.png');
    const line = `set -o pipefail; ${command.replace(/ out\.png$/, ` '${out}'`)}`;
    execFileSync('bash', ['-c', line], {cwd: folder, stdio: 'pipe'});
    return pixels(readFileSync(out));
}

async function proven(folder, base, layer) {
    const result = await downloaded(), named = await text('code-command');
    assert.ok(result.values.equals((await commanded(folder)).values), named);
    shown.push({base: join(folder, base), layer: layer && join(folder, layer), result, named,
                java: await text('code-java'), native: await text('code-native')});
}

test('what is downloaded is what the shown command writes', async () => {
    for (const [base, layer, address] of [
        ['icon-map', 'layer-light', 'do=soft-light&do=vignette:start=0.1:centre=0.5,0.4:color=10,200&do=crosshatch:color=0x802010'],
        ['icon-camera', 'icon-weather', 'do=mode-12&do=!invert&do=sharpen:sharpness=2&do=linear-burn'],
        ['icon-bubble', 'layer-sunset', 'do=overlay-b&do=emboss:kernel=-2,-1,0.5,-1,1,1,0,1,2&do=relief&do=channel-through'],
        ['icon-music', 'layer-paper', 'do=swirl:angle=-1.25&do=kuwahara:radius=2&do=monochrome:color=10,20,255:intensity=1'],
        ['icon-photo', 'layer-paper', 'do=pick-channel:channel=3&do=polka-dot:size=9&do=hue'],
    ]) {
        await open(`base=${base}&layer=${layer}&${address}`);
        assert.equal(await text('failure'), '');
        await proven(root, `samples/${base}.png`, `samples/${layer}.png`);
    }
});

test('pictures of other programs, and ones that a worker computes, come to the same', async () => {
    for (const [name, address] of [
        ['foreign.png', 'do=exposure:exposure=-0.7&do=saturation'],
        ['deep and interlaced.png', 'do=haze:distance=-0.3'],
        ['palette.png', 'do=complement'],
        ['grey.png', 'do=sepia:intensity=0.25'],
        ['large.png', 'do=kuwahara:radius=5&do=pixelate:blockWidth=3'],
    ]) {
        await open(address);
        await bring('base', name);
        assert.equal(await text('failure'), '');
        await proven(scratch, name);
    }
    assert.doesNotMatch(await tab.evaluate(() => location.hash), /base=/);
});

test('what is shown as Java compiles and makes the same, by name and natively', () => {
    const languages = ['java', 'native'];
    const cases = shown.flatMap(({base, layer, ...code}, i) => languages.map(language => `
    static void ${language}${i}() throws Exception {
        Bitmap icon = read(${JSON.stringify(base)}), layer = ${layer ? `read(${JSON.stringify(layer)})` : 'null'};
        ${code[language]}
        try (var out = new java.io.FileOutputStream("${language}${i}.png")) { icon.compress(Bitmap.CompressFormat.PNG, 100, out); }
    }`));
    writeFileSync(join(scratch, 'Shown.java'), `
import android.graphics.Bitmap;
import android.graphics.BitmapFactory;
import com.velmora.display.fennic.*;
class Shown {
    static Bitmap read(String file) { return BitmapFactory.decodeFile(file).copy(Bitmap.Config.ARGB_8888, true); }
    static Bitmap shifted(Bitmap from, int x, int y) {
        int width = from.getWidth(), height = from.getHeight();
        Bitmap to = Bitmap.createBitmap(width, height, Bitmap.Config.ARGB_8888);
        var in = java.nio.IntBuffer.allocate(width * height);
        var out = java.nio.IntBuffer.allocate(width * height);
        from.copyPixelsToBuffer(in);
        for (int i = 0; i < width * height; ++i) {
            int column = Math.max(0, Math.min(i % width - x, width - 1)), row = Math.max(0, Math.min(i / width - y, height - 1));
            out.put(i, in.get(row * width + column));
        }
        to.copyPixelsFromBuffer(out);
        return to;
    }${cases.join('')}
    public static void main(String[] arguments) throws Exception {
        ${shown.flatMap((_, i) => languages.map(language => `${language}${i}();`)).join(' ')}
    }
}`);
    const release = join(root, 'build/release');
    execFileSync('java', ['-cp', join(release, 'fennic.jar'), `-Djava.library.path=${release}`, 'Shown.java'],
        {cwd: scratch, env: {...process.env, ANDROID_LOG_TAGS: '*:s'}, stdio: ['ignore', 'ignore', 'pipe']});
    shown.forEach(({result, named}, i) => languages.forEach(language => {
        const made = pixels(readFileSync(join(scratch, `${language}${i}.png`)));
        assert.ok(made.values.equals(result.values), `${language} of ${named}`);
    }));
});

test('what cannot be taken is refused in words, and the page goes on', async () => {
    await open('base=icon-map&do=invert');
    const kept = await downloaded();
    for (const [name, words] of [
        ['cut.png', /damaged/], ['flipped.png', /damaged/], ['bomb.png', /damaged/], ['short.png', /damaged/],
        ['huge.png', /60000 × 60000 pixels are too many/], ['text.png', /no picture/],
    ]) {
        await bring('base', name);
        assert.match(await text('failure'), words, name);
        assert.deepEqual(await downloaded(), kept, name);
    }
    await open('do=nothing&base=icon-map');
    assert.match(await text('failure'), /the operation “nothing”/);
});

test('the keyboard moves, filters, adds, sets and orders', async () => {
    await open('base=icon-map&do=sepia');
    await tab.focus('#search');
    await tab.keyboard.type('mosaic');
    assert.match(await text('found'), /^1 of \d\d operations/);
    await tab.keyboard.press('Tab'), await tab.keyboard.press('Tab'), await tab.keyboard.press('Enter');
    assert.match(await tab.evaluate(() => location.hash), /do=sepia&do=pixelate$/);
    await tab.focus('#stack [title="Move down"]');
    await tab.keyboard.press('Enter');
    await tab.focus('#stack [type=range]');
    await tab.keyboard.press('ArrowRight');
    assert.match(await tab.evaluate(() => location.hash), /do=pixelate:blockWidth=5&do=sepia$/);
    await tab.focus('#stage');
    await tab.keyboard.press('ArrowLeft');
    assert.match(await text('heard'), /^95, 96: before \d+ \d+ \d+ 255; after \d+ \d+ \d+ 255$/);
    await tab.focus('#divider');
    await tab.keyboard.press('End');
    assert.equal(await tab.$eval('#divider', divider => divider.getAttribute('aria-valuenow')), '100');
    // The latest move wins over a long one that is under way.
    await bring('base', 'large.png');
    await tab.evaluate(() => {
        location.hash = 'do=kuwahara:radius=20';
    });
    await tab.waitForFunction(() => document.documentElement.dataset.busy);
    await tab.evaluate(() => {
        location.hash = 'do=invert';
    });
    await settled();
    await proven(scratch, 'large.png');
});
