# Completion for nexwire: commands, options, names of functions and of their arguments.

set -l commands list describe call platform demo openapi reference

function __nexwire_functions
    # Whole names, and what follows the class; an overload's brackets are left to describe and call to ask for.
    nexwire list --names 2>/dev/null | string replace -r '\(.*' '' | while read -l name
        echo $name
        string replace -r '.*::' '' $name
    end | sort -u
end

function __nexwire_function
    # The first word behind the command that is no option. Values of options hold no function's name.
    for word in (commandline -opc)[3..-1]
        if not string match -q -- '-*' $word; and nexwire describe --arguments $word >/dev/null 2>&1
            echo $word
            return 0
        end
    end
    return 1
end

function __nexwire_values
    nexwire describe --arguments (__nexwire_function) 2>/dev/null | string replace -r '$' '='
end

complete -c nexwire -f
complete -c nexwire -s h -l help -d 'Help'
complete -c nexwire -l version -d 'The version'
complete -c nexwire -l color -x -a 'auto always never' -d 'When to use colours'
complete -c nexwire -n "not __fish_seen_subcommand_from $commands" -a "$commands"

complete -c nexwire -n '__fish_seen_subcommand_from list' -l names -d 'Names only'
complete -c nexwire -n '__fish_seen_subcommand_from list' -l json -d 'As a JSON array'
complete -c nexwire -n '__fish_seen_subcommand_from describe' -l arguments -d 'Only the names of what can be given'
complete -c nexwire -n '__fish_seen_subcommand_from describe' -l json -d 'As a JSON object'
complete -c nexwire -n '__fish_seen_subcommand_from describe call; and not __nexwire_function >/dev/null' -a '(__nexwire_functions)'

set -l call '__fish_seen_subcommand_from call'
complete -c nexwire -n "$call; and __nexwire_function >/dev/null" -a '(__nexwire_values)'
complete -c nexwire -n $call -l body -r -F -d 'File with the request structure as JSON'
complete -c nexwire -n $call -l server -x -d 'Address of the platform'
complete -c nexwire -n $call -l db -r -F -d 'Database of the local platform'
complete -c nexwire -n $call -l pages -d 'All pages, one element a line'
complete -c nexwire -n $call -l follow -d 'Ask until the progress is at its end'
complete -c nexwire -n $call -l dry-run -d 'Show what would be sent'
complete -c nexwire -n $call -l merge -d 'Read a structure that is given in part first'
complete -c nexwire -n $call -l compact -d 'Result on one line'
complete -c nexwire -n $call -l json -d 'Everything as one JSON object'
complete -c nexwire -n $call -s q -l quiet -d 'Say nothing when all went well'
complete -c nexwire -n $call -s v -l verbose -d 'Show the exchanges'
complete -c nexwire -n $call -l trace -d 'Show each step of the exchanges'
complete -c nexwire -n $call -l header -x -d 'Header field'
complete -c nexwire -n $call -l timeout -x -d 'Milliseconds for the exchange'
complete -c nexwire -n $call -l deadline -x -d 'Milliseconds for all exchanges together'
complete -c nexwire -n $call -l retry -x -d 'Repeat what failed so often'
complete -c nexwire -n $call -l ca -r -F -d 'Certificate authorities to trust'
complete -c nexwire -n $call -l cert -r -F -d 'Certificate to show the server'
complete -c nexwire -n $call -l key -r -F -d 'Its key'
complete -c nexwire -n $call -l key-passphrase -x -d 'Opens the key'
complete -c nexwire -n $call -l insecure -d 'Accept any certificate'
complete -c nexwire -n $call -l proxy -x -d 'Proxy address'
complete -c nexwire -n $call -l record -r -F -d 'Append the exchange to a file'
complete -c nexwire -n $call -l replay -r -F -d 'Answer from a file'

set -l platform '__fish_seen_subcommand_from platform'
complete -c nexwire -n $platform -l port -x -d 'Port'
complete -c nexwire -n $platform -l wall-port -x -d 'Port of the video wall service'
complete -c nexwire -n $platform -l db -r -F -d 'Database'
complete -c nexwire -n $platform -l time-scale -x -d 'How fast devices work'
complete -c nexwire -n $platform -l alarms -x -d 'Alarms a minute that happen by themselves'
complete -c nexwire -n $platform -l faults -r -F -d 'Rules for faults'
complete -c nexwire -n $platform -l seed -r -F -d 'Documents to write at the start'
complete -c nexwire -n $platform -l listen -x -d 'Address to listen on'
complete -c nexwire -n $platform -l token -x -d 'What every request brings'
complete -c nexwire -n $platform -l coverage -d 'List how each function is answered'
complete -c nexwire -n $platform -l verbose -d 'One line per exchange'
complete -c nexwire -n '__fish_seen_subcommand_from demo' -l site -r -F -d 'Description of the site'
complete -c nexwire -n '__fish_seen_subcommand_from openapi' -l output -r -F -d 'Where to write it'
complete -c nexwire -n '__fish_seen_subcommand_from reference' -l html -r -F -d 'Where to write it'
