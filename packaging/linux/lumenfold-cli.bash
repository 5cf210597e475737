# bash completion for lumenfold-cli
_lumenfold_cli() {
    local word=${COMP_WORDS[COMP_CWORD]}
    local words="${COMP_WORDS[*]:1:COMP_CWORD-1}"
    COMPREPLY=()
    case $word in
    -*)
        local options="--porcelain --quiet --verbose --help"
        case $words in
        "site build"*) options+=" --pending --output --strict --threads" ;;
        "site serve"*) options+=" --port --output --threads" ;;
        "site check"*) options+=" --threads" ;;
        build*) options+=" --version" ;;
        "") options+=" --version" ;;
        esac
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
        return
        ;;
    esac
    case $words in
    "") mapfile -t COMPREPLY < <(compgen -W "site build versions" -- "$word") ;;
    site) mapfile -t COMPREPLY < <(compgen -W "build check plan serve" -- "$word") ;;
    *) compopt -o default ;;
    esac
}
complete -F _lumenfold_cli lumenfold-cli
