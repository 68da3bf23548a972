# Completion of zelvan-schedules for bash: its commands and options, and names of files. Nothing is asked of a server.
_zelvan_schedules()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local login="--server --user --password-stdin --password-file --help"
    local -A options=(
        [list]="--json"
        [show]="--wait --json"
        [log]="--json"
        [add]="--template --project --at --title --wait --json"
        [run]="--wait --json"
        [reset]="--yes --json"
        [delete]="--yes"
        [templates]="--json"
        [export]=""
        [import]="--project --leave-out --preview --json"
        [check]="--json"
    )
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "${!options[*]} --help --version" -- "$current")
    elif [[ $previous == --password-file ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    elif [[ $previous =~ ^(-s|-u|--(server|user|template|project|at|title|leave-out))$ ]]; then
        return # only its user knows the value
    elif [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "${options[${COMP_WORDS[1]}]-} $login" -- "$current")
    elif [[ ${COMP_WORDS[1]} == import ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
} && complete -F _zelvan_schedules zelvan-schedules
