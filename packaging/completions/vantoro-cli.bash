# Completion of vantoro-cli for bash.
_vantoro_cli_options()
{
    case $1 in
    list) echo "--json --sha256 --password-file --password-fd --encoding --max-dictionary" ;;
    extract) echo "-o --folder --password-file --password-fd --encoding --only --keep-broken --quiet" \
        "--max-dictionary" ;;
    test) echo "--password-file --password-fd --max-dictionary" ;;
    create) echo "-o --kind --level --password-file --password-fd --encrypt-names --classic-encryption --exclude" \
        "--threads --reproducible --quiet" ;;
    formats) echo "--json" ;;
    esac
    echo "--help"
}

_vantoro_cli()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    local words=
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        words="list extract test create formats --help --version"
    elif [[ $previous == --folder ]]; then
        words="auto always never"
    elif [[ $previous == --kind ]]; then
        words="zip 7z tar tar.gz tar.bz2 tar.xz tar.zst tar.lz4 cpio iso xar ar jar cbz gz xz zst bz2 lz4"
    elif [[ $previous == --level ]]; then
        words="0 1 2 3 4 5 6 7 8 9"
    elif [[ $previous == --encoding ]]; then
        words="UTF-8 Shift_JIS EUC-JP GB18030 Big5 EUC-KR CP866 CP437 CP850 windows-1251 windows-1252"
    elif [[ $previous == --@(password-fd|max-dictionary|threads|only|exclude) ]]; then
        return
    elif [[ $current == -* && " ${COMP_WORDS[*]:1:COMP_CWORD-1} " != *" -- "* ]]; then
        words=$(_vantoro_cli_options "$command")
    fi
    if [[ -n $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
        return
    fi
    compopt -o filenames
    if [[ $command == extract && $previous == -o ]]; then
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _vantoro_cli vantoro-cli
