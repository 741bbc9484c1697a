#!/usr/bin/env bash
# SPDX-License-Identifier: BSD-2-Clause
# check_counting.sh ROOT: what ./zor test counts. No test that didn't run, or ended badly, is lost.
set -euo pipefail
. "$1/tools/count_tests.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
summary=$work/summary

# told NAME STATUS [MESSAGE]: a test of CTest's report.
told() {
  printf '\t<testcase name="%s" classname="%s" time="0" status="%s">\n' "$1" "$1" "$2"
  printf '\t\t<%s message="%s"/>\n\t</testcase>\n' "$([ "$2" = fail ] && echo failure || echo skipped)" "${3-}"
} >>"$summary"

# cases NAME TESTS FAILURES DISABLED: the report of a GoogleTest program.
cases() {
  printf '<?xml version="1.0"?>\n<testsuites tests="%s" failures="%s" disabled="%s" errors="0" name="AllTests">\n' \
    "$2" "$3" "$4"
  printf '  <testsuite name="S" tests="99" failures="99">\n  </testsuite>\n</testsuites>\n'
} >"$work/$1.xml"

# expect WHAT PASSED FAILED SKIPPED NAME...
expect() {
  local what=$1 wanted="$2 $3 $4"
  shift 4
  zor_passed=0 zor_failed=0 zor_skipped=0
  zor_count "$summary" "$work" "$@"
  [ "$zor_passed $zor_failed $zor_skipped" = "$wanted" ] ||
    { echo "$what: counted $zor_passed $zor_failed $zor_skipped, not $wanted"; exit 1; }
}

told good run && cases good 12 0 0
told two_bad fail && cases two_bad 12 2 0
told leaks fail && cases leaks 12 0 0
told crash fail
told half fail && cases half 12 0 0 && sed -i '$d' "$work/half.xml"
told left run  # ended with exit code 0 in the middle of a test
told some_skipped run && cases some_skipped 5 0 1
sed -i '3i <testcase name="a" result="skipped"/>' "$work/some_skipped.xml"
told plain.good run
told plain.bad fail
told plain.skip notrun SKIP_RETURN_CODE=77
told plain.absent notrun 'Unable to find executable'
told wine.start run
told wine.boot fail
cases silent 12 0 0

expect 'a good program' 12 0 0 good
expect 'failed cases' 10 2 0 two_bad
expect 'a program that fails after its cases' 11 1 0 leaks
expect 'a crash' 0 1 0 crash
expect 'a report cut short' 0 1 0 half
expect 'a program that ends early' 0 1 0 left
expect 'skipped and disabled cases' 3 0 2 some_skipped
expect 'a plain command' 1 0 0 plain.good
expect 'a plain command that fails' 0 1 0 plain.bad
expect 'a plain command that skips itself' 0 0 1 plain.skip
expect 'a command that is not there' 0 1 0 plain.absent
expect 'a test that CTest does not tell of' 11 1 0 silent
expect 'Wine starts' 0 0 0 wine.start
expect 'Wine does not start' 0 1 0 wine.boot
expect 'several' 36 6 2 good two_bad some_skipped crash leaks left plain.bad wine.start
summary=$work/none
expect 'no report of CTest' 0 1 0 plain.good
