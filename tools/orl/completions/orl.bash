# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
# Completion of orl's command line for bash. It needs nothing but bash itself.

# Adds the names that compgen finds for what is typed: _orl_names ACTION TYPED [EXTENDED_PATTERN]
_orl_names() {
    local name
    compopt -o filenames 2>/dev/null
    while IFS= read -r name; do
        # shellcheck disable=SC2053
        [[ -z ${3-} || $name == $3 ]] && COMPREPLY+=("$name")
    done < <(compgen -A "$1" -- "$2")
}

# Adds those words of a list that begin as what is typed: _orl_words LIST TYPED
_orl_words() {
    local word
    while IFS= read -r word; do
        COMPREPLY+=("$word")
    done < <(compgen -W "$1" -- "$2")
}

_orl() {
    local current=${COMP_WORDS[COMP_CWORD]} previous='' command='' options='' word i
    COMPREPLY=()
    [ "$COMP_CWORD" -gt 0 ] && previous=${COMP_WORDS[COMP_CWORD - 1]}

    # What stands behind the = of a long option comes as a word of its own, as does the = itself.
    if [ "$current" = = ]; then
        current=''
    elif [ "$previous" = = ] && [ "$COMP_CWORD" -gt 1 ]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi

    local only_operands=''
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        case $word in
        --) only_operands=yes ;;
        -*) ;;
        *) [ -n "$command" ] || command=$word ;;
        esac
    done

    case $command in
    '')
        _orl_words '--help --version -h
            normalize convert info probe complete layout sequences' "$current"
        return
        ;;
    normalize | convert) options='--help --output --quiet --strict -h -o' ;;
    info) options='--help --json -h' ;;
    probe) options='--canvas --help --json --rate -h' ;;
    complete) options='--canvas --help --output --quiet --rate --strict -h -o' ;;
    layout) options='--canvas --help --name --output --rate --svg -h -o' ;;
    sequences) options='--filter --help --json --null --plain --recursive -0 -h -r' ;;
    *) return ;;
    esac

    if [ -z "$only_operands" ]; then
        case $previous in
        -o | --output | --svg)
            _orl_names file "$current"
            return
            ;;
        --canvas)
            _orl_words '1280x720 1920x1080 2048x1080 3840x2160 4096x2160' "$current"
            return
            ;;
        --rate)
            _orl_words '23.976 24 25 29.97 30 48 50 59.94 60' "$current"
            return
            ;;
        --name | --filter) return ;;
        esac
        if [[ $current == -* ]]; then
            _orl_words "$options" "$current"
            return
        fi
    fi
    case $command in
    normalize | convert | info | complete)
        _orl_names file "$current" '*.@(otio|json)'
        _orl_names directory "$current" '!(*.otio|*.json)'
        ;;
    probe | layout) _orl_names file "$current" ;;
    sequences) _orl_names directory "$current" ;;
    esac
}

complete -F _orl orl
