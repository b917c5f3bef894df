#!/bin/sh
# SPDX-License-Identifier: MIT
# Boots the Debian in TREE under systemd, without changing it, and runs PAYLOAD/script there as root:
#   container.sh TREE PAYLOAD [OPTION-OF-NSPAWN...]
# PAYLOAD is /payload inside. The container goes when the script has ended; what it wrote is then in
# PAYLOAD/output and its exit status in PAYLOAD/status. Called in a mount namespace of its own.
set -eu
tree=$1
payload=$2
shift 2

mkdir -p "$payload/units"
cat >"$payload/units/payload.service" <<'EOF'
[Unit]
After=dbus.service
SuccessAction=exit-force
FailureAction=exit-force
[Service]
Type=exec
ExecStart=/bin/sh /payload/script
ExecStopPost=/bin/sh -c 'echo $EXIT_STATUS >/payload/status'
StandardOutput=file:/payload/output
StandardError=file:/payload/output
EOF

mount -t tmpfs tmpfs /run
exec systemd-nspawn --quiet --boot --directory="$tree" --volatile=overlay --register=no --keep-unit \
  --private-network --console=pipe --bind="$payload:/payload" \
  --bind-ro="$payload/units/payload.service:/etc/systemd/system/payload.service" "$@" \
  systemd.wants=payload.service </dev/null >"$payload/console" 2>&1
