# shellcheck shell=bash
# How a preset is built. To be sourced in the project's root folder.

. tools/packages.sh

# build PRESET FOLDER PACKAGES...: looks for the packages before each build if they can be
# installed, and otherwise only before the first one.
build() {
    local preset=$1 folder=$2
    shift 2
    if can_install || [ ! -f "$folder/build.ninja" ]; then
        provide_packages "$@"
    fi
    if [ ! -f "$folder/build.ninja" ]; then
        configure "$preset"
    fi
    cmake --build --preset "$preset"
}

configure() {
    local tool
    for tool in c++ cmake ninja; do
        command -v "$tool" >/dev/null || cannot_build "$1" "There is no $tool here."
    done
    cmake --preset "$1" || cannot_build "$1" "CMake could not set up the build."
}

cannot_build() {
    cat >&2 <<END
$2
The build needs a C++20 compiler, CMake 3.22, Ninja and the development files of Qt 6.4, or newer
ones. With these in place, try again, or build by hand:
    cmake --preset $1 && cmake --build --preset $1
END
    exit 1
}
