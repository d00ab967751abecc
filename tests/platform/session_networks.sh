#!/bin/sh
# Machines on a network of their own: three network namespaces that know nothing of the world, joined by a bridge.
# Two of them open sessions, the third finds both by broadcast and joins one, with players on the host's own machine
# that came in by 127.0.0.1 before and behind it. Prints "ok", or what is wrong.
# Use: unshare --user --map-root-user --net --mount session_networks.sh PLAYER FOLDER
player=$1
folder=$2
cd "$folder" || exit 1
skip() {
  echo "skipped: $1"
  exit 77
}
mount -t tmpfs none /run 2>/dev/null && mkdir -p /run/netns || skip "no folder for namespaces"
ip link add bridge type bridge && ip link set bridge up || skip "no bridge"
for n in 1 2 3; do
  ip netns add "m$n" &&
    ip link add "port$n" type veth peer name net0 netns "m$n" &&
    ip link set "port$n" master bridge up &&
    ip -n "m$n" address add "10.9.8.$n/24" broadcast 10.9.8.255 dev net0 &&
    ip -n "m$n" link set net0 up &&
    ip -n "m$n" link set lo up || skip "no pair of interfaces"
done

fail() {
  echo "$1"
  head -n 40 ./*.out
  kill $pids 2>/dev/null
  exit 1
}
# Waits for a line in a file.
await() {
  for _ in $(seq 600); do
    grep -q "$2" "$1" && return
    sleep 0.05
  done
  fail "no line \"$2\" in $1"
}

for n in 1 2; do
  ip netns exec "m$n" "$player" open "host$n:21520" > "host$n.out" 2>&1 &
  pids="$pids $!"
  await "host$n.out" port
done
# A bridge may hold back what a new port sends first.
for _ in 1 2 3 4 5 6; do
  ip netns exec m3 "$player" find 21520 | sort > found.out
  [ "$(wc -l < found.out)" = 2 ] && break
done
[ "$(cat found.out)" = "10.9.8.1:21520 host1 1
10.9.8.2:21520 host2 1" ] || fail "not both sessions were found"

# On its own machine a session is found by the address that the others know.
ip netns exec m1 "$player" find 21520 | grep host1 > own.out
[ "$(cat own.out)" = "10.9.8.1:21520 host1 1" ] || fail "the own session has another address"

ip netns exec m1 "$player" join 127.0.0.1:21520 near > near.out 2>&1 &
pids="$pids $!"
await near.out port
ip netns exec m3 "$player" join 10.9.8.1:21520 far 50 > far.out 2>&1 &
pids="$pids $!"
await far.out port
await near.out "far 20"
await host1.out "far 20"
ip netns exec m1 "$player" join 127.0.0.1:21520 late 50 > late.out 2>&1 &
pids="$pids $!"
await late.out port
await far.out "late 20"

kill $pids
wait
echo ok
