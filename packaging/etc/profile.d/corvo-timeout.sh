# SPDX-License-Identifier: MIT
# Ends a login shell that is idle for longer than the advanced option says, in seconds; 0 for never.
# Read at every login, so sessions that run keep what they have. Outlives the removal of the package,
# as a setting, and then does nothing.
corvo_file=/etc/corvo/options/UserVars/HaloShellInteractiveTimeOut
corvo_seconds=
if [ -x /usr/lib/kiva/kiva-tools ] && [ -f "$corvo_file" ] && [ -r "$corvo_file" ]; then
  read -r corvo_seconds <"$corvo_file" || :
fi
case $corvo_seconds in
  '' | *[!0-9]* | ?????????*) ;;
  *) if [ "$corvo_seconds" -gt 0 ]; then export TMOUT="$corvo_seconds"; fi ;;
esac
unset corvo_file corvo_seconds
