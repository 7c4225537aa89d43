#!/usr/bin/env bash
# Tests the Debian package on a minimal system: installs it in a clean root, starts the program there as an ordinary
# user, adds a location and a trip, removes the package, and checks that the user's log is unchanged.
# Writes screenshots and report.txt to build/linux/test/. Needs root rights and a Debian mirror.
#   packaging/linux/test.sh [PACKAGE]    PACKAGE is by default the one in build/linux/
set -euo pipefail
if [ "$#" -gt 0 ]; then
    set -- "$(realpath "$1")"
fi
cd "$(dirname "$0")/../.."
source scripts/packages.sh

[ "$(id -u)" -eq 0 ] || fail "setting up a clean root needs root rights; run this script with sudo"
if [ -z "${TARNO_OWN_NAMESPACE:-}" ]; then
    # mounts and processes in the clean root end with this script
    export TARNO_OWN_NAMESPACE=yes
    exec unshare --mount --pid --fork --kill-child packaging/linux/test.sh "$@"
fi

out=build/linux/test
root=$PWD/build/linux/clean
base=build/linux/clean-base.tar
package=$(compgen -G "${1:-build/linux/tarno_*.deb}") ||
    fail "no package found; run packaging/linux/build.sh first"
need debootstrap

release=$(. /etc/os-release && echo "$VERSION_CODENAME")
# prints the Debian mirror of this system; needs the package lists
find_mirror() {
    apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI)' 'Created-By: Packages' |
        awk -v release="$release" '$1 == release && $2 == "main" && !found { print $3; found = 1 }'
}
mirror=$(find_mirror)
if [ -z "$mirror" ]; then
    apt-get update >/dev/null 2>&1 || true
    mirror=$(find_mirror)
fi
[ -n "$mirror" ] ||
    fail "this system has no package source for Debian $release, or its mirror does not respond"

rm -rf --one-file-system "$root" "$out"
mkdir -p "$root" "$out"
trap 'umount "$root/proc" 2>/dev/null || true; rm -rf --one-file-system "$root"' EXIT

# inside <command>...: runs the command as root in the clean root
inside() {
    env --ignore-environment PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive ${http_proxy:+http_proxy="$http_proxy"} chroot "$root" "$@"
}

# install_inside <package or file>...: installs them with their dependencies, but without recommended packages
install_inside() {
    inside apt-get install --yes --no-install-recommends "$@" >"$out/apt.log" 2>&1 || {
        tail -n 20 "$out/apt.log" >&2
        fail "could not install in the clean root: $*"
    }
}

if [ -e "$base" ]; then
    say "unpacking the clean root of the last run"
    tar --extract --file "$base" --directory "$root"
else
    say "setting up a clean root"
    debootstrap --variant=minbase "$release" "$root" "$mirror" >"$out/debootstrap.log" 2>&1 || {
        tail -n 5 "$out/debootstrap.log" >&2
        fail "could not install Debian $release from this system's mirror; nothing was tested"
    }
    # prevents services from starting in the clean root
    printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
    chmod 755 "$root/usr/sbin/policy-rc.d"
    tar --create --file "$base.half" --directory "$root" --exclude './proc/*' .
    mv "$base.half" "$base"
fi
cp /etc/resolv.conf "$root/etc/"
mount -t proc proc "$root/proc"
inside apt-get update >"$out/apt.log" 2>&1 ||
    fail "this system's mirror does not respond: $(tail -n 3 "$out/apt.log")"

say "installing $package"
install -D --mode=644 "$package" "$root/opt/trial/tarno.deb"
install_inside /opt/trial/tarno.deb
reported=$(inside env QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=/tmp tarno --version 2>/dev/null) ||
    fail "the program does not start"
say "installed version: $reported"

say "installing a virtual display and the tools that drive the program"
install_inside "${display_packages[@]}" libxml2-utils poppler-utils
install --mode=644 --target-directory="$root/opt/trial" scripts/gui-driver.sh packaging/linux/new-user.sh
inside useradd --create-home --shell /bin/bash angler

# as_angler <command>...: runs the command as an ordinary user without network access
as_angler() {
    unshare --net chroot --userspec=angler:angler "$root" \
        env --ignore-environment HOME=/home/angler PATH=/usr/bin:/bin LC_ALL=C.UTF-8 "$@"
}

say "using the program as an ordinary user without network access"
succeeded=yes
as_angler bash /opt/trial/new-user.sh || succeeded=
cp "$root"/home/angler/trial/{*.png,*.log,report.txt} "$out/" || true
[ -n "$succeeded" ] || fail "the test as an ordinary user failed; see $out"

say "running the tour"
tree=$root/home/angler/tree
mkdir "$tree"
cp --recursive scripts data "$tree/"
inside chown --recursive angler: /home/angler/tree
as_angler bash -c 'cd ~/tree && scripts/tour.sh /usr/bin/tarno' >"$out/tour.log" ||
    fail "the tour failed: $(tail -n 3 "$out/tour.log")"
cp --recursive "$tree/build/tour" "$out/"

say "removing the package"
log=home/angler/.local/share/Tarno
# prints the name, owner, mode, time and checksum of each file in the user's folder
snapshot() {
    (cd "$root/$log" && find . -type f -exec stat --format '%n %u %a %y' {} + -exec sha256sum {} + | sort)
}
before=$(snapshot)
inside apt-get purge --yes tarno >"$out/apt.log" 2>&1 ||
    fail "the package could not be removed: $(tail -n 3 "$out/apt.log")"
[ "$(snapshot)" = "$before" ] || fail "removing the package changed the user's folder"
left=$(find "$root/usr" "$root/etc" -iname '*tarno*')
[ -z "$left" ] || fail "removing the package left $left"
say "the package was removed; the user's folder is unchanged:"
find "$root/$log" -type f -printf '   %P\n' | sort
say "the package works; the screenshots are in $out"
