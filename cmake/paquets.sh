# Sourced by ./run, ./test and .ci/run: `paquets NAME...` installs the Debian packages that
# are missing, when this user may; says what to install otherwise.
paquets() {
  manquants=""
  for paquet in "$@"; do
    dpkg-query -W -f '${Status}' "$paquet" 2>/dev/null | grep -q 'ok installed' || manquants="$manquants $paquet"
  done
  [ -z "$manquants" ] && return 0
  if [ "$(id -u)" = 0 ]; then
    sudo=""
  elif command -v sudo >/dev/null 2>&1; then
    sudo="sudo"
  else
    echo "Missing packages, and no right to install them:$manquants" >&2
    return 1
  fi
  echo "Installing:$manquants"
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get update -q &&
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $manquants
}

paquets_programme="g++ cmake ninja-build pkg-config liblmdb-dev zlib1g-dev libofx-dev libpugixml-dev libarchive-dev libsodium-dev nettle-dev nlohmann-json3-dev libcli11-dev qt6-base-dev qt6-svg-dev qt6-translations-l10n fonts-dejavu-core"
paquets_tests="clang-format libgtest-dev libgmock-dev libsqlite3-dev"
