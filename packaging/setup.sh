# Sourced by start, test and bench: installs missing packages and builds a preset.
# Expects the current folder to be the top of the source tree.

say() { printf '\n\033[1m%s\033[0m\n' "$*"; }

# Installs what packages.txt names and dpkg does not know; asks apt nothing when all is there.
install_packages() {
  local wanted missing=() package
  mapfile -t wanted < <(sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' packaging/packages.txt)
  for package in "${wanted[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  say "Installiere fehlende Pakete: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Bitte als root ausführen oder sudo installieren." >&2; return 1; }
    as_root=(sudo)
  fi
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# build_preset NAME [target...]
build_preset() {
  local preset=$1
  shift
  [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"
  if [ $# -eq 0 ]; then
    cmake --build "build/$preset"
  else
    cmake --build "build/$preset" --target "$@"
  fi
}
