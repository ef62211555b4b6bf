# shellcheck shell=bash
# Sourced by tools/windows/build-*, which build Debian's source packages for 64-bit Windows.

scratch=${scratch:?a folder to work in is wanted}
log=${log:?a file for what the commands say is wanted}

# Runs a command and prints its output only if it fails.
quietly() {
    if ! "$@" >>"$log" 2>&1; then
        tail -n 40 "$log" >&2
        echo "Failed: $*" >&2
        return 1
    fi
}

# fetch_sources PACKAGE...: unpacks each to a folder of its name in the scratch folder.
#
# Sources come from the archives that this machine installs from. Package lists are kept in a separate folder,
# so that neither root nor a change of system settings is needed. Of equal versions apt uses the first, hence
# the order: the archive of security updates may have dropped its copies.
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

# Gives the compiler with POSIX threads the plain names, for this build only. Its output contains no
# source paths.
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
