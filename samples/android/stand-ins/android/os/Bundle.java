package android.os;

/** A stand-in by name, to compile the sample against. */
public final class Bundle {}
