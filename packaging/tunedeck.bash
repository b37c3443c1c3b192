# SPDX-License-Identifier: MIT
# Completes the options of tunedeck, and the names of its actions.
_tunedeck()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    # "=" ends a word: "--action=next" is three of them.
    if [[ $word == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 1]} word=
    elif [[ $before == = && $COMP_CWORD -ge 2 ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    local words="--action --autostart --help --help-all --version"
    if [[ $before == --action ]]; then
        words="show-or-hide play-pause stop next previous seek-forward seek-backward volume-up volume-down playlists
            raise-player keep-above"
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -F _tunedeck tunedeck
