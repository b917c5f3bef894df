# SPDX-License-Identifier: MIT
# The host tools on a Debian that systemd runs. A container's root runs this: a line for everything
# that is not as it should be, and status 1 then.
failures=0
options=/etc/corvo/options/UserVars
hmx() { env -i PYTHONHOME=/ /bin/hmx-cmd -U root "$1"; }
script() { /bin/sh "/etc/init.d/$1" "$2"; }
# gives STATUS COMMAND...: what the command's status has to be.
gives() {
  wanted=$1; shift
  said=$("$@" 2>&1)
  status=$?
  [ "$status" -eq "$wanted" ] && return
  echo "status $status, not $wanted: $* ($said)"
  failures=$((failures + 1))
}
# soon STATUS COMMAND...: the same within ten seconds.
soon() {
  wanted=$1; shift
  for _ in $(seq 100); do
    "$@" >/dev/null 2>&1
    [ $? -eq "$wanted" ] && return
    sleep 0.1
  done
  gives "$wanted" "$@"
}
active() { systemctl --quiet is-active "$1"; }
enabled() { systemctl --quiet is-enabled "$1"; }
remote() { ssh -o BatchMode=yes -o StrictHostKeyChecking=no -i /root/.ssh/id "$1@127.0.0.1" "$2"; }
is() { [ "$1" = "$2" ]; }

prepare() {
  ssh-keygen -q -t ed25519 -N '' -f /root/.ssh/id
  for account in anna eve; do
    useradd --create-home --shell /bin/bash "$account"
    echo "$account:secret" | chpasswd
    install -D -o "$account" /root/.ssh/id.pub "/home/$account/.ssh/authorized_keys"
  done
  soon 0 remote anna true
}

check_ssh() {
  remote eve 'touch /tmp/there; while test -e /tmp/there; do sleep 0.1; done; touch /tmp/stayed' &
  soon 0 test -e /tmp/there
  gives 0 hmx hostsvc/stop_ssh
  gives 3 script SSH status
  gives 255 remote eve true
  rm /tmp/there
  soon 0 test -e /tmp/stayed
  gives 0 hmx hostsvc/disable_ssh
  gives 1 enabled ssh.service
  systemctl --quiet enable --now ssh.socket
  gives 0 script SSH restart
  gives 0 active ssh.socket
  gives 0 script SSH stop
  gives 3 script SSH status
  gives 0 hmx hostsvc/disable_ssh
  gives 1 enabled ssh.socket
  gives 0 hmx hostsvc/enable_ssh
  gives 0 enabled ssh.service
  gives 0 script SSH start
  gives 0 remote eve true
  gives 5 script ovl-opsagent status
}

restart_for() {
  /bin/halocli system settings advanced set -o /UserVars/HaloShellTimeOut -i "$2"
  gives 0 script "$1" restart
}
check_time_outs() {
  for service in SSH:ssh HaloShell:halo-shell; do
    name=${service%:*} unit=${service#*:}-time-out.service
    restart_for "$name" 600
    gives 0 active "$unit"
    gives 0 script "$name" stop
    soon 3 active "$unit"
    restart_for "$name" 2
    gives 0 script "$name" status
    soon 3 script "$name" status
    restart_for "$name" 0
    soon 3 active "$unit"
    gives 0 script "$name" status
  done
}

check_idle_time_out() {
  for case in 900:900 0: -5: soon: '1 2:' 99999999999:; do
    echo "${case%:*}" >"$options/HaloShellInteractiveTimeOut"
    gives 0 is "$(su - anna -c 'echo $TMOUT')" "${case#*:}"
  done
  rm "$options/HaloShellInteractiveTimeOut"
  gives 0 is "$(su - anna -c 'echo $TMOUT')" ""
}

# Types a line at the terminal, as its keyboard would.
type_line() {
  perl -e 'open T, "+<", "/dev/tty2"; ioctl T, 0x5412, $_ or die $! for split //, shift . "\n"' "$1"
}
asks_for_name() { who --login | grep -q tty2; }
asks_for_password() {
  is "$(cat "/proc/$(systemctl show -P MainPID getty@tty2.service)/comm")" login &&
    stty -F /dev/tty2 -a | grep -q -- ' -echo '
}
logged_in() { who | grep -q '^anna *tty2'; }
check_halo_shell() {
  gives 0 enabled halo-shell.service
  [ -e /dev/tty2 ] || return 0
  : >/dev/tty0 # systemd asks only whether the machine has such terminals
  systemctl start getty@tty2.service
  soon 0 asks_for_name
  type_line anna
  soon 0 asks_for_password
  type_line secret
  soon 0 logged_in
  gives 0 hmx hostsvc/stop_halo_shell
  gives 3 script HaloShell status
  gives 0 logged_in
  type_line exit
  soon 3 active getty@tty2.service
  systemctl start getty@tty2.service
  gives 3 active getty@tty2.service
  gives 0 script HaloShell start
  systemctl start getty@tty2.service
  gives 0 active getty@tty2.service
  gives 0 script HaloShell stop
  soon 3 active getty@tty2.service
}

check_agents() {
  printf '[Service]\nExecStart=/bin/sleep 1000\n' >/run/systemd/system/one.service
  printf '[Service]\nType=oneshot\nExecStart=/bin/false\n' >/run/systemd/system/two.service
  systemctl daemon-reload
  printf 'one # first\ngone.service\n' >/etc/corvo/agents
  gives 3 /sbin/services.sh status
  gives 0 /sbin/services.sh start
  gives 0 /sbin/services.sh status
  gives 0 /sbin/services.sh stop
  gives 3 active one.service
  echo two >>/etc/corvo/agents
  gives 1 /sbin/services.sh start
  gives 0 active one.service
}

files() { find /etc/pam.d /etc/ssh -type f -exec cksum {} + | sort; }
locked() { gives 0 is "$(hmx hmxsvc/auth/lockdown_is_enabled)" "$1"; }
check_lockdown() {
  echo 'PermitTTY no' >/etc/ssh/sshd_config.d/zz.conf
  echo 'AllowUsers eve anna' >/etc/ssh/sshd_config.d/aa.conf
  echo anna >/etc/corvo/lockdown-exceptions
  systemctl restart ssh.service
  before=$(files)
  gives 0 hmx hmxsvc/auth/lockdown_mode_enter
  locked true
  soon 0 remote anna true
  gives 255 remote eve true
  sshd -T -C user=eve,host=h,addr=192.0.2.1 >/tmp/eve
  gives 0 grep -qx 'denyusers \*' /tmp/eve
  gives 0 grep -qx 'permittty no' /tmp/eve
  rm /etc/ssh/sshd_config.d/lockdown.conf
  systemctl reload ssh.service
  locked false
  soon 0 remote anna true
  gives 255 remote eve true
  rm /var/lib/corvo/lockdown
  gives 255 remote anna true
  gives 0 hmx hmxsvc/auth/lockdown_mode_exit
  soon 0 remote eve true
  gives 0 is "$(files)" "$before"
}

prepare
for part in ssh time_outs idle_time_out halo_shell agents lockdown; do check_$part; done
exit $((failures > 0))
