# Bash completion of glyphmoor-cli: its commands and their second words, as
# "glyphmoor-cli help" lists them; --machine takes a folder, anything else a file.

_glyphmoor_cli() {
    local cur prev words cword
    _init_completion || return

    if [[ $prev == --machine ]]; then
        _filedir -d
        return
    fi
    # The words typed so far, without the program and --machine DIR.
    local -a typed=()
    local i
    for ((i = 1; i < cword; i++)); do
        if [[ ${words[i]} == --machine ]]; then
            ((i++))
        elif [[ ${words[i]} != --machine=* ]]; then
            typed+=("${words[i]}")
        fi
    done
    local listing
    listing=$("${words[0]}" help 2>/dev/null | sed -n 's/^  \([a-z][a-z-]*\)\( [a-z][a-z-]*\)\?.*/\1\2/p')
    if ((${#typed[@]} == 0)); then
        local firsts
        firsts=$(awk '{print $1}' <<<"$listing" | sort -u)
        COMPREPLY=($(compgen -W "$firsts --machine --help --version" -- "$cur"))
        return
    fi
    if ((${#typed[@]} == 1)); then
        local seconds
        seconds=$(awk -v first="${typed[0]}" '$1 == first && NF > 1 {print $2}' <<<"$listing")
        if [[ ${typed[0]} == help ]]; then
            seconds=$(awk '{print $1}' <<<"$listing" | sort -u)
        fi
        if [[ -n $seconds ]]; then
            COMPREPLY=($(compgen -W "$seconds" -- "$cur"))
            return
        fi
    fi
    _filedir
}
complete -F _glyphmoor_cli glyphmoor-cli
