// element('button', {type: 'button', onclick}, 'Remove'): attributes by name, listeners by on..., children as nodes or text.
export function element(name, attributes = {}, ...children) {
    const made = document.createElement(name);
    for (const [key, value] of Object.entries(attributes)) {
        if (key.startsWith('on')) made.addEventListener(key.slice(2), value);
        else if (value === true) made.setAttribute(key, '');
        else if (value !== false && value !== null && value !== undefined) made.setAttribute(key, value);
    }
    made.append(...children);
    return made;
}

export const byId = id => document.getElementById(id);

// For those who hear the page: what has happened, and nothing that changes with every move.
export const tell = text => {
    byId('told').textContent = text;
};
