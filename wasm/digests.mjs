// The rows of the tests' tables, and the digests in them, for the tests of the module.
import {readFileSync} from 'node:fs';

import {operations} from './fennic.mjs';

export const linesOf = name => readFileSync(new URL(`../tests/${name}`, import.meta.url), 'utf8')
                                   .split('\n')
                                   .map(line => line.replace(/#.*/, '').trimEnd())
                                   .filter(line => line.includes(' : '));

// `vignette (0.5,0.5) [0,9] 0.2 0.7`: numbers and arrays come each in the order of the parameters.
export function written(text) {
    const [name, ...words] = text.split(' '), operation = operations.find(each => each.name === name);
    const isArray = word => /^[[(n]/.test(word), listed = word => word.slice(1, -1).split(',').map(Number);
    const arrays = words.filter(isArray).map(word => word === 'null' ? null : listed(word));
    const numbers = words.filter(word => !isArray(word)).map(Number);
    return {operation, values: operation.parameters.map(({type}) => type.endsWith(']') ? arrays.shift() : numbers.shift())};
}

// FNV-1a in four lanes over words. A lane is two halves of 64 bits, and the prime 2^40 + 0x1b3.
export class Digest {
    lanes = [[0x84222325 | 0, 0xcbf29ce4|0], [1, 0], [2, 0], [3, 0]];

    add(low, high = 0) {
        this.#add(this.lanes[0], [low], 0, 1, high);
    }
    addWords(words) {
        this.lanes.forEach((lane, i) => this.#add(lane, words, i, 4, 0));
    }
    value() {
        const all = new Digest();
        all.lanes[0] = [...this.lanes[0]];
        this.lanes.slice(1).forEach(([low, high]) => all.add(low, high));
        return all.lanes[0];
    }
    text() {
        return this.value().reverse().map(half => (half >>> 0).toString(16).padStart(8, '0')).join('');
    }

    #add(lane, words, first, step, wordsHigh) {
        let [low, high] = lane;
        for (let i = first; i < words.length; i += step) {
            low ^= words[i];
            const bottom = (low & 0xffff) * 0x1b3, top = (low >>> 16) * 0x1b3 + (bottom >>> 16);
            high = Math.imul(high ^ wordsHigh, 0x1b3) + (top >>> 16) + (low << 8) | 0;
            low = top << 16 | bottom & 0xffff;
        }
        lane[0] = low;
        lane[1] = high;
    }
}
