package org.example;

import java.io.File;
import java.lang.ref.WeakReference;
import java.net.URL;
import java.net.URLClassLoader;
import java.nio.file.Path;
import java.util.ArrayList;

/** Runs a program in class loaders of their own, as tools do that load classes anew; all but the first are let go. */
public final class Reload {
    private Reload() {}

    public static void main(String[] arguments) throws Exception {
        ClassLoader first = run(newLoader());
        var others = new ArrayList<WeakReference<ClassLoader>>();
        for (int i = 0; i < 2; ++i) others.add(new WeakReference<>(run(newLoader())));
        for (int tries = 0; tries < 50 && !others.isEmpty(); ++tries) {
            System.gc();
            Thread.sleep(10);
            others.removeIf(loader -> loader.refersTo(null));
        }
        run(first);
        System.out.println(others.size() + " left");
    }

    private static ClassLoader run(ClassLoader loader) throws Exception {
        loader.loadClass("org.example.Desktop").getMethod("main", String[].class).invoke(null, (Object) new String[0]);
        return loader;
    }

    private static ClassLoader newLoader() throws Exception {
        var path = new ArrayList<URL>();
        for (String part : System.getProperty("java.class.path").split(File.pathSeparator)) {
            path.add(Path.of(part).toUri().toURL());
        }
        return new URLClassLoader(path.toArray(URL[]::new), ClassLoader.getPlatformClassLoader());
    }
}
