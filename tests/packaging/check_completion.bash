# check_completion.bash FILE: what a shell offers behind some beginnings of a command line.
set -eu
. "$1"

expect() {
    read -ra COMP_WORDS <<<"$1"
    [[ $1 == *' ' ]] && COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMPREPLY=()
    _lumenfold_cli 2>/dev/null || true
    [ "${COMPREPLY[*]}" = "$2" ] || {
        echo "'$1' offers '${COMPREPLY[*]}', not '$2'"
        exit 1
    }
}

expect "lumenfold-cli " "site build versions"
expect "lumenfold-cli si" "site"
expect "lumenfold-cli site " "build check plan serve"
expect "lumenfold-cli site build --pe" "--pending"
expect "lumenfold-cli build --v" "--verbose --version"
