# Runs as root on a Debian of its own (scripts/package.sh), with the package and the demo's programs beside it.
set -euo pipefail
cd "$(dirname "$0")"
application=/opt/zelvan-scheduler
demo=/home/tester/demo
seconds=0

say() { echo "-- $*"; }
fail() { echo "$*" >&2; exit 1; }
as_user() {
    exec setpriv --reuid tester --regid tester --init-groups \
        env HOME=/home/tester QT_QPA_PLATFORM=offscreen "$@"
}

say "Installing, with nothing that is only recommended"
export DEBIAN_FRONTEND=noninteractive
apt-get install -y -qq --no-install-recommends ./zelvan-scheduler_*.deb >/dev/null
dpkg -L zelvan-scheduler | sort >files

say "Setting up, as an administrator"
useradd --create-home tester
password=$(./zelvan-scheduler-demo --password)
zelvan-scheduler-setup <<<"$password"
chgrp tester $application/Zelvan.SSS
chmod 640 $application/Zelvan.SSS
install -o tester -d "$demo"
ln -s $application "$demo/app"
./zelvan-scheduler-demo "$demo"
chown tester "$demo"/server.db*

say "Asking by the command line, as a user"
(as_user zelvan-schedules check --server "file:$demo/server.db" --user QuorraAdmin --password-stdin <<<"$password")

say "Starting the program, as a user"
as_user ZELVAN_SCHEDULER_STATEMENTS=/home/tester/statements \
    zelvan-scheduler - <<<"QuorraAdmin,$password,file:$demo/server.db" &
program=$!
trap 'kill $program 2>/dev/null || true' EXIT
until grep -qs 'FROM NorvaScheduler.dbo.tblschedule' /home/tester/statements; do # the main screen reads
    [ $((++seconds)) -le 60 ] && kill -0 $program || fail "The program does not reach its main screen."
    sleep 1
done
kill $program
wait $program || true

say "Walking through the screens"
install -o tester -d /home/tester/pictures
install zelvan-scheduler-walk zelvan-demo-engine /usr/local/bin
(as_user zelvan-scheduler-walk "$demo" /home/tester/pictures)

say "Removing"
apt-get purge -y -qq zelvan-scheduler >/dev/null
while read -r file; do
    [[ $application/ == "$file"/* || ! -e $file ]] || dpkg -S "$file" >/dev/null 2>&1 || fail "$file is left."
done <files
echo "Left in $application is what the administrator put there: $(ls -m $application)"
