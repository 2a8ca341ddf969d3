// What somebody's program does with the npm package: the same blend as Desktop.java, and a measurement.
import {apply, Bitmap, load, measure, operations} from 'fennic';

await load();
const icon = new Bitmap(3, 2, Uint8Array.from(Array(6).fill([0x66, 0xff, 0, 0xff]).flat()));
const texture = new Bitmap(3, 2, Uint8Array.from(Array(6).fill([0x80, 0, 0, 0xff]).flat()));
apply('multiply', [icon, texture]);
console.log(`${operations.length} operations, ${icon.pixels.slice(20)}, visible ${measure('visible', icon)}`);
