#!/bin/sh
# Prints the release of the bank lists that CHOICE stands for, for both builds:
#
#     choose_release.sh CHOICE
#
# CHOICE is a folder of data; "latest" is the newest one there,
# "default" (or nothing) the one that data/default names.
data=$(dirname "$0")/../data
case ${1:-default} in
    default) release=$(cat "$data/default") ;;
    latest) release=$(cd "$data" && ls -d ????-?? | tail -n 1) ;;
    *) release=$1 ;;
esac
[ -n "$release" ] && [ -f "$data/$release/de.csv" ] && echo "$release" && exit
echo "data has no release \"${release:-$1}\" of the bank lists" >&2
exit 1
