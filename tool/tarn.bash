# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
#
# Completion of the command tarn in bash: commands, their options and the values of these, steps and
# files. Names of nets are not completed, because reading a design takes too long.

# _tarn_options COMMAND: the options of the command. One with a value is followed by "=" and, where
# they are known, the values that it takes, separated by bars; FILE stands for any file.
_tarn_options() {
    case $1 in
    check) echo --format='text|json|sarif' --ignore= --strict --rules -o=FILE --output=FILE ;;
    nets)
        echo --wildcard --regexp --case-sensitive --in= --own --for='in|out' --tree --json \
            -o=FILE --output=FILE
        ;;
    show) echo --json -o=FILE --output=FILE ;;
    edit) echo --new --check --dry-run ;;
    'export map') echo --format='csv|json' -o=FILE --output=FILE ;;
    'export simulation')
        echo --language='systemverilog|verilog' --tb-path= --module= --skip-missing \
            -o=FILE --output=FILE
        ;;
    esac
    echo -h --help
}

_tarn_commands='check nets show write edit export'
_tarn_exports='map simulation'
_tarn_steps='add-core add-in add-out signals value clock remove replace replace-prefix'

# The commands that take a design beside their files, and its arguments.
_tarn_designs='check nets edit export simulation'
_tarn_design_options='-f -F -I -D -v -y -sv --top --language --work --std'

# _tarn_contains LIST WORD: whether the word is one of the list.
_tarn_contains() {
    [[ " $1 " == *" $2 "* ]]
}

# _tarn_words CURRENT WORDS: offers those of the words that begin like the current one.
_tarn_words() {
    mapfile -t COMPREPLY < <(compgen -W "$2" -- "$1")
}

# _tarn_files CURRENT [PATTERN]: offers folders and files, with a pattern only those that match it.
_tarn_files() {
    compopt -o filenames 2>/dev/null
    if [ $# -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$1")
    else
        mapfile -t COMPREPLY < <(compgen -d -- "$1"; compgen -f -X "!$2" -- "$1")
    fi
}

# _tarn_folders CURRENT: offers folders.
_tarn_folders() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$1")
}

# _tarn_value CURRENT COMMAND OPTION: offers the values of the option. False when it takes none.
_tarn_value() {
    local option values
    for option in $(_tarn_options "$2"); do
        [[ $option == "$3="* ]] || continue
        values=${option#*=}
        case $values in
        '') ;;
        FILE) _tarn_files "$1" ;;
        *) _tarn_words "$1" "${values//|/ }" ;;
        esac
        return 0
    done
    _tarn_contains "$_tarn_designs" "$2" || return 1
    case $3 in
    -f | -F | -v) _tarn_files "$1" ;;
    -I | -y) _tarn_folders "$1" ;;
    --language) _tarn_words "$1" '1364-1995 1364-2001 1364-2005 1800-2017' ;;
    --std) _tarn_words "$1" '93 08' ;;
    --top | --work | -D) ;;
    *) return 1 ;;
    esac
}

# _tarn_command WORD...: the command that the words begin with.
_tarn_command() {
    if [ "${1-}" = export ] && [ $# -gt 1 ]; then
        echo "export $2"
    else
        echo "${1-}"
    fi
}

# _tarn_last_step COMMAND WORD...: the last of the words that is a step of the command.
_tarn_last_step() {
    local step='' word
    [ "$1" = edit ] || return
    for word in "${@:2}"; do
        _tarn_contains "$_tarn_steps" "$word" && step=$word
    done
    echo "$step"
}

# _tarn_option_names COMMAND STEP: the options of the command without their values. Behind a step,
# which may be empty, no design follows.
_tarn_option_names() {
    local option
    for option in $(_tarn_options "$1"); do
        echo "${option%%=*}"
    done
    if [ "$2" = signals ]; then
        echo --wildcard
    elif [ -z "$2" ] && _tarn_contains "$_tarn_designs" "$1"; then
        echo "$_tarn_design_options"
    fi
}

# _tarn_arguments CURRENT COMMAND STEP WORD...: offers steps and files; the words are those before.
_tarn_arguments() {
    local current=$1 command=$2 step=$3
    shift 3
    if [ -n "$step" ]; then
        _tarn_words "$current" "$_tarn_steps"
        return
    fi
    # The first argument is the file; after it steps may begin.
    if [ "$command" = edit ] && [ $# -gt 0 ]; then
        _tarn_files "$current"
        local files=("${COMPREPLY[@]}")
        _tarn_words "$current" "$_tarn_steps"
        COMPREPLY+=("${files[@]}")
        return
    fi
    if _tarn_contains "$_tarn_designs" "$command"; then
        _tarn_files "$current"
    else
        _tarn_files "$current" '*.[tT][aA][rR][nN]'
    fi
}

_tarn() {
    COMPREPLY=()
    local current=${COMP_WORDS[COMP_CWORD]}
    local words=("${COMP_WORDS[@]:1:COMP_CWORD-1}")
    # bash splits words at "=": "--format=te" are three.
    local count=${#words[@]}
    if [ "$current" = '=' ]; then
        current=
        count=$((count + 1))
        words+=('=')
    fi
    local before=
    if [ "$count" -gt 0 ]; then
        before=${words[count - 1]}
        [ "$before" = '=' ] && [ "$count" -gt 1 ] && before=${words[count - 2]}
    fi

    if [ "$count" -eq 0 ]; then
        _tarn_words "$current" "$_tarn_commands help -h --help --version"
        return
    fi
    if [ "${words[0]}" = help ]; then
        words=("${words[@]:1}")
        if [ "${#words[@]}" -eq 0 ]; then
            _tarn_words "$current" "$_tarn_commands"
        elif [ "${words[*]}" = export ]; then
            _tarn_words "$current" "$_tarn_exports"
        fi
        return
    fi
    if [ "${words[0]}" = export ] && [ "$count" -eq 1 ]; then
        _tarn_words "$current" "$_tarn_exports"
        return
    fi
    local command step skipped=1
    command=$(_tarn_command "${words[@]}")
    step=$(_tarn_last_step "$command" "${words[@]}")
    [ "${words[0]}" = export ] && skipped=2
    _tarn_value "$current" "$command" "$before" && return
    if [[ $current == -* ]]; then
        _tarn_words "$current" "$(_tarn_option_names "$command" "$step")"
        return
    fi
    _tarn_arguments "$current" "$command" "$step" "${words[@]:skipped}"
}

complete -F _tarn tarn
