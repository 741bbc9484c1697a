# SPDX-License-Identifier: BSD-2-Clause
# Counts single test cases over the programs of a configuration. Sourced by ./zor.

zor_passed=0
zor_failed=0
zor_skipped=0

# zor_attribute FILE NAME: a number of the first element of a GoogleTest report.
zor_attribute() {
  grep -m1 -o "<testsuites [^>]*" "$1" | grep -o " $2=\"[0-9]*\"" | grep -o '[0-9]*' || echo 0
}

# zor_count BUILD RESULTS LABEL: adds the counts of all tests that CTest knows (with LABEL, if any).
# A program without a whole report counts as one case: passed, if CTest says so, else failed.
zor_count() {
  local build=$1 results=$2 label=$3 name report cases bad skipped failed_list
  failed_list=$build/Testing/Temporary/LastTestsFailed.log
  while read -r name; do
    case $name in wine.*) continue ;; esac
    report=$results/$name.xml
    bad=0
    [ -f "$failed_list" ] && grep -qx "[0-9]*:$name" "$failed_list" && bad=1
    if [ -s "$report" ] && grep -q '</testsuites>' "$report"; then
      cases=$(zor_attribute "$report" tests)
      skipped=$(grep -c 'result="skipped"' "$report" || true)
      local failures
      failures=$(($(zor_attribute "$report" failures) + $(zor_attribute "$report" errors)))
      [ "$failures" -eq 0 ] && failures=$bad
      zor_failed=$((zor_failed + failures))
      zor_skipped=$((zor_skipped + skipped))
      zor_passed=$((zor_passed + cases - skipped - failures))
    elif [ $bad -eq 0 ]; then
      zor_passed=$((zor_passed + 1))
    else
      zor_failed=$((zor_failed + 1))
    fi
  done < <(ctest --test-dir "$build" -N ${label:+-L "$label"} | sed -n 's/^ *Test *#[0-9]*: //p')
}
