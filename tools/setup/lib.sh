# What ./play, ./check and the scripts below tools/ share: installing the packages that are missing, configuring and
# building a preset. Sourced by each.

say() {
  if [ -t 1 ]; then
    printf '\033[1m==>\033[0m %s\n' "$*"
  else
    printf '==> %s\n' "$*"
  fi
}
fail() {
  printf '\n%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# Sets `as_root` to what runs a command as root: nothing for root itself, sudo for others.
find_root() {
  as_root=()
  [ "$(id -u)" -eq 0 ] && return
  command -v sudo >/dev/null ||
    fail "this needs root once, to install packages: run it as root, or install sudo."
  as_root=(sudo)
  # Asked by itself, so that a wrong password is not taken for a failing network.
  sudo true || fail "sudo refused; this needs root once, to install packages."
}

# install_packages FILE…: installs what the lists name and the machine lacks. Does nothing when all is there.
install_packages() {
  command -v apt-get >/dev/null || fail "this expects Debian 12 with apt-get; the packages are listed in: $*"
  local wanted missing package
  wanted=$(sed 's/#.*//' "$@")
  missing=()
  for package in $wanted; do
    # A package of two architectures has two lines.
    dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -x installed >/dev/null ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "Installing ${#missing[@]} packages: ${missing[*]}"
  find_root
  "${as_root[@]}" apt-get update -q || fail "the package lists could not be read; is the network there?"
  # A machine that has just started may be installing updates by itself: wait for it.
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 \
    install -y -q --no-install-recommends "${missing[@]}" ||
    fail "the packages could not be installed (see above)."
}

# want PROGRAM TARGET: ends where a program that this runs has not been built.
want() {
  [ -x "$1" ] || fail "there is no $1; build it first: cmake --preset release && cmake --build --preset release --target $2"
}

# configured PRESET [NAME:BOOL=VALUE…]: whether a build folder stands ready, with these options.
configured() {
  local folder=build/$1 option
  shift
  [ -f "$folder/build.ninja" ] || return 1
  for option in "$@"; do
    grep -qxF "$option" "$folder/CMakeCache.txt" || return 1
  done
}

# configure PRESET [NAME:BOOL=VALUE…]: makes a build folder ready, with these options.
configure() {
  local preset=$1 output
  shift
  say "Configuring ($preset)"
  output=$(cmake --preset "$preset" "${@/#/-D}" 2>&1) || {
    printf '%s\n' "$output" >&2
    fail "configuring failed (see above)."
  }
}

# build PRESET [TARGET…]: builds what changed.
build() {
  local preset=$1
  shift
  say "Building ($preset)"
  cmake --build --preset "$preset" ${1:+--target "$@"} || fail "the build failed (see above)."
}
