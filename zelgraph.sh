#!/usr/bin/env bash
# Builds and tests ZELGraph on Debian. Installs whatever the build needs first.
#
#   ./zelgraph.sh        build everything (native, sanitized, Windows x86_64 and i686),
#                        register the control in the project's Wine prefix, render
#                        the demo gallery as PNG files and add the screenshots of a
#                        scripted operator's session on a virtual screen
#   ./zelgraph.sh test   build everything and run every test suite: native, sanitized,
#                        the Windows test program under Wine and the operator's session
#   ./zelgraph.sh bench  build the Windows x86_64 module and time a hosted control's
#                        frames against a bare scan and a GDI reference (minutes)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$root/build
packages=(
  cmake ninja-build g++ googletest libgtest-dev libbenchmark-dev
  g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools
  libwine-dev wine wine64 xvfb xauth python3 clang libclang-rt-14-dev
)

log() { printf '\n== %s\n' "$*"; }

install_missing_packages() {
  local missing=()
  for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return
  log "installing ${missing[*]}"
  local sudo=
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  $sudo apt-get update -q
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# configure_and_build NAME [cmake options...]
configure_and_build() {
  local name=$1; shift
  log "building $name"
  cmake -S "$root" -B "$build/$name" -G Ninja -Wno-dev "$@" >/dev/null
  cmake --build "$build/$name"
}

build_all() {
  configure_and_build native
  configure_and_build asan -DZELGRAPH_SANITIZE=ON -DZELGRAPH_BENCHMARKS=OFF
  configure_and_build fuzz -DZELGRAPH_FUZZERS=ON -DZELGRAPH_BENCHMARKS=OFF -DCMAKE_CXX_COMPILER=clang++
  configure_and_build win64 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-x86_64.cmake"
  configure_and_build win32 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-i686.cmake"
}

show_built() {
  log "built"
  local f
  for f in native/zelgraph_tests native/zelgraph_bench asan/zelgraph_tests \
           win64/bin/ZELGraph.dll win64/bin/zelgraph_win_tests.exe \
           win64/bin/gallery.exe win64/bin/interaction_session.exe win32/bin/ZELGraph.dll win32/bin/zelgraph_win_tests.exe; do
    [ -e "$build/$f" ] && printf '  %-36s %8s bytes\n' "build/$f" "$(stat -c %s "$build/$f")"
  done
  return 0
}

# A Wine prefix of the project's own, with the null graphics driver so that
# windows can be created without a display.
prepare_wine_prefix() {
  export WINEPREFIX=$build/wineprefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
  create_wine_prefix "the Wine prefix" 'HKCU\Software\Wine\Drivers' /v Graphics /d null
}

# create_wine_prefix WHAT KEY /v NAME /d VALUE: creates $WINEPREFIX once, with
# one setting of its own.
create_wine_prefix() {
  local what=$1; shift
  [ -f "$WINEPREFIX/.zelgraph-ready" ] && return
  log "creating $what"
  wineboot -i >/dev/null 2>&1
  wine reg add "$@" /f >/dev/null 2>&1
  # A crashing test program ends instead of waiting in the debugger.
  wine reg delete 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /f >/dev/null 2>&1
  wineserver -w
  touch "$WINEPREFIX/.zelgraph-ready"
}

have_wine32() {
  [ -x /usr/lib/wine/wine ] || dpkg-query -W -f='${Status}' wine32:i386 2>/dev/null | grep -q 'install ok installed'
}

# run_session FOLDER: the scripted operator's session of examples/ in real
# windows, on a virtual screen (Xvfb), writing its screenshots into FOLDER.
# Real windows need Wine's X11 driver, so it runs in a second prefix of the
# project's, in which Wine draws the window frames itself (there is no window
# manager). Its Wine processes end before the screen goes away.
run_session() {
  local folder=$1
  (
    export WINEPREFIX=$build/screen-wineprefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    create_wine_prefix "the Wine prefix for the screen session" 'HKCU\Software\Wine\X11 Driver' /v Decorated /d N
    mkdir -p "$folder"
    timeout 120 xvfb-run -a -s '-screen 0 1024x768x24' bash -c '
      wine regsvr32 /s "$(winepath -w "$1")" >/dev/null 2>&1
      status=0
      wine "$2" "$(winepath -w "$3")" 2>&1 || status=$?
      wineserver -k 2>/dev/null
      exit $status' session "$build/win64/bin/ZELGraph.dll" "$build/win64/bin/interaction_session.exe" "$folder"
  )
}

passed=0 failed=0 skipped=0

# run_suite LABEL COMMAND...: runs one GoogleTest program and adds up its summary.
run_suite() {
  local label=$1; shift
  log "testing $label"
  local out status=0
  out=$("$@" 2>&1) || status=$?
  if [ "$status" -eq 0 ]; then
    printf '%s\n' "$out" | grep -E '^\[  (SKIPPED) |^\[==========\]|^\[  PASSED  \]' || true
  else
    printf '%s\n' "$out" | grep -v -E '^\[ +(RUN|OK) +\]' || true
  fi
  local p f s
  p=$(printf '%s\n' "$out" | sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' | tail -1)
  f=$(printf '%s\n' "$out" | sed -n 's/^\[  FAILED  \] \([0-9]*\) test.*/\1/p' | tail -1)
  s=$(printf '%s\n' "$out" | sed -n 's/^\[  SKIPPED \] \([0-9]*\) test.*/\1/p' | tail -1)
  if [ -z "$p" ] && [ -z "$f" ]; then
    printf '%s\n' "$out" | tail -20
    echo "$label did not finish (exit status $status)"
    f=1
  elif [ "$status" -ne 0 ] && [ -z "$f" ]; then
    echo "$label exited with status $status"
    f=1
  fi
  passed=$((passed + ${p:-0})) failed=$((failed + ${f:-0})) skipped=$((skipped + ${s:-0}))
}

# run_script LABEL SCRIPT: runs a VBScript test under Wine's cscript.
run_script() {
  local script=$2
  run_checks "$1" wine cscript //nologo "$(winepath -w "$script")"
}

# run_checks LABEL COMMAND...: runs a test program that prints PASS or FAIL
# per check and "done" when it reached its end, and adds up its checks.
run_checks() {
  local label=$1; shift
  log "testing $label"
  local out p f
  out=$("$@" 2>&1) || true
  p=$(printf '%s\n' "$out" | grep -c '^PASS ' || true)
  f=$(printf '%s\n' "$out" | grep -c '^FAIL ' || true)
  printf '%s\n' "$out" | grep '^FAIL ' || true
  if ! printf '%s\n' "$out" | grep -q '^done'; then
    printf '%s\n' "$out" | tail -5
    echo "$label stopped before its end"
    f=$((f + 1))
  fi
  echo "($p checks passed, $f checks failed)"
  passed=$((passed + p)) failed=$((failed + f))
}

# run_fuzzers: a short run of each native fuzzer from its seed corpus, with a
# fixed seed so that the run is the same every time. New inputs go to a
# scratch folder, never into the repository.
run_fuzzers() {
  local fuzzer name scratch
  for fuzzer in "$build"/fuzz/*_fuzzer; do
    name=$(basename "$fuzzer" _fuzzer)
    scratch=$(mktemp -d)
    cp "$root/fuzz/corpus/$name"/* "$scratch"/
    if (cd "$scratch" && "$fuzzer" -seed=1 -runs=5000 -max_len=1024 -timeout=10 . >log 2>&1); then
      echo "PASS $name fuzzer"
    else
      echo "FAIL $name fuzzer"
      grep -E 'ERROR|runtime error|graph fuzzer' "$scratch/log" | head -5
    fi
    rm -rf "$scratch"
  done
  echo done
}

# run_example SCRIPT: the shipped example must run to its last line.
run_example() {
  log "running the example $(basename "$1")"
  local out
  out=$(wine cscript //nologo "$(winepath -w "$1")" 2>&1) || true
  printf '%s\n' "$out"
  if printf '%s\n' "$out" | grep -q 'already exists'; then
    passed=$((passed + 1))
  else
    echo "the example did not finish"
    failed=$((failed + 1))
  fi
}

register_control() {
  wine regsvr32 /s "$(winepath -w "$build/win64/bin/ZELGraph.dll")" >/dev/null 2>&1
}

run_tests() {
  run_checks "the reference against the type library's IDL" \
    python3 "$root/tools/check_reference.py" "$root/resources/zelgraph.idl" "$root/docs/reference.md"
  run_suite native "$build/native/zelgraph_tests"
  run_suite "native with ASan and UBSan" env ASAN_OPTIONS=detect_leaks=1 \
    UBSAN_OPTIONS=print_stacktrace=1 "$build/asan/zelgraph_tests"
  run_checks "short runs of the native fuzzers" run_fuzzers
  prepare_wine_prefix
  register_control
  run_suite "Windows x86_64 under Wine" wine "$build/win64/bin/zelgraph_win_tests.exe"
  run_checks "the Windows fuzzer's self-check" wine "$build/win64/bin/zelgraph_win_fuzzer.exe" --self-check --calls=5000
  run_checks "a short run of the Windows fuzzer" wine "$build/win64/bin/zelgraph_win_fuzzer.exe" --seed=1 --calls=5000 \
    --skip-leaks
  run_script "a scripting host (VBScript)" "$root/tests/win/scripting_host_test.vbs"
  run_example "$root/examples/build_and_read_graph.vbs"
  run_checks "an operator's session on a screen (Xvfb)" run_session "$build/session"
  if have_wine32; then
    # The 32-bit module registers in the prefix's 32-bit view of the registry.
    wine regsvr32 /s "$(winepath -w "$build/win32/bin/ZELGraph.dll")" >/dev/null 2>&1
    run_suite "Windows i686 under Wine" wine "$build/win32/bin/zelgraph_win_tests.exe"
  else
    log "Windows i686 tests not run: this machine has no 32-bit Wine"
  fi
  wineserver -k 2>/dev/null || true
  echo
  echo "tests: $passed passed, $failed failed, $skipped skipped"
  [ "$failed" -eq 0 ]
}

render_gallery() {
  prepare_wine_prefix
  register_control
  log "rendering the gallery"
  rm -rf "$build/gallery"
  wine "$build/win64/bin/gallery.exe" "$(winepath -w "$build/gallery")"
  wineserver -k 2>/dev/null || true
  log "running the operator's session on a virtual screen"
  run_session "$build/gallery"
  echo
  echo "The gallery is in $build/gallery"
}

# The hosted frame benchmark of bench/win/, in the project's Wine prefix.
run_frame_bench() {
  configure_and_build win64 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-x86_64.cmake"
  prepare_wine_prefix
  register_control
  log "timing a hosted control's frames"
  wine "$build/win64/bin/frame_bench.exe"
  wineserver -k 2>/dev/null || true
}

main() {
  install_missing_packages
  case "${1:-}" in
    "") build_all; show_built; render_gallery ;;
    test) build_all; run_tests ;;
    bench) run_frame_bench ;;
    *) echo "usage: $0 [test|bench]" >&2; exit 2 ;;
  esac
}

main "$@"
