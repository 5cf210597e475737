# The one list of Debian packages, sourced by the other scripts. Everything that the program loads
# by name at run time stands here too: without the GStreamer plugins every start would crash.

packages_build="g++ cmake ninja-build ccache
    qt6-base-dev qt6-svg-dev qt6-multimedia-dev libqrcodegencpp-dev nlohmann-json3-dev
    pkg-config libmd4c-dev libgit2-dev libgumbo-dev libutf8proc-dev libxxhash-dev libcli11-dev
    libcpp-httplib-dev"
packages_run="gstreamer1.0-plugins-base gstreamer1.0-plugins-good qt6-image-formats-plugins
    fonts-inter fonts-dejavu-core fonts-dejavu-extra ca-certificates git"
packages_test="libgtest-dev zbar-tools imagemagick locales desktop-file-utils appstream
    shared-mime-info man-db python3-jsonschema"
packages_check="clang clang-format clang-tidy libclang-rt-14-dev"
packages_bench="libbenchmark-dev hugo git"
packages_package="librsvg2-bin file dpkg-dev"

say() {
    printf '%s\n' "$*" >&2
}

is_debian_12() {
    [ -r /etc/os-release ] && (. /etc/os-release && [ "${ID:-}:${VERSION_ID:-}" = "debian:12" ])
}

# missing_packages NAME...: prints the ones that are not installed.
missing_packages() {
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Abbrev}' "$package" 2>/dev/null | grep -q '^ii' ||
            printf '%s ' "$package"
    done
}

# require_packages NAME...: installs what is missing, or says what to install.
require_packages() {
    if ! is_debian_12; then
        say "This script installs packages on Debian 12 only. Install the equivalents of these"
        say "(Qt 6.4, nlohmann-json 3.11.2 or later), then build by hand as README.md tells:"
        say "  $(echo "$@" | tr -s ' \n' ' ')"
        return 1
    fi
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    as_root=""
    if [ "$(id -u)" != 0 ]; then
        if ! command -v sudo >/dev/null 2>&1; then
            say "These packages are missing; install them as root: $missing"
            return 1
        fi
        as_root="sudo"
    fi
    say "Installing: $missing"
    $as_root apt-get update -qq &&
        $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
            --no-install-recommends $missing >&2
}

# build_preset NAME [TARGET...]: configures once and builds.
build_preset() {
    preset=$1
    shift
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >&2 || return 1
    if [ $# -gt 0 ]; then
        cmake --build --preset "$preset" --target "$@" >&2
    else
        cmake --build --preset "$preset" >&2
    fi
}
