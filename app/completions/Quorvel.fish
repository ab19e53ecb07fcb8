set -l first 'test (count (commandline -opc)) = 1'
set -l later 'set -l words (commandline -opc); contains -- "$words[2]" update restore'
set -l path 'string match -q -- "-config=*" (commandline -ct)'

complete -c Quorvel -f
complete -c Quorvel -n $first -a update -d 'Insert the values into the property list'
complete -c Quorvel -n $first -a restore -d 'Always an error, not implemented'
complete -c Quorvel -n $first -a '-h -help --help' -d 'Print help'
complete -c Quorvel -n $later -a -v -d 'Trace each step'
complete -c Quorvel -n "$later; and not $path" -a -config= -d 'Instead of Quorvel.cfg'
# Fish completes the file name behind the "=".
complete -c Quorvel -n "$later; and $path" -F
complete -c quorvel-check -a '-h -help --help' -d 'Print help'
