#!/bin/sh
# A library exports what its headers declare, and no more: exports.sh LIBRARY HEADER...
set -eu
library=$1
shift
exported=$(nm -D --defined-only --extern-only "$library" | awk '{ print $3 }')
plain=$(printf '%s\n' "$exported" | grep -v '^_Z' || true)
declared=$(cat "$@" | sed -n 's/^[a-z].*[ *]\([a-z0-9_]*\)(.*/\1/p' | grep '^[a-z0-9]*_[a-z0-9_]*$' | sort -u || true)
classes=$(awk '/^(class|namespace) .*\{$/ { i = $2 ~ /_EXPORT$/ ? 3 : 2; sub(/.*::/, "", $i); print $i }' "$@" | sort -u)
[ -n "$classes" ]
status=0
[ "$(printf '%s\n' "$plain" | sort -u)" = "$declared" ] || {
    echo "exported functions: $plain"
    echo "declared functions: $declared"
    status=1
}
names=$(printf '%s' "$classes" | tr '\n' '|')
strangers=$(printf '%s\n' "$exported" | grep '^_Z' | c++filt \
    | grep -Ev "^((typeinfo|typeinfo name|vtable) for )?voro::(multimedia::|device::)?($names)(::|\$)|^voro::operator<<\(QDebug, voro::($names) const" || true)
[ -z "$strangers" ] || {
    echo "exported and not declared: $strangers"
    status=1
}
exit $status
