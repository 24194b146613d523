# shellcheck shell=bash
# packages.sh - Debian packages that a script needs.  To be sourced.

# need_packages NAME...: installs those that are missing.  When it cannot, it says in one line what to do and fails.
need_packages()
{
    local name as_root=() missing=()
    if ! command -v dpkg-query >/dev/null; then
        echo "this is no Debian system: if the build fails, install what Debian calls $*" >&2
        return 0
    fi
    for name in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null) == installed ]] || missing+=("$name")
    done
    if [[ ${#missing[@]} -eq 0 ]]; then
        return 0
    fi
    if [[ $EUID -ne 0 ]]; then
        if ! command -v sudo >/dev/null; then
            echo "packages are missing and there is no sudo: as root, run apt-get install ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "installing ${missing[*]}" >&2
    if ! _install_packages && ! { "${as_root[@]}" apt-get update -qq &>/dev/null && _install_packages; }; then
        echo "cannot install packages: see what 'apt-get install ${missing[*]}' says as root" >&2
        return 1
    fi
}

# Of need_packages, whose variables it uses.
_install_packages()
{
    # The environment goes through sudo only when it is given to the command itself.
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -qq --no-install-recommends "${missing[@]}" &>/dev/null
}
