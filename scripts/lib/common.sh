# Shared by scripts/run and scripts/test: installs missing Debian packages and
# builds the project. Source it; it defines functions only.

# Everything the build and the tests need, by Debian package name.
PLEXVIEW_PACKAGES=(
  cmake ninja-build g++ pkg-config
  googletest libgtest-dev libbenchmark-dev
  libpugixml-dev libtbb-dev zlib1g-dev
  python3 python3-dev pybind11-dev python3-numpy
  python3-igraph python3-networkx
  qt6-base-dev libqt6opengl6-dev libgl-dev libglu1-mesa-dev freeglut3-dev
  xvfb xauth libgl1-mesa-dri fonts-liberation2 fonts-dejavu-core
  libgl2ps-dev libgif-dev qt6-image-formats-plugins
  poppler-utils librsvg2-bin ghostscript
  dpkg-dev file desktop-file-utils groff-base
)

plexview_root() { cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd; }

plexview_install_packages() {
  local missing=()
  local pkg
  for pkg in "${PLEXVIEW_PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed'; then
      missing+=("$pkg")
    fi
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing missing packages: ${missing[*]}"
  local sudo=()
  if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null 2>&1; then
      sudo=(sudo)
    else
      echo "error: these packages are missing and this is not root: ${missing[*]}" >&2
      return 1
    fi
  fi
  export DEBIAN_FRONTEND=noninteractive
  "${sudo[@]}" apt-get update -qq
  "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# plexview_build BUILD_DIR [extra cmake arguments...]
plexview_build() {
  local build_dir=$1
  shift
  local root
  root=$(plexview_root)
  cmake -S "$root" -B "$build_dir" -G Ninja \
    -DCMAKE_BUILD_TYPE=Release \
    -DPython3_EXECUTABLE=/usr/bin/python3 \
    "$@" >/dev/null
  cmake --build "$build_dir" -j "$(nproc)"
}
