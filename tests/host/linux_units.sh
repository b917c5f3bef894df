# SPDX-License-Identifier: MIT
# The host tools on a Debian that systemd runs: services, time-outs, lockdown. Run as root in a
# container of its own; a line for everything that is not as it should be, and a status of 1 then.
export PYTHONHOME=/
failures=0
options=/etc/corvo/options/UserVars
hmx() { /bin/hmx-cmd -U root "$1"; }
script() { /bin/sh "/etc/init.d/$1" "$2"; }

# gives STATUS COMMAND...: what the command's status has to be.
gives() {
  wanted=$1
  shift
  said=$("$@" 2>&1)
  status=$?
  [ "$status" -eq "$wanted" ] && return
  echo "status $status, not $wanted: $* ($said)"
  failures=$((failures + 1))
}
# soon COMMAND...: it succeeds within ten seconds.
soon() {
  for _ in $(seq 100); do
    "$@" >/dev/null 2>&1 && return
    sleep 0.1
  done
  gives 0 "$@"
}
not() { ! "$@"; }
active() { systemctl --quiet is-active "$1"; }
inactive() { ! active "$1"; }
enabled() { systemctl --quiet is-enabled "$1"; }
remote() { ssh -o BatchMode=yes -o StrictHostKeyChecking=no -i /root/.ssh/id "$1@127.0.0.1" "$2"; }
# Types a line at the terminal, as its keyboard would.
type_line() {
  perl -e 'open T, "+<", shift; for (split //, shift . "\n") { ioctl T, 0x5412, $_ or die $! }' \
    /dev/tty2 "$1"
}

prepare() {
  ssh-keygen -q -t ed25519 -N '' -f /root/.ssh/id
  for account in anna eve; do
    useradd --create-home --shell /bin/bash "$account"
    echo "$account:secret" | chpasswd
    install -d -o "$account" "/home/$account/.ssh"
    install -o "$account" /root/.ssh/id.pub "/home/$account/.ssh/authorized_keys"
  done
  soon remote anna true
}

check_ssh() {
  gives 0 script SSH status
  remote eve 'touch /tmp/there; while test -e /tmp/there; do sleep 0.1; done; touch /tmp/stayed' &
  soon test -e /tmp/there
  gives 0 hmx hostsvc/stop_ssh
  gives 3 script SSH status
  gives 255 remote eve true
  rm /tmp/there
  soon test -e /tmp/stayed
  gives 0 env -i PYTHONHOME=/ /bin/hmx-cmd -U root hostsvc/disable_ssh
  gives 1 enabled ssh.service
  gives 0 script SSH start
  gives 0 remote eve true
  gives 0 env -i PYTHONHOME=/ /bin/hmx-cmd -U root hostsvc/enable_ssh
  gives 0 enabled ssh.service

  systemctl --quiet disable --now ssh.service
  systemctl --quiet enable --now ssh.socket
  gives 0 script SSH status
  gives 0 script SSH restart
  gives 0 active ssh.socket
  gives 0 script SSH stop
  gives 3 script SSH status
  gives 0 hmx hostsvc/disable_ssh
  gives 1 enabled ssh.socket
  gives 0 hmx hostsvc/enable_ssh
  gives 0 hmx hostsvc/start_ssh
  gives 0 active ssh.service
  gives 5 script ovl-opsagent status
  gives 5 script ovl-opsagent start
}

check_time_outs() {
  for service in SSH:ssh HaloShell:halo-shell; do
    name=${service%:*} unit=${service#*:}
    gives 0 inactive "$unit-time-out.service"
    /bin/halocli system settings advanced set -o /UserVars/HaloShellTimeOut -i 600
    gives 0 script "$name" restart
    gives 0 active "$unit-time-out.service"
    gives 0 script "$name" stop
    soon inactive "$unit-time-out.service"
    gives 0 script "$name" start
    /bin/halocli system settings advanced set -o /UserVars/HaloShellTimeOut -i 2
    gives 0 script "$name" restart
    gives 0 script "$name" status
    soon not script "$name" status
    /bin/halocli system settings advanced set -o /UserVars/HaloShellTimeOut -i 0
    gives 0 script "$name" start
    soon inactive "$unit-time-out.service"
    gives 0 script "$name" status
  done
}

idle_time_out() { gives 0 test "$(su - anna -c 'echo "$TMOUT"')" = "$1"; }
check_idle_time_out() {
  rm -f "$options/HaloShellInteractiveTimeOut"
  idle_time_out ""
  for case in 900:900 0: -5: soon: '1 2:' 99999999999:; do
    echo "${case%:*}" >"$options/HaloShellInteractiveTimeOut"
    idle_time_out "${case#*:}"
  done
  rm "$options/HaloShellInteractiveTimeOut"
  mkfifo "$options/HaloShellInteractiveTimeOut"
  idle_time_out ""
}

asks_for_name() { who --login | grep -q tty2; }
asks_for_password() {
  [ "$(cat "/proc/$(systemctl show -P MainPID getty@tty2.service)/comm")" = login ] &&
    stty -F /dev/tty2 -a | grep -q -- ' -echo '
}
logged_in() { who | grep -q '^anna *tty2'; }
check_halo_shell() {
  gives 0 script HaloShell status
  gives 0 enabled halo-shell.service
  [ -e /dev/tty2 ] || return 0
  : >/dev/tty0 # systemd asks only whether the machine has such terminals
  systemctl start getty@tty2.service
  gives 0 active getty@tty2.service
  soon asks_for_name
  type_line anna
  soon asks_for_password
  type_line secret
  soon logged_in
  gives 0 hmx hostsvc/stop_halo_shell
  gives 3 script HaloShell status
  gives 0 logged_in
  type_line exit
  soon not logged_in
  soon inactive getty@tty2.service
  systemctl start getty@tty2.service
  gives 0 inactive getty@tty2.service
  gives 0 script HaloShell start
  systemctl start getty@tty2.service
  gives 0 active getty@tty2.service
  gives 0 script HaloShell stop
  soon inactive getty@tty2.service
  gives 0 hmx hostsvc/disable_halo_shell
  gives 1 enabled halo-shell.service
  gives 0 hmx hostsvc/enable_halo_shell
  gives 0 hmx hostsvc/start_halo_shell
}

check_agents() {
  for agent in one two; do
    printf '[Service]\nExecStart=/bin/sleep 1000\n' >/run/systemd/system/$agent.service
  done
  printf 'one # first\ntwo.service\ngone.service\n' >/etc/corvo/agents
  systemctl daemon-reload
  gives 3 /sbin/services.sh status
  gives 0 /sbin/services.sh start
  gives 0 /sbin/services.sh status
  gives 0 /sbin/services.sh stop
  gives 0 inactive one.service
  printf '[Service]\nType=oneshot\nExecStart=/bin/false\n' >/run/systemd/system/two.service
  systemctl daemon-reload
  gives 1 /sbin/services.sh start
  gives 0 active one.service
}

state_of_files() { find /etc/pam.d /etc/ssh -type f -exec cksum {} + | sort; }
locked() { gives 0 test "$(hmx hmxsvc/auth/lockdown_is_enabled)" = "$1"; }
check_lockdown() {
  echo 'PermitTTY no' >/etc/ssh/sshd_config.d/zz.conf
  echo 'AllowUsers eve anna' >/etc/ssh/sshd_config.d/aa.conf
  echo anna >/etc/corvo/lockdown-exceptions
  systemctl restart ssh.service
  before=$(state_of_files)
  server=$(systemctl show -P MainPID ssh.service)
  gives 0 test "$(hmx hmxsvc/auth/lockdown_is_possible)" = true
  gives 0 hmx hmxsvc/auth/lockdown_mode_enter
  locked true
  soon remote anna true
  gives 255 remote eve true
  gives 0 su eve -c true
  for account in anna eve; do
    sshd -T -C "user=$account,host=h,addr=192.0.2.1" >/tmp/$account
    gives 0 grep -qx 'permittty no' /tmp/$account
  done
  gives 0 grep -qx 'denyusers \*' /tmp/eve
  gives 1 grep -q denyusers /tmp/anna
  gives 0 test "$(systemctl show -P MainPID ssh.service)" = "$server"

  mv /etc/ssh/sshd_config.d/lockdown.conf /tmp
  systemctl reload ssh.service
  locked false
  soon remote anna true
  gives 255 remote eve true
  rm /var/lib/corvo/lockdown
  gives 255 remote anna true
  gives 0 hmx hmxsvc/auth/lockdown_mode_exit
  locked false
  soon remote eve true
  gives 0 test "$(state_of_files)" = "$before"
}

prepare
check_ssh
check_time_outs
check_idle_time_out
check_halo_shell
check_agents
check_lockdown
exit $((failures > 0))
