#!/bin/sh
# Velmora's one set-up script for a Debian 12 machine.
#
#   ./build.sh run    install what is missing, build, start the program
#   ./build.sh test   install what is missing, build, run every test: the normal build,
#                     the core tests under AddressSanitizer and UndefinedBehaviorSanitizer,
#                     and a bounded run of every fuzzer
#
# Build folders (the presets of CMakePresets.json): build/ (normal), build-asan/, build-fuzz/.
# Environment: JOBS (default 2), FUZZ_SECONDS (default 60 per fuzzer); CI=true turns compiler
# warnings into errors.
set -eu

cd "$(dirname "$0")"
JOBS=${JOBS:-2}
FUZZ_SECONDS=${FUZZ_SECONDS:-60}

PACKAGES="g++ cmake ninja-build googletest libgtest-dev libgmock-dev libbenchmark-dev
qt6-base-dev qt6-svg-dev qt6-translations-l10n clang libclang-rt-14-dev"
WERROR=OFF
[ "${CI:-}" = "true" ] && WERROR=ON

install_missing() {
    missing=""
    for package in $PACKAGES; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "ok installed"; then
            missing="$missing $package"
        fi
    done
    [ -z "$missing" ] && return 0
    echo "Installo:$missing"
    sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    $sudo apt-get update -q
    # shellcheck disable=SC2086
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -q $missing
}

build_main() {
    cmake --preset default -DVELMORA_WERROR=$WERROR
    cmake --build build -j "$JOBS"
}

run_program() {
    if [ -x build/app/velmora ]; then
        exec build/app/velmora "$@"
    fi
    exec build/app/velmora-cli --help
}

run_tests() {
    ctest --preset default -j "$JOBS"

    cmake --preset asan -DVELMORA_WERROR=$WERROR
    cmake --build build-asan -j "$JOBS"
    ctest --preset asan -j "$JOBS"

    cmake --preset fuzz
    cmake --build build-fuzz -j "$JOBS" --target fuzzers
    seeds=build-fuzz/seeds
    rm -rf "$seeds"
    mkdir -p "$seeds"
    build-fuzz/fuzz/make_fuzz_seeds "$seeds"
    # Small real EDS files make good seeds when the shared corpus is beside the checkout.
    for file in nodecanopen_example.eds ros2canopen_simple.eds victron_curtis_e.eds; do
        if [ -f "../shared/corpus/eds/$file" ]; then
            cp "../shared/corpus/eds/$file" "$seeds/eds_reader/"
        fi
    done
    for fuzzer in build-fuzz/fuzz/*_fuzz; do
        name=$(basename "$fuzzer" _fuzz)
        corpus=build-fuzz/corpus/$name
        mkdir -p "$corpus" "$seeds/$name"
        echo "Fuzzing $name for $FUZZ_SECONDS s"
        "$fuzzer" -max_total_time="$FUZZ_SECONDS" -max_len=65536 -print_final_stats=1 \
            -artifact_prefix=build-fuzz/ "$corpus" "$seeds/$name" >build-fuzz/$name.log 2>&1 ||
            { tail -n 60 build-fuzz/$name.log; exit 1; }
        tail -n 3 build-fuzz/$name.log
    done
    echo "Tutti i test sono passati."
}

case "${1:-}" in
run)
    shift
    install_missing
    build_main
    run_program "$@"
    ;;
test)
    install_missing
    build_main
    run_tests
    ;;
*)
    echo "uso: ./build.sh run | test" >&2
    exit 2
    ;;
esac
