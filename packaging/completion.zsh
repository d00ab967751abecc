#compdef quillmarch qlmprobe
# Completion in zsh: the words are asked of the programs themselves.
local -a own
if [[ $service == qlmprobe && CURRENT -eq 2 ]]; then
  own=(--help --version $($words[1] --help 2> /dev/null | sed -n '/^Commands:/,/^$/ s/^  \([a-z]\+\) .*/\1/p'))
  compadd -a own
elif [[ $PREFIX == -* ]]; then
  [[ $service != qlmprobe ]] || own=($words[2])
  compadd -- $($words[1] $own --help 2> /dev/null | grep -o -E '^ +--[a-z0-9-]+')
else
  _files
fi
