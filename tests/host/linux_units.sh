# SPDX-License-Identifier: MIT
# The host tools on a Debian that systemd runs: prints what is not as it should be, status 1 then.
failures=0
# steps STATUS:COMMAND...: what each command's status has to be, one after the other; with +STATUS
# within ten seconds.
steps() {
  for step in "$@"; do
    wanted=${step%%:*} tries=1
    case $wanted in +*) tries=100 ;; esac
    for _ in $(seq "$tries"); do
      said=$(eval "${step#*:}" 2>&1)
      status=$?
      [ "$status" -eq "${wanted#+}" ] && continue 2
      [ "$tries" -eq 1 ] || sleep 0.1
    done
    echo "status $status, not $step ($said)"
    failures=$((failures + 1))
  done
}
hmx() { env -i PYTHONHOME=/ /bin/hmx-cmd -U root "$1"; }
script() { /bin/sh "/etc/init.d/$1" "$2"; }
active() { systemctl --quiet is-active "$1"; }
remote() { ssh -o BatchMode=yes -o StrictHostKeyChecking=no -i /root/.ssh/id "$1@127.0.0.1" "$2"; }
is() { [ "$1" = "$2" ]; }

prepare() {
  ssh-keygen -q -t ed25519 -N '' -f /root/.ssh/id
  for account in anna eve; do
    useradd --create-home --shell /bin/bash "$account"
    echo "$account:secret" | chpasswd
    install -D -o "$account" /root/.ssh/id.pub "/home/$account/.ssh/authorized_keys"
  done
  steps '+0:remote anna true'
}

enabled() { is "$(systemctl is-enabled ssh.service ssh.socket | paste -sd ' ')" "$1"; }
check_ssh() {
  remote eve 'touch /tmp/there; while test -e /tmp/there; do sleep 0.1; done; touch /tmp/stayed' &
  steps '+0:test -e /tmp/there' '0:hmx hostsvc/stop_ssh' '3:script SSH status' \
    '255:remote eve true' '0:rm /tmp/there' '+0:test -e /tmp/stayed' '0:hmx hostsvc/disable_ssh'
  systemctl --quiet enable --now ssh.socket
  steps '0:enabled "disabled enabled"' '0:script SSH restart' '0:active ssh.socket' \
    '0:script SSH stop' '3:script SSH status' '0:hmx hostsvc/disable_ssh' \
    '0:enabled "disabled disabled"' '0:hmx hostsvc/enable_ssh' '0:enabled "enabled disabled"' \
    '0:script SSH start' '0:remote eve true' '5:script ovl-opsagent status'
}

restart_for() {
  /bin/halocli system settings advanced set -o /UserVars/HaloShellTimeOut -i "$2"
  script "$1" restart
}
check_time_outs() {
  for service in SSH:ssh HaloShell:halo-shell; do
    name=${service%:*} unit=${service#*:}-time-out.service
    steps "0:restart_for $name 600" "0:active $unit" "0:script $name stop" "+3:active $unit" \
      "0:restart_for $name 2" "0:script $name status" "+3:script $name status" \
      "0:restart_for $name 0" "+3:active $unit" "0:script $name status"
  done
}

idle_time_out() { is "$(su - anna -c 'echo $TMOUT')" "$1"; }
check_idle_time_out() {
  file=/etc/corvo/options/UserVars/HaloShellInteractiveTimeOut
  for case in 900:900 0: -5: soon: '1 2:' 99999999999:; do
    echo "${case%:*}" >$file
    steps "0:idle_time_out '${case#*:}'"
  done
  steps "0:rm $file" '0:idle_time_out ""'
}

# Types a line at the terminal, as its keyboard would.
type_line() {
  perl -e 'open T, "+<", "/dev/tty2"; ioctl T, 0x5412, $_ or die $! for split //, shift . "\n"' "$1"
}
asks_for_password() {
  is "$(cat "/proc/$(systemctl show -P MainPID getty@tty2.service)/comm")" login &&
    stty -F /dev/tty2 -a | grep -q -- ' -echo '
}
logged_in() { who | grep -q '^anna *tty2'; }
check_halo_shell() {
  [ -e /dev/tty2 ] || return 0
  : >/dev/tty0 # systemd asks only whether the machine has such terminals
  login=getty@tty2.service
  steps "0:systemctl start $login" '+0:who --login | grep tty2' '0:type_line anna' \
    '+0:asks_for_password' '0:type_line secret' '+0:logged_in' '0:hmx hostsvc/stop_halo_shell' \
    '3:script HaloShell status' '0:logged_in' '0:type_line exit' "+3:active $login" \
    "0:systemctl start $login" "3:active $login" '0:script HaloShell start' \
    "0:systemctl start $login" "0:active $login" '0:script HaloShell stop' "+3:active $login"
}

check_agents() {
  printf '[Service]\nExecStart=/bin/sleep 1000\n' >/run/systemd/system/one.service
  printf '[Service]\nType=oneshot\nExecStart=/bin/false\n' >/run/systemd/system/two.service
  systemctl daemon-reload
  printf 'one # first\ngone.service\n' >/etc/corvo/agents
  steps '3:/sbin/services.sh status' '0:/sbin/services.sh start' '0:/sbin/services.sh status' \
    '0:/sbin/services.sh stop' '3:active one.service'
  echo two >>/etc/corvo/agents
  steps '1:/sbin/services.sh start' '0:active one.service'
}

files() { find /etc/pam.d /etc/ssh -type f -exec cksum {} + | sort; }
locked() { is "$(hmx hmxsvc/auth/lockdown_is_enabled)" "$1"; }
check_lockdown() {
  echo 'PermitTTY no' >/etc/ssh/sshd_config.d/zz.conf
  echo 'AllowUsers eve anna' >/etc/ssh/sshd_config.d/aa.conf
  echo anna >/etc/corvo/lockdown-exceptions
  systemctl restart ssh.service
  before=$(files)
  steps '0:hmx hmxsvc/auth/lockdown_mode_enter' '0:locked true' '+0:remote anna true' \
    '255:remote eve true' '0:sshd -T -C user=eve,host=h,addr=192.0.2.1 >/tmp/eve' \
    '0:grep -qx "denyusers \*" /tmp/eve' '0:grep -qx "permittty no" /tmp/eve' \
    '0:rm /etc/ssh/sshd_config.d/lockdown.conf' '0:systemctl reload ssh.service' \
    '0:locked false' '+0:remote anna true' '255:remote eve true' \
    '0:rm /var/lib/corvo/lockdown' '255:remote anna true' \
    '0:hmx hmxsvc/auth/lockdown_mode_exit' '+0:remote eve true' '0:is "$(files)" "$before"'
}

check_name_servers() {
  unit=kiva-name-servers.service
  steps "3:active $unit" '0:systemctl start systemd-networkd' "+0:active $unit" \
    '0:systemctl restart systemd-networkd' "+0:active $unit" \
    '0:rm -r /run/systemd/netif/links' "+3:active $unit" \
    '0:systemctl stop systemd-networkd.socket systemd-networkd' "3:active $unit"
}

prepare
for part in name_servers ssh time_outs idle_time_out halo_shell agents lockdown; do check_$part; done
exit $((failures > 0))
