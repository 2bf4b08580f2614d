# Completion of vantoro-cli for fish.
set -l commands list extract test create formats
complete -c vantoro-cli -n "not __fish_seen_subcommand_from $commands" -f
complete -c vantoro-cli -n "not __fish_seen_subcommand_from $commands" -a list -d 'Show what is in an archive'
complete -c vantoro-cli -n "not __fish_seen_subcommand_from $commands" -a extract -d 'Unpack archives'
complete -c vantoro-cli -n "not __fish_seen_subcommand_from $commands" -a test -d 'Check archives without writing anything'
complete -c vantoro-cli -n "not __fish_seen_subcommand_from $commands" -a create -d 'Write a new archive'
complete -c vantoro-cli -n "not __fish_seen_subcommand_from $commands" -a formats -d 'List the formats that can be read'
complete -c vantoro-cli -n "not __fish_seen_subcommand_from $commands" -l version -d 'Show the version'
complete -c vantoro-cli -s h -l help -d 'Show help'

set -l with_password '__fish_seen_subcommand_from list extract test create'
complete -c vantoro-cli -n $with_password -l password-file -r -F -d 'Take the password from the first line of a file'
complete -c vantoro-cli -n $with_password -l password-fd -x -d 'Take the password from an open descriptor'
complete -c vantoro-cli -n '__fish_seen_subcommand_from list extract test' -l max-dictionary -x -d 'MiB of memory that decoding may ask for'
set -l charsets UTF-8 Shift_JIS EUC-JP GB18030 Big5 EUC-KR CP866 CP437 CP850 windows-1251 windows-1252
complete -c vantoro-cli -n '__fish_seen_subcommand_from list extract' -l encoding -x -a "$charsets" -d 'Charset of names that do not declare one'

complete -c vantoro-cli -n '__fish_seen_subcommand_from list formats' -l json -d 'Machine readable'
complete -c vantoro-cli -n '__fish_seen_subcommand_from list' -l sha256 -d 'Add digests of the data'

complete -c vantoro-cli -n '__fish_seen_subcommand_from extract' -s o -x -a '(__fish_complete_directories)' -d 'Destination'
complete -c vantoro-cli -n '__fish_seen_subcommand_from extract' -l folder -x -a 'auto always never' -d 'Enclosing folder'
complete -c vantoro-cli -n '__fish_seen_subcommand_from extract' -l only -x -d 'Extract only this entry'
complete -c vantoro-cli -n '__fish_seen_subcommand_from extract' -l keep-broken -d 'Keep damaged entries'

complete -c vantoro-cli -n '__fish_seen_subcommand_from create' -s o -r -F -d 'The archive'
complete -c vantoro-cli -n '__fish_seen_subcommand_from create' -l kind -x -a 'zip 7z tar tar.gz tar.bz2 tar.xz tar.zst tar.lz4 cpio iso xar ar jar cbz gz xz zst bz2 lz4' -d 'Kind of archive'
complete -c vantoro-cli -n '__fish_seen_subcommand_from create' -l level -x -a '(seq 0 9)' -d 'Fast to small'
complete -c vantoro-cli -n '__fish_seen_subcommand_from create' -l encrypt-names -d 'Encrypt the list of names'
complete -c vantoro-cli -n '__fish_seen_subcommand_from create' -l classic-encryption -d 'Use the old, weak cipher'
complete -c vantoro-cli -n '__fish_seen_subcommand_from create' -l exclude -x -d 'Leave out what matches'
complete -c vantoro-cli -n '__fish_seen_subcommand_from create' -l threads -x -d 'Threads that compress'
complete -c vantoro-cli -n '__fish_seen_subcommand_from create' -l reproducible -d 'Identical input, identical archive'
complete -c vantoro-cli -n '__fish_seen_subcommand_from extract create' -l quiet -d 'No progress and no result line'
