#!/usr/bin/env bash
# Tries the Debian package on a system that holds nothing else: installs it in a clean root, starts it there as an
# ordinary user, adds a place and a trip, removes the package, and looks whether the user's log is still whole.
# Leaves pictures and report.txt in build/linux/test/. Needs the rights of root and a mirror of Debian.
#   packaging/linux/test.sh [PACKAGE]    the package in build/linux/ when none is named
set -euo pipefail
if [ "$#" -gt 0 ]; then
    set -- "$(realpath "$1")"
fi
cd "$(dirname "$0")/../.."
source scripts/packages.sh

[ "$(id -u)" -eq 0 ] || fail "a clean root can only be set up by root; please run this with sudo"
if [ -z "${TARNO_OWN_NAMESPACE:-}" ]; then
    # what is mounted and started in the clean root ends with this script
    export TARNO_OWN_NAMESPACE=yes
    exec unshare --mount --pid --fork --kill-child packaging/linux/test.sh "$@"
fi

out=build/linux/test
root=$PWD/build/linux/clean
base=build/linux/clean-base.tar
package=$(compgen -G "${1:-build/linux/tarno_*.deb}") ||
    fail "there is no package yet; run packaging/linux/build.sh first"
need debootstrap

release=$(. /etc/os-release && echo "$VERSION_CODENAME")
# the mirror that the package sources of this system name; known once its lists have been read
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
    fail "the package sources of this system name no mirror of Debian $release, or it does not answer"

rm -rf --one-file-system "$root" "$out"
mkdir -p "$root" "$out"
trap 'umount "$root/proc" 2>/dev/null || true; rm -rf --one-file-system "$root"' EXIT

# inside <command>...: runs it as root in the clean root
inside() {
    env --ignore-environment PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive ${http_proxy:+http_proxy="$http_proxy"} chroot "$root" "$@"
}

# install_inside <package or file>...: with what they depend on and nothing besides
install_inside() {
    inside apt-get install --yes --no-install-recommends "$@" >"$out/apt.log" 2>&1 || {
        tail -n 20 "$out/apt.log" >&2
        fail "could not be installed in the clean root: $*"
    }
}

if [ -e "$base" ]; then
    say "unpacking the clean root of the last run"
    tar --extract --file "$base" --directory "$root"
else
    say "setting up a clean root"
    debootstrap --variant=minbase "$release" "$root" "$mirror" >"$out/debootstrap.log" 2>&1 || {
        tail -n 5 "$out/debootstrap.log" >&2
        fail "Debian $release could not be had from the mirror of this system, so nothing was tested"
    }
    # no service starts in there
    printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
    chmod 755 "$root/usr/sbin/policy-rc.d"
    tar --create --file "$base.half" --directory "$root" --exclude './proc/*' .
    mv "$base.half" "$base"
fi
cp /etc/resolv.conf "$root/etc/"
mount -t proc proc "$root/proc"
inside apt-get update >"$out/apt.log" 2>&1 ||
    fail "the mirror of this system does not answer: $(tail -n 3 "$out/apt.log")"

say "installing $package"
install -D --mode=644 "$package" "$root/opt/trial/tarno.deb"
install_inside /opt/trial/tarno.deb
said=$(inside env QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=/tmp tarno --version 2>/dev/null) ||
    fail "the program does not start"
say "it says that it is $said"

say "installing a display for it, and a hand"
install_inside "${display_packages[@]}" libxml2-utils poppler-utils
install --mode=644 --target-directory="$root/opt/trial" scripts/hand.sh packaging/linux/first-days.sh
inside useradd --create-home --shell /bin/bash angler

# as_angler <command>...: as an ordinary user without a network
as_angler() {
    unshare --net chroot --userspec=angler:angler "$root" \
        env --ignore-environment HOME=/home/angler PATH=/usr/bin:/bin LC_ALL=C.UTF-8 "$@"
}

say "using it as an ordinary user, without a network"
tried=yes
as_angler bash /opt/trial/first-days.sh || tried=
cp "$root"/home/angler/trial/{*.png,*.log,report.txt} "$out/" || true
[ -n "$tried" ] || fail "the program was not usable; see $out"

say "taking the tour with it"
tree=$root/home/angler/tree
mkdir "$tree"
cp --recursive scripts data "$tree/"
inside chown --recursive angler: /home/angler/tree
as_angler bash -c 'cd ~/tree && scripts/tour.sh /usr/bin/tarno' >"$out/tour.log" ||
    fail "the tour failed: $(tail -n 3 "$out/tour.log")"
cp --recursive "$tree/build/tour" "$out/"

say "removing it"
log=home/angler/.local/share/Tarno
# what the user's folder holds, byte for byte, and since when
whole() {
    (cd "$root/$log" && find . -type f -exec stat --format '%n %u %a %y' {} + -exec sha256sum {} + | sort)
}
before=$(whole)
inside apt-get purge --yes tarno >"$out/apt.log" 2>&1 ||
    fail "the package could not be removed: $(tail -n 3 "$out/apt.log")"
[ "$(whole)" = "$before" ] || fail "removing the package has changed the user's folder"
left=$(find "$root/usr" "$root/etc" -iname '*tarno*')
[ -z "$left" ] || fail "removing the package left $left"
say "the package is gone, and the user's folder is as it was:"
find "$root/$log" -type f -printf '   %P\n' | sort
say "the package works; pictures of it are in $out"
