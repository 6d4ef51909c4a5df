# SPDX-FileCopyrightText: The Quillfen authors
# SPDX-License-Identifier: Apache-2.0
complete -c quillfen -f
complete -c quillfen -l enroll -x -d 'Sign this computer in with an enrolment code or link'
complete -c quillfen -l new-volume -d 'Begin with the sheet for a new volume'
complete -c quillfen -l time-travel -d 'Begin on Time travel'
complete -c quillfen -l background -d 'Start without showing the window'
complete -c quillfen -l quit-on-close -d 'End with the window instead of living on in the status area'
complete -c quillfen -l tour -x -a '(__fish_complete_directories)' -d 'Leave a picture of every screen and end'
complete -c quillfen -l version -d 'Print the version'
complete -c quillfen -s h -l help -d 'Print a short help'
