"""Checks what ./package makes, as those who get it use it.

usage: check_package.py FOLDER ABI...

The AAR's entries, class files, prefab description and libraries; what a shrinker leaves of the natives with its rules and without;
the sample application, and a native library of somebody's that links against it; a program in Node.js; what the README says of them;
the sums.
"""

import json
import re
import sys
import tarfile
import tempfile
import zipfile
from pathlib import Path

from checks import demand, finish, root, run, version

dist = Path(sys.argv[1]).resolve()
abis = sys.argv[2:]
natives_class, consumer_class = "com.velmora.display.fennic.VelUIBitmapUtils", "org.example.Consumer"
java_sources = {file.relative_to(folder).as_posix() for folder in (root / "java", root / "android/java") for file in folder.rglob("*.java")}
module = "prefab/modules/fennic"
stand_ins = root / "samples/android/stand-ins"  # for classes of the platform


def fits(value, schema):
    """Whether a value is of a type, one of a set, or a dictionary with just these keys, whose values fit."""
    if isinstance(schema, dict):
        return isinstance(value, dict) and value.keys() == schema.keys() and all(fits(value[key], schema[key]) for key in schema)
    return value in schema if isinstance(schema, (set, tuple)) else type(value) is schema


def check_entries(names):
    wanted = {"AndroidManifest.xml", "R.txt", "classes.jar", "proguard.txt", "prefab/prefab.json", f"{module}/module.json"}
    wanted |= {f"{module}/include/{header.name}" for header in (root / "jni").glob("Korv*.h")}
    for abi in abis:
        wanted |= {f"jni/{abi}/libfennic.so", f"{module}/libs/android.{abi}/abi.json", f"{module}/libs/android.{abi}/libfennic.so"}
    for name in sorted(wanted ^ set(names)):
        demand(False, f"{name} is {'missing' if name in wanted else 'no part of an AAR'}")
    demand(len(names) == len(set(names)), "an entry stands twice")


def check_prefab(aar):
    schemas = {
        "prefab/prefab.json": {"schema_version": {2}, "name": {"fennic"}, "version": {version}, "dependencies": ([],)},
        f"{module}/module.json": {"export_libraries": ([],), "library_name": {"libfennic"}},
    }
    for abi in abis:
        schemas[f"{module}/libs/android.{abi}/abi.json"] = {
            "abi": {abi}, "api": {21}, "ndk": int, "stl": {"none"}, "static": {False}}
    for name, schema in schemas.items():
        demand(fits(json.loads((aar / name).read_text()), schema), f"{name} is not what prefab reads")


def check_libraries(aar, symbols):
    build_ids = dict(line.split() for line in (symbols / "build-ids.txt").read_text().splitlines())
    for abi in abis:
        shipped = aar / f"jni/{abi}/libfennic.so"
        print(run(sys.executable, root / "tools/check_elf.py", shipped, abi), end="")
        run(sys.executable, root / "tools/check_exports.py", shipped)
        prefabs = aar / f"{module}/libs/android.{abi}/libfennic.so"
        demand(shipped.read_bytes() == prefabs.read_bytes(), f"prefab has another {abi}")
        for file in (shipped, symbols / abi / "libfennic.so"):
            demand(f"Build ID: {build_ids[abi]}" in run("llvm-readelf-19", "--notes", file), f"another build id than the list's: {abi}")
        address = re.search(r"(\w+) T _ZN14KorvGraphics2D13getSourceSize", run("llvm-nm-19", symbols / abi / "libfennic.so"))
        line = run("llvm-symbolizer-19", f"--obj={symbols / abi / 'libfennic.so'}", f"0x{address[1]}") if address else ""
        demand("jni/measure/Geometry.cpp:" in line and str(root) not in line, f"the symbols of {abi} lead to no line: {line}")


def check_classes(jar):
    """One of each source, at Java 8's level; no class named but java.lang's, the platform's bitmap and its own."""
    classes = [name.removesuffix(".class") for name in zipfile.ZipFile(jar).namelist() if name.endswith(".class")]
    demand({name.split("$")[0] + ".java" for name in classes} == java_sources, f"class files are {classes}")
    for of in classes:
        listing = run("javap", "-verbose", "-private", "-classpath", jar, of.replace("/", "."))
        demand("major version: 52" in listing, f"{of} is not of Java 8's level")
        named = set(re.findall(r"= Class +#\d+ +// +([^\s\"]+)", listing))
        for constant in re.findall(r"= Utf8 +(\S+)", listing):
            named |= set(re.findall(r"L([\w/$]+);", constant))
        for name in sorted(named - set(classes)):
            known = re.fullmatch(r"java/lang/\w+|android/graphics/Bitmap(?:\$Config)?", name)
            demand(known, f"{of} refers to {name}")
        demand("java/lang/Object" in named, f"the listing of {of} could not be read")
    with zipfile.ZipFile(dist / f"maven/com/velmora/display/fennic/{version}/fennic-{version}-sources.jar") as sources:
        demand({name for name in sources.namelist() if name.endswith(".java")} == java_sources, "the sources jar has other sources")


def check_rules(aar, scratch):
    """What proguard makes of an application: with the AAR's rules the natives keep their names, without them they lose them."""
    classes = scratch / "consumer"
    run("javac", "--release", "8", "-Xlint:-options", "-implicit:none", "-sourcepath", stand_ins, "-classpath",
        aar / "classes.jar", "-d", classes, root / "tests/consumer/Consumer.java")
    for rules in (True, False):
        mapping = scratch / f"mapping-{rules}"
        # The platform's classes are not there to be looked at.
        run("proguard", "-injars", f"{classes}:{aar / 'classes.jar'}", "-outjars", scratch / f"shrunk-{rules}.jar",
            "-printmapping", mapping, "-ignorewarnings", "-dontnote", *(["-include", aar / "proguard.txt"] if rules else []),
            f"-keep class {consumer_class} {{ public *; }}")
        names = dict(re.findall(r"^ *(?:int )?([\w.]+)(?:\(.*\))? -> ([\w.]+)", mapping.read_text() if mapping.exists() else "", re.M))
        for name in (natives_class, "nativeBitmapHandle4"):
            demand(name in names, f"proguard left no {name} to look at")
            demand((names.get(name) == name) == rules, f"{name} becomes {names.get(name)} {'with' if rules else 'without'} the AAR's rules")


def check_sample(aar, scratch):
    """The sample application compiles, with stand-ins for the framework's classes."""
    activity, = (root / "samples/android").rglob("MainActivity.java")
    run("javac", "--release", "8", "-Xlint:all,-options", "-Werror", "-implicit:none", "-sourcepath", stand_ins,
        "-classpath", aar / "classes.jar", "-d", scratch / "sample", activity)
    gradle = (root / "samples/android/build.gradle").read_text()
    demand(f"'com.velmora.display:fennic:{version}'" in gradle, "the sample asks for another version")


def check_consumer(aar, scratch):
    for abi in abis:
        build = scratch / f"consumer-{abi}"
        run("cmake", "-G", "Ninja", "-S", root / "tests/consumer", "-B", build, f"-DPREFAB={aar / module}", f"-DANDROID_ABI={abi}",
            f"-DCMAKE_TOOLCHAIN_FILE={root}/cmake/android.cmake")
        run("cmake", "--build", build)
        needed = run("llvm-readelf-19", "--needed-libs", build / "libconsumer.so") if (build / "libconsumer.so").exists() else ""
        demand("libfennic.so" in needed, f"somebody's library for {abi} does not need ours")


def check_npm(scratch):
    """A program in Node.js runs with what npm would unpack, which is what the folder has and package.json names."""
    modules = scratch / "npm/node_modules"
    with tarfile.open(dist / f"npm/fennic-{version}.tgz") as archive:
        demand(all(entry.isfile() and entry.name.startswith("package/") for entry in archive), "npm would not unpack an entry")
        archive.extractall(modules)
    (modules / "package").rename(modules / "fennic")
    contents = [{file.name: file.read_bytes() for file in folder.iterdir()} for folder in (dist / "npm/fennic", modules / "fennic")]
    demand(contents[0] == contents[1], "the npm package's folder and archive differ")
    package, readme = json.loads(contents[1]["package.json"]), contents[1]["README.md"].decode()
    named = {package["types"], *package["exports"]["."].values(), package["exports"]["./fennic.wasm"]}
    demand(package["version"] == version and {f"./{name}" for name in contents[1]} == named | {"./README.md", "./package.json"},
           f"package.json is of {package['version']} with {sorted(named)}")
    demand("@" not in readme, "the npm package's README has a gap")
    program = scratch / "npm/consumer.mjs"
    program.write_text((root / "tests/consumer/consumer.mjs").read_text())
    printed = run("node", program)
    demand(printed == "66 operations, 51,0,0,255, visible 6\n", f"a program with the npm package prints {printed!r}")


def check_readme(aar):
    """What the README tells people to ask for, and how big it says that the libraries are."""
    readme = (root / "README.md").read_text()
    for name in (f"com.velmora.display:fennic:{version}", f"fennic-{version}-symbols.zip", f"com.velmora.display:fennic-desktop:{version}",
                 f"fennic-{version}.tgz"):
        demand(name in readme, f"the README does not name {name}")
    for abi in abis:
        size, said = (aar / f"jni/{abi}/libfennic.so").stat().st_size / 1024, re.search(rf"`{abi}` \| (\d+) KB", readme)
        demand(said and abs(int(said[1]) - size) < 0.05 * size, f"the README's size of {abi} is not {size:.0f} KB")
    size, said = (dist / "npm/fennic/fennic.wasm").stat().st_size / 1024, re.search(r"`fennic.wasm` has (\d+) KB", readme)
    demand(said and abs(int(said[1]) - size) < 0.05 * size, f"the README's size of fennic.wasm is not {size:.0f} KB")


def check_maven():
    for artifact, packaging, ends in (("fennic", "aar", (".aar", "-sources.jar", "-javadoc.jar")), ("fennic-desktop", "jar", (".jar",)),
                                      ("fennic-cli", "jar", (".jar",))):
        folder = dist / "maven/com/velmora/display" / artifact / version
        for end in ends:
            demand((folder / f"{artifact}-{version}{end}").is_file(), f"Maven's folder has no {artifact}{end}")
        pom = (folder / f"{artifact}-{version}.pom").read_text()
        demand(f"<version>{version}</version>\n  <packaging>{packaging}</packaging>" in pom, f"the POM of {artifact} is of something else")
    run("sha256sum", "--check", "--strict", "SHA256SUMS", cwd=dist)
    listed = {line.split("  ")[1] for line in (dist / "SHA256SUMS").read_text().splitlines()}
    present = {file.relative_to(dist).as_posix() for file in dist.rglob("*") if file.is_file()} - {"SHA256SUMS"}
    demand(listed == present, f"SHA256SUMS has more or less than {sorted(listed ^ present)}")


with tempfile.TemporaryDirectory() as folder:
    scratch = Path(folder)
    aar, symbols = scratch / "aar", scratch / "symbols"
    with zipfile.ZipFile(dist / f"fennic-{version}.aar") as archive:
        check_entries(archive.namelist())
        archive.extractall(aar)
    with zipfile.ZipFile(dist / f"fennic-{version}-symbols.zip") as archive:
        archive.extractall(symbols)
    check_prefab(aar)
    check_libraries(aar, symbols)
    check_classes(aar / "classes.jar")
    check_rules(aar, scratch)
    check_sample(aar, scratch)
    check_consumer(aar, scratch)
    check_npm(scratch)
    check_readme(aar)
    check_maven()

finish(f"fennic {version}, {dist.name}/", "as it should be")
