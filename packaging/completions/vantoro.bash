# Completion of vantoro for bash.
_vantoro()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    if [[ $previous == --extract-to ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
    elif [[ $current == -* && " ${COMP_WORDS[*]:1:COMP_CWORD-1} " != *" -- "* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--extract-here --extract-to --extract-to-desktop --extract-ask --extract
            --compress --dbus-service --help --version" -- "$current")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _vantoro vantoro
