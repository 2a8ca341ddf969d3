"""Makes what is published: of the four Android builds the AAR, its sources and documentation, and the symbols; of the two desktop
builds one jar with the libraries of both, and the command line; all in Maven's folders. Of the WebAssembly build an npm package.

usage: make_package.py FOLDER ABI...

The same sources give the same bytes: entries stand in the order that is written here, with one time for all.
"""

import gzip
import hashlib
import io
import json
import re
import shutil
import subprocess
import sys
import tarfile
import tempfile
import zipfile
from pathlib import Path

root = Path(__file__).resolve().parent.parent
dist = Path(sys.argv[1]).resolve()
abis = sys.argv[2:]
version = re.search(r"project\(fennic VERSION ([\d.]+)", (root / "CMakeLists.txt").read_text())[1]
parts = root / "android/aar"
java = root / "java", root / "android/java"
group = "com.velmora.display"
# Where the desktop jar's libraries come from, by the folder that their loader (desktop/java) looks in.
platforms = {"linux-x86_64": "release", "linux-aarch64": "arm64"}
picocli = "4.6.2"


def archive(path, entries):
    """Writes entries, pairs of a name and bytes, with one time for all: the earliest that a zip archive can hold."""
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as out:
        for name, data in entries:
            entry = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))
            entry.compress_type, entry.create_system, entry.external_attr = zipfile.ZIP_DEFLATED, 3, 0o644 << 16
            out.writestr(entry, data)
    return path


def manifest(**attributes):
    lines = "".join(f"{name.replace('_', '-')}: {value}\r\n" for name, value in {"Manifest_Version": "1.0", **attributes}.items())
    return "META-INF/MANIFEST.MF", (lines + "\r\n").encode()


def jar(path, *folders):
    files = sorted((file.relative_to(folder).as_posix(), file) for folder in folders for file in folder.rglob("*") if file.is_file())
    return archive(path, [manifest(), *((name, file.read_bytes()) for name, file in files)])


def run(*command):
    subprocess.run([str(word) for word in command], check=True, stdout=subprocess.DEVNULL)


def text(value):
    return (json.dumps(value, indent=2) + "\n").encode()


def prefab():
    """What Gradle gives to an application's CMake: the headers of the public static methods and the library, by ABI."""
    yield "prefab/prefab.json", text({"schema_version": 2, "name": "fennic", "version": version, "dependencies": []})
    module = "prefab/modules/fennic"
    yield f"{module}/module.json", text({"export_libraries": [], "library_name": "libfennic"})
    for header in sorted((root / "jni").glob("Korv*.h")):
        yield f"{module}/include/{header.name}", header.read_bytes()
    for abi in abis:
        yield f"{module}/libs/android.{abi}/abi.json", text({"abi": abi, "api": 21, "ndk": 27, "stl": "none", "static": False})
        yield f"{module}/libs/android.{abi}/libfennic.so", library(abi)


def library(abi, folder=""):
    return (root / "build" / f"android-{abi}" / folder / "libfennic.so").read_bytes()


def build_id(abi):
    notes = subprocess.run(["llvm-readelf-19", "--notes", root / "build" / f"android-{abi}/libfennic.so"], check=True,
                           capture_output=True, text=True).stdout
    return re.search(r"Build ID: (\w+)", notes)[1]


def built(name):
    """What the release build's jar holds, without its manifest."""
    with zipfile.ZipFile(root / "build/release" / name) as jar:
        for name in sorted(name for name in jar.namelist() if not name.startswith("META-INF/") and not name.endswith("/")):
            yield name, jar.read(name)


def npm():
    """The package's folder, and the same as an archive in npm's layout: one time for all, the one that npm takes."""
    module = (root / "build/wasm/fennic.wasm").read_bytes()
    sizes = {"SIZE": len(module), "COMPRESSED": len(gzip.compress(module, 9))}
    readme = (root / "wasm/README.md").read_text()
    for key, size in sizes.items():
        readme = readme.replace(f"@{key}@", f"{size / 1024:.0f}")
    files = {
        "README.md": readme.encode(),
        "fennic.d.ts": (root / "wasm/fennic.d.ts").read_bytes(),
        "fennic.mjs": (root / "wasm/fennic.mjs").read_bytes(),
        "fennic.wasm": module,
        "package.json": text({
            "name": "fennic", "version": version, "description": "Exact image processing: blends, effects, filters and icon measurements",
            "license": "UNLICENSED", "type": "module", "sideEffects": False, "types": "./fennic.d.ts",
            "exports": {".": {"types": "./fennic.d.ts", "default": "./fennic.mjs"}, "./fennic.wasm": "./fennic.wasm"},
            "engines": {"node": ">=16.11"}}),
    }
    folder = dist / "npm/fennic"
    folder.mkdir(parents=True)
    tar = io.BytesIO()
    with tarfile.open(fileobj=tar, mode="w", format=tarfile.USTAR_FORMAT) as out:
        for name, data in files.items():
            (folder / name).write_bytes(data)
            entry = tarfile.TarInfo(f"package/{name}")
            entry.size, entry.mtime, entry.mode = len(data), 499162500, 0o644
            out.addfile(entry, io.BytesIO(data))
    (dist / f"npm/fennic-{version}.tgz").write_bytes(gzip.compress(tar.getvalue(), 9, mtime=0))


def natives(scratch):
    """The libraries for desktop JVMs, stripped."""
    for platform, build in platforms.items():
        for name in ("libfennic.so", "libjnigraphics.so", "liblog.so", "libfennic-webp.so"):
            run("llvm-strip-19", "--strip-unneeded", "-o", scratch / name, root / "build" / build / name)
            yield f"com/velmora/display/fennic/desktop/{platform}/{name}", (scratch / name).read_bytes()


def maven(artifact, packaging, *dependencies):
    """The artifact's folder, with its POM."""
    folder = dist / "maven" / group.replace(".", "/") / artifact / version
    folder.mkdir(parents=True)
    pom = (parts / "fennic.pom").read_text()
    listed = "".join(f"    <dependency><groupId>{group}</groupId><artifactId>{name}</artifactId><version>{of}</version></dependency>\n"
                     for group, name, of in dependencies)
    for key, value in {"ARTIFACT": artifact, "PACKAGING": packaging, "VERSION": version, "DEPENDENCIES": listed}.items():
        pom = pom.replace(f"@{key}@", value)
    (folder / f"{artifact}-{version}.pom").write_text(pom)
    return folder


shutil.rmtree(dist, ignore_errors=True)
android = maven("fennic", "aar")
with tempfile.TemporaryDirectory() as scratch:
    classes, documentation = Path(scratch) / "classes", Path(scratch) / "documentation"
    sources = sorted(file for folder in java for file in folder.rglob("*.java"))
    run("javac", "--release", "8", "-Xlint:-options", "-implicit:none", "-encoding", "UTF-8", "-sourcepath", parts, "-d", classes,
        *sources)
    run("javadoc", "-quiet", "-notimestamp", "-encoding", "UTF-8", "-Xdoclint:all,-missing", "-sourcepath",
        ":".join(map(str, (*java, parts))), "-d", documentation, "com.velmora.display.fennic")
    jar(Path(scratch) / "classes.jar", classes)
    name = f"fennic-{version}"
    archive(android / f"{name}.aar", [
        ("AndroidManifest.xml", (parts / "AndroidManifest.xml").read_bytes()),
        ("R.txt", b""),
        ("classes.jar", (Path(scratch) / "classes.jar").read_bytes()),
        ("proguard.txt", (parts / "proguard.txt").read_bytes()),
        *((f"jni/{abi}/libfennic.so", library(abi)) for abi in abis),
        *prefab()])
    jar(android / f"{name}-sources.jar", *java)
    jar(android / f"{name}-javadoc.jar", documentation)
    desktop = f"fennic-desktop-{version}.jar"
    archive(maven("fennic-desktop", "jar") / desktop, [
        manifest(Automatic_Module_Name=f"{group}.fennic.desktop"), *built("fennic.jar"), *natives(Path(scratch))])
    # To be started by java -jar where its dependencies lie beside it.
    archive(maven("fennic-cli", "jar", (group, "fennic-desktop", version), ("info.picocli", "picocli", picocli))
            / f"fennic-cli-{version}.jar", [
        manifest(Main_Class=f"{group}.fennic.cli.Fennic", Class_Path=f"{desktop} picocli-{picocli}.jar", Implementation_Version=version,
                 Enable_Native_Access="ALL-UNNAMED", Automatic_Module_Name=f"{group}.fennic.cli"), *built("fennic-cli.jar")])
shutil.copy(android / f"{name}.aar", dist)
npm()
archive(dist / f"{name}-symbols.zip", [("build-ids.txt", "".join(f"{abi} {build_id(abi)}\n" for abi in abis).encode()),
                                       *((f"{abi}/libfennic.so", library(abi, "unstripped")) for abi in abis)])
made = sorted(file for file in dist.rglob("*") if file.is_file())
(dist / "SHA256SUMS").write_text(
    "".join(f"{hashlib.sha256(file.read_bytes()).hexdigest()}  {file.relative_to(dist).as_posix()}\n" for file in made))
