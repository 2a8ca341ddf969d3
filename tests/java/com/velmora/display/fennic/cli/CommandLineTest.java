package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.toMap;
import static org.junit.jupiter.api.Assertions.*;

import android.graphics.Bitmap;
import android.graphics.BitmapFactory;
import com.velmora.display.fennic.VelUIBitmapUtils;
import java.awt.image.BufferedImage;
import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.List;
import java.util.Map;
import java.util.Random;
import java.util.Set;
import java.util.TreeSet;
import java.util.regex.MatchResult;
import java.util.regex.Pattern;
import java.util.stream.Collectors;
import java.util.stream.IntStream;
import java.util.stream.Stream;
import javax.imageio.ImageIO;
import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

/** The command line as a person runs it, in a folder of its own. */
class CommandLineTest {
    private static final Path ROOT = Path.of(System.getProperty("fennic.root"));

    private record Result(int exitCode, String out, String err) {}

    @TempDir private static Path outputs;
    @TempDir private Path folder;

    /** The first run may build and talk about it; the others are then silent. */
    @BeforeAll
    static void build() throws Exception {
        assertEquals(0, run(outputs, "--version").exitCode);
    }

    /** An oblong of 6 x 4 with a hole at its second row, and a plain layer of twice the size. */
    @BeforeEach
    void draw() throws IOException {
        var base = new BufferedImage(10, 10, BufferedImage.TYPE_INT_ARGB);
        var layer = new BufferedImage(20, 20, BufferedImage.TYPE_INT_ARGB);
        int[] oblong = new int[6 * 4], plain = new int[20 * 20];
        Arrays.fill(oblong, 0xffc86432);
        Arrays.fill(plain, 0xff6496c8);
        oblong[1 * 6 + 2] = 0;
        base.setRGB(2, 3, 6, 4, oblong, 0, 6);
        layer.setRGB(0, 0, 20, 20, plain, 0, 20);
        ImageIO.write(base, "png", folder.resolve("base.png").toFile());
        ImageIO.write(layer, "png", folder.resolve("layer.png").toFile());
        byte[] whole = Files.readAllBytes(folder.resolve("base.png"));
        Files.write(folder.resolve("cut.png"), Arrays.copyOf(whole, whole.length / 2));
        Files.writeString(folder.resolve("text.png"), "not a picture");
        Files.createDirectory(folder.resolve("empty"));
        Files.createDirectory(folder.resolve("site"));
        Files.writeString(folder.resolve("site/index.html"), "somebody's own page");
        Files.createDirectories(folder.resolve("two words/näh"));
        Files.copy(folder.resolve("base.png"), folder.resolve("two words/näh/-b.png"));
        Files.copy(folder.resolve("base.png"), folder.resolve("two words/base.gif"));
        Files.writeString(folder.resolve("list"), "two words/näh/-b.png\nbase.png\n");
        Files.writeString(folder.resolve("figures.csv"), """
            size,picture,peer,op,best_mpx_s,median_mpx_s
            1024,random,limit,copy,8000.00,7900.00
            1024,random,fennic,multiply,1500.00,1400.00
            1024,random,before,multiply,1400.00,1300.00
            1024,icon,fennic,multiply,1600.00,1500.00
            1024,random,fennic,hue,200.00,190.00
            192,random,skia,hue,9.00,8.00
            1024,random,skia,multiply,1200.00,1100.00
            1024,random,qt,multiply,400.00,300.00
            """);
        Files.writeString(folder.resolve("torn.csv"), "size,picture,peer,op,best_mpx_s,median_mpx_s\n1024,random,fennic,mult");
    }

    @ParameterizedTest
    @CsvSource(delimiter = '|', value = {
        "                                                            | 2 | a command is missing",
        "blnd                                                        | 2 | did you mean blend",
        "measure                                                     | 2 | 'FILE'",
        "measure --jsn base.png                                      | 2 | did you mean --json",
        "measure none.png                                            | 1 | none.png: no such file",
        "measure text.png                                            | 1 | text.png: not a picture that can be read",
        "measure cut.png                                             | 1 | cut.png: a damaged or oversized PNG",
        "measure empty                                               | 1 | empty: a folder",
        "measure empty -r                                            | 1 | empty: holds no pictures",
        "measure @gone                                               | 1 | gone: no such file",
        "measure - -                                                 | 1 | standard input can be read once only",
        "mesure base.png                                             | 2 | did you mean measure",
        "sepia base.png                                              | 2 | sepia is a filter: fennic effect sepia",
        "blend darken base.png -o out.png                            | 2 | 'LAYER'",
        "blend darken base.png layer.png                             | 2 | '--out=OUT'",
        "blend darkn base.png layer.png -o out.png                   | 2 | did you mean darken",
        "blend burn base.png layer.png -o out.png                    | 2 | color-burn or",
        "blend xyzzy base.png layer.png -o out.png                   | 2 | fennic list shows them all",
        "blend darken --offset 1 base.png layer.png -o out.png       | 2 | darken takes no --offset",
        "blend linear-burn --offset 1x base.png layer.png -o out.png | 2 | --offset takes a value of type int, not '1x'",
        "blend darken base.png cut.png -o base.png                   | 1 | cut.png: a damaged or oversized PNG",
        "blend darken base.png layer.png -o gone/out.png             | 1 | gone/out.png: its folder is missing",
        "blend darken base.png layer.png -o base.png/out.png         | 1 | base.png is a file, no folder",
        "blend darken base.png layer.png -o empty                    | 1 | empty: a folder",
        "blend darken base.png layer.png -o /dev/full                | 1 | /dev/full: not a plain file",
        "effect invrt base.png -o out.png                            | 2 | unknown effect 'invrt'; did you mean invert",
        "filter vignete base.png -o out.png                          | 2 | did you mean vignette",
        "effect darken base.png -o out.png                           | 2 | darken is a blend: fennic blend darken",
        "effect Sepia base.png -o out.png                            | 2 | fennic effect sepia",
        "effect nope --help                                          | 2 | unknown effect 'nope'",
        "effect sepia base.png --intensity NaN -o out.png            | 2 | --intensity takes 0 to 1, not NaN",
        "effect sepia base.png --intensity 1.01 -o out.png           | 2 | --intensity takes 0 to 1, not 1.01",
        "effect swirl base.png --radius 1e99 -o out.png              | 2 | --radius takes 0 or more, not 1e99",
        "effect kuwahara base.png --radius width*99 -o out.png       | 1 | --radius takes 0 to 100, not width*99",
        "effect monochrome base.png --color 1,2,256 -o out.png       | 2 | --color takes 0 to 255, not 1,2,256",
        "effect sepia base.png -o out.bmp                            | 2 | out.bmp: cannot be written as .bmp",
        "effect sepia base.png layer.png -o out.png                  | 2 | -o takes one picture, not 2",
        "effect sepia base.png -o out.png -d out                     | 2 | exclude each other",
        "effect sepia base.png -d out --suffix a/b                   | 2 | without /",
        "effect sepia base.png -d out --overwrite --skip-existing    | 2 | exclude each other",
        "effect sepia base.png -d base.png/out                       | 1 | not a folder",
        "effect sepia base.png ./base.png -d out                     | 1 | would both become this file",
        "effect sepia base.png base.png -d out                       | 1 | base.png is named twice",
        "effect sepia base.png layer.png -d .                        | 1 | or replace it with --overwrite",
        "effect sepia - -d out                                       | 1 | standard input has no name",
        "effect invert base.png --threshold 1 -o out.png             | 2 | invert takes no --threshold",
        "effect denoise base.png --threshold 1.5 -o out.png          | 2 | --threshold takes a value of type int, not '1.5'",
        "effect swirl base.png --radius width/0 -o out.png           | 2 | --radius takes a value of type float, not 'width/0'",
        "effect vignette base.png --color width,0 -o out.png         | 2 | --color takes a value of type int[] like 0,0",
        "effect pick-channel base.png --channel 4 -o out.png         | 2 | no channel 4: 0 red, 1 green, 2 blue, 3 alpha",
        "gallery --icons empty --out g                               | 1 | empty: holds no icon-*.png",
        "gallery --icons . --out base.png                            | 1 | base.png; name another place with --out",
        "gallery --icons . --out site                                | 1 | site: holds a page or pictures that are no gallery",
        "gallery --icons gone --out g                                | 1 | gone: no such folder",
        "gallery --icons . --out g --figures torn.csv                | 1 | torn.csv:2: not size,picture,peer,op",
    })
    void failsWithOneTellingLineAndLeavesNothingBehind(String line, int exitCode, String message) throws Exception {
        List<String> before = contents();
        Result result = run(folder, line == null ? new String[0] : line.split(" "));
        assertAll(
            () -> assertEquals(exitCode, result.exitCode),
            () -> assertTrue(result.err.matches("fennic: .*\\n") && result.err.contains(message), result.err),
            () -> assertEquals("", result.out),
            () -> assertEquals(before, contents()));
    }

    @Test
    void measures() throws Exception {
        Result json = run(folder, "measure", "--json", "base.png");
        assertEquals(
            "[{\"file\":\"base.png\",\"width\":10,\"height\":10,\"visible\":23,\"invisible\":77,\"outside\":0.76,"
                + "\"average\":[200,100,50,255],\"cutOff\":[2,3,7,6],\"square\":[0,1,6,6],\"median\":124.2,"
                + "\"straight\":[200,100,50]}]",
            json.out.replaceAll("\\s", ""));
        assertEquals(0, json.exitCode);

        Result table = run(folder, "measure", "base.png", "text.png", "layer.png");
        List<String> rows = table.out.lines().map(row -> row.strip().replaceAll("\\s+", " ")).toList();
        assertEquals("10 10 23 77 0.7600 124.2 200,100,50,255 2,3,7,6 0,1,6,6 200,100,50 base.png", rows.get(1));
        assertEquals("20 20 400 0 0.0000 140.8 100,150,200,255 0,0,19,19 - 100,150,200 layer.png", rows.get(2));
        assertEquals(1, table.exitCode);

        Random random = new Random(1);
        Bitmap noise = Bitmap.createBitmap(31, 17, Bitmap.Config.ARGB_8888);
        for (int i = 0; i < 31 * 17; ++i) {
            noise.setPixel(i % 31, i / 31, random.nextBoolean() ? random.nextInt() : 0);
        }
        int[] average = new int[4];
        VelUIBitmapUtils.nativeGetBitmapAverageColorInRect2(noise, 0, 0, 31, 17, average);
        assertArrayEquals(average, Sums.of(noise).average(), "what stands in for the native where its sums would wrap");
    }

    /** Small ones, and large ones of many bands, noisy and plain, which the command line reads by itself. */
    @ParameterizedTest
    @CsvSource({"1, 1", "300, 200", "2048, 2048", "1400001, 3"})
    void writesWhatIsReadAgain(int width, int height) {
        Random random = new Random(1);
        int[] colors = IntStream.range(0, width * height)
            .map(i -> i / width < height / 2 ? random.nextInt() | 255 << 24 : i / width % 3 * 0x7f123456).toArray();
        Bitmap bitmap = Bitmap.createBitmap(colors, width, height, Bitmap.Config.ARGB_8888);
        byte[] png = Pngs.encode(bitmap);
        assertTrue(bitmap.sameAs(BitmapFactory.decodeStream(new ByteArrayInputStream(png))));
        assertTrue(bitmap.sameAs(Pngs.decode(Input.of("large.png"), png)));
    }

    /** In a shell of the C locale, where $f is the command line: many pictures, pipes, and what is found afterwards. */
    @ParameterizedTest
    @CsvSource(delimiterString = "=>", value = {
        "$f effect complement 'two words' -r -d out                   => 0 => find out -type f          => out/base.png out/näh/-b.png",
        "$f effect sepia @list text.png -d out --suffix x             => 1 => find out -type f          => out/-b-x.png out/base-x.png",
        "$f effect sepia . -r -d .                                    => 1 => find . -newer list        => ''",
        "for i in 1 2; do $f effect sepia 'two words' -r -d 'two words/o'; done => 0 => find . -newer list -type f | wc -l => 2",
        "$f effect sepia base.png -d . --overwrite                    => 0 => find . -newer list -type f => ./base.png",
        "$f blend darken @list layer.png -d a/b                       => 0 => find a -type f            => a/b/-b.png a/b/base.png",
        "$f blend darken base.png gone.png layer.png -d a -q          => 1 => find a -type f            => a/base.png",
        "echo > o.png; $f effect sepia base.png -o o.png --skip-existing => 0 => wc -c < o.png          => 1",
        "chmod 640 base.png; $f effect sepia base.png -o base.png     => 0 => stat -c %a base.png       => 640",
        "touch .fennic-999999999-1.tmp; $f effect sepia base.png -o o.png => 0 => find . -name '*.tmp'  => ''",
        "$f effect alpha - -o - < base.png | $f measure - base.png    => 0 => wc -l < $out              => 3",
        "mkfifo p; cat base.png > p & $f effect sepia p -o o.png      => 0 => ls o.png                  => o.png",
        "$f measure base.png > /dev/full                              => 1 => grep -c 'standard output' $err => 1",
        "$f --version > /dev/full                                     => 1 => grep -c 'standard output' $err => 1",
        "$f effect sepia --help > /dev/full                           => 1 => grep -c 'standard output' $err => 1",
        "$f effect sepia base.png -o - > /dev/full                    => 1 => grep -c 'standard output' $err => 1",
        "$f list | head -1; exit ${PIPESTATUS[0]}                     => 0 => wc -c < $err              => 0",
        "$f effect sepia $(printf 'x\\377') -o o.png                  => 1 => grep -c 'not UTF-8' $err  => 1",
        "$f effect sepia -b.png -o o.png                              => 2 => grep -c 'write ./-b.png' $err => 1",
        "$f effect swirl --help                                       => 0 => grep -c 'pixels; 0 or more' $out => 1",
        "$f list --json sepia                                         => 0 => grep -o 'stops\\|share' $out    => share",
        "$f generate-completion                                       => 0 => bash -n $out && grep -qs soft-light $out && echo yes => yes",
    })
    void worksInAShell(String line, int exitCode, String look, String found) throws Exception {
        Files.copy(folder.resolve("base.png"), folder.resolve("-b.png"));
        Result result = start(folder, "", List.of("bash", "-c", "find . -exec touch -d @0 {} +; " + line));
        Result looked = start(folder, ".look", List.of("bash", "-c", look));
        assertEquals(exitCode, result.exitCode, result.err);
        assertEquals(found, looked.out.lines().sorted().collect(Collectors.joining(" ")), result.err);
    }

    /**
     * The layer is scaled to the base, each operation gets its parameters and bitmaps, and the result may take the base's
     * place. The relief takes the transparent pixel two columns and rows before away from the oblong's first one; a swirl
     * around the middle moves that one away, one around a point farther off does not reach it.
     */
    @ParameterizedTest
    @CsvSource({
        "blend darken base.png layer.png -o out.png,                   out.png,  ff646432",
        "blend darken base.png layer.png -o base.png,                  base.png, ff646432",
        "blend linear-burn base.png layer.png -o out.png,              out.png,  ff2c0101",
        "blend linear-burn base.png layer.png -o out.png --offset 128, out.png,  ffac7a7a",
        "effect complement base.png -o base.png,                       base.png, ff379bcd",
        "effect grey-map base.png -o out.png --low 255 --high 0,       out.png,  ff898989",
        "effect relief base.png -o out.png,                            out.png,  ffffe4b2",
        "filter sepia base.png -o out.png,                             out.png,  ff94ad2f",
        "filter swirl base.png -o out.png --angle 6,                   out.png,  0",
        "filter swirl base.png -o out.png --angle 6 --centreX width,   out.png,  ffc86432",
    })
    void changes(String line, String out, String color) throws Exception {
        List<String> names = Stream.concat(contents().stream(), Stream.of(out)).distinct().sorted().toList();
        assertEquals(new Result(0, "", ""), run(folder, line.split(" ")));
        BufferedImage result = ImageIO.read(folder.resolve(out).toFile());
        assertEquals(10, result.getWidth());
        assertEquals(color, Integer.toHexString(result.getRGB(2, 3)));
        assertEquals(0, result.getRGB(0, 0), "transparent pixels stay so");
        assertEquals(names, contents());
    }

    @Test
    void showsEveryOperationOnPicturesInTheGallery() throws Exception {
        Files.copy(folder.resolve("base.png"), folder.resolve("icon-oblong.png"));
        Files.copy(folder.resolve("layer.png"), folder.resolve("layer-plain.png"));
        List<String> names = all("(?:BLEND|EFFECT|FILTER) +(\\S+)", run(folder, "list").out);
        assertTrue(names.containsAll(List.of("darken", "mode-23", "invert", "swirl")));
        assertFalse(names.contains("linear-light-c"), "what has no native cannot be called");

        // A former gallery's pictures go.
        Files.createDirectories(folder.resolve("gallery/images"));
        Files.writeString(folder.resolve("gallery/images/former.png"), "");
        Files.writeString(folder.resolve("gallery/index.html"), "<title>fennic gallery</title>");

        Files.createDirectories(folder.resolve("page"));
        Files.writeString(folder.resolve("page/try.html"), "{{style}}<data>{{data}}</data><script>{{script}}</script>{{favicon}}");
        Files.writeString(folder.resolve("page/try.css"), "/* more */");
        Files.writeString(folder.resolve("page/try.js"), "'{{data}}$1'");
        Files.write(folder.resolve("page/fennic.wasm"), new byte[8]);

        Result result = run(folder, "gallery", "--icons", ".", "--out", "gallery", "--figures", "figures.csv", "--live", "page");
        assertEquals(0, result.exitCode, result.err);
        String page = Files.readString(folder.resolve("gallery/index.html"));
        Map<String, String> cards = Pattern.compile("class=\"card\" id=\"card-([^\"]+)\".*?</article>", Pattern.DOTALL)
            .matcher(page).results().collect(toMap(card -> card.group(1), MatchResult::group));
        assertEquals(Set.copyOf(names), cards.keySet());
        assertFalse(Pattern.compile("https?:|@import|url\\(|data:").matcher(page).find(), "the page loads nothing but pictures");
        assertFalse(page.contains("{{"), "a slot of the template was left open");
        assertTrue(page.length() < 300_000, "the page is small: " + page.length());

        Set<String> shown = new TreeSet<>(
            all(" src=\"images/([^\"]+)\" alt=\"[^\"]+\" width=\"10\" height=\"10\" loading=\"lazy\"", page));
        cards.forEach((name, card) -> {
            int steps = all(" data-steps=\"([^\"]+)\"", card).stream().mapToInt(texts -> texts.split("[|]").length).sum();
            IntStream.range(0, steps).forEach(step -> shown.add(name + "-" + step + "-icon-oblong.png"));
            boolean formula = card.replaceFirst("(?s).*<summary>Formula</summary>", "")
                .replaceFirst("(?s)<ul>\n<li><code>\\w+</code>: .*?</ul>\n", "")
                .replaceFirst("(?s)(<details>|</details>).*", "").contains("<code>");
            assertEquals(!List.of("pick-channel", "pixelate").contains(name), formula, "a formula in its comment: " + name);
            assertTrue(Pattern.compile("<code class=\"java\">(Blend|StraightBlend|Effects)\\.\\w.*;<").matcher(card).find(), name);
        });
        assertEquals(shown, Set.of(folder.resolve("gallery/images").toFile().list()), "every picture is there, and no other");
        assertEquals(
            Files.readAllLines(ROOT.resolve("jni/Operations.def")).stream()
                .filter(line -> line.matches("OPERATION\\((BLEND|EFFECT|FILTER),.*=[^ \"]+\\[\\S+\\.\\.\\S+].*")).count(),
            all("data-steps=\"([^\"]+)\"", page).size(), "a slider for each operation with values to compare");
        assertEquals(List.of("exposure -1|exposure -0.625|exposure -0.25|exposure 0.125|exposure 0.5|exposure 0.625|exposure 0.75|"
            + "exposure 0.875|exposure 1"), all("data-steps=\"([^\"]+)\"", cards.get("exposure")));
        assertEquals(List.of("radius 1|radius 2|radius 3|radius 4|radius 5"), all("data-steps=\"([^\"]+)\"", cards.get("kuwahara")));

        for (String found : List.of("mode-4 multiply product nativetkpsblendingmode straightblend", "linear-dodge add plus blend",
                "pixelate mosaic", "kuwahara oil painting", "black-and-white b&w threshold", "desaturate grayscale greyscale",
                "monochrome tint colour color", "color-burn burn handle5 colour")) {
            List<String> words = List.of(found.split(" "));
            assertTrue(List.of(all("data-words=\"([^\"]+)\"", cards.get(words.get(0))).get(0).replace("&amp;", "&").split(" "))
                .containsAll(words.subList(1, words.size())), found);
        }
        for (String text : List.of("Mode 4: <code>f = A * B * K</code>", "<code>c1 = mix(c1 * c2 * K)</code>, see",
                "<b>Unlike elsewhere:</b> Takes the saturation from the layer", "<span>1,500 Mpx/s (skia 1,200)</span>",
                "<code class=\"native\">VelUIBitmapUtils.nativeEraseGray(bitmap, 100, null, null);</code>",
                "nativeImageFilter10(source, destination, source.getWidth() / 2f, source.getHeight() / 2f, source.getWidth() * 5 / 12f,"
                    + " 0.3);")) {
            assertTrue(page.contains(text), text);
        }
        assertEquals(List.of("fennic 1,500", "skia 1,200", "qt 400"),
            all("class=\"bar peer-(\\w+\".*>[\\d,]+)</span>", page).stream().map(bar -> bar.replaceAll("\".*>", " ")).toList());
        assertTrue(page.contains("<b>1.25 ×</b>"), "the ratio to the fastest peer");
        assertEquals(List.of("Darken", "Lighten", "Contrast", "Compare", "Hue", "By number", "Masks and sums", "Channels", "Tones",
            "Patterns", "Colour", "Detail", "Space", "Measurements", "Speed", "Letters of the formulas"), all("<h2>([^<]+)</h2>", page));

        // The live page has each operation and picture; a card leads to its own.
        String live = Files.readString(folder.resolve("gallery/try.html"));
        assertTrue(live.contains("/* more */") && live.contains("<script>'{{data}}$1'</script>images/icon-oblong.png"));
        String data = all("<data>([^<]*)</data>", live).get(0);
        assertEquals(names, all("\\{\"name\": \"([^\"]+)\", \"family\"", data));
        assertEquals(List.of("icon-oblong", "layer-plain"), all("\\{\"name\": \"([^\"]+)\", \"title\"", data));
        for (String text : List.of("\"native\": \"VelUIBitmapUtils.nativeEraseGray(«result», «threshold», null, null);\"",
                "\"typed\": \"Effects.sharpen(«input», «result», «sharpness»);\"", "\"module\": \"mode\", \"fixed\": {\"mode\": 12}",
                "\"kotlin\": {\"usual\": \"floatArrayOf(0.5f, 0.5f)\"", "{\"usual\": \"icon.getWidth() * 5 / 12f\"")) {
            assertTrue(data.contains(text), text);
        }
        cards.forEach((name, card) ->
            assertTrue(card.contains("\"try.html#base=icon-oblong&amp;layer=layer-plain&amp;do=" + name + "\""), name));

        // The command of a card makes its picture.
        for (String name : List.of("darken", "vignette-4")) {
            String command = all("<code class=\"command\">./fennic (.*)</code>", cards.get(name.replace("-4", ""))).get(0);
            assertEquals(new Result(0, "", ""), run(folder, command.replaceAll("<[^>]*>", "").split(" ")));
            assertArrayEquals(Files.readAllBytes(folder.resolve("gallery/images/" + name + "-icon-oblong.png")),
                Files.readAllBytes(folder.resolve("out.png")), command);
        }
    }

    @Test
    void theDocumentedTableIsTheList() throws Exception {
        assertEquals(Files.readString(ROOT.resolve("docs/operations.md")), run(folder, "list", "--markdown").out,
            "let ./fennic list --markdown write docs/operations.md anew");
    }

    private static List<String> all(String pattern, String text) {
        return Pattern.compile(pattern).matcher(text).results().map(match -> match.group(1)).toList();
    }

    private List<String> contents() throws IOException {
        try (Stream<Path> files = Files.walk(folder)) {
            return files.filter(file -> !file.equals(folder)).map(file -> folder.relativize(file).toString()).sorted().toList();
        }
    }

    private static Result run(Path folder, String... arguments) throws Exception {
        return start(folder, "", Stream.concat(Stream.of("" + ROOT.resolve("fennic")), Stream.of(arguments)).toList());
    }

    private static Result start(Path folder, String suffix, List<String> command) throws Exception {
        Path out = outputs.resolve("out" + suffix), err = outputs.resolve("err" + suffix);
        ProcessBuilder process = new ProcessBuilder(command).directory(folder.toFile())
            .redirectOutput(out.toFile()).redirectError(err.toFile());
        process.environment().putAll(Map.of("f", "" + ROOT.resolve("fennic"), "out", "" + outputs.resolve("out"),
            "err", "" + outputs.resolve("err"), "LC_ALL", "C"));
        int exitCode = process.start().waitFor();
        return new Result(exitCode, Files.readString(out), Files.readString(err));
    }
}
