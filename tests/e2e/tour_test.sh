#!/usr/bin/env bash
# The tour through the real windows, on a simulated station at a real pseudo-terminal.
# tour_test.sh SOURCE STAGE: the source tree, and the folder with bin/ and share/.
set -euo pipefail
source=$1
stage=$2
folder=$(mktemp -d)
simulator=
trap '[ -z "$simulator" ] || kill "$simulator"; rm -rf "$folder"' EXIT

"$source/packaging/seed-demo" "$stage/share" "$folder"
"$source/packaging/use-station" "$folder" TAMSMC
link=$folder/sim/TAMSMC
# The simulator tells by its first line that the line is there.
exec 3< <(exec "$stage/bin/lokari-sim" --station TAMSMC --link "$link" \
  --decoder "$folder/sim/decoder.txt")
simulator=$!
read -r ready <&3
echo "$ready"

LOKARI_APP=$folder QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES="qt.qpa.*=false" \
  "$stage/bin/lokari-tour" "$folder/pictures"
for picture in hauptfenster decoderfenster fortschritt gelesen geschrieben wieder-geoeffnet; do
  ls "$folder"/pictures/*-"$picture".png >/dev/null
done
