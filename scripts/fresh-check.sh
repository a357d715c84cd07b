#!/usr/bin/env bash
# Checks that the README's quick start works on a fresh Debian 12 machine: a
# clean clone of one commit (uncommitted files are left out) is copied into a
# minimal bookworm root, where, as root in a chroot, it runs
#   scripts/build.sh && build/bin/typeprobe identify tests/data/mac
#   the Python package's install and first call, as the README shows them
#   scripts/test.sh
# and the check ends with a PASS or FAIL line (exit status 0 or 1).
#
# The base root is made once with mmdebstrap and kept as a tarball (in
# /var/cache/typeprobe-fresh/, or $TYPEPROBE_FRESH_CACHE); every run unpacks
# a new copy of it, so nothing one run installs is seen by the next.
#
# A skipped test fails the check too, unless its reason is one of the
# expected ones below: on a fresh machine a skip means that scripts/setup.sh
# misses a package or that the file system lacks something a test needs.
#
# Usage: scripts/fresh-check.sh [--commit REV] [--keep] [--refresh-base]
#   --commit REV    check REV instead of HEAD
#   --keep          keep the root afterwards (its path is printed)
#   --refresh-base  make the base tarball again
set -euo pipefail

# Skips that are by design: regular expressions on the reason a test gives
# (none at present: every skip on a fresh machine is a missing install step).
expected_skips=()

# ----------------------------------------------------------------- inner ---
# Runs in a mount and PID namespace of its own, so whatever is mounted here
# disappears with it even if the trap below never runs.
if [[ "${1:-}" == --inner ]]; then
  root=$2
  mounts=()
  unmount_all() {
    local i
    for ((i = ${#mounts[@]} - 1; i >= 0; i--)); do
      umount "${mounts[i]}" 2>/dev/null || umount -l "${mounts[i]}" || true
    done
  }
  trap unmount_all EXIT
  mount_at() {  # mount_at TARGET MOUNT-ARGUMENTS...
    local target=$1; shift
    mount "$@" "$target"
    mounts+=("$target")
  }
  mount_at "$root/proc" -t proc proc
  mount_at "$root/sys" -t sysfs -o ro,nosuid,nodev,noexec sysfs
  # A /dev of its own with only the host's harmless devices bound in.
  mount_at "$root/dev" -t tmpfs -o mode=755,nosuid tmpfs
  for device in null zero full random urandom tty; do
    touch "$root/dev/$device"
    mount_at "$root/dev/$device" --bind "/dev/$device"
  done
  mkdir -p "$root/dev/pts" "$root/dev/shm"
  mount_at "$root/dev/pts" -t devpts -o newinstance,ptmxmode=0666,mode=620 devpts
  ln -s pts/ptmx "$root/dev/ptmx"
  # tmpfs keeps user extended attributes, which the Mac container tests need.
  mount_at "$root/dev/shm" -t tmpfs -o mode=1777,nosuid,nodev tmpfs
  ln -s /proc/self/fd "$root/dev/fd"
  ln -s /proc/self/fd/0 "$root/dev/stdin"
  ln -s /proc/self/fd/1 "$root/dev/stdout"
  ln -s /proc/self/fd/2 "$root/dev/stderr"
  status=0
  chroot "$root" /usr/bin/env -i HOME=/root LANG=C.UTF-8 TERM=dumb \
    PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
    /bin/bash /root/fresh-check-steps.sh || status=$?
  exit "$status"
fi

# ----------------------------------------------------------------- outer ---
arguments=("$@")
commit=HEAD keep=0 refresh=0
while (($#)); do
  case $1 in
    --commit) commit=${2:?--commit needs a revision}; shift 2 ;;
    --keep) keep=1; shift ;;
    --refresh-base) refresh=1; shift ;;
    -h|--help) sed -n '2,/^set -euo/p' "$0" | sed '$d; s/^# \{0,1\}//'; exit 0 ;;
    *) echo "fresh-check: unknown option $1 (see --help)" >&2; exit 2 ;;
  esac
done

if ((EUID != 0)); then
  exec sudo -- "$0" "${arguments[@]}"
fi

script=$(readlink -f "$0")
repo=$(git -C "$(dirname "$script")" rev-parse --show-toplevel)
sha=$(git -C "$repo" rev-parse --verify "$commit^{commit}")
cache=${TYPEPROBE_FRESH_CACHE:-/var/cache/typeprobe-fresh}
base="$cache/bookworm-minbase.tar"
mirror=${TYPEPROBE_FRESH_MIRROR:-http://deb.debian.org/debian}
security=${TYPEPROBE_FRESH_SECURITY:-http://deb.debian.org/debian-security}

echo "=== fresh check of $(git -C "$repo" log -1 --format='%h %s' "$sha")"
if [[ "$commit" == HEAD && -n "$(git -C "$repo" status --porcelain)" ]]; then
  echo "(uncommitted changes in $repo are not part of the check)"
fi

if [[ ! -s "$base" || $refresh == 1 ]]; then
  mkdir -p "$cache"
  if ! command -v mmdebstrap >/dev/null; then
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -q
    apt-get install -y -q --no-install-recommends mmdebstrap \
      || apt-get install -y -q --no-install-recommends debootstrap
  fi
  echo "=== making the base root $base"
  if command -v mmdebstrap >/dev/null; then
    # The security suite's Release file expires within days; a mirror that
    # serves a snapshot must still be usable.
    mmdebstrap --variant=minbase \
      --aptopt='Acquire::Check-Valid-Until "false"' \
      --aptopt='Acquire::Check-Date "false"' \
      bookworm "$cache/bookworm-minbase.part.tar" \
      "deb $mirror bookworm main" \
      "deb $mirror bookworm-updates main" \
      "deb $security bookworm-security main"
  else
    staging=$(mktemp -d /var/tmp/typeprobe-base.XXXXXX)
    debootstrap --variant=minbase bookworm "$staging" "$mirror"
    printf 'deb %s bookworm main\ndeb %s bookworm-updates main\ndeb %s bookworm-security main\n' \
      "$mirror" "$mirror" "$security" >"$staging/etc/apt/sources.list"
    printf 'Acquire::Check-Valid-Until "false";\nAcquire::Check-Date "false";\n' \
      >"$staging/etc/apt/apt.conf.d/99fresh-check"
    rm -rf "$staging/var/lib/apt/lists/"* "$staging/var/cache/apt/archives/"*.deb
    tar -C "$staging" --numeric-owner -cf "$cache/bookworm-minbase.part.tar" .
    rm -rf "$staging"
  fi
  mv "$cache/bookworm-minbase.part.tar" "$base"
fi

work=$(mktemp -d /var/tmp/typeprobe-fresh.XXXXXX)
root="$work/root"
cleanup() {
  # The mounts live in the inner namespace; never delete through one that
  # is still there.
  if grep -q " ${root}[/ ]" /proc/self/mountinfo; then
    echo "fresh-check: $root still has mounts; not removed" >&2
  elif ((keep)); then
    echo "fresh-check: the root is kept in $root"
  else
    rm -rf "$work"
  fi
}
trap cleanup EXIT
trap 'exit 130' INT TERM

mkdir "$root"
tar -C "$root" --numeric-owner -xpf "$base"
rm -f "$root/etc/resolv.conf"
cp /etc/resolv.conf "$root/etc/resolv.conf"
checkout="$root/root/typeprobe"
git clone -q --no-checkout "$repo" "$checkout"
git -C "$checkout" cat-file -e "$sha" 2>/dev/null || git -C "$checkout" fetch -q "$repo" "$sha"
git -C "$checkout" checkout -q --detach "$sha"

# The steps, as a fresh machine's user would type them, each timed; then
# every skipped test with its reason, from the suites' logs.
cat >"$root/root/fresh-check-steps.sh" <<'STEPS'
set -uo pipefail
cd /root/typeprobe
step() {
  local name=$1 started=$SECONDS status=0; shift
  echo "=== step: $name"
  echo "\$ $*"
  bash -c "$*" || status=$?
  echo "=== step: $name: exit $status after $(((SECONDS - started) / 60))m$(((SECONDS - started) % 60))s"
  return "$status"
}
failed=0
step "quick start" 'scripts/build.sh && build/bin/typeprobe identify tests/data/mac' || failed=1
# The README's Python commands, as a user types them after the build.
step "python quick start" 'python3 -m venv --system-site-packages .venv && . .venv/bin/activate &&
  pip install --no-build-isolation --no-index ./python &&
  python3 -c "import typeprobe; print(typeprobe.identify(\"tests/data/mac/ps-family/DejaVuSerif.bin\"))" |
  tee /dev/stderr | grep -o "Face(" | wc -l | grep -qx 4' || failed=1
step "test suite" 'scripts/test.sh' || failed=1
echo "=== skipped tests"
for log in build-test/*/Testing/Temporary/LastTest.log; do
  [[ -f "$log" ]] || continue
  suite=${log#build-test/}; suite=${suite%%/*}
  # GoogleTest prints "FILE:LINE: Skipped", the reason, then "[  SKIPPED ] NAME".
  awk -v suite="$suite" '
    /: Skipped$/ { skipping = 1; reason = ""; next }
    /^\[  SKIPPED \] [^ ]+ \(/ { printf "SKIP %s %s %s\n", suite, $4, reason; skipping = 0; next }
    skipping { reason = reason (reason == "" ? "" : " ") $0 }
  ' "$log"
done
exit "$failed"
STEPS

log="$work/output.log"
status=0
# --kill-child: nothing of the check outlives it, so the root is never
# removed under a build that still runs.
unshare --mount --pid --kill-child --propagation private -- "$script" --inner "$root" 2>&1 \
  | tee "$log" || status=$?

echo "=== summary"
grep -E '^=== step: .*: exit ' "$log" | sed 's/^=== step: /  /' || true
awk '/^=== [a-z]+ tests ===$/ { suite = $2 }
     /tests passed, .* tests failed out of/ { print "  " suite ": " $0 }' "$log"
unexpected=0
while read -r _ suite name reason; do
  expected=0
  for pattern in "${expected_skips[@]}"; do
    [[ "$reason" =~ $pattern ]] && expected=1
  done
  if ((expected)); then
    echo "  skipped as designed: $suite $name $reason"
  else
    echo "  SKIPPED: $suite $name $reason"
    unexpected=$((unexpected + 1))
  fi
done < <(grep -E '^SKIP ' "$log" || true)

if ((status == 0 && unexpected == 0)); then
  echo "PASS: fresh Debian 12 check of $(git -C "$repo" rev-parse --short "$sha")"
  exit 0
fi
echo "FAIL: fresh Debian 12 check of $(git -C "$repo" rev-parse --short "$sha")" \
  "(steps exit $status, $unexpected unexpected skipped tests)"
exit 1
