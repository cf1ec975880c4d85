#!/bin/sh
# Throwaway PostgreSQL server for the integration tests.
#   pg_fixture.sh start STATE_DIR   initdb into a fresh temporary directory,
#                                   start a server on a private Unix socket,
#                                   create the database and write
#                                   STATE_DIR/pg_conninfo (libpq string) and
#                                   STATE_DIR/pg_dir (the temporary directory)
#   pg_fixture.sh stop STATE_DIR    stop that server, remove the directory
# initdb and the server refuse to run as root; as root they run as the
# postgres user, which owns the temporary directory.
set -eu

action=$1
state=$2

bindir=""
for d in /usr/lib/postgresql/*/bin; do
  [ -x "$d/initdb" ] && bindir=$d
done
if [ -z "$bindir" ]; then
  bindir=$(dirname "$(command -v initdb)")
fi

as_server() {
  if [ "$(id -u)" = 0 ]; then
    runuser -u postgres -- "$@"
  else
    "$@"
  fi
}

stop_server() {
  dir=$1
  if [ -f "$dir/data/postmaster.pid" ]; then
    as_server "$bindir/pg_ctl" -D "$dir/data" -m immediate -w stop >/dev/null 2>&1 || true
  fi
  rm -rf "$dir"
}

case $action in
  start)
    mkdir -p "$state"
    # A server left over from an interrupted run is stopped first.
    if [ -f "$state/pg_dir" ]; then
      stop_server "$(cat "$state/pg_dir")"
      rm -f "$state/pg_dir" "$state/pg_conninfo"
    fi
    # As root the server runs as postgres, which must be able to reach the
    # directory: /tmp is open to every user, a private TMPDIR may not be.
    tmp=${TMPDIR:-/tmp}
    [ "$(id -u)" = 0 ] && tmp=/tmp
    dir=$(mktemp -d "$tmp/vexel-pg.XXXXXX")
    echo "$dir" > "$state/pg_dir"
    mkdir "$dir/socket"
    if [ "$(id -u)" = 0 ]; then
      chown -R postgres "$dir"
    fi
    trap 'stop_server "$dir"; rm -f "$state/pg_dir"' EXIT
    # sh skips the EXIT trap on a fatal signal (CTest's time-out, Ctrl-C):
    # turn the signal into an exit so that a half-started server goes too.
    trap 'exit 1' HUP INT TERM
    as_server "$bindir/initdb" -D "$dir/data" -U postgres -A trust -E UTF8 --locale=C.UTF-8 \
      >"$dir/initdb.log" 2>&1 || { cat "$dir/initdb.log"; exit 1; }
    # No TCP listener: the socket directory is private to this run.
    as_server "$bindir/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w -t 60 \
      -o "-c listen_addresses='' -k $dir/socket -c fsync=off -c full_page_writes=off" \
      start >/dev/null || { cat "$dir/server.log"; exit 1; }
    as_server "$bindir/createdb" -h "$dir/socket" -U postgres vexel_it
    echo "host=$dir/socket user=postgres dbname=vexel_it" > "$state/pg_conninfo"
    trap - EXIT HUP INT TERM
    echo "PostgreSQL running in $dir"
    ;;
  stop)
    if [ -f "$state/pg_dir" ]; then
      stop_server "$(cat "$state/pg_dir")"
    fi
    rm -f "$state/pg_dir" "$state/pg_conninfo"
    echo "PostgreSQL stopped"
    ;;
  *)
    echo "usage: $0 start|stop STATE_DIR" >&2
    exit 2
    ;;
esac
