# Completion for bash, from 3.2 on, with its bash-completion package or without.
_quorvel() {
    local words=() word
    COMPREPLY=()
    case $COMP_CWORD,${COMP_WORDS[1]} in
    1,*) words=('update ' 'restore ' '-h ' '-help ' '--help ') ;;
    *,update | *,restore)
        # In a path each "=" and ":" counts as a word, and bash completes the file name behind it.
        case ${COMP_WORDS[COMP_CWORD - 1]},${COMP_WORDS[COMP_CWORD]} in
        *[:=] | *[:=],?*) compopt -o default +o nospace 2>/dev/null ;;
        *) words=('-v ' '-config=') ;;
        esac
        ;;
    esac
    for word in "${words[@]}"; do
        if [[ $word == "$2"* ]]; then COMPREPLY+=("$word"); fi
    done
}

# Only "-config=" goes on without a blank, so the other words bring theirs. Before 4.0 there is no
# compopt, and file names come wherever no word fits (not tried: no bash 3.2 was at hand).
complete -o nospace -F _quorvel Quorvel
type compopt >/dev/null 2>&1 || complete -o nospace -o default -F _quorvel Quorvel
complete -f -W '-h -help --help' quorvel-check
