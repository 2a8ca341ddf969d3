package android.view;

/** A stand-in by name, to compile the sample against. */
public class View {}
