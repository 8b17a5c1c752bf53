#!/bin/sh
# Runs one test command with a home, settings, data, cache and state folder
# of its own, removed afterwards, so that no test reads or writes the user's
# recent files, autosaves or anything else kept there.
#   tests/isolated.sh COMMAND [ARGUMENT...]
scratch=$(mktemp -d "${TMPDIR:-/tmp}/plexview-test.XXXXXX") || exit 1
trap 'rm -rf "$scratch"' EXIT
HOME="$scratch/home"
XDG_CONFIG_HOME="$scratch/config"
XDG_DATA_HOME="$scratch/data"
XDG_CACHE_HOME="$scratch/cache"
XDG_STATE_HOME="$scratch/state"
export HOME XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME XDG_STATE_HOME
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME" "$XDG_STATE_HOME"
"$@"
