// The picture before and after, on both sides of a divider; magnified, and read pixel by pixel.
import {straighten} from '../wasm/fennic.mjs';
import {byId} from './dom.mjs';

const mostZoom = 48;
const cursorKeys = {ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1]};

export class View {
    #stage = byId('stage');
    #sheet = byId('sheet');
    #divider = byId('divider');
    #cursor = byId('cursor');
    #pictures = {before: null, after: null};
    #zoom = null;
    #at = null;
    #share = 50;

    constructor() {
        byId('zoom-in').addEventListener('click', () => this.#zoomBy(1));
        byId('zoom-out').addEventListener('click', () => this.#zoomBy(-1));
        byId('zoom-fit').addEventListener('click', () => this.#zoomTo(null));
        byId('zoom-one').addEventListener('click', () => this.#zoomTo(1));
        new ResizeObserver(() => this.#lay()).observe(this.#stage);
        this.#stage.addEventListener('wheel', event => {
            if (!event.ctrlKey) return;
            event.preventDefault();
            this.#zoomBy(event.deltaY < 0 ? 1 : -1, event);
        }, {passive: false});
        this.#stage.addEventListener('pointermove', event => this.#point(event));
        this.#stage.addEventListener('pointerdown', event => this.#point(event));
        this.#stage.addEventListener('keydown', event => this.#key(event));
        this.#listenToDivider();
    }

    show(which, picture) {
        const former = this.#pictures[which], canvas = byId(which);
        this.#pictures[which] = picture;
        const {width, height, pixels} = picture;
        if (canvas.width !== width || canvas.height !== height) Object.assign(canvas, {width, height});
        canvas.getContext('2d').putImageData(new ImageData(straighten(pixels.slice()), width, height), 0, 0);
        if (which === 'before' && (former?.width !== width || former?.height !== height)) {
            this.#at = null;
            this.#zoomTo(null);
        }
        this.#read();
    }

    get #fitting() {
        const {width, height} = this.#pictures.before, {clientWidth, clientHeight} = this.#stage;
        const zoom = Math.min((clientWidth - 24) / width, (clientHeight - 24) / height);
        // A whole number of the screen's pixels for each of the picture's.
        const whole = Math.floor(zoom * devicePixelRatio) / devicePixelRatio;
        return Math.min(mostZoom, zoom > 1 ? whole : Math.max(zoom, 1 / 64));
    }

    #lay() {
        if (!this.#pictures.before) return;
        const {width, height} = this.#pictures.before, zoom = this.#zoom ?? this.#fitting;
        this.#sheet.style.width = `${width * zoom}px`;
        this.#sheet.style.height = `${height * zoom}px`;
        this.#sheet.style.setProperty('--zoom', zoom);
        this.#sheet.classList.toggle('magnified', zoom >= 1);
        byId('zoom').textContent = `${Math.round(zoom * 100)} %`;
        this.#mark();
    }

    #zoomBy(steps, point) {
        const zoom = this.#zoom ?? this.#fitting, next = zoom * 2 ** steps;
        this.#zoomTo(Math.max(1 / 64, Math.min(next >= 1 ? Math.round(next) : next, mostZoom)), point);
    }

    // What is under the pointer, else the marked pixel, else the middle, stays where it is.
    #zoomTo(zoom, point) {
        const stage = this.#stage, before = this.#sheet.getBoundingClientRect(), outer = stage.getBoundingClientRect();
        const old = before.width / (this.#pictures.before?.width || 1);
        const middle = this.#at ?
            {clientX: before.left + (this.#at.x + 0.5) * old, clientY: before.top + (this.#at.y + 0.5) * old} :
            {clientX: outer.left + outer.width / 2, clientY: outer.top + outer.height / 2};
        const {clientX, clientY} = point ?? middle;
        const [x, y] = [(clientX - before.left) / (before.width || 1), (clientY - before.top) / (before.height || 1)];
        this.#zoom = zoom;
        this.#lay();
        const after = this.#sheet.getBoundingClientRect();
        stage.scrollBy(after.left + x * after.width - clientX, after.top + y * after.height - clientY);
    }

    #point(event) {
        if (event.target === this.#divider || !this.#pictures.before) return;
        const {width, height} = this.#pictures.before, box = this.#sheet.getBoundingClientRect();
        const x = Math.floor((event.clientX - box.left) / box.width * width);
        const y = Math.floor((event.clientY - box.top) / box.height * height);
        if (x < 0 || y < 0 || x >= width || y >= height) return;
        this.#at = {x, y};
        this.#mark();
        this.#read();
    }

    #key(event) {
        if (event.target !== this.#stage || event.ctrlKey || event.metaKey || event.altKey) return;
        const move = cursorKeys[event.key];
        if (event.key === '+' || event.key === '-') this.#zoomBy(event.key === '+' ? 1 : -1);
        else if (event.key === '0') this.#zoomTo(null);
        else if (move) this.#step(move, event.shiftKey ? 10 : 1);
        else return;
        event.preventDefault();
    }

    #step([right, down], by) {
        const {width, height} = this.#pictures.before, at = this.#at ?? {x: width >> 1, y: height >> 1};
        const clamp = (value, most) => Math.max(0, Math.min(value, most));
        this.#at = {x: clamp(at.x + right * by, width - 1), y: clamp(at.y + down * by, height - 1)};
        this.#mark();
        this.#cursor.scrollIntoView({block: 'nearest', inline: 'nearest'});
        const {x, y} = this.#at, [before, after] = ['before', 'after'].map(which => this.#values(which)?.stored.join(' '));
        byId('heard').textContent = `${x}, ${y}: before ${before}; after ${after}`;
        this.#read();
    }

    #mark() {
        this.#cursor.hidden = !this.#at;
        if (!this.#at) return;
        this.#cursor.style.setProperty('--x', this.#at.x);
        this.#cursor.style.setProperty('--y', this.#at.y);
    }

    #values(which) {
        const picture = this.#pictures[which];
        if (!picture || !this.#at) return null;
        const i = 4 * (this.#at.y * picture.width + this.#at.x), stored = picture.pixels.slice(i, i + 4);
        return {stored: [...stored], straight: [...straighten(stored.slice())]};
    }

    #read() {
        byId('place').textContent = this.#at ? `${this.#at.x}, ${this.#at.y}` : 'Point at a pixel';
        for (const which of ['before', 'after']) {
            const values = this.#values(which), [r, g, b, a] = values?.straight ?? [0, 0, 0, 0];
            byId(`${which}-stored`).textContent = values?.stored.join(' ') ?? '';
            byId(`${which}-straight`).textContent = values?.straight.join(' ') ?? '';
            byId(`${which}-colour`).style.setProperty('--color', `rgb(${r} ${g} ${b} / ${a / 255})`);
        }
    }

    #listenToDivider() {
        const divider = this.#divider;
        const keys = {ArrowLeft: -1, ArrowDown: -1, ArrowRight: 1, ArrowUp: 1, PageDown: -10, PageUp: 10};
        const drag = event => {
            const box = this.#sheet.getBoundingClientRect();
            this.#divide((event.clientX - box.left) / box.width * 100);
        };
        divider.addEventListener('pointerdown', event => {
            divider.setPointerCapture(event.pointerId);
            divider.focus({preventScroll: true});
            event.preventDefault();
        });
        divider.addEventListener('pointermove', event => {
            if (divider.hasPointerCapture(event.pointerId)) drag(event);
        });
        divider.addEventListener('keydown', event => {
            const share = event.key === 'Home' ? 0 : event.key === 'End' ? 100 : this.#share + keys[event.key];
            if (Number.isNaN(share)) return;
            event.preventDefault();
            this.#divide(share);
        });
        this.#divide(this.#share);
    }

    #divide(share) {
        this.#share = Math.round(Math.max(0, Math.min(share, 100)) * 10) / 10;
        this.#sheet.style.setProperty('--divider', `${this.#share}%`);
        this.#divider.setAttribute('aria-valuenow', Math.round(this.#share));
        this.#divider.setAttribute('aria-valuetext', `${Math.round(this.#share)} % before`);
    }
}
