# Sourced by fennic, test, benchmark and package: what they need from Debian, and how they build.

root=$(dirname -- "$(readlink -f -- "$0")")

build_packages="cmake ninja-build clang-19 binutils android-libnativehelper-dev android-platform-frameworks-native-headers
    android-liblog-dev openjdk-17-jdk-headless libpicocli-java pv"

# For Android's files, and for the programs that run them on GNU/Linux.
android_abis="arm64-v8a armeabi-v7a x86_64 x86"
android_packages="lld-19 llvm-19 libclang-rt-19-dev gcc-12-arm-linux-gnueabi binutils-aarch64-linux-gnu"
proof_packages="googletest junit5 libwebp7 qemu-user-static proguard-cli python3-minimal g++-12-aarch64-linux-gnu libc6-dev-arm64-cross
    g++-12-arm-linux-gnueabi libc6-dev-armel-cross g++-12-multilib kotlin"

# For the WebAssembly module, whose tests any Node.js of Debian's age or newer runs.
wasm_packages="lld-19 llvm-19 python3-minimal"
command -v node >/dev/null || wasm_packages="$wasm_packages nodejs"

# For the gallery's live page. Node.js from elsewhere brings npm along, Debian's does not.
page_packages="esbuild $wasm_packages"
command -v npm >/dev/null || page_packages="$page_packages npm"

say() { printf '%s\n' "$*" >&2; }

# install_missing PACKAGE...: says what is missing and installs it.
install_missing() {
    command -v dpkg-query >/dev/null || { say "This script knows Debian 12. Elsewhere install the like of: $*"; return 0; }
    missing=
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    say "Installing Debian packages:$missing"
    as_root=
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || { say "Not root and no sudo. As root, run: apt-get install$missing"; exit 1; }
        as_root=sudo
    fi
    # An index that cannot be renewed may still do.
    $as_root apt-get update -q >&2 || true
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing >&2 ||
        { say "The installation failed (see above). By hand: apt-get install$missing"; exit 1; }
}

# A checkout that belongs to somebody else cannot be built in.
check_writable() {
    mkdir -p "$root/build" 2>/dev/null && [ -w "$root/build" ] || {
        say "$root/build cannot be written by $(id -un): this checkout belongs to $(stat -c %U "$root"). Clone it anew to build it."
        exit 1
    }
}

# build PRESET OPTION...: configures and builds build/PRESET. Where nobody watches it is quiet, and shows its log if it fails.
build() {
    check_writable
    log=$root/build/$1.log
    say "Building $1 ..."
    (
        # Of two at once the second waits, and may then find everything built.
        flock -n 9 || { say "Another build is under way; waiting for it ..."; flock 9; }
        cd "$root"
        cmake --preset "$1" >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
        if [ -t 2 ]; then
            cmake --build --preset "$@" >&2
        else
            cmake --build --preset "$@" >>"$log" 2>&1 || { cat "$log" >&2; exit 1; }
        fi
    ) 9>"$root/build/lock" || { say "Building $1 failed; see above."; exit 1; }
}

# Builds Android's four files and checks them without running them.
prove_android_files() {
    for abi in $android_abis; do
        build "android-$abi" && ctest --test-dir "$root/build/android-$abi" --output-on-failure -j "$(nproc)" || return 1
    done
}

# build_page OPTION...: leaves in build/page what the gallery's live page is made of; the options are npm's, build/page.log the log.
build_page() {
    build wasm --target fennic_wasm && mkdir -p "$root/build/page" && make_page "$@" >"$root/build/page.log" 2>&1
}

make_page() {
    page=$root/build/page
    wanted="$(cksum <"$root/page/package-lock.json") $*"
    cp "$root/page/package.json" "$root/page/package-lock.json" "$root/page/try.html" "$root/page/try.css" \
        "$root/build/wasm/fennic.wasm" "$page" || return 1
    # Nothing that is installed may run by itself.
    [ "$(cat "$page/installed" 2>/dev/null)" = "$wanted" ] ||
        npm ci --prefix "$page" --ignore-scripts --no-audit --no-fund --fetch-retries=1 --fetch-timeout=20000 "$@" || return 1
    echo "$wanted" >"$page/installed"
    NODE_PATH=$page/node_modules esbuild "$root/page/main.mjs" --bundle --minify --target=es2022 --outfile="$page/try.js" \
        '--external:node:*' --log-override:empty-import-meta=silent && touch "$page/built"
}

# Runs the live page in a browser.
prove_page() {
    page=$root/build/page
    build_page || { cat "$root/build/page.log" >&2; return 1; }
    "$root/fennic" gallery >/dev/null && NODE_PATH=$page/node_modules esbuild "$root/page/test.mjs" --bundle --platform=node \
        --format=esm --packages=external --outfile="$page/test.mjs" --log-level=warning &&
        node "$page/test.mjs" "$root" "$(command -v chromium)"
}

# Builds the WebAssembly module and runs its tests.
prove_wasm() { build wasm && ctest --test-dir "$root/build/wasm" --output-on-failure -j "$(nproc)" --no-tests=error; }

# prove_libraries PRESET...: runs Android's 64-bit files, and those of the presets: the tests of what the library exports, on this
# processor or under qemu, and the JVM's; and the desktop's two libraries: their digests and examples.
prove_libraries() {
    for preset in "$@"; do build "$preset" --target android_tests || return 1; done
    build arm64 --target android_tests shipped_tests || return 1
    build test --target android_tests shipped_tests jnigraphics webp fennic_java_tests || return 1
    printf '%s\n' "$@" release arm64 |
        xargs -P "$(nproc)" -I {} ctest --test-dir "$root/build/{}" -R '^android|^shipped$' --output-on-failure --no-tests=error
}
