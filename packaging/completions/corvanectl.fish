# Completion of corvanectl for fish. What the client has (settings, volumes, plug-ins) is asked of the program itself.

# The words so far without options, and the roots among them.
function __corvanectl_given
    set -l words (commandline -opc)[2..-1]
    set -l skip 0
    for word in $words
        if test $skip = 1
            set skip 0
        else if test "$word" = --root
            set skip 1
        else if not string match -q -- '-*' "$word"
            echo -- $word
        end
    end
end

function __corvanectl_ask
    set -l words (commandline -opc)
    set -l roots
    for i in (seq (count $words))
        if test "$words[$i]" = --root; and test $i -lt (count $words)
            set -a roots --root $words[(math $i + 1)]
        end
    end
    corvanectl $roots $argv 2>/dev/null
end

# Whether so many words were given, and these are the first ones.
function __corvanectl_at
    set -l given (__corvanectl_given)
    test (count $given) -eq $argv[1]; or return 1
    for i in (seq 2 (count $argv))
        set -l place (math $i - 1)
        contains -- "$given[$place]" (string split , -- $argv[$i]); or return 1
    end
end

function __corvanectl_in
    set -l given (__corvanectl_given)
    test (count $given) -ge 1; and contains -- $given[1] $argv
end

# Whether the next word is a name and not the value of one.
function __corvanectl_names
    test (math (count (__corvanectl_given)) % 2) = 1
end

complete -c corvanectl -f
complete -c corvanectl -l root -x -a '(__fish_complete_directories)' -d 'Look for the client below this folder'
complete -c corvanectl -l json -d 'Print JSON'
complete -c corvanectl -s h -l help -d 'Show help'
complete -c corvanectl -l version -d 'Show the version'
complete -c corvanectl -n '__corvanectl_at 0' -a 'help status get set volumes plugins run update uninstall watch check'
complete -c corvanectl -n '__corvanectl_in set; and __corvanectl_names; or __corvanectl_in get' -a '(__corvanectl_ask get | cut -f 1)'
complete -c corvanectl -n '__corvanectl_at 1 volumes' -a 'set purge'
complete -c corvanectl -n '__corvanectl_at 1 volumes' -l all -d 'Those of the system too'
complete -c corvanectl -n '__corvanectl_at 2 volumes set,purge' -a '(__corvanectl_ask volumes | tail -n +2 | cut -f 1)'
complete -c corvanectl -n '__corvanectl_in volumes; and contains -- (__corvanectl_given)[2] set; and test (count (__corvanectl_given)) -gt 2; and __corvanectl_names' -a 'absence.warn absence.minutes usage.warn usage.percent'
complete -c corvanectl -n '__corvanectl_at 1 plugins' -a 'show enable disable set add remove test'
complete -c corvanectl -n '__corvanectl_at 2 plugins' -a '(__corvanectl_ask plugins | cut -f 1)'
complete -c corvanectl -n '__corvanectl_at 3 plugins set,add,remove' -a '(__corvanectl_ask plugins show (__corvanectl_given)[3] | string match -r "^  [^\t]*" | string trim)'
complete -c corvanectl -n '__corvanectl_in run update uninstall' -l wait -d 'Until it is over'
complete -c corvanectl -n '__corvanectl_in run update uninstall' -l timeout -x -d 'At most so many seconds'
complete -c corvanectl -n '__corvanectl_in uninstall' -l yes -d 'Confirm the removal'
complete -c corvanectl -n '__corvanectl_in uninstall' -l quiet -d 'No report'
complete -c corvanectl -n '__corvanectl_in check' -F
complete -c corvanectl -n '__corvanectl_in help' -a 'status get set volumes plugins run update uninstall watch check'
