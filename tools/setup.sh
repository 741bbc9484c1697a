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
  local missing as_root=() install
  command -v apt-get >/dev/null || {
    echo "zor: this set-up knows Debian only. Taken to be installed: $*" >&2
    return 0
  }
  mapfile -t missing < <(zor_missing "$@")
  [ ${#missing[@]} -gt 0 ] || return 0
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "zor: packages are missing. As root, run" >&2
      case " ${missing[*]} " in *:i386*) echo "  dpkg --add-architecture i386" >&2 ;; esac
      echo "  apt-get update; apt-get install -t bookworm ${missing[*]}" >&2
      return 1
    }
    as_root=(sudo)
  fi
  echo "== installing ${missing[*]}"
  case " ${missing[*]} " in *:i386*) "${as_root[@]}" dpkg --add-architecture i386 ;; esac
  # A mirror's index of i386's security updates may not download; the main index is what counts.
  "${as_root[@]}" apt-get -qq update || echo "zor: not every package index could be read" >&2
  # Packages that both architectures share must have the same version. The main suite has both; where
  # its versions are behind what is installed, the updates may have both.
  install=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
           apt-get install -y -qq --no-install-recommends)
  "${install[@]}" -t bookworm "${missing[@]}" >/dev/null ||
    "${install[@]}" "${missing[@]}" >/dev/null || {
    echo "zor: these packages couldn't be installed: ${missing[*]}" >&2
    return 1
  }
}
