# Shared by ./demo, ./check and .ci/run, which source it: what they say, how they end, and the packages of
# Debian 12 that they need.

build_packages=(
    cmake ninja-build g++ pkgconf
    libcoin-dev libpng-dev
    libcli11-dev # the command line of the program
    libegl-dev libegl1 libegl-mesa0 libgl1-mesa-dri # headless pictures
)
check_packages=(
    libgtest-dev
    ghostscript   # reads every PostScript page that the tests write
    hp2xx         # and those for plotters
    poppler-utils # finds the words of a page
    libfreetype-dev libfontconfig-dev # through which the toolkit finds the fonts that Ghostscript brings
    locales       # a locale with a decimal comma, which no page may follow
    clang clang-format clang-tidy libclang-rt-14-dev llvm python3
)

script_name=$(basename "$0")
step="starting"
jobs=$(nproc)

# say TEXT: the step that runs now; a failure is reported by this name.
say() {
    step=$1
    printf '%s: %s (after %d s)\n' "$script_name" "$step" "$SECONDS"
}

# fail TEXT: ends with one line.
fail() {
    trap - EXIT
    printf '%s: FAILED: %s\n' "$script_name" "$1" >&2
    exit 1
}

report_end() {
    local status=$?
    trap - EXIT
    if ((status != 0)); then
        printf '%s: FAILED while %s (exit status %d)\n' "$script_name" "$step" "$status" >&2
    fi
    exit "$status"
}
trap report_end EXIT

is_installed() {
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

as_root() {
    if ((EUID == 0)); then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "installing packages needs root or sudo: apt-get install ${missing[*]}"
    fi
}

apt_install() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install --yes --quiet --no-install-recommends "$@"
}

# install_packages NAME...: installs what is missing, and touches nothing when all is there.
install_packages() {
    local name
    missing=()
    if ! command -v dpkg-query >/dev/null; then
        say "skipping the installation: this is no Debian; needed are the likes of $*"
        return
    fi
    for name in "$@"; do
        is_installed "$name" || missing+=("$name")
    done
    if ((${#missing[@]} == 0)); then
        return
    fi
    say "installing ${missing[*]}"
    if compgen -G '/var/lib/apt/lists/*_Packages*' >/dev/null && apt_install "${missing[@]}"; then
        return
    fi
    # No package lists yet, or lists so old that what they name is gone.
    as_root apt-get update --quiet
    apt_install "${missing[@]}"
}

# A second build of the same sources costs next to nothing where ccache is there.
if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER-ccache}
fi
