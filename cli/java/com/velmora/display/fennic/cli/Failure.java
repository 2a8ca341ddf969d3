package com.velmora.display.fennic.cli;

/** Work that could not be done. The message is the one line the user sees: what is wrong and how to mend it. */
final class Failure extends RuntimeException {
    private static final long serialVersionUID = 1;

    Failure(String message) {
        super(message);
    }

    Failure(Object subject, String message) {
        super(subject + ": " + message);
    }
}
