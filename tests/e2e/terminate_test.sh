#!/usr/bin/env bash
# SIGTERM ends the workbench as Beenden does: it says where it stood, and its status is 0.
# terminate_test.sh SOURCE STAGE: the source tree, and the folder with bin/ and share/.
set -euo pipefail
source=$1
stage=$2
folder=$(mktemp -d)
program=
trap '[ -z "$program" ] || kill -9 "$program" 2>/dev/null; rm -rf "$folder"' EXIT

"$source/packaging/seed-demo" "$stage/share" "$folder"
if grep -qi '^DBPos' "$folder/LOKARI.INI"; then echo "the place is told already" >&2; exit 1; fi
LOKARI_APP=$folder QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES="qt.qpa.*=false" "$stage/bin/lokari" &
program=$!
# The window is up behind the database; a signal before that ends the process at once.
deadline=$((SECONDS + 60))
until ls -l "/proc/$program/fd" 2>/dev/null | grep -q 'LOKARIV3.MDB' &&
      grep -q '^SigCgt:.*[4567cdef]...$' "/proc/$program/status"; do
  [ $SECONDS -lt $deadline ] || { echo "the program does not start" >&2; exit 1; }
  read -rt 0.1 <> <(:) || true
done
kill -TERM "$program"
wait "$program"
program=
grep -i '^DBPos' "$folder/LOKARI.INI"
