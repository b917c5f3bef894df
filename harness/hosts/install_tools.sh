#!/bin/sh
# SPDX-License-Identifier: MIT
# Makes a container a host of ours: puts in what was installed below ROOT, and does what the Debian
# package does then, but for taking the terminal.
#   install_tools.sh ROOT
set -eu
tar -C "$1" -c . | tar -C / -x --keep-directory-symlink --no-overwrite-dir
systemd-tmpfiles --create kiva.conf
systemctl daemon-reload
systemctl --quiet enable --now halo-shell.service
systemctl --quiet enable kiva-name-servers.service
