# SPDX-License-Identifier: MIT
# What the Debian package /kiva.deb does to a machine, and leaves there. Run as root in a container of
# its own whose tty1 is a real one; a line for everything that is not as it should be, and a status
# of 1 then.
failures=0
tools="/bin/hmx-cmd /bin/halocli /sbin/halocli /sbin/localcli /sbin/halocfg-advcfg /bin/powerOffVms
  /sbin/powerOffVms /sbin/firmwareConfig.py /sbin/tarnbacktrace /bin/tarnping"
scripts="/etc/init.d/HaloShell /etc/init.d/SSH /etc/init.d/ovl-opsagent /sbin/services.sh
  /sbin/backup.sh"

fail() {
  echo "$*"
  failures=$((failures + 1))
}
ok() { "$@" || fail "failed: $*"; }
not() { ! "$@"; }
soon() {
  for _ in $(seq 100); do
    "$@" >/dev/null 2>&1 && return
    sleep 0.1
  done
  fail "not within ten seconds: $*"
}
is() { [ "$1" = "$2" ] || fail "\"$1\" where \"$2\" was expected: $3"; }
package() { DEBIAN_FRONTEND=noninteractive dpkg "$@" >/tmp/dpkg 2>&1 || fail "dpkg $*: $(cat /tmp/dpkg)"; }
active() { systemctl --quiet is-active "$1"; }
# Every file with its owner, mode and content, but for what dpkg and the log keep for themselves.
state() {
  find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /run -o -path /tmp -o -path /payload \
    -o -path /var/log -o -path /var/cache -o -path /var/lib/dpkg -o -path /var/lib/systemd/random-seed \
    -o -path /var/lib/private \) -prune -o -type f -exec md5sum {} + -o -printf '%y %m %u %p %l\n' | sort
  find /run -name '*kiva*' -o -name '*corvo*'
}
unchanged() { state | diff "$1" - >/tmp/diff || fail "$2: $(cat /tmp/diff)"; }

check_image() {
  state >/tmp/plain
  unshare -m sh -c 'mount -t tmpfs tmpfs /run; dpkg -i /kiva.deb; echo $? >/tmp/status' >/tmp/dpkg 2>&1
  is "$(cat /tmp/status)" 0 "installing into an image: $(cat /tmp/dpkg)"
  is "$(systemctl is-enabled kiva@tty1)" enabled "in an image"
  unshare -m sh -c 'mount -t tmpfs tmpfs /run; dpkg -P kiva' >/tmp/dpkg 2>&1
  unchanged /tmp/plain "left in an image"
}

check_tools() {
  for tool in $tools; do
    ok test -L "$tool" -a -x "$tool"
    ok "$tool" --help >/tmp/help
    ok test -s /tmp/help
  done
  for script in $scripts; do
    ok test -x "$script"
    ok sh "$script" --help >/tmp/help
    ok test -s /tmp/help
  done
  ok /usr/lib/corvo/openssh/bin/ssh-keygen -l -f /etc/ssh/ssh_host_rsa_key >/dev/null
  is "$(readlink /etc/corvo/ssl/rui.crt)" /etc/ssl/certs/ssl-cert-snakeoil.pem "the certificate"
  is "$(/sbin/halocfg-advcfg -q -g /UserVars/KivaTimeOut)" 600 "an option"
  cp -r /usr/share/kiva-demo/sample /tmp/sample
  is "$(kiva-demo-tools --host /tmp/sample /bin/hmx-cmd -U root hmxsvc/auth/lockdown_is_enabled)" \
    false "the sample host's tool"
}

check_console() {
  soon active kiva@tty1
  soon test -s /run/kiva.pid
  ok not active getty@tty1
  is "$(readlink "/proc/$(cat /run/kiva.pid)/fd/0")" /dev/tty1 "the console's terminal"
  ok test -e /run/corvo/show-kiva-login
  is "$(stat -c %a /var/lib/corvo)" 700 "mode"
  is "$(systemd-analyze verify --man=no /lib/systemd/system/kiva@.service kiva-reset.service \
    kiva-name-servers.service halo-shell.service 2>&1)" "" "units"
  for unit in SSH HaloShell autovt@tty1; do
    is "$(systemctl show -P LoadState "$unit.service")" masked "$unit"
  done
  for _ in 1 2 3 4 5 6; do
    before=$(cat /run/kiva.pid)
    systemctl kill --kill-whom=main -s WINCH kiva@tty1
    soon not kill -0 "$before"
    soon sh -c "kill -0 \$(cat /run/kiva.pid)"
  done
}

check_newer() {
  echo mine >/etc/corvo/support
  rm /run/corvo/show-kiva-login
  systemctl --quiet disable --now halo-shell.service
  before=$(cat /run/kiva.pid)
  package -i /kiva.deb
  soon sh -c "test \"\$(cat /run/kiva.pid)\" != $before && kill -0 \$(cat /run/kiva.pid)"
  is "$(cat /etc/corvo/support)" mine "a setting of mine"
  ok not test -e /run/corvo/show-kiva-login
  ok not active halo-shell
  ok not systemctl --quiet is-enabled halo-shell

  systemctl --quiet disable --now kiva@tty1
  systemctl start getty@tty1
  package -i /kiva.deb
  ok not active kiva@tty1
  ok active getty@tty1
  systemctl start kiva@tty1
  soon not active getty@tty1
}

# A package that comes back is as good as new, and goes also where the SSH server cannot reload.
check_return() {
  package -i /kiva.deb
  soon active kiva@tty1
  ok test -e /run/corvo/show-kiva-login
  ok active halo-shell
  cp -p /etc/ssh/sshd_config /tmp/sshd_config
  systemctl start ssh
  echo Nonsense yes >>/etc/ssh/sshd_config
  package -r kiva
  cp -p /tmp/sshd_config /etc/ssh/sshd_config
  systemctl stop ssh
}

check_removal() {
  echo hello >/etc/corvo/welcome
  ok sh /sbin/backup.sh 0 >/dev/null
  ok /bin/hmx-cmd -U root hmxsvc/auth/lockdown_mode_enter
  ok test -e /etc/ssh/sshd_config.d/lockdown.conf
  package -r kiva
  soon active getty@tty1
  ok not test -e /etc/ssh/sshd_config.d/lockdown.conf
  is "$(systemctl --failed --plain --no-legend)" "" "failed units"
  is "$(cat /etc/corvo/support)" mine "a setting of mine"
  check_return
  package -P kiva
  is "$(cat /etc/corvo/welcome)" hello "a file of mine"
  rm -r /etc/corvo
  unchanged /tmp/plain "left behind"
}

: >/dev/tty0 # systemd asks only whether the machine has such terminals
systemctl start getty@tty1.service
soon active getty@tty1
check_image
package -i /kiva.deb
check_console
check_tools
check_newer
check_removal
exit $((failures > 0))
