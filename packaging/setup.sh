# Shared by the scripts at the root: installs what is missing and builds. To be sourced by a POSIX shell that has set
# `root` to the clone's folder. Everything it says goes to standard error; when there is nothing to do it says nothing.

say() {
    printf 'voro: %s\n' "$*" >&2
}

die() {
    say "$*"
    exit 1
}

# packages_of GROUP...: the packages of the groups, one a line.
packages_of() {
    for group in "$@"; do
        sed -n "/^\[$group\]\$/,/^\[/{/^[a-z0-9]/p}" "$root/packaging/packages.txt"
    done
}

# as_root COMMAND...
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif ! command -v sudo >/dev/null; then
        die "packages are missing and this is neither root nor is there sudo; install them with: apt-get install $missing"
    elif [ -t 2 ] && [ -r /dev/tty ]; then
        sudo "$@"
    else
        sudo -n "$@"
    fi
}

apt() {
    log=$(mktemp) || return
    quietly "$log" as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 "$@"
    status=$?
    rm -f "$log"
    return $status
}

# ensure_packages GROUP...: installs what is missing of the groups.
ensure_packages() {
    wanted=$(packages_of "$@")
    # A system without dpkg has its libraries from somewhere else; configuring tells what is missing there.
    command -v dpkg-query >/dev/null || return 0
    # shellcheck disable=SC2086 # One word per package.
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' $wanted 2>/dev/null | sed -n 's/^installed //p')
    missing=
    for package in $wanted; do
        case "
$installed
" in
        *"
$package
"*) ;;
        *) missing="$missing $package" ;;
        esac
    done
    missing=${missing# }
    [ -n "$missing" ] || return 0
    say "installing $missing"
    apt update || say "apt-get update failed; trying with the package lists that are there"
    # shellcheck disable=SC2086
    apt install -y --no-install-recommends $missing || die "cannot install $missing"
}

# quietly LOG COMMAND...: runs the command and shows what it said only when it fails.
quietly() {
    log=$1
    shift
    "$@" >"$log" 2>&1 </dev/null && return
    cat "$log" >&2
    return 1
}

# build PRESET [TARGET...]: configures once and builds. Only one script builds in a folder at a time.
build() {
    preset=$1
    shift
    folder=$root/build/$preset
    mkdir -p "$folder" || die "cannot write to $folder"
    exec 9>"$folder/.lock"
    command -v flock >/dev/null && flock 9
    configure "$preset" || die "configuring failed"
    # A dry run with nothing to do has one line, and is what the usual call pays for.
    case $(ninja -C "$folder" -n "$@" 2>&1 9>&-) in
    *"no work to do"*) ;;
    *)
        [ -e "$folder/.built" ] || say "building; this takes a few minutes the first time"
        if [ -t 2 ]; then
            ninja -C "$folder" "$@" >&2 </dev/null 9>&- || die "building failed"
        else
            quietly "$folder/build.log" ninja -C "$folder" "$@" 9>&- || die "building failed"
        fi
        : >"$folder/.built"
        ;;
    esac
    exec 9>&-
}

# configure PRESET: with the options in `options`, which may be more than it was configured with before.
configure() {
    if [ -e "$folder/build.ninja" ] && grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
        [ -n "${options-}" ] && grep -qx "VORO_QML:BOOL=OFF" "$folder/CMakeCache.txt" || return 0
    elif [ -e "$folder/build.ninja" ]; then
        # A clone that was moved or copied is configured anew.
        rm -rf "$folder/CMakeCache.txt" "$folder/CMakeFiles" "$folder/.built"
    fi
    say "configuring"
    (cd "$root" && quietly "$folder/configure.log" cmake --preset "$1" ${options-} 9>&-)
}

# jobs: how many processes may run at once.
jobs_at_once() {
    getconf _NPROCESSORS_ONLN
}

# project_version: CMakeLists.txt is where it is written.
project_version() {
    sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt"
}
