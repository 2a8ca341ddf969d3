import static java.lang.StrictMath.*;

import java.awt.*;
import java.awt.geom.*;
import java.awt.image.BufferedImage;
import java.awt.image.DataBufferInt;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.Random;
import java.util.function.Consumer;
import javax.imageio.ImageIO;

/**
 * Draws the sample icons and layer textures. Every pixel comes from geometry, hashed noise and seeded random numbers, so each
 * run gives the same images.
 */
public class DrawSamples {
    static final int SIZE = 192;
    static final int FINE = 4; // subpixels along a pixel's side: all drawing is done this much finer, then averaged
    static final int WIDTH = SIZE * FINE;

    public static void main(String[] args) {
        if (args.length != 1) {
            System.err.println("usage: java DrawSamples.java <folder>");
            System.exit(2);
        }
        System.setProperty("java.awt.headless", "true");
        ImageIO.setUseCache(false);
        try {
            Path folder = Files.createDirectories(Path.of(args[0]));
            save(folder, "icon-camera", DrawSamples::camera);
            save(folder, "icon-calendar", DrawSamples::calendar);
            save(folder, "icon-weather", DrawSamples::weather);
            save(folder, "icon-music", DrawSamples::music);
            save(folder, "icon-map", DrawSamples::map);
            save(folder, "icon-mail", DrawSamples::mail);
            save(folder, "icon-compass", DrawSamples::compass);
            save(folder, "icon-photo", DrawSamples::photo);
            save(folder, "icon-bubble", DrawSamples::bubble);
            save(folder, "layer-sunset", DrawSamples::sunset);
            save(folder, "layer-paper", DrawSamples::paper);
            save(folder, "layer-light", DrawSamples::light);
        } catch (IOException e) {
            System.err.println("cannot write: " + e);
            System.exit(1);
        }
    }

    static void save(Path folder, String name, Consumer<Canvas> drawing) throws IOException {
        Canvas canvas = new Canvas();
        drawing.accept(canvas);
        Path file = folder.resolve(name + ".png");
        try (var out = Files.newOutputStream(file)) {
            ImageIO.write(canvas.averaged(), "png", out);
        }
        System.out.println(file);
    }

    // ---- Icons. Light falls from above; bodies end at about 20 and 172, which leaves room for their shadows. ----

    static void camera(Canvas c) {
        Shape body = squircle(96, 92, 76, 76), window = squircle(141, 40, 15, 10);
        c.shadow(body, 5, 4, 0x900B0E18);
        c.inside(body, in -> {
            in.fill(box(0, 0, 192, 192, 0), linear(0, 16, 0, 168, 0xFF3A4150, 0xFF20242E, 0xFF14161D));
            for (int i = 0; i < 1200; i++) { // leather: pits with a lit lower edge
                double x = 18 + 4 * (i % 40) + 2 * (i / 40 % 2), y = 66 + 3.5 * (i / 40);
                in.fill(disc(x, y + 0.6, 1.1), color(0x16FFFFFF));
                in.fill(disc(x, y, 1.1), color(0x48000000));
            }
            Shape top = box(0, 0, 192, 61, 0);
            in.shadow(top, 2, 1.5, 0xA0000000);
            in.fill(top, linear(0, 16, 0, 61, 0xFFFBFAF7, 0xFFDAD9DB, 0xFFA6A8B0));
            in.fill(box(0, 60, 192, 1, 0), color(0x90FFFFFF));
        });
        c.rim(body);
        c.fill(squircle(141, 40.8, 16, 11), color(0xC0FFFFFF));
        c.fill(window, linear(126, 30, 152, 50, 0xFF20293C, 0xFF3D5475, 0xFF141925));
        c.inside(window, in -> in.fill(polygon(126, 50, 138, 28, 145, 28, 133, 50), color(0x50FFFFFF)));
        c.fill(disc(47, 39.6, 6.6), color(0xC0FFFFFF));
        c.fill(disc(47, 39, 6), radial(45, 36.5, 9, 0xFFFFD9A0, 0xFFFF8A3C, 0xFFC8401C));

        double x = 96, y = 101;
        Shape barrel = disc(x, y, 53), glass = disc(x, y, 35);
        c.shadow(barrel, 5, 3.5, 0xB0000000);
        c.inside(barrel, in -> in.shade(conic(x, y, 0xFFF4F5F8, 0xFF8D94A1, 0xFFE2E5EA, 0xFF5E6573, 0xFFB9BFC9, 0xFF565C69,
                0xFFD5D9E0, 0xFF8A909D, 0xFFF4F5F8)));
        c.fill(disc(x, y, 49), linear(0, 52, 0, 150, 0xFF0D0F14, 0xFF3B414D));
        c.fill(disc(x, y, 47.5), radial(x, y, 47.5, 0xFF2B303B, 0xFF2B303B, 0xFF1B1F28));
        for (double r = 46; r > 36; r -= 2.5) {
            c.stroke(disc(x, y, r), linear(0, y - r, 0, y + r, 0x60000000, 0x10FFFFFF, 0x48FFFFFF), 0.7);
        }
        c.fill(glass, radial(x, y, 35, 0xFF05060D, 0xFF0B1030, 0xFF1A2A78, 0xFF2E56B8, 0xFF171C4C, 0xFF06070F));
        c.fill(glass, radial(112, 121, 30, 0xE0FF5FA2, 0x707A3CFF, 0x007A3CFF)); // the colours of the coating
        c.fill(glass, radial(78, 90, 28, 0xB03FE0E8, 0x403A8BFF, 0x003A8BFF));
        c.fill(disc(x, y, 15), radial(x, y, 15, 0xFF020308, 0xF0060818, 0x000A0E28));
        c.fill(without(disc(x, y, 32), disc(x + 6, y + 22, 38)), linear(0, 69, 0, 96, 0xC8FFFFFF, 0x18FFFFFF));
        c.innerShadow(glass, 2, 1.2, 0xC0000000);
        c.fill(disc(84, 91, 4.2), radial(84, 91, 4.2, 0xFFFFFFFF, 0xF0FFFFFF, 0x00FFFFFF));
        c.fill(disc(110, 114, 2.4), color(0xA0FFE3F2));
    }

    static void calendar(Canvas c) {
        Shape sheet = squircle(96, 92, 76, 76), today = squircle(96, 98, 10.5, 10.5);
        c.body(sheet, linear(0, 16, 0, 168, 0xFFFFFFFF, 0xFFFDFBF8, 0xFFEDE7E1), 0x804A2A2A);
        c.inside(sheet, in -> {
            Shape head = box(0, 0, 192, 60, 0);
            in.shadow(head, 1.5, 1.5, 0x50401010);
            in.fill(head, linear(20, 16, 120, 76, 0xFFFF9A76, 0xFFF9665E, 0xFFE23D58));
            in.fill(disc(60, -30, 84), linear(0, 16, 0, 60, 0x50FFFFFF, 0x08FFFFFF));
        });
        for (int day = 3; day < 31; day++) {
            double x = 44 + 104 / 6.0 * (day % 7), y = 80 + 18 * (day / 7);
            int[] tone = day % 7 > 4 ? new int[] {0xFFFFC3B0, 0xFFFFA799} : new int[] {0xFFD9DCE6, 0xFFC3C8D6};
            c.fill(squircle(x, y, 5.6, 5.6), linear(0, y - 6, 0, y + 6, tone));
        }
        c.body(today, linear(0, 88, 0, 108, 0xFFFF8A6C, 0xFFE23D58), 0x50D8304C);
        Path2D tick = polygon(91.6, 98.4, 94.8, 101.6, 100.6, 94.6, 94.8, 101.6);
        c.stroke(tick, color(0xFFFFFFFF), 2.4);
        for (int hole : new int[] {60, 132}) {
            Shape ring = box(hole - 3.5, 12, 7, 32, 3.5);
            c.fill(disc(hole, 42, 7), linear(0, 35, 0, 49, 0xFF7E1A33, 0xFFC23A50));
            c.shadow(ring, 2, 1, 0x80400A18);
            c.fill(ring, linear(hole - 3.5, 0, hole + 3.5, 0, 0xFF9AA1AF, 0xFFFDFDFF, 0xFFD5D9E1, 0xFF7C8392));
        }
        c.inside(sheet, in -> { // the lower right corner lifts and shows the next sheet
            Path2D curl = new Path2D.Double();
            curl.moveTo(172.5, 117.5);
            curl.curveTo(163, 126, 146, 124, 139, 129);
            curl.curveTo(133, 138, 128, 160, 117.5, 168.5);
            curl.closePath();
            in.fill(polygon(173, 117, 173, 170, 117, 170), linear(140, 138, 170, 168, 0xFFB9B3B6, 0xFFEFEAE7, 0xFFFFFFFF));
            in.shadow(curl, 2.5, 2, 0x70302028);
            in.fill(curl, linear(136, 126, 147, 145, 0xFFFFFFFF, 0xFFF4EFEC, 0xFFD3CBC8));
        });
    }

    static void weather(Canvas c) {
        Shape sky = squircle(96, 92, 76, 76), sun = disc(114, 71, 28);
        c.body(sky, linear(40, 16, 130, 168, 0xFF1E58D8, 0xFF3B8DF2, 0xFF7CCBFB, 0xFFC4ECFA), 0x90123A8C);
        c.fill(sky, radial(114, 71, 76, 0xC8FFF3B8, 0x60FFE9A0, 0x18FFFFFF, 0x00FFFFFF));
        for (int turn = 0; turn < 360; turn += 30) {
            c.fill(turned(box(111.8, 27, 4.4, 10, 2.2), turn, 114, 71), radial(114, 71, 46, 0xFFFFE07A, 0xFFFFEFA8));
        }
        c.shadow(sun, 2, 3, 0x70E07A10);
        c.fill(sun, radial(106, 60, 48, 0xFFFFF8C4, 0xFFFFDC58, 0xFFFFA82E, 0xFFF98A1E));
        Area cloud = new Area(box(32, 106, 116, 38, 19));
        for (double[] puff : new double[][] {{62, 110, 23}, {99, 102, 30}, {128, 120, 20}}) {
            cloud.add(new Area(disc(puff[0], puff[1], puff[2])));
        }
        c.inside(sky, in -> in.shadow(cloud, 6, 3.5, 0x701C4A9C));
        c.fill(cloud, linear(0, 72, 0, 144, 0xD8FFFFFF, 0xC4FAFCFF, 0xB8D8EAFF));
        c.inside(cloud, in -> in.shadow(sun, 0, 4, 0x90FFBE48)); // sunlight scattered in the vapour
        c.innerShadow(cloud, -3, 3, 0x483C78C8);
        c.innerShadow(cloud, 2, 1.5, 0xF0FFFFFF);
    }

    static void music(Canvas c) {
        Shape record = disc(96, 92, 76), label = disc(96, 92, 37);
        c.shadow(record, 5, 4, 0x90360A5C);
        c.inside(record, in -> {
            in.shade(conic(96, 92, 0xFF4A189E, 0xFFC04BF2, 0xFFFF8AE0, 0xFFB23CEB, 0xFF4A189E, 0xFF3B1488, 0xFF7A2BD6,
                    0xFFE877F0, 0xFF8A34E0, 0xFF43179A, 0xFF4A189E));
            in.fill(record, radial(96, 92, 76, 0x00200050, 0x00200050, 0x10200050, 0x70200050));
            for (double r = 40; r < 74; r += 2.75) { // grooves: a shaded wall and a lit one
                in.stroke(disc(96, 92, r), color(0x481C0648), 1.2);
                in.stroke(disc(96, 92, r + 1.3), color(0x20FFFFFF), 1);
            }
            in.stroke(disc(96, 92, 51), color(0xA01C0648), 1.6);
            in.stroke(disc(96, 92, 64.5), color(0xA01C0648), 1.6);
        });
        c.rim(record);
        c.shadow(label, 1.5, 1.5, 0x90200040);
        c.fill(label, linear(70, 60, 122, 126, 0xFFFFD27A, 0xFFFF8A5C, 0xFFF23F83));
        c.rim(label);
        Area note = new Area(polygon(88.6, 74, 117.6, 68, 117.6, 77.5, 88.6, 83.5));
        for (double[] end : new double[][] {{84.1, 105.5}, {109.2, 100.5}}) {
            note.add(new Area(turned(new Ellipse2D.Double(end[0] - 8.5, end[1] - 6.5, 17, 13), -20, end[0], end[1])));
            note.add(new Area(box(end[0] + 4.5, end[1] - 29, 3.9, 28, 0)));
        }
        Shape soft = rounded(note, 0.8);
        c.shadow(soft, 2, 1.4, 0x90901040);
        c.fill(soft, linear(0, 68, 0, 112, 0xFFFFFFFF, 0xFFFFF1E6));
    }

    static void map(Canvas c) {
        double[] fold = {18, 69, 123, 174}, top = {62, 46, 62, 46};
        Area sheet = new Area();
        Canvas panels = new Canvas();
        for (int i = 0; i < 3; i++) { // each third is sheared, so that whatever crosses a fold bends there
            double left = fold[i], width = fold[i + 1] - left, slope = (top[i + 1] - top[i]) / width;
            AffineTransform shear = new AffineTransform(1, slope, 0, 1, 0, top[i] - slope * left);
            Shape third = box(left, 0, width, 106, 0), panel = shear.createTransformedShape(third);
            Paint light = i == 1 ? linear(left, 0, left + width, 0, 0x70103820, 0x38103820, 0x18103820)
                    : linear(left, 0, left + width, 0, 0x00FFFFFF, 0x18FFFFFF, 0x60FFFFFF);
            sheet.add(new Area(panel));
            panels.inside(panel, in -> {
                in.pen.transform(shear);
                terrain(in);
                in.fill(third, light);
                in.fill(box(left, 0, width, 1.2, 0), color(0xA0FFFFFF));
                in.fill(box(left, 104.5, width, 1.5, 0), color(0x30103820));
            });
        }
        c.shadow(sheet, 5, 4, 0x90123A20);
        c.lay(panels);
        c.inside(sheet, in -> in.shadow(turned(new Ellipse2D.Double(96, 104, 36, 12), -12, 100, 112), 0, 2, 0x90082818));
        Path2D pin = new Path2D.Double(new Arc2D.Double(68, 14, 60, 60, -32, 244, Arc2D.OPEN));
        pin.curveTo(79, 73, 91, 88, 98, 113);
        pin.curveTo(105, 88, 117, 73, 123.44, 59.9);
        c.shadow(pin, 3, 2, 0x60082818);
        c.fill(pin, linear(74, 16, 124, 100, 0xFFFF9F5A, 0xFFF7563F, 0xFFC8213F));
        c.inside(pin, in -> in.fill(disc(90, 14, 34), linear(0, 14, 0, 50, 0x70FFFFFF, 0x00FFFFFF)));
        c.rim(pin);
        c.shadow(disc(98, 44, 12.5), 1.5, 1, 0x80701020);
        c.fill(disc(98, 44, 12.5), linear(0, 31, 0, 57, 0xFFFFFFFF, 0xFFF6E4DA));
    }

    /** The flat map, 106 high, before it is folded. */
    static void terrain(Canvas c) {
        c.fill(box(0, -2, 192, 112, 0), linear(18, 0, 174, 106, 0xFFB9E6A0, 0xFF7FCF8C, 0xFF4DB586));
        c.fill(squircle(44, 26, 20, 16), color(0xFF5DBB72));
        c.fill(squircle(150, 82, 26, 17), color(0xFF3A9F74));
        Path2D river = curve(10, 92, 70, 98, 92, 64), main = curve(10, 56, 96, 65, 182, 74);
        river.quadTo(118, 24, 180, 22);
        c.stroke(river, color(0xFFD8F3D0), 19);
        c.stroke(river, linear(18, 90, 174, 20, 0xFF3FA9F0, 0xFF6CC8F8, 0xFF49B4F4), 15);
        for (Path2D road : new Path2D[] {main, curve(60, -4, 66, 40, 48, 112), curve(146, -4, 120, 50, 136, 112)}) {
            c.stroke(road, color(0x60407850), 7);
            c.stroke(road, color(road == main ? 0xFFFFE08A : 0xFFFFFFFF), 4.6);
        }
    }

    static void mail(Canvas c) {
        Shape back = rounded(polygon(25, 84, 96, 24, 167, 84, 167, 150, 25, 150), 9);
        Shape letter = box(34, 32, 124, 110, 5), stamp = box(122, 43, 24, 27, 2.5);
        Shape front = rounded(polygon(2, 186, 96, 118, 190, 186), 7);
        Area pocket = new Area(front);
        pocket.add(new Area(without(box(0, 0, 192, 192, 0), polygon(0, 68, 96, 128, 192, 68, 192, 0, 0, 0))));
        pocket.intersect(new Area(box(16, 60, 160, 102, 12)));
        c.shadow(box(16, 76, 160, 86, 12), 5, 4, 0x90063A48);
        c.fill(back, linear(0, 16, 0, 120, 0xFF1FA3A8, 0xFF0D6C80, 0xFF07475C));
        c.rim(back);
        c.shadow(letter, 1, 2.5, 0x80032833);
        c.fill(letter, linear(0, 32, 0, 130, 0xFFFFFFFF, 0xFFF6F8F8, 0xFFD6E4E6));
        for (int line = 0; line < 4; line++) {
            c.fill(box(48, 48 + 13 * line, new int[] {54, 62, 96, 70}[line], 5, 2.5), color(0xFFC2D3D8));
        }
        c.fill(stamp, linear(122, 43, 146, 70, 0xFFFFC36B, 0xFFFF7F5E, 0xFFEE4F6E));
        c.fill(disc(139, 52, 4.2), color(0xFFFFF2CC));
        c.inside(stamp, in -> in.fill(polygon(120, 72, 130, 57, 137, 65, 141, 61, 150, 72), color(0xC0702058)));
        c.shadow(pocket, -1, 2, 0x60053844);
        c.inside(pocket, in -> {
            in.fill(pocket, linear(16, 0, 176, 0, 0xFF58DDD0, 0xFF2FBDBB, 0xFF22A6AE, 0xFF34BEBC));
            in.shadow(front, -2, 3, 0x88043440);
            in.fill(front, linear(0, 110, 0, 162, 0xFF7BEBD8, 0xFF3CCBC6, 0xFF1FA3AE));
            in.innerShadow(front, 1.2, 0.6, 0xB0FFFFFF);
        });
        c.rim(pocket);
    }

    static void compass(Canvas c) {
        double x = 96, y = 92;
        Shape bezel = disc(x, y, 76), face = disc(x, y, 66.5), needle = turned(polygon(85, y, x, 38, 107, y, x, 146), 36, x, y);
        c.shadow(bezel, 5, 4, 0x90101830);
        c.inside(bezel, in -> in.shade(conic(x, y, 0xFFFFF1CF, 0xFFC79A57, 0xFFF3D49A, 0xFF8F6430, 0xFFD9AE6A, 0xFF7A5228,
                0xFFE5BF80, 0xFFB5874A, 0xFFFFF1CF)));
        c.rim(bezel);
        c.fill(disc(x, y, 68), linear(0, 24, 0, 160, 0xFF6E4A22, 0xFFF8DDA8));
        c.fill(face, radial(84, 70, 100, 0xFF34508F, 0xFF1D2F63, 0xFF0E1738));
        for (int degrees = 0; degrees < 360; degrees += 5) {
            boolean main = degrees % 30 == 0;
            Shape mark = main ? box(x - 1.1, 30, 2.2, 9, 0.5) : box(x - 0.5, 30, 1, 5, 0.5);
            c.fill(turned(mark, degrees, x, y), color(main ? 0xF0FFE9C0 : 0x80C8D6FF));
        }
        for (int point = 0; point < 8; point++) { // the rose: each ray has a lit and a dark half, the long ones on top
            double degrees = point * 90 + (point < 4 ? 45 : 0), tip = point < 4 ? 62 : 46;
            c.fill(turned(polygon(x, y, x - 8, y - 8, x, tip), degrees, x, y), color(0x90B8CAFF));
            c.fill(turned(polygon(x, y, x + 8, y - 8, x, tip), degrees, x, y), color(0x90566FB8));
        }
        c.shadow(needle, 4, 2, 0xB0040818);
        c.fill(turned(polygon(85, y, x, 38, x, y), 36, x, y), color(0xFFFF6B4A));
        c.fill(turned(polygon(107, y, x, 38, x, y), 36, x, y), color(0xFFD0312D));
        c.fill(turned(polygon(85, y, x, 146, x, y), 36, x, y), color(0xFFF7F2E8));
        c.fill(turned(polygon(107, y, x, 146, x, y), 36, x, y), color(0xFFBFC3D2));
        c.shadow(disc(x, y, 9), 1.5, 1, 0x90040818);
        c.fill(disc(x, y, 9), linear(0, y - 9, 0, y + 9, 0xFFFFF1CF, 0xFFD9AE6A, 0xFF8F6430));
        c.fill(disc(x, y, 3.5), linear(0, y - 4, 0, y + 4, 0xFF6E4A22, 0xFFE5BF80));
        c.innerShadow(face, 3, 2.5, 0xB0040818);
        c.fill(without(disc(x, y, 63), disc(x + 14, y + 52, 84)), linear(60, 28, 90, 84, 0x70FFFFFF, 0x10FFFFFF));
    }

    static void photo(Canvas c) {
        Shape frame = squircle(96, 92, 76, 76);
        c.shadow(frame, 5, 4, 0x90281040);
        c.inside(frame, in -> in.shade((x, y) -> {
            double vignette = 0.22 * pow(hypot(x - 96, y - 92) / 100, 3);
            double grain = 0.075 * (hash((int) floor(x), (int) floor(y)) - 0.5); // one value per final pixel
            int seen = mix(y < SHORE ? scenery(x, y) : lake(x, y), 0xFF12081E, vignette);
            return mix(seen, grain < 0 ? 0xFF000000 : 0xFFFFFFFF, abs(grain));
        }));
        c.innerShadow(frame, 1, 0.6, 0x70FFFFFF);
    }

    static final double SHORE = 122;

    /** Sky, sun and four mountain ranges; each range is clearest at its ridge and drowns in mist towards the lake. */
    static int scenery(double x, double y) {
        double toSun = hypot(x - 119, y - 79), glow = exp(-toSun / 20);
        int[] rock = {0xFFB9678F, 0xFF834C86, 0xFF4D336F, 0xFF241B45};
        double[] tall = {66, 60, 51, 30}, wide = {34, 40, 44, 30}, foot = {108, 114, 121, 124};
        for (int range = 3; range >= 0; range--) {
            double ridge = foot[range] - tall[range] * max(0, fbm(x / wide[range] + 17.3 * range + 4, 3.7 * range, 6) - 0.18);
            if (y > ridge) {
                double mist = min(1, (y - ridge) / (SHORE - ridge + 1));
                int slope = mix(rock[range], 0xFFFFC49A, 0.16 * fbm(x / 5 + range, y / 3, 3));
                return mix(slope, 0xFFFFBE96, (0.85 - 0.2 * range) * mist * mist + 0.3 * glow);
            }
        }
        int sky = ramp((y - 16) / 84, 0xFF27286B, 0xFF56408F, 0xFFB5578F, 0xFFF4806F, 0xFFFFB765, 0xFFFFE09A);
        double veil = min(1, max(0, 3.2 * (fbm(x / 46 + y / 60, y / 7 + 31, 5) - 0.47)));
        sky = mix(sky, ramp((y - 16) / 60, 0xFFD9709A, 0xFFFFA27C, 0xFFFFC98A), 0.75 * veil);
        return toSun < 10 ? 0xFFFFFBE6 : mix(sky, 0xFFFFF0B8, 0.9 * glow);
    }

    /** The scenery upside down, pulled about by waves that grow towards the viewer, with the sun's path on it. */
    static int lake(double x, double y) {
        double near = (y - SHORE) / 46;
        double wave = fbm(x / (14 + 34 * near), (y - SHORE) / (0.9 + 1.5 * near) + 9, 2) - 0.5;
        int mirrored = scenery(x + 6 * wave, min(SHORE - 0.1, SHORE - (y - SHORE) * 1.45 + wave * (2 + 14 * near)));
        int water = mix(mirrored, 0xFF561C50, 0.24 + 0.14 * near - 0.3 * wave);
        double path = exp(-pow((x - 119) / (7 + 13 * near), 2)) * min(1, 0.5 + max(-0.1, 5 * wave));
        return mix(mix(water, 0xFFFFE2A8, 0.85 * path), 0xFFFFD2A8, 0.5 * exp(-(y - SHORE) / 1.5));
    }

    static void bubble(Canvas c) {
        Shape ball = disc(96, 92, 76);
        c.shadow(new Ellipse2D.Double(44, 150, 104, 24), 0, 3, 0x385060A0);
        c.inside(ball, in -> in.shade((x, y) -> {
            double dx = (x - 96) / 76, dy = (y - 92) / 76;
            double facing = sqrt(max(0, 1 - dx * dx - dy * dy)); // 1 where the film faces the viewer, 0 at its edge
            double grazing = pow(1 - facing, 1.9);
            double film = 0.75 * grazing + 0.30 * dy + 0.18 * dx + 0.55 * fbm(x / 44 + 5, y / 30 + 8, 3);
            int hue = ramp(film - floor(film), 0xFF7DF3E1, 0xFF62B4FF, 0xFFA98BFF, 0xFFFF86CF, 0xFFFFB3B8, 0xFFC9D8FF,
                    0xFF7DF3E1);
            return mix(hue & 0xFFFFFF, hue, 0.26 + 0.70 * grazing);
        }));
        c.innerShadow(ball, 0, 2.5, 0xA8FFFFFF);
        c.innerShadow(ball, -4, 3, 0x385038B0);
        c.fill(ball, radial(72, 60, 54, 0x50FFFFFF, 0x20FFFFFF, 0x00FFFFFF));
        Shape pane = without(disc(96, 92, 66), disc(111, 109, 66)), bar = turned(box(94, 0, 4, 90, 0), -38, 96, 92);
        c.fill(rounded(without(pane, bar), 0.6), linear(40, 40, 84, 92, 0xF4FFFFFF, 0x90FFFFFF, 0x10FFFFFF));
        c.fill(without(disc(96, 92, 69), disc(90, 84, 69)), radial(140, 140, 50, 0xE0FFFFFF, 0x70FFE8F8, 0x00FFFFFF));
    }

    // ---- Layers: they fill the whole square. ----

    static void sunset(Canvas c) {
        c.shade((x, y) -> ramp((x + y + 14 * sin((x - y) / 58)) / 384, 0xFF2B1F6B, 0xFF6A2C9C, 0xFFC63C8F, 0xFFFA6A63,
                0xFFFFA552, 0xFFFFDE7A));
    }

    static void paper(Canvas c) {
        c.shade((x, y) -> {
            double cloudy = fbm(x / 38, y / 38 + 3, 4), tooth = fbm(x / 1.6, y / 1.6 + 70, 3);
            return ramp(0.32 + 0.5 * cloudy + 0.7 * (tooth - 0.5), 0xFFC9AE86, 0xFFE6D2AE, 0xFFF6EAD2, 0xFFFFFAEC);
        });
        Random random = new Random(1887);
        for (int fibre = 0; fibre < 900; fibre++) {
            double x = 200 * random.nextDouble() - 4, y = 200 * random.nextDouble() - 4, reach = 4 + 12 * random.nextDouble();
            double turn = 2 * PI * random.nextDouble(), bend = turn + 1.6 * (random.nextDouble() - 0.5);
            Shape hair = curve(x, y, x + reach / 2 * cos(bend), y + reach / 2 * sin(bend), x + reach * cos(turn),
                    y + reach * sin(turn));
            int tone = new int[] {0xFFFFF4, 0x8A6A40, 0x6B4A2C}[random.nextInt(3)];
            c.stroke(hair, color(0x18 + random.nextInt(0x38) << 24 | tone), 0.3 + 0.6 * random.nextDouble());
        }
    }

    static void light(Canvas c) {
        Shape all = box(0, 0, 192, 192, 0);
        c.fill(all, radial(200, -10, 190, 0xF0FFE2A0, 0xB8FF9A50, 0x60F0406A, 0x006A20A0));
        c.fill(all, radial(-20, 170, 110, 0x803A8CFF, 0x304060F0, 0x004060F0));
        Random random = new Random(42);
        int[] tints = {0xFFD78A, 0xFF9E6B, 0xFF7FA8, 0xFFF3D0, 0x9CC8FF};
        for (int spot = 0; spot < 34; spot++) { // brighter towards the upper right, where the light comes in
            double far = pow(random.nextDouble(), 0.8) * 175, turn = toRadians(85 + 100 * random.nextDouble());
            double x = 185 + far * cos(turn), y = 10 + far * sin(turn), r = 5 + 15 * random.nextDouble();
            int tint = tints[random.nextInt(tints.length)], alpha = (int) (0x78 * exp(-far / 110));
            c.fill(disc(x, y, r), radial(x, y, r, alpha * 2 / 3 << 24 | tint, alpha << 24 | tint));
            c.stroke(disc(x, y, r - 0.5), color(alpha << 24 | 0xFFF8E8), 0.8);
        }
    }

    // ---- Toolkit: shapes ----

    /** The superellipse |x|^5 + |y|^5 = 1: its curvature grows smoothly where a rounded rectangle's would jump. */
    static Shape squircle(double x, double y, double rx, double ry) {
        double[] xy = new double[480];
        for (int i = 0; i < xy.length; i += 2) {
            double cos = cos(2 * PI * i / xy.length), sin = sin(2 * PI * i / xy.length);
            xy[i] = x + rx * signum(cos) * pow(abs(cos), 0.4);
            xy[i + 1] = y + ry * signum(sin) * pow(abs(sin), 0.4);
        }
        return polygon(xy);
    }

    static Path2D polygon(double... xy) {
        Path2D path = new Path2D.Double();
        path.moveTo(xy[0], xy[1]);
        for (int i = 2; i < xy.length; i += 2) {
            path.lineTo(xy[i], xy[i + 1]);
        }
        path.closePath();
        return path;
    }

    static Path2D curve(double x0, double y0, double x1, double y1, double x2, double y2) {
        return new Path2D.Double(new QuadCurve2D.Double(x0, y0, x1, y1, x2, y2));
    }

    static Shape disc(double x, double y, double r) {
        return new Ellipse2D.Double(x - r, y - r, 2 * r, 2 * r);
    }

    static Shape box(double x, double y, double width, double height, double corner) {
        return new RoundRectangle2D.Double(x, y, width, height, 2 * corner, 2 * corner);
    }

    static Shape turned(Shape shape, double degrees, double x, double y) {
        return AffineTransform.getRotateInstance(toRadians(degrees), x, y).createTransformedShape(shape);
    }

    static Shape without(Shape shape, Shape hole) {
        Area rest = new Area(shape);
        rest.subtract(new Area(hole));
        return rest;
    }

    /** The shape grown by r all around, which rounds its corners. */
    static Shape rounded(Shape shape, double r) {
        Area grown = new Area(Canvas.line(2 * r).createStrokedShape(shape));
        grown.add(new Area(shape));
        return grown;
    }

    // ---- Toolkit: colours, as 0xAARRGGBB; a gradient's colours are evenly spaced ----

    interface Shader {
        int at(double x, double y);
    }

    static Color color(int argb) {
        return new Color(argb, true);
    }

    static Paint linear(double x0, double y0, double x1, double y1, int... stops) {
        return new LinearGradientPaint((float) x0, (float) y0, (float) x1, (float) y1, places(stops.length), colors(stops));
    }

    static Paint radial(double x, double y, double r, int... stops) {
        return new RadialGradientPaint((float) x, (float) y, (float) r, places(stops.length), colors(stops));
    }

    /** A gradient around a centre, as turned metal reflects light. It starts at the upper left and must end as it began. */
    static Shader conic(double cx, double cy, int... stops) {
        return (x, y) -> {
            double turn = atan2(y - cy, x - cx) / (2 * PI) + 0.375;
            return ramp(turn - floor(turn), stops);
        };
    }

    private static float[] places(int count) {
        float[] places = new float[count];
        for (int i = 0; i < count; i++) {
            places[i] = (float) i / (count - 1);
        }
        return places;
    }

    private static Color[] colors(int[] stops) {
        return Arrays.stream(stops).mapToObj(DrawSamples::color).toArray(Color[]::new);
    }

    static int ramp(double t, int... stops) {
        double place = min(1, max(0, t)) * (stops.length - 1);
        int i = min((int) place, stops.length - 2);
        return mix(stops[i], stops[i + 1], place - i);
    }

    static int mix(int from, int to, double t) {
        double part = min(1, max(0, t));
        int mixed = 0;
        for (int shift = 0; shift < 32; shift += 8) {
            int a = from >>> shift & 255, b = to >>> shift & 255;
            mixed |= (int) round(a + (b - a) * part) << shift;
        }
        return mixed;
    }

    // ---- Toolkit: noise ----

    /** A fixed pseudo-random number from 0 to 1 for each lattice point. */
    static double hash(int x, int y) {
        int h = x * 0x27D4EB2D ^ y * 0x165667B1;
        h = (h ^ h >>> 15) * 0x2C1B3C6D;
        h = (h ^ h >>> 12) * 0x297A2D39;
        return ((h ^ h >>> 15) >>> 8) / (double) (1 << 24);
    }

    /** Lattice values joined by the smooth step 3t^2 - 2t^3. */
    static double noise(double x, double y) {
        int column = (int) floor(x), row = (int) floor(y);
        double u = x - column, v = y - row;
        u *= u * (3 - 2 * u);
        v *= v * (3 - 2 * v);
        double above = hash(column, row) * (1 - u) + hash(column + 1, row) * u;
        double below = hash(column, row + 1) * (1 - u) + hash(column + 1, row + 1) * u;
        return above * (1 - v) + below * v;
    }

    /** Octaves of noise, each twice as fine and half as strong, scaled to 0..1. */
    static double fbm(double x, double y, int octaves) {
        double sum = 0, total = 0;
        for (int octave = 0; octave < octaves; octave++) {
            double fine = 1 << octave;
            sum += noise(x * fine + 19 * octave, y * fine + 47 * octave) / fine;
            total += 1 / fine;
        }
        return sum / total;
    }

    // ---- Toolkit: the surface ----

    /** A transparent square, SIZE units wide, with FINE subpixels to the unit. */
    static class Canvas {
        final BufferedImage image = new BufferedImage(WIDTH, WIDTH, BufferedImage.TYPE_INT_ARGB);
        final int[] pixels = ((DataBufferInt) image.getRaster().getDataBuffer()).getData();
        final Graphics2D pen = image.createGraphics();

        Canvas() {
            pen.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
            pen.setRenderingHint(RenderingHints.KEY_STROKE_CONTROL, RenderingHints.VALUE_STROKE_PURE);
            pen.scale(FINE, FINE);
        }

        void fill(Shape shape, Paint paint) {
            pen.setPaint(paint);
            pen.fill(shape);
        }

        void stroke(Shape shape, Paint paint, double width) {
            pen.setPaint(paint);
            pen.setStroke(line(width));
            pen.draw(shape);
        }

        static Stroke line(double width) {
            return new BasicStroke((float) width, BasicStroke.CAP_ROUND, BasicStroke.JOIN_ROUND);
        }

        void shade(Shader shader) {
            for (int i = 0; i < pixels.length; i++) {
                pixels[i] = shader.at((i % WIDTH + 0.5) / FINE, (i / WIDTH + 0.5) / FINE);
            }
        }

        /** Draws on a fresh canvas and keeps what falls into the shape. Unlike a clip, this leaves a smooth edge. */
        void inside(Shape shape, Consumer<Canvas> drawing) {
            Canvas layer = new Canvas(), mask = new Canvas();
            drawing.accept(layer);
            mask.fill(shape, Color.BLACK);
            layer.pen.setComposite(AlphaComposite.DstIn);
            layer.lay(mask);
            lay(layer);
        }

        void lay(Canvas layer) {
            AffineTransform units = pen.getTransform();
            pen.setTransform(new AffineTransform());
            pen.drawImage(layer.image, 0, 0, null);
            pen.setTransform(units);
        }

        /** What the icons' bodies share: a drop shadow, a lit upper edge and a shaded lower one. */
        void body(Shape shape, Paint paint, int shadow) {
            shadow(shape, 5, 4, shadow);
            fill(shape, paint);
            rim(shape);
        }

        void rim(Shape shape) {
            innerShadow(shape, -2, 2, 0x50000000);
            innerShadow(shape, 1.2, 0.6, 0xA0FFFFFF);
        }

        /** The shadow that everything around the shape throws into it. A white one makes a lit edge. */
        void innerShadow(Shape shape, double down, double radius, int argb) {
            Path2D around = new Path2D.Double(Path2D.WIND_EVEN_ODD);
            around.append(box(-SIZE, -SIZE, 3 * SIZE, 3 * SIZE, 0), false);
            around.append(shape, false);
            inside(shape, in -> in.shadow(around, down, radius, argb));
        }

        /** The blurred silhouette of the shape, moved down. It reaches three radii beyond the shape. */
        void shadow(Shape shape, double down, double radius, int argb) {
            Canvas layer = new Canvas();
            layer.pen.translate(0, down);
            layer.fill(shape, Color.BLACK);
            float[] alpha = new float[WIDTH * WIDTH], turned = new float[WIDTH * WIDTH];
            for (int i = 0; i < alpha.length; i++) {
                alpha[i] = (layer.pixels[i] >>> 24) / 255f * (argb >>> 24);
            }
            for (int pass = 0; pass < 3; pass++) { // three box blurs come close to a Gaussian one
                blurRows(alpha, turned, (int) round(radius * FINE));
                blurRows(turned, alpha, (int) round(radius * FINE));
            }
            for (int i = 0; i < alpha.length; i++) {
                layer.pixels[i] = round(alpha[i]) << 24 | argb & 0xFFFFFF;
            }
            lay(layer);
        }

        /** Box-blurs the rows and stores them as columns, so that a second call blurs the columns and turns all back. */
        private static void blurRows(float[] from, float[] to, int radius) {
            for (int y = 0; y < WIDTH; y++) {
                float sum = 0;
                for (int x = -radius; x < WIDTH; x++) {
                    sum += x + radius < WIDTH ? from[y * WIDTH + x + radius] : 0;
                    sum -= x > radius ? from[y * WIDTH + x - radius - 1] : 0;
                    if (x >= 0) {
                        to[x * WIDTH + y] = sum / (2 * radius + 1);
                    }
                }
            }
        }

        /** Averages each pixel's subpixels, weighted by their alpha so that clear ones lend no colour. */
        BufferedImage averaged() {
            BufferedImage small = new BufferedImage(SIZE, SIZE, BufferedImage.TYPE_INT_ARGB);
            for (int i = 0; i < SIZE * SIZE; i++) {
                double alpha = 0, red = 0, green = 0, blue = 0;
                for (int j = 0; j < FINE * FINE; j++) {
                    int x = i % SIZE * FINE + j % FINE, y = i / SIZE * FINE + j / FINE;
                    int pixel = pixels[y * WIDTH + x], weight = pixel >>> 24;
                    alpha += weight;
                    red += weight * (pixel >> 16 & 255);
                    green += weight * (pixel >> 8 & 255);
                    blue += weight * (pixel & 255);
                }
                long mean = round(alpha / FINE / FINE) << 24 | round(red / alpha) << 16 | round(green / alpha) << 8
                        | round(blue / alpha); // 0 / 0 rounds to 0
                small.setRGB(i % SIZE, i / SIZE, (int) mean);
            }
            return small;
        }
    }
}
