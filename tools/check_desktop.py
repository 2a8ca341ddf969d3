"""Checks the jar for a desktop JVM as those who get it use it: alone, with nothing set up.

usage: check_desktop.py FOLDER

What its libraries need; programs and tests of Java and Kotlin over the jar; where it unpacks and what it leaves there, by whoever is
started, killed, started four times at once, or loaded anew in one process; what it says where it cannot work; the command line.
"""

import fcntl
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile
from pathlib import Path

from checks import demand, finish, root, run, version

published = Path(sys.argv[1]).resolve() / "maven/com/velmora/display"
jar, command_line = (published / name / version / f"{name}-{version}.jar" for name in ("fennic-desktop", "fennic-cli"))
folder_in_jar = "com/velmora/display/fennic/desktop"
libraries = ("libfennic.so", "libjnigraphics.so", "liblog.so", "libfennic-webp.so")
# By platform: clang's name for it, the smallest pages' size that has to be served, and what runs its programs here.
platforms = {
    "linux-x86_64": ("x86_64-linux-gnu", 0x1000, []),
    "linux-aarch64": ("aarch64-linux-gnu", 0x10000, ["qemu-aarch64-static", "-L", "/usr/aarch64-linux-gnu"]),
}
oldest_glibc = (2, 31)
java, junit = Path(shutil.which("java")), "/usr/share/java/junit-platform-console-standalone.jar"
kotlin, picocli = "/usr/share/java/kotlin-stdlib.jar", "/usr/share/java/picocli.jar"
blended = "0 ff330000\n"


def check_library(library, page):
    name = f"{library.parent.name}/{library.name}"
    listing = run("llvm-readelf-19", "--wide", "--dynamic-table", "--version-info", "--program-headers", library)
    needed, paths = (re.findall(rf"\({tag}\).*\[(.*)\]", listing) for tag in ("NEEDED", "(?:RPATH|RUNPATH)"))
    allowed = {"libc.so.6", "libwebp.so.7"} if library.name == "libfennic-webp.so" else {
        "libc.so.6", "libm.so.6", "libjnigraphics.so", "liblog.so"}
    demand(set(needed) <= allowed, f"{name} needs {needed}")
    demand(paths == (["$ORIGIN"] if library.name == "libfennic.so" else []), f"{name} looks for libraries in {paths}")
    demand(f"[{library.name}]" in listing, f"{name} has another soname")
    alignments = [int(number, 16) for number in re.findall(r"^ +LOAD .* (0x\w+)$", listing, re.M)]
    demand(alignments and min(alignments) >= page, f"{name} is made for smaller pages: {alignments}")
    kinds = {kind: [tuple(map(int, number.split("."))) for number in re.findall(rf"Name: {kind}_([\d.]+)", listing)]
             for kind in re.findall(r"Name: ([A-Z]+)_", listing)}
    demand(kinds.keys() == {"GLIBC"}, f"{name} needs versions of {sorted(kinds)}")
    newest = max(kinds.get("GLIBC", [(0,)]))
    demand(newest <= oldest_glibc, f"{name} needs glibc {newest}")
    print(f"{name}: {library.stat().st_size} bytes, glibc {'.'.join(map(str, newest))}")


def check_libraries(unpacked, scratch):
    """Each is made for its platform's oldest C library, and is loaded there with every symbol bound."""
    found = sorted(path.relative_to(unpacked).as_posix() for path in unpacked.rglob("*.so"))
    demand(found == sorted(f"{platform}/{name}" for platform in platforms for name in libraries), f"the jar has {found}")
    for platform, (target, page, emulator) in platforms.items():
        for name in libraries:
            check_library(unpacked / platform / name, page)
        program = scratch / f"loads-{platform}"
        run("clang-19", f"--target={target}", root / "tests/consumer/loads.c", "-o", program)
        run(*emulator, program, unpacked / platform / "libfennic.so", "Java_com_velmora_display_fennic_VelUIBitmapUtils_nativeBitmapHandle4")
        run(sys.executable, root / "tools/check_exports.py", unpacked / platform / "libfennic.so")


def as_nobody():
    """Somebody without a home, or, where we are not root, ourselves: for whom a read-only folder is one."""
    return ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"] if os.geteuid() == 0 else []


class Place:
    """Folders for one start: one to start in, a temporary one that has to stay empty, a home that has to, too."""

    def __init__(self, scratch):
        self.path = Path(tempfile.mkdtemp(dir=scratch))
        self.path.chmod(0o755)
        for name, mode in (("start", 0o555), ("temporary", 0o1777), ("home", 0o1777), ("shut", 0o555)):
            (self.path / name).mkdir()
            (self.path / name).chmod(mode)

    def command(self, classes, *words, before=()):
        options = [word.replace("@", f"{self.path}/") for word in words]
        return [*before, str(java), f"-Djava.io.tmpdir={self.path}/temporary", "-cp", f"{jar}:{classes}", *options]

    def start(self, *arguments, **options):
        return subprocess.Popen(self.command(*arguments, **options), cwd=self.path / "start", env={}, text=True, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE)

    def left(self):
        return sorted(path.name for name in ("temporary", "home", "shut", "start") for path in (self.path / name).iterdir())


def check_starts(classes, unpacked, scratch):
    desktop, reload = "org.example.Desktop", "org.example.Reload"
    native = f"-Djava.library.path={unpacked}/linux-x86_64"
    with zipfile.ZipFile(published / "fennic" / version / f"fennic-{version}.aar") as archive:
        androids = archive.extract("classes.jar", scratch)
    broken = scratch / "broken"
    broken.mkdir()
    (broken / "libfennic.so").write_bytes(b"")
    shut, home, none = "-Djava.io.tmpdir=@shut", "-Duser.home=@home", "-Duser.home=@shut"
    cases = [  # who starts it, options and class; what it prints, or what its error says
        ("the jar alone", [], [desktop], blended),
        ("a user without a home", as_nobody(), [desktop], blended),
        ("before the AAR", [], ["-cp", f"{jar}:{classes}:{androids}", desktop], blended),
        ("a library path", [], [native, shut, none, desktop], blended),
        ("class loaders", [], [reload], 4 * blended + "0 left\n"),
        ("class loaders, a library path", [], [native, reload], 4 * blended + "0 left\n"),
        ("no temporary folder but a home", as_nobody(), [shut, home, desktop], blended),
        ("no folder at all", as_nobody(), [shut, none, desktop], ["/shut", "AccessDenied", "-Djava.io.tmpdir=FOLDER"]),
        ("a library path of something else", [], [f"-Djava.library.path={broken}", desktop], [f"{broken}/libfennic.so", "too short"]),
        ("macOS", [], ["-Dos.name=Mac OS X", "-Dos.arch=aarch64", desktop], ["Mac OS X on aarch64", "desktop/mac-os-x-aarch64", "container"]),
        ("another processor", [], ["-Dos.arch=riscv64", desktop], ["for Linux on riscv64", "java.library.path (", "glibc 2.31"]),
    ]
    for name, who, words, expected in cases:
        place = Place(scratch)
        started = place.start(classes, *words, before=who)
        out, error = started.communicate()
        if isinstance(expected, str):
            demand(started.returncode == 0 and out == expected, f"{name}: {out!r}, {error[-1000:]}")
        else:
            demand(started.returncode == 1 and "UnsatisfiedLinkError" in error and all(words in error for words in expected),
                   f"{name}: {out!r}, {error[-1000:]}")
        demand(not place.left(), f"{name}: leaves {place.left()}")

    together = Place(scratch)
    for started in [together.start(classes, desktop) for _ in range(4)]:
        out, error = started.communicate()
        demand(started.returncode == 0 and out == blended, f"four at once: {out!r}, {error[-1000:]}")
    demand(not together.left(), f"four at once leave {together.left()}")


def check_killed(classes, scratch):
    """What a start leaves when it is killed, at any moment, the next one deletes; but not what is locked, linked to or not ours."""
    place = Place(scratch)
    temporary = place.path / "temporary"
    for number in range(12):
        started = place.start(classes, "org.example.Desktop")
        time.sleep(0.04 * (number + 1))
        started.kill()
        started.communicate()
    kept, linked = temporary / "fennic-natives-locked", place.path / "home"
    for folder in (temporary / "fennic-natives-left", kept, linked):
        folder.mkdir(exist_ok=True)
        for name in ("locked", *libraries):
            (folder / name).touch()
    (temporary / "fennic-natives-empty").mkdir()
    (temporary / "fennic-natives-link").symlink_to(linked)
    (temporary / "somebody's").mkdir()
    with (kept / "locked").open("w") as held:
        fcntl.lockf(held, fcntl.LOCK_EX)
        place.start(classes, "org.example.Desktop").communicate()
        left = sorted(path.name for path in temporary.iterdir())
    demand(left == ["fennic-natives-link", "fennic-natives-locked", "somebody's"], f"after twelve killed starts there are {left}")
    for folder in (kept, linked):
        demand(len(list(folder.glob("*"))) == 1 + len(libraries), f"files went from {folder.name}, which are in use or only linked to")


def check_log(classes):
    """Both lines that the overlays leave on the error stream: their own, and the log's, where the rules of logcat show it."""
    own, logged = "Rect is 0, 0, 3, 2", "D/jni/KorvGraphics2D: Rect is 0, 0, 3, 2\n"
    cases = {None: True, "": True, "*:s": False, "*:I": False, "*:d": True, "jni/KorvGraphics2D:S": False, "jni/Korv:S": True,
             "jni/KorvGraphics2D:V *:S": True, "*:S jni/KorvGraphics2D:V": True, "jni/KorvGraphics2D:W  *:V": False}
    for rules, shown in cases.items():
        printed = subprocess.run([java, "-cp", f"{jar}:{classes}", "org.example.Overlay"], capture_output=True, text=True,
                                 env={} if rules is None else {"ANDROID_LOG_TAGS": rules})
        demand(printed.stderr == own + logged * shown, f"with ANDROID_LOG_TAGS {rules!r} the log shows {printed.stderr!r}")


def check_programs(classes, scratch):
    """Everything in tests/consumer that has a main, a JUnit test, and a Kotlin file."""
    run("kotlinc", "-jvm-target", "1.8", "-cp", jar, root / "tests/consumer/Icon.kt", "-d", scratch / "kotlin")
    printed = run(java, "-cp", f"{jar}:{scratch / 'kotlin'}:{kotlin}", "org.example.IconKt", env={})
    demand(printed == blended, f"the Kotlin program prints {printed!r}")
    tests = run(java, "-cp", f"{jar}:{classes}:{junit}", "org.junit.platform.console.ConsoleLauncher", "--disable-banner",
                "--select-class=org.example.IconTest", env={})
    demand("1 tests successful" in tests, f"JUnit says {tests}")
    for source in sorted((root / "tests/consumer").glob("*.java")):
        if "void main(" in source.read_text() and source.stem not in ("Desktop", "Reload"):
            run(java, "-cp", f"{jar}:{classes}", f"org.example.{source.stem}", env={})


def manifest(path):
    with zipfile.ZipFile(path) as archive:
        return dict(line.split(": ", 1) for line in archive.read("META-INF/MANIFEST.MF").decode().splitlines() if line)


def check_command_line(scratch):
    """Started where its dependencies lie beside it, as the manifest and the POM name them."""
    module = manifest(jar).get("Automatic-Module-Name")
    demand(module == "com.velmora.display.fennic.desktop", f"the jar is module {module}")
    beside = scratch / "command-line"
    beside.mkdir()
    for source, name in zip((jar, picocli), manifest(command_line)["Class-Path"].split()):
        shutil.copy(source, beside / name)
        artifact, _, its_version = name.removesuffix(".jar").rpartition("-")
        wanted = f"<artifactId>{artifact}</artifactId><version>{its_version}</version>"
        demand(wanted in command_line.with_suffix(".pom").read_text(), f"the POM of the command line does not name {name}")
        demand(manifest(source).get("Implementation-Version", its_version) == its_version, f"{name} is of another version")
    started = [java, "-jar", shutil.copy(command_line, beside)]
    demand(run(*started, "--version", env={}) == f"fennic {version}\n", "the command line is of another version")
    pictures = [root / "samples" / name for name in ("icon-map.png", "layer-paper.png")]
    run(*started, "blend", "multiply", *pictures, "-o", scratch / "out.png", env={})
    demand((scratch / "out.png").is_file(), "the command line wrote no picture")


with tempfile.TemporaryDirectory() as folder:
    scratch = Path(folder)
    scratch.chmod(0o755)
    with zipfile.ZipFile(jar) as archive:
        archive.extractall(scratch / "jar")
    unpacked, classes = scratch / "jar" / folder_in_jar, scratch / "classes"
    run("javac", "-cp", f"{jar}:{junit}", "-d", classes, *(root / "tests/consumer").glob("*.java"))
    check_libraries(unpacked, scratch)
    check_starts(classes, unpacked, scratch)
    check_killed(classes, scratch)
    check_log(classes)
    check_programs(classes, scratch)
    check_command_line(scratch)

finish(f"{jar.name}, {jar.stat().st_size} bytes, and the command line", "as they should be")
