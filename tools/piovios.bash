# Bash completion of piovios.  The tool itself knows its words: this only asks it.
_piovios()
{
    local cur=${COMP_WORDS[COMP_CWORD]} word
    local -a before=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ $word == -* ]] || before+=("$word")
    done
    mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" complete "${before[@]}" 2>/dev/null)" -- "$cur")
    if [[ $cur != -* && ${before[0]-} =~ ^(load|save|diff|demo|metrics)$ ]]; then
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$cur")
    fi
}
complete -o filenames -o bashdefault -F _piovios piovios
