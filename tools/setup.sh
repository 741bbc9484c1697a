# SPDX-License-Identifier: BSD-2-Clause
# Installs what a bare Debian 12 lacks; does nothing where everything is there. Sourced by ./zor.

zor_packages_native=(g++ cmake ninja-build pkgconf git googletest libcli11-dev nlohmann-json3-dev
                     libstb-dev libavformat-dev libavcodec-dev libavutil-dev)
zor_packages_windows=(g++-mingw-w64-i686-posix wine wine32:i386 clang)

# zor_missing PACKAGE...: prints those that aren't installed.
zor_missing() {
  local package
  for package in "$@"; do
    dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed ||
      printf '%s\n' "$package"
  done
}

# zor_install PACKAGE...: installs what is missing of the packages.
zor_install() {
  local missing as_root=()
  command -v dpkg-query >/dev/null || {
    echo "This set-up knows Debian 12 only. Install by hand: $*" >&2
    return 1
  }
  mapfile -t missing < <(zor_missing "$@")
  [ ${#missing[@]} -eq 0 ] && return 0
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "Missing, and to be installed by root: ${missing[*]}" >&2
      return 1
    }
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]}"
  case " ${missing[*]} " in *:i386*) "${as_root[@]}" dpkg --add-architecture i386 ;; esac
  # The index of i386's security updates may not download; the main index is what counts.
  "${as_root[@]}" apt-get update >/dev/null 2>&1 || true
  # Packages of both architectures must have the same version, so all come from the main suite.
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q -t bookworm \
    --no-install-recommends "${missing[@]}" >/dev/null
}
