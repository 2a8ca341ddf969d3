package android.widget;

/** A stand-in by name, to compile the sample against. */
public interface SpinnerAdapter {}
