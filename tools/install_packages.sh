#!/usr/bin/env bash
# Installs Debian packages, of those named just the ones that are not installed yet:
#
#   tools/install_packages.sh g++ cmake ninja-build
set -euo pipefail

missing=()
for package in "$@"; do
    state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ $state == installed ]] || missing+=("$package")
done
[[ ${#missing[@]} -gt 0 ]] || exit 0

as_root=()
if [[ $(id -u) -ne 0 ]]; then
    if ! command -v sudo >/dev/null; then
        echo "These packages are missing; install them as root: apt-get install ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

# Quiet unless it fails.
log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt_get() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y "$@" >>"$log" 2>&1
}
install_missing() {
    apt_get update && apt_get install --no-install-recommends "${missing[@]}"
}

echo "Installing ${missing[*]}"
# Once more after a failure, which is most often one of the network.
if ! install_missing && ! { sleep 5 && install_missing; }; then
    cat "$log" >&2
    echo "apt-get could not install: ${missing[*]}" >&2
    exit 1
fi
