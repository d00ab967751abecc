# What ./play and ./check share: installing the packages that are missing, and building a preset. Sourced by both.

say() { printf '\033[1m==>\033[0m %s\n' "$*"; }
fail() {
  printf '\n%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# Runs a command as root, directly or through sudo.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    fail "this needs root once, to install packages: run it as root, or install sudo."
  fi
}

# install_packages FILE…: installs what the lists name and the machine lacks. Does nothing when all is there.
install_packages() {
  command -v apt-get >/dev/null || fail "this expects Debian 12 with apt-get; the packages are listed in: $*"
  local wanted missing package
  wanted=$(sed 's/#.*//' "$@")
  missing=()
  for package in $wanted; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "Installing ${#missing[@]} packages: ${missing[*]}"
  as_root apt-get update -q || fail "the package lists could not be read; is the network there?"
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" ||
    fail "the packages could not be installed (see above)."
}

# build PRESET [TARGET…]: configures once, then builds what changed.
build() {
  local preset=$1
  shift
  if [ ! -f "build/$preset/build.ninja" ]; then
    say "Configuring ($preset)"
    cmake --preset "$preset" >"/tmp/quillmarch-configure-$$.log" 2>&1 || {
      cat "/tmp/quillmarch-configure-$$.log" >&2
      fail "configuring failed (see above)."
    }
    rm -f "/tmp/quillmarch-configure-$$.log"
  fi
  say "Building ($preset)"
  cmake --build --preset "$preset" ${1:+--target "$@"} || fail "the build failed (see above)."
}
