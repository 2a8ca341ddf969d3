// Work that takes long or may fail hard is done in workers, made of this very script: what they do, and how the page asks.
import {load} from '../wasm/fennic.mjs';
import {fromPng, scaled, toPng} from './pictures.mjs';
import {effort, run} from './stack.mjs';

const tasks = {
    decode: ({bytes}) => fromPng(bytes),
    encode: ({picture}) => ({bytes: toPng(picture)}),
    scale: ({picture, width, height}) => scaled(picture, width, height),
};

// In a worker: the pictures stay from one run to the next.
export function serve() {
    let base, layer;
    onmessage = async ({data}) => {
        try {
            if (data.task !== 'run') return postMessage({done: tasks[data.task](data)});
            ({base = base, layer = layer} = data);
            await load(data.module);
            const done = run(base, layer, data.steps, step => postMessage({step}));
            return postMessage({done}, [done.pixels.buffer]);
        } catch (error) {
            return postMessage({failure: error.message});
        }
    };
}

let address;
const started = () => new Worker(address ??= URL.createObjectURL(new Blob([document.getElementById('script').textContent])));
const crashed = 'there is not enough memory for it, or the browser stopped the work';

// A task of its own worker, whose memory goes with it.
export function inWorker(task, given) {
    const worker = started();
    return new Promise((resolve, reject) => {
        worker.onmessage = ({data}) => data.done ? resolve(data.done) : reject(new Error(data.failure));
        worker.onerror = event => reject(new Error(event.message || crashed));
        worker.postMessage({task, ...given});
    }).finally(() => worker.terminate());
}

const atOnce = 4e6;
const patience = 250;

// Runs stacks: a small one at once, any other in a worker. Only the latest matters: one that waits is replaced, one that has
// been under way for long is stopped.
export class Runner {
    #module;
    #worker;
    #sent = {};
    #running;
    #waiting;

    constructor(module, {onStep, onDone, onFailure}) {
        this.#module = module;
        Object.assign(this, {onStep, onDone, onFailure});
    }

    start(job) {
        if (effort(job.base, job.steps) <= atOnce) {
            this.stop();
            try {
                this.onDone(run(job.base, job.layer, job.steps), job);
            } catch (error) {
                this.onFailure(error.message, job);
            }
            return;
        }
        if (this.#running && performance.now() - this.#running.began > patience) this.stop();
        this.#waiting = job;
        if (!this.#running) this.#next();
    }

    stop() {
        if (this.#running) this.#end();
        this.#waiting = null;
    }

    #end() {
        this.#worker.terminate();
        this.#worker = this.#running = null;
        this.#sent = {};
    }

    #next() {
        const job = this.#waiting;
        this.#waiting = null;
        if (!job) return;
        if (!this.#worker) {
            this.#worker = started();
            this.#worker.onmessage = ({data}) => this.#hear(data);
            this.#worker.onerror = event => this.#hear({failure: event.message || crashed});
        }
        this.#running = {job, began: performance.now()};
        const unsent = ['base', 'layer'].filter(key => job[key] !== this.#sent[key]);
        const pictures = Object.fromEntries(unsent.map(key => [key, job[key]]));
        this.#sent = {base: job.base, layer: job.layer};
        this.onStep(0, job);
        this.#worker.postMessage({task: 'run', module: this.#module, steps: job.steps, ...pictures});
    }

    #hear({step, done, failure}) {
        if (!this.#running) return;
        const {job} = this.#running;
        if (step !== undefined) {
            this.onStep(step, job);
            return;
        }
        if (done) this.#running = null;
        else this.#end();
        if (done && !this.#waiting) this.onDone(done, job);
        if (failure) this.onFailure(failure, job);
        this.#next();
    }
}
