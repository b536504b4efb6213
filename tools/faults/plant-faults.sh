#!/usr/bin/env bash
# Plants the faults of a list, one at a time, and tells which test notices each. A fault that no test notices shows
# where a test is missing. The sources are as before when it ends, however it ends.
set -euo pipefail

usage() {
  cat <<'TEXT'
Usage: plant-faults.sh -l LIST -b BUILD -t TEST [NUMBER...]

Run at the root of the sources. Prints a table row for each fault, or for those with the given numbers.
  -l  the list: how a fault is written stands at its beginning
  -b  shell command that builds what TEST runs
  -t  shell command that runs the tests (GoogleTest programs, one or several); it ends at its first failure
ROOM is set for both commands: the fault's room, "all" for the first run, which is without a fault and must pass.

  plant-faults.sh -l faults.txt -b 'cmake --build build/dev --target vlm_tests' -t build/dev/tests/vlm_tests
  plant-faults.sh -l faults.txt -b 'cmake --build build/dev' \
                  -t 'for program in build/dev/tests/*_tests; do $program || exit; done' 3 17

Ends with 0 when every fault was noticed, 1 when one escaped, 2 when a fault cannot be planted or does not build.
TEXT
}

readonly LONGEST_RUN=600 # seconds; a fault may keep a test from ending

fail() {
  echo "plant-faults.sh: $*" >&2
  exit 2
}

list="" build="" tests=""
while getopts "l:b:t:h" option; do
  case $option in
    l) list=$OPTARG ;;
    b) build=$OPTARG ;;
    t) tests=$OPTARG ;;
    h) usage; exit 0 ;;
    *) usage >&2; exit 2 ;;
  esac
done
shift $((OPTIND - 1))
[[ -n $list && -n $build && -n $tests ]] || { usage >&2; exit 2; }
[[ -r $list ]] || fail "cannot read $list"
readonly wanted=" $* "

work=$(mktemp -d)
readonly work
planted=""
restore() {
  [[ -n $planted ]] || return 0
  # Not with its old time: what was built from the fault must be built again.
  cat -- "$work/original" >"$planted"
  planted=""
}
trap 'restore; rm -rf -- "$work"' EXIT
trap 'exit 130' HUP INT TERM

# Fills the arrays with the wanted faults.
numbers=() rooms=() files=() whats=() olds=() news=()
read_list() {
  local line number="" room file what="" old="" new=""
  while IFS= read -r line; do
    case $line in
      '#'*) ;;
      -*) old+=${line:1}$'\n' ;;
      +*) new+=${line:1}$'\n' ;;
      ?*) if [[ -z $number ]]; then read -r number room file <<<"$line"; else what=$line; fi ;;
      *)
        if [[ -n $number && ($wanted == "  " || $wanted == *" $number "*) ]]; then
          numbers+=("$number") rooms+=("$room") files+=("$file") whats+=("$what")
          olds+=("${old%$'\n'}") news+=("${new%$'\n'}")
        fi
        number="" what="" old="" new=""
        ;;
    esac
  done < <(cat -- "$list" && printf '\n\n')
}

check() {
  local name="fault ${numbers[$1]}" file=${files[$1]} old=${olds[$1]} rest count=0
  [[ -n ${whats[$1]} && -n $old && -f $file ]] || fail "$name: not a whole fault, or there is no file $file"
  rest=$(<"$file")
  while [[ $rest == *"$old"* ]]; do
    rest=${rest#*"$old"}
    count=$((count + 1))
  done
  [[ $count == 1 ]] || fail "$name: its text stands $count times in $file"
}

plant() {
  local file=${files[$1]} old=${olds[$1]} content
  content=$(<"$file")
  cp -- "$file" "$work/original"
  planted=$file
  printf '%s\n' "${content%%"$old"*}${news[$1]}${content#*"$old"}" >"$file"
}

builds() { ROOM=$1 sh -c "$build" >"$work/build.log" 2>&1 </dev/null; }
passes() { ROOM=$1 GTEST_FAIL_FAST=1 timeout "$LONGEST_RUN" sh -c "$tests" >"$work/tests.log" 2>&1 </dev/null; }

# The first test that failed, or the one that was running when the program broke off.
noticing_test() {
  awk '/^\[ RUN      \] / { name = $4 } /^\[  FAILED  \] / { name = $4; exit }
       END { sub(/,$/, "", name); print name == "" ? "the start of the tests" : name }' "$work/tests.log"
}

read_list
[[ ${#numbers[@]} -gt 0 ]] || fail "no such fault in $list"
for i in "${!numbers[@]}"; do check "$i"; done
builds all || { cat "$work/build.log" >&2; fail "does not build without a fault"; }
passes all || { tail -n 30 "$work/tests.log" >&2; fail "the tests fail without a fault"; }

status=0
for i in "${!numbers[@]}"; do
  plant "$i"
  if ! builds "${rooms[$i]}"; then
    result="does not build"
    status=2
  elif ! passes "${rooms[$i]}"; then
    result="noticed by $(noticing_test)"
  else
    result="**ESCAPED**"
    [[ $status == 2 ]] || status=1
  fi
  restore
  echo "| ${numbers[$i]} | ${rooms[$i]} | ${whats[$i]} | $result |"
done
exit "$status"
