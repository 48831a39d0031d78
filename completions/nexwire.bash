# shellcheck shell=bash
# Completion for nexwire: commands, options, names of functions and of their arguments.

_nexwire()
{
    local cur prev words cword
    # A name holds colons and a value follows an equals sign; both are parts of one word here.
    _get_comp_words_by_ref -n := cur prev words cword || return

    local command='' function='' i
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
            --color) ((i++)) ;;
            -*) ;;
            *)
                command=${words[i]}
                break
                ;;
        esac
    done

    case $prev in
        --color)
            mapfile -t COMPREPLY < <(compgen -W 'auto always never' -- "$cur")
            return
            ;;
        --body | --ca | --cert | --key | --db | --record | --replay | --html | --output | --site | --faults | --seed)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -- "$cur")
            return
            ;;
        --server | --proxy | --header | --key-passphrase | --timeout | --deadline | --retry | --port | --wall-port | --time-scale | --alarms | --listen | --token)
            return
            ;;
    esac

    if [[ -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W 'list describe call platform demo openapi reference --help --version --color' -- "$cur")
        return
    fi

    if [[ $cur == -* ]]; then
        local options='--help --color'
        case $command in
            list) options+=' --names --json' ;;
            describe) options+=' --arguments --json' ;;
            call) options+=' --body --server --db --dry-run --merge --compact --pages --follow --json --quiet --verbose --trace --header --timeout --deadline --retry --ca --cert --key --key-passphrase --insecure --proxy --record --replay' ;;
            platform) options+=' --port --wall-port --db --time-scale --alarms --faults --seed --listen --token --coverage --verbose' ;;
            demo) options+=' --site' ;;
            openapi) options+=' --output' ;;
            reference) options+=' --html' ;;
        esac
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
        return
    fi

    [[ $command == call || $command == describe ]] || return 0
    for ((i++; i < cword; i++)); do
        case ${words[i]} in
            --body | --ca | --cert | --key | --key-passphrase | --db | --record | --replay | --server | --proxy | --header | --timeout | --deadline | --retry | --color) ((i++)) ;;
            -*) ;;
            *)
                function=${words[i]}
                break
                ;;
        esac
    done

    if [[ -z $function ]]; then
        # Whole names, and what follows the class; an overload's brackets are left to describe and call to ask for.
        mapfile -t COMPREPLY < <("${words[0]}" list --names 2>/dev/null | sed 's/(.*//' | sort -u |
            awk -v start="$cur" '{
                split($0, part, "::")
                if (index($0, start) == 1) print $0
                else if (index(part[2], start) == 1) print part[2]
            }' | sort -u)
        __ltrim_colon_completions "$cur"
    elif [[ $command == call && $cur != *=* ]]; then
        mapfile -t COMPREPLY < <("${words[0]}" describe --arguments "$function" 2>/dev/null |
            awk -v start="$cur" 'index($0, start) == 1 { print $0 "=" }')
        compopt -o nospace
    elif [[ $command == call && $cur == *=@file:* ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "${cur#*=@file:}")
    fi
} && complete -F _nexwire nexwire
