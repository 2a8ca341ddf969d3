// The live page: pictures, a stack of operations over them, the result as it changes, and its calls.
import {gunzipSync} from 'fflate';
import {load, operations as listed, premultiply} from '../wasm/fennic.mjs';
import {calls} from './code.mjs';
import {controls} from './controls.mjs';
import {byId, element, tell} from './dom.mjs';
import {canRead, checkSize, fromPng, headOf, isPng, mostBytes, scaled} from './pictures.mjs';
import {finds, fromAddress, toAddress, valuesOf} from './state.mjs';
import {View} from './view.mjs';
import {inWorker, Runner, serve} from './worker.mjs';

if (typeof document === 'undefined') serve();
else start().catch(error => fail(`This page does not work here: ${error.message}.`));

const state = {base: null, layer: null, stack: []};
// What the state's names stand for, and what somebody brought: {name, title, picture, path, notes}.
const chosen = {base: null, layer: null};
const fitting = {};
let data, view, runner, result;

function bytesOf(base64) {
    const text = atob(base64), bytes = new Uint8Array(text.length);
    for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
    return bytes;
}

async function start() {
    data = JSON.parse(byId('data').textContent);
    const module = gunzipSync(bytesOf(data.module));
    await load(module);
    data.operations.forEach(operation => {
        operation.traits = listed.find(({name}) => name === operation.module).traits;
    });
    view = new View();
    runner = new Runner(module, {onStep: step => progress(step), onDone, onFailure});
    listPictures();
    listOperations();
    listen();
    await follow();
    addEventListener('hashchange', () => location.hash.slice(1) !== toAddress(state) && follow());
    document.documentElement.dataset.ready = 'yes';
}

function fail(text) {
    byId('failure').hidden = !text;
    byId('failure').textContent = text;
}

// Takes the state from the address.
async function follow() {
    const {refused, ...read} = fromAddress(location.hash, data);
    Object.assign(state, read);
    for (const [which, prefix] of [['base', 'icon-'], ['layer', 'layer-']]) {
        if (!state[which] && !chosen[which]?.isOwn) state[which] = data.samples.find(({name}) => name.startsWith(prefix)).name;
        if (state[which]) choose(which, sample(state[which]));
    }
    fail(refused.length ? `The address names what is not here: ${refused.join(', ')}.` : '');
    showStack();
    change();
}

function sample(name) {
    const found = data.samples.find(each => each.name === name);
    found.picture ??= fromPng(bytesOf(found.png));
    return found;
}

function choose(which, source) {
    chosen[which] = source;
    for (const radio of document.getElementsByName(which)) radio.checked = radio.value === source.name && !source.isOwn;
    const {name, picture, isOwn} = source;
    byId(`${which}-notes`).textContent = isOwn ? [`${name}, ${sizeOf(picture)}.`, ...picture.notes].join(' ') : '';
    if (which === 'base') view.show('before', source.picture);
}

const sizeOf = ({width, height}) => `${width} × ${height}`;

// Everything that follows from a change of the state.
function change() {
    const address = toAddress(state);
    if (location.hash.slice(1) !== address) history.replaceState(null, '', `#${address}`);
    showCode();
    make();
}

const steps = () => state.stack.filter(({on}) => on).map(step => ({
    module: step.operation.module, recipes: step.operation.recipes, values: valuesOf(step),
}));

function make() {
    const {picture} = chosen.base, needed = steps().some(({recipes}) => recipes.includes('layer'));
    if (needed && !layerFor(picture)) {
        runner.stop();
        return;
    }
    byId('layer-scaled').hidden = !needed || sizeOf(chosen.layer.picture) === sizeOf(picture);
    const layer = needed ? fitting.picture : null;
    runner.start({base: picture, layer, steps: steps(), order: state.stack.filter(({on}) => on)});
}

// The layer in the base's size; a large one is scaled in a worker, and everything is made when it is there.
function layerFor({width, height}) {
    const {picture} = chosen.layer;
    if (fitting.of === picture && fitting.width === width && fitting.height === height) return fitting.picture;
    Object.assign(fitting, {of: picture, width, height, picture: null});
    if (sizeOf(picture) === sizeOf({width, height})) fitting.picture = picture;
    else if (picture.width * picture.height + width * height < 2 ** 18) fitting.picture = scaled(picture, width, height);
    else {
        progress(0);
        inWorker('scale', {picture, width, height}).then(made => {
            if (fitting.of !== picture || fitting.width !== width || fitting.height !== height) return;
            fitting.picture = made;
            make();
        }, error => onFailure(error.message));
    }
    return fitting.picture;
}

function progress(step) {
    const count = steps().length, name = state.stack.filter(({on}) => on)[step]?.operation.name ?? '';
    Object.assign(byId('progress'), {hidden: false, max: Math.max(count, 1), value: step});
    byId('busy').textContent = `${name}, ${step + 1} of ${count}`;
    work();
}

// What is downloaded is what is shown as done.
function work() {
    document.documentElement.dataset.busy = 'yes';
    byId('download').disabled = true;
}

function rest() {
    byId('progress').hidden = true;
    byId('busy').textContent = '';
    delete document.documentElement.dataset.busy;
    byId('download').disabled = false;
}

function onDone(made, job) {
    rest();
    result = made;
    if (byId('failure').dataset.of === 'run') fail('');
    view.show('after', made);
    byId('time').textContent = made.milliseconds.length
        ? `${sizeOf(made)}, ${milliseconds(made.milliseconds.reduce((sum, each) => sum + each, 0))}` : sizeOf(made);
    byId('exceeds').hidden = !made.exceeds;
    for (const [i, step] of state.stack.entries()) {
        const at = job.order.indexOf(step);
        byId('stack').children[i].querySelector('.time').textContent = at < 0 ? 'off' : milliseconds(made.milliseconds[at]);
    }
}

const milliseconds = time => `${time < 10 ? time.toFixed(2) : time.toFixed(0)} ms`;

function onFailure(words) {
    rest();
    byId('failure').dataset.of = 'run';
    fail(`It cannot be made: ${words.replace(/^fennic: /, '')}.`);
}

// Pictures

function listPictures() {
    for (const [which, prefix] of [['base', 'icon-'], ['layer', 'layer-']]) {
        const radios = data.samples.filter(({name}) => which === 'layer' || name.startsWith(prefix));
        if (which === 'layer') radios.sort((a, b) => b.name.startsWith(prefix) - a.name.startsWith(prefix));
        byId(`${which}-samples`).append(...radios.map(({name, title, png}) => {
            const input = element('input', {type: 'radio', name: which, value: name, onchange: () => {
                state[which] = name;
                choose(which, sample(name));
                change();
            }});
            const url = URL.createObjectURL(new Blob([bytesOf(png)], {type: 'image/png'}));
            return element('label', {class: 'tile', title}, input, element('img', {src: url, alt: title}));
        }));
        const file = byId(`${which}-file`);
        file.addEventListener('change', () => file.files[0] && bring(which, file.files[0]));
    }
}

// Somebody's own picture, read in a worker; what cannot be read is told, and all stays as it is.
async function bring(which, file) {
    fail('');
    byId('busy').textContent = `reading ${file.name}`;
    work();
    try {
        const picture = await read(file);
        state[which] = null;
        choose(which, {name: file.name || 'pasted.png', path: file.name || 'pasted.png', picture, isOwn: true});
        showStack();
        change();
        tell(`${which === 'base' ? 'The picture' : 'The layer'} is ${file.name}, ${sizeOf(picture)}.`);
    } catch (error) {
        delete byId('failure').dataset.of;
        fail(`${file.name || 'The picture'} is not taken: ${error.message}.`);
    } finally {
        byId(`${which}-file`).value = '';
        if (byId('progress').hidden) rest();
    }
}

async function read(file) {
    if (file.size > mostBytes) throw new Error(`the file has more than ${mostBytes / 2 ** 20} MB`);
    const bytes = new Uint8Array(await file.arrayBuffer());
    if (!isPng(bytes)) {
        return readByBrowser(file, 'The browser read it, which may round translucent pixels and differ from the command line by a level.');
    }
    const head = headOf(bytes);
    checkSize(head.width, head.height);
    if (!canRead(head)) return readByBrowser(file, 'It is interlaced with few bits, so the browser read it.');
    return inWorker('decode', {bytes});
}

async function readByBrowser(file, note) {
    const unreadable = () => {
        throw new Error('it is no picture that this browser can read, or it is damaged');
    };
    const bitmap = await createImageBitmap(file, {premultiplyAlpha: 'none'}).catch(unreadable), {width, height} = bitmap;
    try {
        checkSize(width, height);
        const canvas = Object.assign(document.createElement('canvas'), {width, height});
        const context = canvas.getContext('2d', {willReadFrequently: true});
        context.drawImage(bitmap, 0, 0);
        return {width, height, pixels: premultiply(context.getImageData(0, 0, width, height).data), notes: [note]};
    } finally {
        bitmap.close();
    }
}

// The stack

function listOperations() {
    const families = new Map();
    for (const operation of data.operations) {
        families.set(operation.family, [...families.get(operation.family) ?? [], operation]);
    }
    byId('operations').append(...[...families].map(([family, members]) => element('section', {}, element('h3', {}, family),
        element('ul', {}, ...members.map(operation => element('li', {'data-words': operation.words},
            element('button', {type: 'button', title: operation.summary, onclick: () => add(operation)}, operation.name)))))));
}

function filter() {
    const typed = byId('search').value;
    let count = 0;
    for (const section of byId('operations').children) {
        const members = [...section.querySelectorAll('li')];
        for (const member of members) member.hidden = !finds(member.dataset.words, typed);
        const shown = members.filter(({hidden}) => !hidden).length;
        section.hidden = !shown;
        count += shown;
    }
    byId('found').textContent = typed.trim() ? count ? `${count} of ${data.operations.length} operations`
                                                     : `Nothing here is known as “${typed.trim()}”.` : '';
}

function add(operation) {
    state.stack.push({operation, on: true, values: {}});
    showStack();
    change();
    tell(`${operation.name} added, operation ${state.stack.length} of the stack.`);
}

function showStack() {
    byId('stack').replaceChildren(...state.stack.map(item));
    byId('empty').hidden = state.stack.length > 0;
}

function item(step, i) {
    const {name, summary} = step.operation, last = state.stack.length - 1;
    const on = element('input', {type: 'checkbox', checked: step.on, onchange: () => {
        step.on = on.checked;
        change();
    }});
    const button = (text, title, disabled, onclick) =>
        element('button', {type: 'button', 'aria-label': `${title} ${name}`, title, disabled, onclick}, text);
    const move = by => () => {
        state.stack.splice(i, 1);
        state.stack.splice(i + by, 0, step);
        showStack();
        change();
        focusOn(i + by, by < 0 ? 'Move up' : 'Move down');
        tell(`${name} is operation ${i + by + 1} of ${state.stack.length}.`);
    };
    const remove = () => {
        state.stack.splice(i, 1);
        showStack();
        change();
        focusOn(Math.min(i, state.stack.length - 1), 'Remove');
        tell(`${name} removed.`);
    };
    const reset = () => {
        step.values = {};
        showStack();
        change();
        focusOn(i, 'Usual values of');
    };
    return element('li', {class: 'step'},
        element('div', {class: 'head'}, element('label', {}, on, element('b', {}, name)), element('span', {class: 'time'}),
            element('span', {class: 'buttons'},
                button('↑', 'Move up', i === 0, move(-1)), button('↓', 'Move down', i === last, move(1)),
                step.operation.parameters.length ? button('↺', 'Usual values of', false, reset) : '',
                button('×', 'Remove', false, remove))),
        element('p', {class: 'summary'}, `${summary}.`),
        ...controls(step, chosen.base.picture, change));
}

// After a move the focus stays with what was moved, or with its neighbour.
function focusOn(i, title) {
    const buttons = [...byId('stack').children[i]?.querySelectorAll('button:not([disabled])') ?? []];
    (buttons.find(button => button.title === title) ?? buttons.at(-1) ?? byId('search')).focus();
}

// Code, address, download

function showCode() {
    const shown = calls({stack: state.stack, base: chosen.base.path, layer: chosen.layer.path});
    for (const [language, text] of Object.entries(shown)) {
        byId(`code-${language}`).textContent = text || 'Add an operation first.';
    }
}

const shownCode = () => document.querySelector('.calls pre:not([hidden]) code');

async function copy(button, text, node) {
    const label = button.textContent;
    try {
        await navigator.clipboard.writeText(text);
        button.textContent = 'Copied';
    } catch {
        // Without the right to write to the clipboard, the text is at least selected.
        if (node) getSelection().selectAllChildren(node);
        button.textContent = node ? 'Selected' : 'In the address bar';
    }
    tell(button.textContent);
    setTimeout(() => {
        button.textContent = label;
    }, 1500);
}

async function download() {
    if (!result) return;
    const {width, height, pixels} = result;
    try {
        const {bytes} = await inWorker('encode', {picture: {width, height, pixels}});
        const href = URL.createObjectURL(new Blob([bytes], {type: 'image/png'}));
        element('a', {href, download: `${chosen.base.name.replace(/\.\w+$/, '')}-fennic.png`}).click();
        setTimeout(() => URL.revokeObjectURL(href), 60000);
        tell('The picture is downloaded.');
    } catch (error) {
        onFailure(error.message);
    }
}

function listen() {
    const root = document.documentElement;
    for (const choice of document.getElementsByName('theme')) {
        choice.checked = choice.value === (root.dataset.theme || 'auto');
        choice.addEventListener('change', () => {
            root.dataset.theme = choice.value;
            try {
                localStorage.setItem('fennic-theme', choice.value);
            } catch {
                // Storage may be forbidden; the choice then holds for this visit.
            }
        });
    }
    for (const choice of document.getElementsByName('language')) {
        const show = () => {
            for (const code of document.querySelectorAll('.calls pre code')) {
                code.parentElement.hidden = code.id !== `code-${choice.value}`;
            }
        };
        choice.addEventListener('change', show);
        if (choice.checked) show();
    }
    byId('search').addEventListener('input', filter);
    filter();
    byId('copy').addEventListener('click', () => copy(byId('copy'), shownCode().textContent, shownCode()));
    byId('share').addEventListener('click', () => copy(byId('share'), location.href));
    byId('download').addEventListener('click', download);
    byId('open').addEventListener('click', () => byId('base-file').click());
    byId('clear').addEventListener('click', () => {
        state.stack = [];
        showStack();
        change();
        tell('The stack is empty.');
    });
    addEventListener('dragover', event => {
        event.preventDefault();
        document.body.classList.add('dragging');
    });
    addEventListener('dragleave', event => event.relatedTarget || document.body.classList.remove('dragging'));
    addEventListener('drop', event => {
        event.preventDefault();
        document.body.classList.remove('dragging');
        take(event.dataTransfer.files, event.target);
    });
    addEventListener('paste', event => take(event.clipboardData.files, document.activeElement));
}

// A picture that is dropped or pasted beside the layers is a layer.
function take(files, target) {
    if (files.length) bring(target instanceof Element && target.closest('#layer-picture') ? 'layer' : 'base', files[0]);
}
