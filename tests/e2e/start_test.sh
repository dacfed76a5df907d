#!/usr/bin/env bash
# ./start refuses a station that there is not, before it installs or builds anything, and lists those
# that there are. start_test.sh SOURCE
set -uo pipefail
source=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

fail() {
  echo "$1" >&2
  cat "$folder/out" >&2
  exit 1
}

for name in Z21 z21 '' '.*' MX; do
  "$source/start" --station "$name" >"$folder/out" 2>&1
  [ $? -eq 2 ] || fail "$name: not the status of a wrong call"
  grep -qx Z21IP "$folder/out" || fail "$name: Z21IP is not listed"
  [ "$(grep -c '^[A-Z0-9]*$' "$folder/out")" -eq 13 ] || fail "$name: not all thirteen are listed"
done

"$source/packaging/use-station" "$folder" Z21 2>/dev/null && fail "use-station took Z21"
[ ! -e "$folder/LOKARI.INI" ] || fail "use-station wrote settings"
"$source/packaging/use-station" "$folder" Z21IP || fail "use-station refused Z21IP"
grep -q '^BaseUnit=Z21IP' "$folder/LOKARI.INI" || fail "use-station wrote no settings"
grep -q '^MakerForm=N' "$folder/LOKARI.INI" || fail "the makers' form without being asked for"
"$source/packaging/use-station" "$folder" Z21IP makers || fail "use-station refused the makers' form"
grep -q '^MakerForm=J' "$folder/LOKARI.INI" || fail "the makers' form is not set"
"$source/start" --form vendors >"$folder/out" 2>&1
[ $? -eq 2 ] || fail "a form that there is not"
