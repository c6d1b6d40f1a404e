#!/usr/bin/env bash
# scripts/run on a machine without a desktop session: two runs over the same home share the
# login keyring and the files (the second finds what the first stored), a wrong password is
# refused rather than run with a locked keyring, and with every package installed
# scripts/install-deps leaves apt-get alone.
set -euo pipefail
root=$1
scratch=$(mktemp -d "${TMPDIR:-/tmp}/tolvane-run-test.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$scratch/home" "$scratch/runtime" "$scratch/bin"

# As on a bare console: no session bus, no desktop variables, only a home folder.
bare() {
  env -i PATH=/usr/bin:/bin HOME="$scratch/home" XDG_RUNTIME_DIR="$scratch/runtime" \
    TOLVANE_KEYRING_PASSWORD="$1" "$root/scripts/run-in-session" sh -c "$2"
}

bare first-password 'printf "%s" s3cret | secret-tool store --label=check service tolvane-run-test account a &&
  echo stored > "$XDG_DATA_HOME/tolvane-run-test"'
test -f "$scratch/home/.local/share/keyrings/login.keyring" || { echo "no login keyring in the home folder"; exit 1; }

# secret-tool prints the secret without a line feed.
found=$(bare first-password 'secret-tool lookup service tolvane-run-test account a; cat "$XDG_DATA_HOME/tolvane-run-test"')
[ "$found" = "s3cretstored" ] || { echo "the second run found: $found"; exit 1; }

if bare wrong-password 'secret-tool lookup service tolvane-run-test account a' 2>"$scratch/err"; then
  echo "a wrong keyring password was accepted"; exit 1
fi
grep -q "did not open the login keyring" "$scratch/err" || { cat "$scratch/err"; exit 1; }

# Everything this machine needs is installed: apt-get must not even be started.
printf '#!/bin/sh\necho "apt-get $*" >> "%s/apt-calls"\nexit 1\n' "$scratch" > "$scratch/bin/apt-get"
cp "$scratch/bin/apt-get" "$scratch/bin/sudo"
chmod +x "$scratch/bin/apt-get" "$scratch/bin/sudo"
PATH="$scratch/bin:$PATH" "$root/scripts/install-deps"
[ ! -e "$scratch/apt-calls" ] || { cat "$scratch/apt-calls"; exit 1; }
echo "ok"
