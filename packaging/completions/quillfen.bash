# SPDX-FileCopyrightText: The Quillfen authors
# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
_quillfen() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    case $previous in
        --enroll) return ;;
        --tour) mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
        *) mapfile -t COMPREPLY < <(compgen -W \
            "--enroll --new-volume --time-travel --background --quit-on-close --tour --version --help" -- "$current") ;;
    esac
}
complete -F _quillfen quillfen
