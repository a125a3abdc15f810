# shellcheck shell=bash disable=SC2034
# The Debian packages that the scripts need, and how they are installed. To be sourced.

# To build the program and run it. Without a font it would show empty windows.
packages_run=(g++ cmake ninja-build qt6-base-dev fonts-dejavu-core)
if [ -n "${WAYLAND_DISPLAY-}" ]; then
    packages_run+=(qt6-wayland)
fi

# For a virtual desktop, and to watch and use a program on it.
packages_tour=(
    xvfb openbox dbus-daemon at-spi2-core x11-utils
    python3 python3-pyatspi xdotool imagemagick
)

# To measure the program beside another one.
packages_measure=(pkgconf libxcb1-dev libxcb-damage0-dev)
packages_bench=("${packages_run[@]}" "${packages_tour[@]}" "${packages_measure[@]}" binutils)

# To make packages, and to try them on a separate Debian.
packages_package=("${packages_run[@]}" dpkg-dev file)
packages_try_package=("${packages_package[@]}" lintian debootstrap)

# To try the program on real desktops.
packages_desktops=(metacity xfwm4 kwin-x11 kwin-wayland kwin-style-breeze mutter sway faketime gir1.2-gtk-3.0)

# For the picture of the program on a desktop, with what that desktop looks like.
packages_picture=(
    "${packages_run[@]}" "${packages_tour[@]}"
    kwin-x11 kwin-style-breeze kde-style-breeze fonts-cantarell gir1.2-gtk-3.0 optipng
)

# To build and run the tests; Qt's test library comes with qt6-base-dev.
packages_test=("${packages_run[@]}" fonts-cantarell)
packages_test_all=("${packages_test[@]}")
if [ "$(uname -s)" = Linux ]; then
    packages_test+=("${packages_tour[@]}" python3-pytest)
    packages_test_all=("${packages_test[@]}" "${packages_measure[@]}" weston qt6-wayland orca qt6ct
        qt6-gtk-platformtheme
        desktop-file-utils appstream man-db binutils-mingw-w64-x86-64 "${packages_desktops[@]}")
fi

# To build for Windows, and to try that under Wine.
packages_windows=("${packages_run[@]}" g++-mingw-w64-x86-64-posix dpkg-dev perl nsis)
packages_wine=("${packages_tour[@]}" python3-pytest wine64 fonts-wine)

# To fuzz the settings file.
packages_fuzz=("${packages_run[@]}" clang libclang-rt-dev)

# To try the sources on a separate Debian.
packages_try_debian=(debootstrap git)

# For CI, which compiles the same sources several times.
packages_ci=(ccache)

# To analyse the sources and the running program.
packages_analyse=(binutils clang-format clang-tidy clazy cppcheck valgrind libc6-dbg shellcheck pyflakes3)

# Installs those of the packages that are missing. If it cannot, it says what is needed and goes
# on: the tools may be there under other names.
provide_packages() {
    local missing=() package
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi
    if can_install; then
        echo "Installing ${missing[*]}"
        as_root apt-get -q update || true
        as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300 \
            install -y --no-install-recommends "${missing[@]}" </dev/null && return
    fi
    echo "Needed, by the names that Debian gives to its packages: ${missing[*]}." \
        "They were not installed; going on with what is there." >&2
}

can_install() {
    command -v apt-get >/dev/null && { [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null; }
}

is_installed() {
    dpkg-query -W -f='${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}
