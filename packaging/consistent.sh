#!/bin/sh
# What is written down twice agrees: versions, the packages that Debian's files name beside packages.txt, classes and examples.
set -u
root=$(dirname -- "$(dirname -- "$(readlink -f -- "$0")")")
. "$root/packaging/setup.sh"
cd "$root" || exit 1
status=0

# same WHAT ONE OTHER
same() {
    [ "$2" = "$3" ] || {
        say "$1 differ: $2 / $3"
        status=1
    }
}

# names: the packages in a list of dependencies, one a line.
names() {
    tr ',|' '\n\n' | sed 's/(.*//; s/[^a-z0-9.+-]//g; /^$/d' | sort -u
}

# field PACKAGE FIELD: of debian/control.
field() {
    awk -v package="$1" -v name="$2:" '
        /^(Source|Package):/ { inside = $2 == package }
        /^[^ ]/ { found = inside && $1 == name; sub(/^[^:]*:/, "") }
        found' debian/control
}

version=$(project_version)
same "the versions of CMakeLists.txt and debian/changelog" "$version" "$(sed -n '1s/.*(\(.*\)).*/\1/p' debian/changelog)"
same "the versions of CMakeLists.txt and CHANGELOG.md" "$version" "$(sed -n '/^## /{s/^## \([^ ]*\).*/\1/p;q}' CHANGELOG.md)"
same "the versions of CMakeLists.txt and the RPM spec" "$version" \
    "$(sed -n 's/^Version: *//p' packaging/rpm/libvoromultimedia.spec)"

# Debian's builders have a compiler, and no cache for it.
same "what building needs" "$(packages_of build qml | grep -vx -e ccache -e g++ | sort -u)" \
    "$(field libvoromultimedia Build-Depends | names | grep -vx debhelper-compat)"

same "what the reference needs" "$(packages_of reference | sort -u)" \
    "$(field libvoromultimedia Build-Depends-Indep | sed 's/<[^>]*>//' | names)"

named=$({ field voro-daemon Depends; field voro-daemon Recommends; field voro-player Depends
    sed -n '/^window = /,/[^\\]$/p' debian/rules; } | names)
for package in $(packages_of run demo); do
    # The applications' module depends on this one.
    [ "$package" = qml6-module-qtquick ] && continue
    printf '%s\n' "$named" | grep -qx -- "$package" || {
        say "debian/ does not name $package, which packages.txt has for running"
        status=1
    }
done

# Every public class has its example in the reference.
for class in $(sed -n 's/^class VOROMULTIMEDIA_EXPORT \([A-Za-z]*\).*/\1/p' include/multimedia/*.h); do
    grep -q "snippet examples.cpp $class \*/" docs/reference/examples.dox || {
        say "the reference has no example of $class"
        status=1
    }
done
exit $status
