// What the page shows, and the part of its address behind #, which says the same:
//   base=icon-map&layer=layer-paper&do=vignette:start=0.1:centre=0.5,0.4&do=!sepia
// The stack's operations in order, one that is switched off behind an exclamation mark. Values are texts as the command line
// takes them, and stand only where they are not the usual ones. A picture of somebody's own has no name here.

const encoded = text => encodeURIComponent(text).replace(/%2C/g, ',');

export function toAddress({base, layer, stack}) {
    const named = Object.entries({base, layer}).filter(([, name]) => name);
    const pictures = named.map(([key, name]) => `${key}=${encoded(name)}`);
    const steps = stack.map(({operation, on, values}) => {
        const given = Object.entries(values).map(([name, text]) => `:${encoded(name)}=${encoded(text)}`);
        return `do=${on ? '' : '!'}${encoded(operation.name)}${given.join('')}`;
    });
    return [...pictures, ...steps].join('&');
}

// What cannot be taken from an address is left out and told in words.
export function fromAddress(address, {operations, samples}) {
    const state = {base: null, layer: null, stack: []}, refused = [];
    for (const part of address.replace(/^#/, '').split('&').filter(Boolean)) {
        const [, key, value] = part.match(/^(.*?)=(.*)$/) ?? [];
        if (key === 'do') {
            const step = stepOf(value, operations, refused);
            if (step) state.stack.push(step);
        } else if ((key === 'base' || key === 'layer') && samples.some(({name}) => name === decoded(value))) {
            state[key] = decoded(value);
        } else {
            refused.push(`“${decoded(part)}”`);
        }
    }
    return {...state, refused};
}

function stepOf(text, operations, refused) {
    const [head, ...given] = text.split(':'), on = !head.startsWith('!');
    const name = decoded(on ? head : head.slice(1)), operation = operations.find(each => each.name === name);
    if (!operation) {
        refused.push(`the operation “${name}”`);
        return null;
    }
    const values = {};
    for (const pair of given) {
        const [key, value = ''] = pair.split('=').map(decoded);
        const parameter = operation.parameters.find(each => each.name === key), accepted = parameter && taken(parameter, value);
        if (accepted === undefined || accepted === null) refused.push(`${key} ${value} of ${name}`);
        else if (accepted !== parameter.initial) values[key] = accepted;
    }
    return {operation, on, values};
}

function decoded(text) {
    try {
        return decodeURIComponent(text);
    } catch {
        return text;
    }
}

export const isArray = ({type}) => type.endsWith(']');
export const isWhole = ({type}) => type.startsWith('int');

// The text that the command line takes for what was typed, every number within the parameter's bounds; null where it is none.
export function taken(parameter, text) {
    if (parameter.type === 'boolean') return text === 'true' || text === 'false' ? text : null;
    if (text === parameter.initial) return text;
    const elements = isArray(parameter) ? text.split(',') : [text];
    if (isArray(parameter) && elements.length !== parameter.initial.split(',').length) return null;
    const numbers = elements.map(element => within(parameter, element));
    return numbers.includes(null) ? null : numbers.join(',');
}

function within(parameter, text) {
    let number = text.trim() === '' ? NaN : Number(text);
    if (!Number.isFinite(number)) return null;
    if (parameter.least !== null) number = Math.max(number, Number(parameter.least));
    if (parameter.most !== null) number = Math.min(number, Number(parameter.most));
    if (isWhole(parameter)) number = Math.max(-(2 ** 31), Math.min(Math.round(number), 2 ** 31 - 1));
    if (parameter.unit === '0xRRGGBB') return `0x${number.toString(16).padStart(6, '0')}`;
    // A float has no more digits, and a text of more may round twice on its way to one.
    return String(Number(number.toPrecision(isWhole(parameter) ? 10 : 7)));
}

// The values for the module, which knows the usual ones itself.
export function valuesOf({operation, values}) {
    const given = Object.entries(values).map(([name, text]) => {
        const parameter = operation.parameters.find(each => each.name === name);
        const value = parameter.type === 'boolean' ? text === 'true' :
                      isArray(parameter)           ? text.split(',').map(Number) : Number(text);
        return [name, value];
    });
    return {...operation.fixed, ...Object.fromEntries(given)};
}

// The number that a usual value is for a picture: width*5/12.
export function numberFor(text, size) {
    const [, side, factors] = text.match(/^(width|height)(.*)$/) ?? [];
    if (!side) return Number(text);
    let number = size[side];
    for (const [, sign, factor] of factors.matchAll(/([*/])(\d+)/g)) number = sign === '*' ? number * factor : number / factor;
    return number;
}

// Whether all words begin one of those by which something is found.
export function finds(words, typed) {
    const wanted = typed.toLowerCase().split(/[^\p{L}\p{N}&]+/u).filter(Boolean);
    return wanted.every(word => ` ${words}`.includes(` ${word}`));
}
