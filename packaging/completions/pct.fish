# fish completion for pct
# SPDX-License-Identifier: Apache-2.0

set -l verbs check build profile show diff identities

# Whether the first word after pct is one of the arguments.
function __fish_pct_verb_is
    set -l words (commandline -opc)
    test (count $words) -ge 2; and contains -- $words[2] $argv
end

function __fish_pct_needs_verb
    test (count (commandline -opc)) -eq 1
end

# Folders, and files whose names have one of these extensions.
function __fish_pct_files
    set -l extensions (string join '|' $argv)
    complete -C "__fish_command_without_completions $(commandline -ct)" |
        string match --regex -- "^.*(?:/|\.(?:$extensions))\$"
end

complete -c pct -f
complete -c pct -n __fish_pct_needs_verb -a check -d 'Say what an installer package offers to a build'
complete -c pct -n __fish_pct_needs_verb -a build -d 'Make a customized installer package'
complete -c pct -n __fish_pct_needs_verb -a profile -d 'Make a configuration profile'
complete -c pct -n __fish_pct_needs_verb -a show -d 'Print the settings in a document, a profile or a package'
complete -c pct -n __fish_pct_needs_verb -a diff -d 'Say in which settings two files differ'
complete -c pct -n __fish_pct_needs_verb -a identities -d 'List the identities that can sign a profile'
complete -c pct -n __fish_pct_needs_verb -a help -d 'Say more about a verb'
complete -c pct -n __fish_pct_needs_verb -s v -l version -d 'Show the version'
complete -c pct -n 'not __fish_pct_verb_is help' -s h -l help -d 'Show help'
complete -c pct -n '__fish_pct_verb_is help' -a "$verbs"

complete -c pct -n "__fish_pct_verb_is $verbs" -l json -d 'Write the result as JSON'
complete -c pct -n '__fish_pct_verb_is check build profile' -l product -x -a 'editor reader' -d 'The product'
complete -c pct -n '__fish_pct_verb_is check build profile' -s q -l quiet -d 'No warnings and no confirmation'
complete -c pct -n '__fish_pct_verb_is build profile' -l force -d 'Replace existing outputs'
complete -c pct -n '__fish_pct_verb_is build profile' -l config -x -a '(__fish_pct_files xml)' -d 'Configuration document with the settings'

complete -c pct -n '__fish_pct_verb_is check' -a '(__fish_pct_files pkg)'
complete -c pct -n '__fish_pct_verb_is show diff' -a '(__fish_pct_files xml mobileconfig pkg)'

complete -c pct -n '__fish_pct_verb_is build' -l input -x -a '(__fish_pct_files pkg)' -d 'The vendor\'s package'
complete -c pct -n '__fish_pct_verb_is build' -l output -x -a '(__fish_pct_files pkg)' -d 'The package to make'
complete -c pct -n '__fish_pct_verb_is build' -l keep-config -x -a '(__fish_pct_files xml)' -d 'Keep a copy of the document'

complete -c pct -n '__fish_pct_verb_is profile' -l from -x -a '(__fish_pct_files mobileconfig)' -d 'Profile with the settings'
complete -c pct -n '__fish_pct_verb_is profile' -l installed -d 'Take the installed profile'
complete -c pct -n '__fish_pct_verb_is profile' -l output -x -a '(__fish_pct_files mobileconfig)' -d 'The profile to make'
complete -c pct -n '__fish_pct_verb_is profile' -l sign -x -a '(pct identities 2>/dev/null)' -d 'Sign with this identity'
complete -c pct -n '__fish_pct_verb_is profile' -l identifier -x -d 'Identifier of the profile'
complete -c pct -n '__fish_pct_verb_is profile' -l uuid -x -d 'UUID of the profile'
