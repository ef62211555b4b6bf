# shellcheck shell=bash
# Sourced by tools/windows/build-*, which build from Debian's source packages for 64-bit Windows.

scratch=${scratch:?a folder to work in is wanted}
log=${log:?a file for what the commands say is wanted}

# Runs a command whose chatter is of interest only when it fails.
quietly() {
    if ! "$@" >>"$log" 2>&1; then
        tail -n 40 "$log" >&2
        echo "Failed: $*" >&2
        return 1
    fi
}

# fetch_sources PACKAGE...: each becomes a folder of its name in the scratch folder.
#
# The archives that this machine installs from have the sources too. Their lists are kept apart, so
# that neither root's rights nor a change of the system's settings is needed. Of equal versions the
# first is taken, hence the order: the archive of security updates may have lost what it copied.
fetch_sources() {
    local package
    mkdir -p "$scratch/lists/partial" "$scratch/archives/partial"
    # shellcheck disable=SC2016 # the variables are apt's
    apt-get indextargets --format 'deb-src $(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' | sort -ru >"$scratch/sources.list"
    local apt=(-o "Dir::Etc::SourceList=$scratch/sources.list" -o Dir::Etc::SourceParts=-
        -o "Dir::State::Lists=$scratch/lists" -o "Dir::Cache=$scratch"
        -o APT::Sandbox::User=root)
    quietly apt-get "${apt[@]}" update
    cd "$scratch" || return
    for package in "$@"; do
        quietly apt-get "${apt[@]}" --only-source source "$package"
        mv "$package"-*/ "$package"
    done
}

# The compiler's plain names are given to the flavour with POSIX threads, for this build alone. What
# it makes tells nothing of where the sources lay.
prefer_posix_threads() {
    mkdir -p "$scratch/tools"
    local tool
    for tool in g++ gcc; do
        cat >"$scratch/tools/x86_64-w64-mingw32-$tool" <<END
#!/bin/sh
exec x86_64-w64-mingw32-$tool-posix "-ffile-prefix-map=$scratch/=" "\$@"
END
        chmod +x "$scratch/tools/x86_64-w64-mingw32-$tool"
    done
    PATH=$scratch/tools:$PATH
}
