#!/usr/bin/env bash
# The Debian packages, built from this build tree and installed into this machine with apt.
#   check-package.sh build  BUILD_DIR VERSION SERVER_BUILT   scripts/package, then lintian
#   check-package.sh app    BUILD_DIR VERSION SERVER_BUILT   install, check, purge tolvane
#   check-package.sh server BUILD_DIR VERSION SERVER_BUILT   the same for tolvane-server
# Installing touches the whole machine, so each step leaves it as it found it: what it installed
# is purged on the way out, also when a check fails. Exit 77 means skipped (CTest shows it so).
set -euo pipefail
step=$1 build_dir=$2 version=$3 server_built=$4
root=$(cd "$(dirname "$0")/../.." && pwd)
packages_dir=$build_dir/packages

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
apt_get() { $sudo apt-get -q -y -o DPkg::Lock::Timeout=600 "$@"; }

failures=0
fail() {
  echo "FAIL: $*" >&2
  failures=$((failures + 1))
}
skip() {
  echo "SKIP: $*"
  exit 77
}
installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'; }
installed_packages() { dpkg-query -W -f='${Package} ${db:Status-Abbrev}\n' | awk '$2 ~ /^ii/ { print $1 }' | sort; }

if [ "$step" = build ]; then
  TOLVANE_BUILD_DIR=$build_dir "$root/scripts/package"
  expected=(tolvane_${version}_amd64.deb tolvane-dbgsym_${version}_amd64.ddeb)
  [ "$server_built" = yes ] && expected+=(tolvane-server_${version}_amd64.deb tolvane-server-dbgsym_${version}_amd64.ddeb)
  for file in "${expected[@]}"; do
    [ -f "$packages_dir/$file" ] || fail "scripts/package made no $file"
  done
  # Errors and warnings fail; the ones accepted are overridden, with the reason, in packaging/.
  for deb in "$packages_dir"/*.deb; do
    if ! report=$(lintian --fail-on error,warning "$deb" 2>&1); then
      fail "lintian finds errors or warnings in $(basename "$deb")"
    fi
    grep -v '^running with root privileges' <<<"$report" || true
  done
  [ "$failures" -eq 0 ] || exit 1
  echo "PASS: packages built, lintian clean"
  exit 0
fi

case $step in
  app) package=tolvane ;;
  server)
    [ "$server_built" = yes ] \
      || skip "this build has no tolvane-server target, so there is no server package to install and check"
    package=tolvane-server
    ;;
  *) echo "unknown step $step" >&2; exit 2 ;;
esac

deb=$packages_dir/${package}_${version}_amd64.deb
[ -f "$deb" ] || { echo "FAIL: no $deb (the build step makes it)" >&2; exit 1; }
[ -z "$sudo" ] || sudo -n true 2>/dev/null \
  || skip "installing needs root or sudo without a password, and neither is available here"
installed "$package" \
  && skip "$package is installed on this machine already; checking would replace it and then remove it"

before=$(mktemp)
listed=$(mktemp)
installed_packages >"$before"
cleanup() {
  # Our package, and whatever apt brought in for it that was not here before.
  local extra
  extra=$(installed_packages | comm -13 "$before" -)
  if [ -n "$extra" ]; then
    apt_get purge $extra >/dev/null
  fi
  rm -f "$before" "$listed"
}
trap cleanup EXIT
# A timeout's kill still cleans up.
trap 'exit 1' TERM INT

apt_get install --no-install-recommends "$deb"
dpkg-query -L "$package" >"$listed"

if [ "$package" = tolvane ]; then
  out=$(tolvane --version) || fail "tolvane --version exits with $?"
  [ "$out" = "Tolvane $version" ] || fail "tolvane --version prints '$out', not 'Tolvane $version'"
  grep -q -- '--version' <<<"$(tolvane --help)" || fail "tolvane --help does not list --version"
  desktop-file-validate /usr/share/applications/com.quorvel.tolvane.desktop || fail "desktop-file-validate"
  appstreamcli validate --no-net /usr/share/metainfo/com.quorvel.tolvane.metainfo.xml || fail "appstreamcli validate"
  grep -q "<release version=\"$version\"" /usr/share/metainfo/com.quorvel.tolvane.metainfo.xml \
    || fail "the AppStream metainfo has no release $version"
  for size in 16 22 24 32 48 64 128 256 512; do
    icon=/usr/share/icons/hicolor/${size}x${size}/apps/com.quorvel.tolvane.png
    file "$icon" | grep -q "PNG image data, $size x $size," || fail "$icon is not a ${size}x${size} PNG"
  done
  [ -f /usr/share/icons/hicolor/scalable/apps/com.quorvel.tolvane.svg ] || fail "no scalable icon"
  man_warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l /usr/share/man/man1/tolvane.1.gz 2>&1 >/dev/null)
  [ -z "$man_warnings" ] || fail "tolvane(1): $man_warnings"
else
  out=$(tolvane-server --version) || fail "tolvane-server --version exits with $?"
  [ "$out" = "tolvane-server $version" ] || fail "tolvane-server --version prints '$out', not 'tolvane-server $version'"
  unit=/lib/systemd/system/tolvane-server.service
  systemd-analyze verify "$unit" || fail "systemd-analyze verify $unit"
  getent passwd tolvane-server >/dev/null || fail "no system user tolvane-server"
  config=/etc/tolvane-server/tolvane-server.conf
  [ "$(stat -c '%a %U:%G' "$config")" = "640 root:tolvane-server" ] \
    || fail "$config is $(stat -c '%a %U:%G' "$config"), not 640 root:tolvane-server"
  dpkg-query -W -f='${Conffiles}\n' tolvane-server | grep -q "$config" || fail "$config is not a conffile"
  if [ -d "$root/server/migrations" ]; then
    for sql in "$root"/server/migrations/*.sql; do
      cmp -s "$sql" "/usr/share/tolvane-server/migrations/$(basename "$sql")" || fail "migration $(basename "$sql") not installed"
    done
  fi
  man_warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l /usr/share/man/man8/tolvane-server.8.gz 2>&1 >/dev/null)
  [ -z "$man_warnings" ] || fail "tolvane-server(8): $man_warnings"
fi

# Removal leaves nothing behind: every file the package listed is gone, and every folder it
# listed is gone too unless another package owns it.
apt_get purge "$package"
while IFS= read -r path; do
  [ "$path" = /. ] && continue
  if [ -d "$path" ]; then
    dpkg-query -S "$path" >/dev/null 2>&1 || fail "folder left behind: $path ($(ls -A "$path" | head -3 | tr '\n' ' '))"
  elif [ -e "$path" ] || [ -L "$path" ]; then
    fail "file left behind: $path"
  fi
done <"$listed"
if [ "$package" = tolvane-server ]; then
  getent passwd tolvane-server >/dev/null && fail "the system user tolvane-server is left behind"
  getent group tolvane-server >/dev/null && fail "the group tolvane-server is left behind"
  [ -e /etc/systemd/system/tolvane-server.service ] && fail "a mask of the unit is left behind"
fi

[ "$failures" -eq 0 ] || exit 1
echo "PASS: $package installs, works and purges cleanly"
