# bash completion for pct                                                    -*- shell-script -*-
# SPDX-License-Identifier: Apache-2.0

# The options of a verb.
_pct_options()
{
    case $1 in
        check) echo --product --json -q --quiet -h --help ;;
        build) echo --product --input --output --config --keep-config --force --json -q --quiet -h --help ;;
        profile)
            echo --product --config --from --installed --output --sign --identifier --uuid --force \
                --json -q --quiet -h --help
            ;;
        show | diff | identities) echo --json -h --help ;;
    esac
}

# Files whose names match the extended pattern $1, and folders.
_pct_files()
{
    local -a files folders
    compopt -o filenames
    mapfile -t folders < <(compgen -d -- "$cur")
    mapfile -t files < <(compgen -f -X "!$1" -- "$cur")
    COMPREPLY=("${folders[@]}" "${files[@]}")
}

_pct_words()
{
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur")
}

# Identities have spaces in their names.
_pct_identities()
{
    local name
    local -a names
    mapfile -t names < <(pct identities 2>/dev/null)
    for name in "${names[@]}"; do
        [[ $name == "$cur"* ]] && COMPREPLY+=("$(printf '%q' "$name")")
    done
}

# The value of the option $1; fails when it takes none.
_pct_value()
{
    case $1 in
        --product) _pct_words "editor reader" ;;
        --input) _pct_files '*.pkg' ;;
        --output)
            case $verb in
                build) _pct_files '*.pkg' ;;
                *) _pct_files '*.mobileconfig' ;;
            esac
            ;;
        --config | --keep-config) _pct_files '*.xml' ;;
        --from) _pct_files '*.mobileconfig' ;;
        --sign) _pct_identities ;;
        --identifier | --uuid) COMPREPLY=() ;;
        *) return 1 ;;
    esac
}

_pct_operand()
{
    case $verb in
        check) _pct_files '*.pkg' ;;
        show | diff) _pct_files '*.@(xml|mobileconfig|pkg)' ;;
        help) _pct_words "check build profile show diff identities" ;;
    esac
}

_pct()
{
    local cur=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} verb=${COMP_WORDS[1]}
    local extglob
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        _pct_words "check build profile show diff identities help -h --help -v --version"
        return
    fi
    extglob=$(shopt -p extglob)
    shopt -s extglob
    if ! _pct_value "$previous"; then
        if [[ $cur == -* ]]; then
            _pct_words "$(_pct_options "$verb")"
        else
            _pct_operand
        fi
    fi
    $extglob
}

complete -F _pct pct
