package com.velmora.display.fennic.cli;

import java.util.ArrayList;
import java.util.List;

/** As much JSON as is printed here. */
final class Json {
    private Json() {}

    static String string(String text) {
        if (text == null) {
            return "null";
        }
        StringBuilder out = new StringBuilder("\"");
        for (char c : text.toCharArray()) {
            if (c == '"' || c == '\\') {
                out.append('\\').append(c);
            } else {
                out.append(c < ' ' ? String.format("\\u%04x", (int) c) : String.valueOf(c));
            }
        }
        return out.append('"').toString();
    }

    /** Names and values in turn; the values are JSON already. */
    static String object(String... fields) {
        List<String> members = new ArrayList<>();
        for (int i = 0; i < fields.length; i += 2) {
            members.add(string(fields[i]) + ": " + fields[i + 1]);
        }
        return "{" + String.join(", ", members) + "}";
    }

    /** An array with a line for each element. */
    static String lines(List<String> elements) {
        return elements.isEmpty() ? "[]" : "[\n  " + String.join(",\n  ", elements) + "\n]";
    }
}
