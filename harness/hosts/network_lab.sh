#!/bin/sh
# SPDX-License-Identifier: MIT
# A machine with two physical NICs, eth0 and eth1, and a peer at the other end of both cables. Called
# inside namespaces that are the caller's own, once with "machine", then with any of the others.
# Everything of it lies in /run/lab; /etc, /usr and /var are the machine's to write to.
set -eu

in_peer() { nsenter -t "$(cat /run/lab/peer)" -n "$@"; }

# Nobody waits for these but whoever stops them; what has ended stays a zombie.
stop() {
  [ -f "/run/lab/$1" ] || return 0
  pid=$(cat "/run/lab/$1")
  rm "/run/lab/$1"
  kill -CONT "$pid" 2>/dev/null || return 0
  kill "$pid"
  while grep -qs '^State:.[^Z]' "/proc/$pid/status"; do sleep 0.01; done
}

run() {
  name=$1
  shift
  "$@" >>"/run/lab/$name.log" 2>&1 &
  echo $! >"/run/lab/$name"
}

# What changes below folders of the machine's stays in memory.
cover() {
  for folder in "$@"; do
    mkdir -p "/run/lab/cover$folder" "/run/lab/work$folder"
    mount -t overlay overlay -o "lowerdir=$folder,upperdir=/run/lab/cover$folder,workdir=/run/lab/work$folder" "$folder"
  done
}

# Programs take a NIC for a physical one that has a device. A link's own folder cannot get one, so another
# stands before it, of links to the real one.
give_device() {
  folder=/run/lab/nic/$1
  mkdir -p "$folder/device"
  printf 'DRIVER=virtio_net\nPCI_ID=1AF4:1000\n' >"$folder/device/uevent"
  ln -s /sys/bus/virtio/drivers/virtio_net "$folder/device/driver"
  for entry in $(ls "/run/lab/sys/class/net/$1") master brport bonding_slave; do
    ln -s "/run/lab/sys/class/net/$1/$entry" "$folder/$entry"
  done
  mount --bind "$folder" "/sys/devices/virtual/net/$1"
}

plug_in() {
  ip link add "eth$1" address "00:16:3e:00:00:0$1" type veth peer name "port$1" netns "$(cat /run/lab/peer)"
  in_peer ip link set "port$1" master lan0 up
  give_device "eth$1"
}

# A third adapter, eth2, that cannot be brought up: the kernel allows its address once on a device.
plug_in_broken() {
  ip link add low2 address 00:16:3e:00:00:02 type veth peer name high2
  ip link add eth2 link low2 address 00:16:3e:00:00:02 type macvlan
  give_device eth2
}

make_peer() {
  unshare -n sleep infinity >/dev/null 2>&1 &
  echo $! >/run/lab/peer
  until [ "$(readlink "/proc/$!/ns/net")" != "$(readlink /proc/self/ns/net)" ]; do sleep 0.01; done
  in_peer sh -c '
    ip link add lan0 address 00:16:3e:00:00:ff type bridge
    ip link set lo up
    ip link set lan0 up
    ip addr add 10.9.0.1/24 dev lan0
    ip -6 addr add fd00:9::1/64 dev lan0 nodad
    ip addr add 10.99.0.1/32 dev lo
    ip -6 addr add fd00:99::1/128 dev lo nodad
    echo 1 >/proc/sys/net/ipv4/ip_forward
    echo 1 >/proc/sys/net/ipv6/conf/all/forwarding'
}

start_bus() {
  mkdir -p /run/dbus
  run bus dbus-daemon --system --nofork --nopidfile
  until [ -S /run/dbus/system_bus_socket ]; do sleep 0.01; done
}

eventually() {
  for _ in $(seq 500); do
    ! "$@" 2>/dev/null || return 0
    sleep 0.02
  done
  return 1
}

has_name() { [ "$(busctl call org.freedesktop.DBus / org.freedesktop.DBus NameHasOwner s "$1")" = "b true" ]; }

machine() {
  mount -t tmpfs -o mode=755 tmpfs /run
  mkdir -p /run/lab/sys /run/systemd/system
  cover /etc /usr /var
  rm -rf /etc/systemd/network /etc/corvo /var/lib/corvo
  mkdir -p /etc/systemd/network
  rm -f /etc/resolv.conf
  : >/etc/resolv.conf
  echo 0123456789abcdef0123456789abcdef >/etc/machine-id
  hostname machine
  echo machine >/etc/hostname
  printf '127.0.0.1 localhost\n' >/etc/hosts
  mount -t sysfs sysfs /run/lab/sys
  mount -t sysfs sysfs /sys
  ip link set lo up
  make_peer
  plug_in 0
  plug_in 1
  mount -o remount,bind,ro /sys
  start_bus
}

networkd() {
  mkdir -p /run/systemd/netif/links /run/systemd/netif/leases /run/systemd/netif/lldp
  chown -R systemd-network: /run/systemd/netif
  run networkd.pid /lib/systemd/systemd-networkd
  eventually has_name org.freedesktop.network1
  eventually networkctl reload
}

hostnamed() {
  run hostnamed.pid /lib/systemd/systemd-hostnamed
  eventually has_name org.freedesktop.hostname1
}

# As it starts with a machine: its database stays.
run_openvswitch() {
  mkdir -p /run/openvswitch
  run ovsdb ovsdb-server /etc/openvswitch/lab.db --remote=punix:/run/openvswitch/db.sock
  until [ -S /run/openvswitch/db.sock ]; do sleep 0.01; done
  ovs-vsctl --no-wait init
  run ovs ovs-vswitchd --disable-system --pidfile
  ovs-vsctl --timeout=10 init
}

openvswitch() {
  mkdir -p /etc/openvswitch
  ovsdb-tool create /etc/openvswitch/lab.db /usr/share/openvswitch/vswitch.ovsschema
  run_openvswitch
  ovs-vsctl --timeout=10 add-br dvs0 -- set bridge dvs0 datapath_type=netdev fail_mode=standalone -- \
    set-controller dvs0 punix:/run/openvswitch/controller -- add-port dvs0 eth0 -- add-port dvs0 eth1 -- \
    add-port dvs0 mgmt0 -- set interface mgmt0 type=internal 'mac="00:16:3e:00:00:50"'
  ip link set eth0 up
  ip link set eth1 up
  ip link set mgmt0 up
}

switching() { kill "-$1" "$(cat /run/lab/ovs)"; }

# The host tools and the defaults of the package, and a login as root with the password "secret": install
# PACKAGING BUILD PAM-MODULE, the folder of the package's parts, that of the build and what asks a file.
install() {
  tar -C "$2/packaging/links" -c bin sbin | tar -C / -x --keep-directory-symlink --no-overwrite-dir
  mkdir -p /usr/lib/kiva /run/corvo
  ln -sf "$2/bin/kiva-tools" /usr/lib/kiva/kiva-tools
  cp -r "$1/etc/corvo" /etc/corvo
  : >/run/corvo/show-kiva-login
  echo root:secret:kiva >/run/lab/passwords
  for kind in auth account; do echo "$kind required $3 passdb=/run/lab/passwords"; done >/etc/pam.d/kiva
}

# What a restart of the machine leaves of its network: what stands in files.
afresh() {
  stop networkd.pid
  stop hostnamed.pid
  stop ovs
  stop ovsdb
  rm -rf /run/systemd/netif /run/systemd/network /run/openvswitch
  for link in $(ls /sys/class/net); do
    case $link in
      lo) ;;
      eth?)
        ip link set "$link" nomaster down address "00:16:3e:00:00:0${link#eth}"
        ip addr flush dev "$link"
        ;;
      *) ip link delete "$link" 2>/dev/null || : ;;
    esac
  done
  ip route flush table all 2>/dev/null || :
  ip link set lo down
  ip link set lo up
  hostname "$(cat /etc/hostname)"
  [ ! -f /etc/openvswitch/lab.db ] || run_openvswitch
  networkd
}

freeze_name_server() {
  until in_peer ss -lun | grep -q :53; do sleep 0.01; done
  kill -STOP "$(cat /run/lab/server)"
}

# Which services the peer has from now on: any of dhcp4, dhcp6, ra and dns. LEASE is how long leases run.
# Without dns nobody listens; a name server that nothing is known to ("refuse") says so at once, one that
# "hangs" says nothing at all.
serve() {
  stop server
  options=
  port=0
  modes=
  for service in "$@"; do
    case $service in
      dhcp4) options="$options --dhcp-range=10.9.0.50,10.9.0.59,${LEASE:-600}" ;;
      dhcp6) modes=$modes,stateful ;;
      ra) modes=$modes,ra options="$options --enable-ra" ;;
      dns) port=53 options="$options --host-record=machine.lab.example,10.9.0.50 --local=/lab.example/" ;;
      refuse | hang) port=53 ;;
    esac
  done
  case $modes in
    *stateful*,ra* | *,ra*stateful*) options="$options --dhcp-range=fd00:9::50,fd00:9::59,slaac,64,600" ;;
    *stateful*) options="$options --dhcp-range=fd00:9::50,fd00:9::59,64,600" ;;
    *ra*) options="$options --dhcp-range=fd00:9::,ra-only,slaac,64,600" ;;
  esac
  run server nsenter -t "$(cat /run/lab/peer)" -n dnsmasq --keep-in-foreground --conf-file=/dev/null \
    --log-facility=- --log-dhcp --no-ping --user=root --interface=lan0 --bind-interfaces --except-interface=lo \
    --no-resolv --no-hosts --domain=lab.example --dhcp-sequential-ip --dhcp-leasefile=/run/lab/leases \
    --port=$port --dhcp-option=option:dns-server,10.9.0.1 $options
  case " $* " in *" hang "*) freeze_name_server ;; esac
}

# Whether the peer answers pings: "on" or "off".
echoes() {
  ignore=1
  [ "$1" = off ] || ignore=0
  for file in ipv4/icmp_echo_ignore_all ipv6/icmp/echo_ignore_all; do
    in_peer sh -c "echo $ignore >/proc/sys/net/$file"
  done
}

# Pulls the cable of NIC 0 or 1, or plugs it in again: "cable 0 down".
cable() { in_peer ip link set "port$1" "$2"; }

hang_bus() { kill -STOP "$(cat /run/lab/bus)"; }
stop_bus() { stop bus; }

peer() { in_peer sh -c "$1"; }

"$@"
