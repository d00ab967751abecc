# Completion in bash for quillmarch and qlmprobe: the words are asked of the programs themselves.
_quillmarch() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} program=${COMP_WORDS[0]} command=()
  case $before in
    --set | --connect | --at | --fps | --limit | --seconds | --name | --rnd | --num-objs | --real-hispeed) return ;;
    --data) mapfile -t COMPREPLY < <(compgen -d -- "$word") && return ;;
    --sort) mapfile -t COMPREPLY < <(compgen -W 'level genre title artist' -- "$word") && return ;;
  esac
  if [ "${program##*/}" = qlmprobe ]; then
    if [ "$COMP_CWORD" -eq 1 ]; then
      mapfile -t COMPREPLY < <(compgen -W "--help --version $("$program" --help 2> /dev/null |
        sed -n '/^Commands:/,/^$/ s/^  \([a-z]\+\) .*/\1/p')" -- "$word")
      return
    fi
    command=("${COMP_WORDS[1]}")
  fi
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$("$program" "${command[@]}" --help 2> /dev/null |
      grep -o -E '^ +--[a-z0-9-]+' | tr -d ' ')" -- "$word")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}
complete -o filenames -o bashdefault -F _quillmarch quillmarch qlmprobe
