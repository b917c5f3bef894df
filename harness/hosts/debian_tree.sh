#!/bin/sh
# SPDX-License-Identifier: MIT
# Makes a small Debian 12 with the packages that are given, once, and prints the folder that it is in:
#   debian_tree.sh FOLDER PACKAGE...
# What is made is kept in FOLDER for the next time. Needs root and the network for the first.
set -eu
folder=$1
shift
tree=$folder/debian-12-$(echo "$*" | cksum | cut -d ' ' -f 1)

mkdir -p "$folder"
exec 9>"$tree.lock"
flock 9
if [ ! -d "$tree" ]; then
  rm -rf "$tree.new"
  mmdebstrap --quiet --variant=minbase --include="$(echo "$*" | tr ' ' ,)" bookworm "$tree.new" >&2
  mv "$tree.new" "$tree"
fi
echo "$tree"
