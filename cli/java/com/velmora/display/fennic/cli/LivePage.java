package com.velmora.display.fennic.cli;

import static java.nio.charset.StandardCharsets.UTF_8;
import static java.util.stream.Collectors.joining;

import com.velmora.display.fennic.cli.Operation.Parameter;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Base64;
import java.util.List;
import java.util.function.Function;
import java.util.stream.Stream;
import java.util.zip.GZIPOutputStream;

/**
 * try.html: the operations themselves, on anybody's pictures. Its parts are made of page/; from here come the list of
 * operations with the templates of their calls, the samples, and the WebAssembly module, all in one file: a page that is opened
 * from a disk may read no other.
 */
final class LivePage {
    private final Path parts;
    private final String style;

    private LivePage(Path parts, String style) {
        this.parts = parts;
        this.style = style;
    }

    /** Null where its parts have not been made. */
    static LivePage of(Path parts) {
        boolean made = Stream.of("try.html", "try.css", "try.js", "fennic.wasm").map(parts::resolve).allMatch(Files::exists);
        return made ? new LivePage(parts, Resource.text("gallery.css")) : null;
    }

    /** Where the page begins with these pictures and one operation. */
    static String address(Gallery.Subject subject, Operation operation) {
        return "try.html#base=%s&layer=%s&do=%s".formatted(
            Page.urlEncoded(subject.icon().picture().name()), Page.urlEncoded(subject.layer().picture().name()),
            operation.name());
    }

    String html(List<Gallery.Source> samples, String favicon) {
        String data = Json.object(
            "operations", Json.lines(Operation.of(Operation.CHANGING).stream().map(LivePage::json).toList()),
            "samples", Json.lines(samples.stream().map(LivePage::json).toList()),
            "module", Json.string(base64(compressed(bytes(parts.resolve("fennic.wasm"))))));
        // The script comes last, for it may hold what looks like a slot. A < in the data could end its element.
        return text("try.html")
            .replace("{{favicon}}", favicon)
            .replace("{{style}}", style + text("try.css"))
            .replace("{{data}}", data.replace("<", "\\u003c"))
            .replace("{{script}}", text("try.js"));
    }

    private static String json(Operation operation) {
        List<Parameter> choices = operation.choices();
        Function<Parameter, String> slot = p ->
            p.isBitmap() ? "«" + p.initial() + "»" : choices.contains(p) ? "«" + p.name() + "»" : p.literal("icon");
        return Json.object("name", Json.string(operation.name()), "family", Json.string(operation.family()),
            "summary", Json.string(operation.summary()), "words", Json.string(Words.finding(Stream.of(operation))),
            "command", Json.string(operation.kind().equals("BLEND") ? "blend" : "effect"),
            "module", Json.string(operation.listedName()),
            "fixed", operation.isNumbered() ? Json.object("mode", operation.parameters().get(2).initial()) : "{}",
            "recipes", array(operation.parameters().stream().filter(Parameter::isBitmap).map(p -> Json.string(p.initial()))),
            "parameters", array(choices.stream().map(LivePage::json)),
            "typed", Json.string(operation.typedCall(slot)),
            "native", Json.string(operation.call(slot)));
    }

    private static String json(Parameter p) {
        return Json.object("name", Json.string(p.name()), "type", Json.string(p.type()), "initial", Json.string(p.initial()),
            "least", Json.string(p.choice().least()), "most", Json.string(p.choice().most()), "low", Json.string(p.low()),
            "high", Json.string(p.high()), "unit", Json.string(p.unit()), "meaning", Json.string(p.meaning()),
            "java", json(p, p.java()), "kotlin", json(p, p.kotlin()));
    }

    private static String json(Parameter p, Operation.Spelling spelling) {
        return Json.object("usual", Json.string(p.literal("icon", spelling)),
            "before", Json.string(spelling.before()), "whole", Json.string(spelling.whole()),
            "suffix", Json.string(spelling.suffix()), "after", Json.string(spelling.after()));
    }

    private static String json(Gallery.Source sample) {
        return Json.object("name", Json.string(sample.picture().name()), "title", Json.string(sample.title()),
            "path", Json.string(sample.path()), "png", Json.string(base64(bytes(sample.file()))));
    }

    private static String array(Stream<String> elements) {
        return elements.collect(joining(", ", "[", "]"));
    }

    private static String base64(byte[] bytes) {
        return Base64.getEncoder().encodeToString(bytes);
    }

    private static byte[] compressed(byte[] bytes) {
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        try (GZIPOutputStream zip = new GZIPOutputStream(out)) {
            zip.write(bytes);
        } catch (IOException e) {
            throw new IllegalStateException(e);
        }
        return out.toByteArray();
    }

    private String text(String part) {
        return new String(bytes(parts.resolve(part)), UTF_8);
    }

    private static byte[] bytes(Path file) {
        try {
            return Files.readAllBytes(file);
        } catch (IOException e) {
            throw new Failure(file, "cannot be read: " + e.getMessage());
        }
    }
}
