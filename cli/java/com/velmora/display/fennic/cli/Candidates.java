package com.velmora.display.fennic.cli;

import java.util.Iterator;
import java.util.List;

/** The names of the operations of some kinds, for a shell to complete. */
abstract class Candidates implements Iterable<String> {
    private final List<String> kinds;

    Candidates(String... kinds) {
        this.kinds = List.of(kinds);
    }

    @Override
    public Iterator<String> iterator() {
        return Operation.of(kinds).stream().map(Operation::name).iterator();
    }
}
