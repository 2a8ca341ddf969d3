// One control for each parameter of an operation, by its type, range and unit in the list.
import {element} from './dom.mjs';
import {isArray, isWhole, numberFor, taken} from './state.mjs';

let count = 0;

// change(text) is told of every value that the command line would take.
export function controls(step, size, change) {
    return step.operation.parameters.map(parameter => {
        const id = `parameter-${++count}`, current = () => step.values[parameter.name] ?? parameter.initial;
        const set = text => {
            const value = taken(parameter, text);
            if (value === null) return;
            if (value === parameter.initial) delete step.values[parameter.name];
            else step.values[parameter.name] = value;
            change();
        };
        const hint = element('small', {id: `${id}-hint`}, ...hintOf(parameter));
        const label = element('span', {class: 'label', id: `${id}-label`}, parameter.name);
        const named = {'aria-labelledby': `${id}-label`, 'aria-describedby': `${id}-hint`};
        return element('div', {class: 'parameter-row'}, label, control(parameter, current, set, named, size), hint);
    });
}

function hintOf({meaning, least, most, unit, initial}) {
    const range = least === null && most === null ? '' : most === null ? `${least} or more` :
                  least === null ? `up to ${most}` : `${least} to ${most}`;
    const about = [range, unit === 'choice' ? '' : unit, `usually ${initial}`].filter(Boolean).join(' · ');
    return [`${meaning}. `, element('span', {}, about)];
}

function control(parameter, current, set, named, size) {
    if (parameter.type === 'boolean') {
        const box = element('input', {type: 'checkbox', ...named, onchange: () => set(String(box.checked))});
        box.checked = current() === 'true';
        return box;
    }
    if (parameter.unit === 'choice') {
        const choices = [...parameter.meaning.matchAll(/(-?\d+) ([^,]+)/g)];
        const select = element('select', {...named, onchange: () => set(select.value)},
            ...choices.map(([, value, text]) => element('option', {value, selected: value === current()}, text)));
        return select;
    }
    if (parameter.unit === '0xRRGGBB' || parameter.unit === 'red,green,blue') return colour(parameter, current, set, named);
    if (isArray(parameter)) return elements(parameter, current, set, named, size);
    return number(parameter, numberFor(current(), size), value => set(value), named, size);
}

const hex = numbers => `#${numbers.map(each => Math.round(each).toString(16).padStart(2, '0')).join('')}`;

function colour(parameter, current, set, named) {
    const isArrayOfThree = isArray(parameter), value = Number(current());
    const shown = hex(isArrayOfThree ? current().split(',').map(Number) : [value >> 16, value >> 8 & 255, value & 255]);
    const input = element('input', {type: 'color', ...named, value: shown, oninput: () => {
        text.textContent = input.value;
        const parts = [1, 3, 5].map(at => parseInt(input.value.slice(at, at + 2), 16));
        set(isArrayOfThree ? parts.join(',') : input.value.replace('#', '0x'));
    }});
    const text = element('output', {}, shown);
    return element('span', {class: 'pair'}, input, text);
}

// The names of the elements stand in the unit, where there are some: "x,y as shares of the sides".
function elements(parameter, current, set, named, size) {
    const numbers = current().split(',').map(Number), names = parameter.unit.split(' ')[0].split(',');
    const change = i => text => {
        if (text.trim() === '' || !Number.isFinite(Number(text))) return;
        numbers[i] = Number(text);
        set(numbers.join(','));
    };
    if (names.length !== numbers.length) {
        const inputs = numbers.map((value, i) => {
            const label = `${parameter.name}, weight ${i + 1}`;
            const input = element('input', {type: 'number', step: 'any', value, 'aria-label': label,
                                            min: parameter.least, max: parameter.most, oninput: () => change(i)(input.value)});
            return input;
        });
        return element('span', {class: 'grid', role: 'group', ...named}, ...inputs);
    }
    const rows = numbers.map((value, i) => element('span', {class: 'row'}, element('span', {'aria-hidden': 'true'}, names[i]),
        number(parameter, value, change(i), {'aria-label': `${parameter.name} ${names[i]}`}, size)));
    return element('span', {class: 'rows', role: 'group', ...named}, ...rows);
}

// A slider over what is worth looking at, and a field for any number of the range.
function number(parameter, value, set, named, size) {
    const [low, high] = span(parameter, value, size), isInt = isWhole(parameter);
    const step = isInt ? 1 : 10 ** Math.floor(Math.log10((high - low) / 100));
    const range = element('input', {type: 'range', min: low, max: high, step, ...named, oninput: () => {
        field.value = range.value;
        set(range.value);
    }});
    const field = element('input', {
        type: 'number', min: parameter.least, max: parameter.most, step: isInt ? 1 : 'any', ...named,
        oninput: () => {
            range.value = field.value;
            set(field.value);
        },
        onchange: () => {
            const accepted = taken({...parameter, type: isInt ? 'int' : 'float'}, field.value);
            if (accepted !== null) field.value = accepted;
        },
    });
    range.value = value;
    field.value = Number(Number(value).toPrecision(7));
    return element('span', {class: 'pair'}, range, field);
}

// The range of the list, unless the values worth looking at are a small part of it: then three times these.
function span({least, most, low, high, initial}, value, size) {
    const bounds = [least ?? -Infinity, most ?? Infinity].map(Number), usual = numberFor(initial.split(',')[0], size);
    let [from, to] = bounds;
    if (low !== null) {
        const [a, b] = [low, high].map(Number), [least3, most3] = [Math.min(a, b), Math.max(a, b)];
        if (to - from > 6 * (most3 - least3)) {
            [from, to] = [Math.max(from, usual - 3 * (usual - least3)), Math.min(to, usual + 3 * (most3 - usual))];
        }
    }
    if (!Number.isFinite(from)) from = Math.min(0, usual);
    // The rest are pixels.
    if (!Number.isFinite(to)) to = Math.max(8, size.width, size.height, 2 * usual);
    return [Math.min(from, value), Math.max(to, value)].map(each => Number(each.toPrecision(6)));
}
