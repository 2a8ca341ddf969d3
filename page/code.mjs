// The calls that make what is shown, from the templates that the command line wrote: «name» stands for a parameter's value or
// for what becomes of the picture.

const bitmaps = {
    result: 'icon',
    input: 'icon.copy(Bitmap.Config.ARGB_8888, false)',
    layer: 'layer',
};

export function calls({stack, base, layer}) {
    const steps = stack.filter(({on}) => on), isShifted = steps.some(({operation}) => operation.typed.includes('«shifted('));
    const comment = isShifted ? '// shifted(icon, x, y): a copy, moved right and down, its edge\'s pixels repeated\n' : '';
    const source = (template, language) => comment + steps.map(step => filled(step, template, language)).join('\n');
    return {
        java: source('typed', 'java'),
        kotlin: source('typed', 'kotlin').replace(/;$/gm, ''),
        native: source('native', 'java'),
        command: steps.map((step, i) => command(step, i, steps.length, base, layer)).join(' |\n    '),
    };
}

function filled({operation, values}, template, language) {
    return operation[template].replace(/«(.+?)»/g, (_, name) => {
        const parameter = operation.parameters.find(each => each.name === name);
        if (parameter) return name in values ? spelt(values[name], parameter[language]) : parameter[language].usual;
        return bitmaps[name] ?? name.replace('(', '(icon, ').replace(/,(?=\S)/g, ', ');
    });
}

function spelt(text, {before, whole, suffix, after}) {
    const number = element => element + (/^-?\d+$/.test(element) ? whole : '') + suffix;
    return before + text.split(',').map(number).join(', ') + after;
}

// A pipe of as many commands as there are operations; - is standard input and output.
function command({operation, values}, i, count, base, layer) {
    const given = Object.entries(values).map(([name, text]) => ` --${name}=${text}`).join('');
    const pictures = [i ? '-' : argument(base), ...(operation.command === 'blend' ? [argument(layer)] : [])];
    const out = i < count - 1 ? '-' : 'out.png';
    return `./fennic ${operation.command} ${operation.name} ${pictures.join(' ')}${given} -o ${out}`;
}

// A file as a shell takes it; one that begins with a dash or @ would be an option or a list.
function argument(path) {
    const safe = /^[-@]/.test(path) ? `./${path}` : path;
    return /^[\w./-]+$/.test(safe) ? safe : `'${safe.replace(/'/g, String.raw`'\''`)}'`;
}
