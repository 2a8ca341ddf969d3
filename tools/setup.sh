# Sourced by fennic, test and benchmark: what they need from Debian, and how they build.

root=$(dirname -- "$(readlink -f -- "$0")")

build_packages="cmake ninja-build clang-19 binutils android-libnativehelper-dev android-platform-frameworks-native-headers
    android-liblog-dev openjdk-17-jdk-headless libpicocli-java"

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

# build PRESET: configures and builds build/PRESET quietly; the log is shown where it fails.
build() {
    mkdir -p "$root/build"
    log=$root/build/$1.log
    (cd "$root" && cmake --preset "$1" && cmake --build --preset "$1") >"$log" 2>&1 ||
        { cat "$log" >&2; say "Building $1 failed; the log is build/$1.log"; exit 1; }
}
