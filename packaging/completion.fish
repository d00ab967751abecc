# Completion in fish for quillmarch and qlmprobe: the words are asked of the programs themselves.
complete -c quillmarch -n 'string match -q -- "-*" (commandline -ct)' \
    -a '(quillmarch --help | string match -rg "^ +(--[a-z0-9-]+)")'
complete -c qlmprobe -n __fish_use_subcommand -f \
    -a '--help --version (qlmprobe --help | string match -rg "^  ([a-z]+) ")'
complete -c qlmprobe -n 'string match -q -- "-*" (commandline -ct); and not __fish_use_subcommand' \
    -a '(qlmprobe (commandline -opc)[2] --help | string match -rg "^ +(--[a-z0-9-]+)")'
