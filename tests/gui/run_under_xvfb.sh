#!/bin/sh
# Runs a command on a display of its own, with a window manager, both without settings of anybody's. Usage: run_under_xvfb.sh COMMAND [ARGUMENT...]
set -eu
folder=$(mktemp -d)
mkfifo "$folder/display"
HOME=$folder XDG_CONFIG_HOME=$folder XDG_DATA_HOME=$folder XDG_CACHE_HOME=$folder LC_ALL=C.UTF-8
export HOME XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME LC_ALL
unset XDG_CONFIG_DIRS XDG_DATA_DIRS XAUTHORITY SESSION_MANAGER DBUS_SESSION_BUS_ADDRESS
Xvfb -displayfd 3 -screen 0 1600x1400x24 -nolisten tcp -noreset 3>"$folder/display" 2>"$folder/xvfb.log" &
xvfb=$!
openbox=
cleanup() {
  [ -z "$openbox" ] || kill "$openbox" 2>/dev/null || true
  kill "$xvfb" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$folder"
}
trap cleanup EXIT
read -r number <"$folder/display"
DISPLAY=:$number
QT_QPA_PLATFORM=xcb
export DISPLAY QT_QPA_PLATFORM
openbox --sm-disable --startup "touch $folder/managed" >"$folder/openbox.log" 2>&1 &
openbox=$!
# It does so at the end of its start: a window that is shown before may never be managed.
until [ -e "$folder/managed" ]; do
  kill -0 "$openbox" || { cat "$folder/openbox.log" "$folder/xvfb.log" >&2; exit 1; }
  sleep 0.05
done
"$@"
