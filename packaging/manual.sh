#!/bin/sh
# Makes the manual pages of what the programs say with --help, and voro-environment(7) of the table in the README.
# manual.sh OUTPUT VERSION README PROGRAM...; CROSS may hold what runs the programs.
set -eu
here=$(dirname -- "$(readlink -f -- "$0")")
output=$1 version=$2 readme=$3
shift 3
date=$(sed -n '/^## /{s/.*(\([0-9-]*\))$/\1/p;q}' "$(dirname -- "$readme")/CHANGELOG.md")
export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen

# page NAME SECTION SUMMARY: of the help text on standard input.
page() {
    mkdir -p "$output/man$2"
    awk -v page="$1" -v section="$2" -v summary="$3" -v version="$version" -v date="$date" -v related="$related" -f "$here/manual.awk" \
        >"$output/man$2/$1.$2"
}

# help PROGRAM [COMMAND]: without the folder, which is this machine's.
help() {
    program=$1
    shift
    # shellcheck disable=SC2086 # A command and its arguments.
    text=$(${CROSS-} "$program" "$@" --help)
    printf '%s\n' "$text" | sed "s|$(dirname "$program")/||"
}

# commands PROGRAM: name and summary of each of its commands.
commands() {
    help "$1" | sed -n '/^$/,$s/^  \([a-z]*\)  *\([^ ].*\)/\1 \2/p' | grep -v '^voro '
}

# page_of COMMAND: an application has the name that the page of `voro remote` would have.
page_of() {
    case $1 in
    remote) echo voro-remote-command ;;
    *) echo "voro-$1" ;;
    esac
}

for program in "$@"; do
    name=$(basename "$program")
    case $name in
    voro)
        related="$(commands "$program" | while read -r command rest; do echo "$(page_of "$command")(1)"; done) voro-environment(7)"
        help "$program" | page voro 1 "plays and records media and shows what happens inside"
        related='voro(1) voro-environment(7)'
        commands "$program" | while read -r command summary; do
            help "$program" "$command" | page "$(page_of "$command")" 1 "$summary"
        done
        ;;
    vorod)
        related='voro(1) voro-renderer(8) voro-environment(7)'
        help "$program" | page vorod 8 "the multimedia daemon of one user"
        ;;
    voro-renderer)
        related='vorod(8) voro-environment(7)'
        { printf 'usage: voro-renderer\n\n'; help "$program"; } | page voro-renderer 8 "the renderer of the multimedia daemon"
        ;;
    *)
        related='voro(1) voro-environment(7)'
        help "$program" | page "$name" 1 "$(help "$program" | sed -n '2{s/^\(.\)\(.*\)\.$/\L\1\E\2/;p}')"
        ;;
    esac
done

related='voro(1) vorod(8)'
{
    printf 'usage: NAME=VALUE PROGRAM\n\n'
    sed -n '/^## Settings/,/^## /{/^| `/p}' "$readme" | sed 's/`//g; s/^| \(.*\) | \(.*\) |$/  \1  \2/'
} | page voro-environment 7 "settings of the multimedia programs"
