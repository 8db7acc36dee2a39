# shellcheck shell=bash
# Completion for the programs of Quorvane. They share this file, and bash loads it by the name of each.
# bash-completion gives it its helpers.

# Of a console port "5=/dev/ttyUSB0" the part behind the sign, which bash takes for a word of its own.
_quorvane_port() {
  local devices=(/dev/serial/by-id/* /dev/ttyUSB* /dev/ttyACM* /dev/ttyS?)
  case $cur in
    *=*) mapfile -t COMPREPLY < <(compgen -W "${devices[*]}" -- "${cur#*=}") ;;
    *)
      mapfile -t COMPREPLY < <(compgen -W "$(printf '%d= ' {1..31})" -- "$cur")
      compopt -o nospace
      ;;
  esac
}

# _quorvane_value PROGRAM OPTION: completes the value of an option that has one, else fails.
_quorvane_value() {
  local words=
  case "$1 $2" in
    'quorvane --settings') _filedir ini ;;
    'quorvane --journal') _filedir journal ;;
    'quorvane --demo') _filedir -d ;;
    'quorvane --port') _quorvane_port ;;
    'quorvane --print' | 'quorvane --protest') words=all ;;
    'quorvane --paper') words='A4 Letter' ;;
    'quorvane --language') words='de en' ;;
    'quorvane -o' | 'quorvane --output') _filedir pdf ;;
    'quorvane --heats' | 'quorvane-field --heats') ;;
    'quorvane-results --format') words='text csv json html' ;;
    'quorvane-results -o' | 'quorvane-results --output') _filedir ;;
    'quorvane-replay --project' | 'quorvane-replay --settings') _filedir ini ;;
    'quorvane-replay --state' | 'quorvane-replay --frames' | 'quorvane-replay --dialogs') _filedir ;;
    'quorvane-field --mode') words='1 2 3 4 5 6 all' ;;
    'quorvane-field --count') words='on off' ;;
    'quorvane-field --twice') words='P1 P2 P3 ST TM PY DS' ;;
    'quorvane-field --link' | 'quorvane-field --compare') _filedir ;;
    quorvane-field\ --@(seed|pause|silent|late|restart|starter-at|noise|loss|damage|delay|tolerance)) ;;
    *) return 1 ;;
  esac
  [ -z "$words" ] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
}

_quorvane() {
  # shellcheck disable=SC2034 # set by bash-completion
  local cur prev words cword split program=${1##*/} options='--help --version'
  _init_completion -s || return
  _quorvane_value "$program" "$prev" && return
  ! $split || return
  case $program in
    quorvane) options+=' --settings --port --journal --language --demo --heats --print --protest --output --paper' ;;
    quorvane-results) options+=' --format --bom --output' ;;
    quorvane-replay) options+=' --project --settings --state --frames --dialogs --in-place --verify' ;;
    quorvane-field)
      options+=' --heats --mode --seed --count --hold --quick --pause --silent --late --twice --restart'
      options+=' --controlled --starter-at'
      options+=' --noise --loss --damage --split --link --delay --stay --fast --compare --tolerance --lossy'
      ;;
  esac
  if [[ $cur == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
  else
    case $program in
      quorvane | quorvane-results) _filedir ini ;;
      quorvane-replay) _filedir journal ;;
    esac
  fi
}

complete -F _quorvane quorvane quorvane-results quorvane-replay quorvane-field
