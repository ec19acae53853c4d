#!/usr/bin/env bash
# Builds libhktcl and the stand-in host library, then runs what is asked:
#   ./make.sh demo       build, then run examples/demo.tcl against the module
#   ./make.sh test       build, run every test; then the same under the
#                        address and undefined-behaviour sanitizers
#   ./make.sh bench      build (optimised), run the call-overhead benchmark
#   ./make.sh fuzz [N]   build, run the live-object fuzz sweep with N (default
#                        1000) word vectors per command, in a child process
#   ./make.sh soak [N]   build (optimised), run N (default 1000000) rounds of
#                        construction, calls and conversions, print memory
# Missing Debian packages are installed first.
set -euo pipefail
cd "$(dirname "$0")"

install_missing() {
  local missing=()
  for pkg in "$@"; do
    dpkg -s "$pkg" >/dev/null 2>&1 || missing+=("$pkg")
  done
  ((${#missing[@]})) || return 0
  local sudo=""
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}" >/dev/null
}

build() {
  local dir=$1
  shift
  cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
  cmake --build "$dir" -j"$(nproc)"
}

# Runs CTest in a build directory, then lists the totals of every tcltest
# suite and the number of GoogleTest cases, and repeats CTest's summary last.
run_tests() {
  local dir=$1 rc=0
  (cd "$dir" && ctest --output-on-failure -j"$(nproc)") >"$dir/ctest.out" 2>&1 || rc=$?
  cat "$dir/ctest.out"
  local log="$dir/Testing/Temporary/LastTest.log"
  echo "Suite totals ($dir):"
  [ -f "$log" ] && awk '/ Testing: /{name=$3} /^all.tcl:/{sub(/^all.tcl:[ \t]*/, ""); gsub(/\t/, " "); print "  " name ": " $0}' "$log"
  [ -f "$log" ] && echo "  GoogleTest cases run: $(grep -c ' Testing: unit\.' "$log")"
  grep -E '^[0-9]+% tests passed' "$dir/ctest.out" || true
  return "$rc"
}

install_missing g++ cmake make pkg-config tcl8.6 tcl8.6-dev googletest libgtest-dev libpython3-dev

case "${1:-test}" in
  demo)
    build build
    tclsh8.6 examples/demo.tcl build/libhktcl.so
    ;;
  test)
    build build
    run_tests build
    build build-sanitize -DHK_SANITIZE=ON
    run_tests build-sanitize
    ;;
  bench)
    build build-bench -DCMAKE_BUILD_TYPE=Release -DHK_TESTS=OFF
    tclsh8.6 bench/calls.tcl build-bench/libhktcl.so
    ;;
  fuzz)
    build build
    mkdir -p build/fuzz
    seed=$(date +%s)
    echo "seed $seed, log build/fuzz/log (the last line is the call being made)"
    # Run inside build/fuzz: the files that commands write under junk names land there.
    (cd build/fuzz && tclsh8.6 ../../tests/fuzz_live.tcl "$PWD/../libhktcl.so" log "$seed" "${2:-1000}")
    ;;
  soak)
    build build-bench -DCMAKE_BUILD_TYPE=Release -DHK_TESTS=OFF
    tclsh8.6 bench/soak.tcl build-bench/libhktcl.so "${2:-1000000}"
    ;;
  *)
    echo "usage: $0 demo|test|bench|fuzz [N]|soak [N]" >&2
    exit 2
    ;;
esac
