package com.velmora.display.fennic.cli;

import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.ExecutionException;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import java.util.concurrent.FutureTask;
import java.util.function.Consumer;
import java.util.function.Function;

/** The same work on many pictures, on all cores, with the results in their order. One that fails is told and stops nothing. */
final class Batch {
    private int failed;

    <T> void each(List<Input> inputs, Function<Input, T> work, Consumer<T> result) {
        int threads = Math.min(inputs.size(), Runtime.getRuntime().availableProcessors());
        ExecutorService pool = threads > 1 ? Executors.newFixedThreadPool(threads) : null;
        try (Bar bar = new Bar(inputs.size())) {
            List<FutureTask<T>> tasks = new ArrayList<>();
            for (Input input : inputs) {
                FutureTask<T> task = new FutureTask<>(() -> {
                    try {
                        return work.apply(input);
                    } finally {
                        bar.step();
                    }
                });
                tasks.add(task);
                if (pool != null) {
                    pool.execute(task);
                }
            }
            for (int i = 0; i < tasks.size(); ++i) {
                FutureTask<T> task = tasks.set(i, null);
                if (pool == null) {
                    task.run();
                }
                take(inputs.get(i), task, work, result, bar);
            }
        } finally {
            if (pool != null) {
                pool.shutdownNow();
            }
        }
    }

    private <T> void take(Input input, Future<T> task, Function<Input, T> work, Consumer<T> result, Bar bar) {
        try {
            result.accept(get(input, task, work));
        } catch (Failure e) {
            ++failed;
            if (!WholeFile.isStopping()) {
                Fennic.complain(bar.room() + "fennic: " + e.getMessage());
            }
        }
    }

    private static <T> T get(Input input, Future<T> task, Function<Input, T> work) {
        try {
            return task.get();
        } catch (InterruptedException e) {
            throw new Failure(input, "interrupted");
        } catch (ExecutionException e) {
            if (e.getCause() instanceof OutOfMemoryError) {
                return alone(input, work);
            }
            if (e.getCause() instanceof LinkageError error) {
                throw error;
            }
            throw e.getCause() instanceof Failure failure ? failure : new Failure(input, "unexpected: " + e.getCause());
        }
    }

    /** Once more, with the memory of those beside it that are done by now. */
    private static <T> T alone(Input input, Function<Input, T> work) {
        try {
            return work.apply(input);
        } catch (OutOfMemoryError e) {
            throw new Failure(input, "does not fit into memory; take a smaller picture");
        }
    }

    int failed() {
        return failed;
    }

    int exitCode() {
        return failed > 0 ? 1 : 0;
    }
}
