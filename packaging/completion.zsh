#compdef quillmarch qlmprobe
# Completion in zsh: the words are asked of the programs themselves.
_gnu_generic "$@"
