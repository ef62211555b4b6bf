# shellcheck shell=bash
# Sourced by scripts that need a fresh Debian with only the base system, made from the archives that
# this machine uses. The caller runs as root in its own mount namespace ("unshare --mount"), so that
# the mounts end with it.

# debian_sources: this machine's package sources, as lines of a sources.list.
debian_sources() {
    # shellcheck disable=SC2016 # $(…) is for apt to fill in
    apt-get indextargets --format '$(ORIGIN)|deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' | sed -n 's/^Debian|//p'
}

# apt_settings: this machine's apt settings, such as a proxy.
apt_settings() {
    apt-config dump --format '%f "%v";%n' |
        grep -E '^Acquire::(https?::|Check-|Retries)' || true
}

# make_clean_root FOLDER LOG [RELEASE]: this machine's release unless RELEASE, a code name, is
# given. Output of mmdebstrap goes to LOG.
make_clean_root() {
    local folder=$1 log=$2 own release
    own=$(. /etc/os-release && echo "$VERSION_CODENAME")
    release=${3:-$own}
    apt_settings >"$log.apt"
    mkdir -p "$folder"
    debian_sources | sed "s/ $own/ $release/" | mmdebstrap --mode=root --variant=apt --quiet --aptopt="$log.apt" \
        --skip=cleanup/apt "$release" "$folder" - >"$log" 2>&1 || {
        cat "$log" >&2
        return 1
    }
    mount -t proc proc "$folder/proc"
}

# remove_clean_root FOLDER: keeps the contents of mounts.
remove_clean_root() {
    ! mountpoint -q "$1/proc" || umount -l "$1/proc"
    rm -rf --one-file-system "$1"
}

# inside FOLDER USER COMMAND...: runs it there, with no environment but the display.
inside() {
    local folder=$1 user=$2 home
    shift 2
    home=$(chroot "$folder" getent passwd "$user" | cut -d : -f 6)
    exec chroot --userspec="$user" "$folder" /usr/bin/env -i "HOME=$home" "USER=$user" \
        "PATH=/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin" LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive ${DISPLAY:+"DISPLAY=$DISPLAY"} "$@"
}
