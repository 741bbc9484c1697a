# SPDX-License-Identifier: BSD-2-Clause
# Counts single test cases over the programs of a configuration. Sourced by ./zor.

zor_passed=0
zor_failed=0
zor_skipped=0

# zor_attribute REPORT NAME: a number of the first element of a GoogleTest report.
zor_attribute() {
  grep -m1 -o '<testsuites [^>]*' "$1" | sed -n "s/.* $2=\"\([0-9]*\)\".*/\1/p"
}

# zor_outcome SUMMARY NAME: what CTest says of a test: passed, skipped or failed. A test that the
# summary doesn't tell of has failed.
zor_outcome() {
  local element
  element=$(grep -s -A1 -F "<testcase name=\"$2\" " "$1" || true)
  case $element in
    *'status="run"'*) echo passed ;;
    *'<skipped message="SKIP_'*) echo skipped ;;
    *) echo failed ;;
  esac
}

# zor_count SUMMARY RESULTS NAME...: adds the counts of the tests NAME. SUMMARY is CTest's own
# report, RESULTS the folder of the GoogleTest reports.
#
# A GoogleTest program counts for its cases, and for one failure at least if it ended badly; without
# a whole report it has failed, whatever its exit code. A name with a dot is a plain command, and one
# case. The start and end of Wine count only when they fail.
zor_count() {
  local summary=$1 results=$2 name outcome report cases failed skipped
  shift 2
  for name in "$@"; do
    outcome=$(zor_outcome "$summary" "$name")
    report=$results/$name.xml
    cases=1 failed=0 skipped=0
    case $name in
      wine.*) [ "$outcome" = failed ] || cases=0 ;;
      *.*) [ "$outcome" != skipped ] || skipped=1 ;;
      *)
        if grep -qs '</testsuites>' "$report"; then
          cases=$(zor_attribute "$report" tests)
          failed=$(($(zor_attribute "$report" failures) + $(zor_attribute "$report" errors)))
          skipped=$(($(grep -c 'result="skipped"' "$report" || true) +
                     $(zor_attribute "$report" disabled)))
        else
          outcome=failed
        fi
        ;;
    esac
    if [ "$outcome" = failed ] && [ "$failed" -eq 0 ]; then
      failed=1
      [ "$cases" -gt "$skipped" ] || cases=$((skipped + 1))
    fi
    zor_failed=$((zor_failed + failed))
    zor_skipped=$((zor_skipped + skipped))
    zor_passed=$((zor_passed + cases - skipped - failed))
  done
}
