package com.velmora.display.fennic.cli;

import static java.util.stream.Collectors.toMap;
import static org.junit.jupiter.api.Assertions.*;

import java.awt.image.BufferedImage;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.TreeSet;
import java.util.regex.MatchResult;
import java.util.regex.Pattern;
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
        "measure text.png                                            | 1 | text.png: not a PNG",
        "measure cut.png                                             | 1 | cut.png: a damaged or oversized PNG",
        "measure empty                                               | 1 | empty: a folder",
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
        "effect darken base.png -o out.png                           | 2 | unknown effect 'darken'",
        "effect invert base.png --threshold 1 -o out.png             | 2 | invert takes no --threshold",
        "effect denoise base.png --threshold 1.5 -o out.png          | 2 | --threshold takes a value of type int, not '1.5'",
        "effect swirl base.png --radius width/0 -o out.png           | 2 | --radius takes a value of type float, not 'width/0'",
        "effect vignette base.png --color width,0 -o out.png         | 2 | --color takes a value of type int[] like 0,0",
        "effect pick-channel base.png --channel 4 -o out.png         | 1 | nativePickUpChannel failed with status -1",
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
                + "\"average\":[200,100,50,255],\"cutOff\":[2,3,7,6],\"square\":[0,1,6,6],\"median\":124.2}]",
            json.out.replaceAll("\\s", ""));
        assertEquals(0, json.exitCode);

        Result table = run(folder, "measure", "base.png", "text.png", "layer.png");
        List<String> rows = table.out.lines().map(row -> row.strip().replaceAll("\\s+", " ")).toList();
        assertEquals("10 10 23 77 0.7600 124.2 200,100,50,255 2,3,7,6 0,1,6,6 base.png", rows.get(1));
        assertEquals("20 20 400 0 0.0000 140.8 100,150,200,255 0,0,19,19 - layer.png", rows.get(2), "after a bad file");
        assertEquals(1, table.exitCode);
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

        Result result = run(folder, "gallery", "--icons", ".", "--out", "gallery", "--figures", "figures.csv");
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
        List<String> command = Stream.concat(Stream.of("" + ROOT.resolve("fennic")), Stream.of(arguments)).toList();
        Path out = outputs.resolve("out"), err = outputs.resolve("err");
        int exitCode = new ProcessBuilder(command).directory(folder.toFile())
            .redirectOutput(out.toFile()).redirectError(err.toFile()).start().waitFor();
        return new Result(exitCode, Files.readString(out), Files.readString(err));
    }
}
