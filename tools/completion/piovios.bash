# Bash completion of piovios.  The command itself knows its words and values: this only asks it.
_piovios()
{
    local cur=${COMP_WORDS[COMP_CWORD]} line
    cur=${cur#[\"\']}     # a quote that is still open
    [[ $cur == = ]] && cur= # as --port=1/2 is taken apart
    local -a files
    COMPREPLY=()
    while IFS= read -r line; do
        case $line in
        :json | :file)
            if [[ $line == :json ]]; then
                mapfile -t files < <(compgen -d -- "$cur"; compgen -f -X '!*.json' -- "$cur")
            else
                mapfile -t files < <(compgen -f -- "$cur")
            fi
            COMPREPLY+=("${files[@]}")
            compopt -o filenames # the shell quotes them, and goes on behind a folder
            ;;
        "${cur//\\/}"*)
            printf -v line %q "${line%%$'\t'*}"
            COMPREPLY+=("${line//\\,/,}")
            ;;
        esac
    done < <("${COMP_WORDS[0]}" complete -- "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
    [[ ${COMPREPLY[0]-} != *= ]] || compopt -o nospace # a value follows
}
complete -F _piovios piovios
