/** Loads the library once, before anything else: from fennic.wasm beside this module, from its bytes, or compiled already. */
export function load(bytes?: BufferSource | URL | WebAssembly.Module): Promise<void>;

/**
 * A picture in the library's memory, clear unless pixels are given: rows of red, green, blue, alpha, a byte each, colour
 * premultiplied by alpha. It stays there until it is freed. All of them together have a gigabyte.
 */
export class Bitmap {
    readonly width: number;
    readonly height: number;
    /** Bytes from one row to the next; 4 * width unless given. */
    readonly stride: number;
    readonly isFreed: boolean;

    /** @throws RangeError where it is too large, or there is no memory left for it. */
    constructor(width: number, height: number, pixels?: Uint8Array | Uint8ClampedArray, stride?: number);

    /**
     * The memory itself, to be read and written. A view ends when the memory grows: ask anew after a bitmap is made or a call.
     */
    get pixels(): Uint8ClampedArray;

    /** Gives the memory back; nothing takes the bitmap afterwards. */
    free(): void;
}

export interface Parameter {
    name: string;
    type: 'int' | 'float' | 'double' | 'boolean' | 'int[]' | 'float[]';
    /** What stands where none is given; none: it has to be. A text depends on the picture: width, height/2, width*5/12. */
    default?: number | boolean | number[] | string;
    /** Values worth looking at: for a slider. */
    range?: [number, number];
}

export interface Operation {
    kind: 'measure' | 'geometry' | 'blend' | 'effect' | 'filter' | 'inner';
    name: string;
    /** What is shown together. */
    family: string;
    summary: string;
    /** The same operation in Java, whose documentation gives its formula. */
    native: string | null;
    /** The bitmaps that it takes, in order, and which of them it changes; -1: none. */
    bitmaps: string[];
    written: number;
    parameters: Parameter[];
    /** As jni/Operations.def explains them. */
    frame: string;
    traits: string[];
}

/** Every operation of the library; empty before it is loaded. */
export const operations: readonly Operation[];

export type Parameters = Record<string, number | boolean | ArrayLike<number>>;

/**
 * Makes a blend, an effect or a filter of one of the bitmaps, in place: of the first one, unless the operation's `written` says
 * another. A blend's layer may be larger than its base; other bitmaps are of one size.
 * @throws in words, and without a change, where an argument is none that the operation takes.
 */
export function apply(name: string, bitmaps: Bitmap | Bitmap[], parameters?: Parameters): void;

/**
 * What an operation measures: a number; four of them, for a rectangle or a colour; or, of the two that take no bitmap, the
 * result and the arrays by their names.
 */
export function measure(name: string, bitmaps: Bitmap | Bitmap[], parameters?: Parameters): number | number[] |
    Record<string, number | number[]>;

/**
 * The call as native callers make it: each bitmap may be null, values come in the order of the parameters, numbers may be any
 * and arrays null or too short. It answers with the library's own status, 0 or negative, or its measure; and with the arrays
 * afterwards.
 */
export function call(name: string, bitmaps: (Bitmap | null)[], values: unknown[]):
    {result: number; arrays: (number[] | null)[]};

/** Straight colour, as image files and ImageData have it, to the premultiplied one of bitmaps, in place; and back. */
export function premultiply<Pixels extends Uint8Array | Uint8ClampedArray>(pixels: Pixels): Pixels;
export function straighten<Pixels extends Uint8Array | Uint8ClampedArray>(pixels: Pixels): Pixels;
