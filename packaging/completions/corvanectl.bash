# Completion of corvanectl for bash. What the client has (settings, volumes, plug-ins) is asked of the program itself.
_corvanectl() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  local -a given=() roots=() candidates=()
  local i
  for ((i = 1; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
      --root)
        roots+=(--root "${COMP_WORDS[i + 1]}")
        ((i++))
        ;;
      -*) ;;
      *) given+=("${COMP_WORDS[i]}") ;;
    esac
  done
  [[ $before == --root ]] && {
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -d -- "$word")
    return
  }
  # The first column of what the program prints.
  _corvanectl_column() { mapfile -t candidates < <(corvanectl "${roots[@]}" "$@" 2>/dev/null | cut -f 1); }
  local sets='absence.warn absence.minutes usage.warn usage.percent'
  case ${given[0]-}/${#given[@]} in
    /0) candidates=(help status get set volumes plugins run update uninstall watch check --root --json --help --version) ;;
    get/*) _corvanectl_column get ;;
    set/*) ((${#given[@]} % 2)) && _corvanectl_column get ;;
    volumes/1) candidates=(set purge --all) ;;
    volumes/2) _corvanectl_column volumes && candidates=("${candidates[@]:1}") ;;
    volumes/*) [[ ${given[1]} == set ]] && ((${#given[@]} % 2)) && read -ra candidates <<<"$sets" ;;
    plugins/1) candidates=(show enable disable set add remove test) ;;
    plugins/2) _corvanectl_column plugins ;;
    plugins/3) [[ ${given[1]} == @(set|add|remove) ]] && mapfile -t candidates < <(
      corvanectl "${roots[@]}" plugins show "${given[2]}" 2>/dev/null | sed -n 's/^  \([^\t]*\)\t.*/\1/p') ;;
    run/* | update/*) candidates=(--wait --timeout) ;;
    uninstall/*) candidates=(--yes --quiet --wait --timeout) ;;
    help/*) candidates=(status get set volumes plugins run update uninstall watch check) ;;
    check/*)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return
      ;;
  esac
  COMPREPLY=()
  for i in "${candidates[@]}"; do
    [[ $i == "$word"* ]] && COMPREPLY+=("$(printf '%q' "$i")")
  done
}
complete -F _corvanectl corvanectl
