#!/bin/sh
# SPDX-License-Identifier: MIT
# A network with networkd at one end of a cable (up0) and dnsmasq at the other (dn0). Called inside
# namespaces that are the caller's own: "start" everything but the server, then
# "serve", then let the bus "hang".
set -eu

start() {
  mount -t tmpfs tmpfs /run
  mount -t tmpfs tmpfs /etc/systemd/network
  mount -t sysfs -o ro sysfs /sys
  mkdir -p /run/dbus /run/systemd/netif/links /run/systemd/netif/leases /run/systemd/netif/lldp
  chown -R systemd-network: /run/systemd/netif
  printf '[Match]\nName=up0\n[Network]\nDHCP=yes\nAddress=fd00:9::7/64\n[DHCPv4]\nUseHostname=no\n' \
    >/etc/systemd/network/up.network
  printf '[Match]\nName=dn0\n[Network]\nAddress=10.9.0.1/24\nAddress=fd00:9::1/64\n' \
    >/etc/systemd/network/dn.network
  ip link set lo up
  ip link add up0 address 02:00:00:00:00:09 type veth peer name dn0
  dbus-daemon --system --nofork --nopidfile >/dev/null 2>&1 &
  echo $! >/run/dbus/pid
  until [ -S /run/dbus/system_bus_socket ]; do sleep 0.01; done
  /lib/systemd/systemd-networkd >/dev/null 2>&1 &
}

serve() {
  dnsmasq --keep-in-foreground --conf-file=/dev/null --log-facility=- --no-ping --port=0 --user=root \
    --interface=dn0 --bind-interfaces --dhcp-leasefile=/run/leases --enable-ra \
    --dhcp-range=10.9.0.50,10.9.0.50,infinite --dhcp-range=fd00:9::50,fd00:9::50,slaac,64,600 \
    >/dev/null 2>&1 &
}

hang() { kill -STOP "$(cat /run/dbus/pid)"; }

"$1"
