# Script calls in which memory runs out. Sourced after common.sh.

# Preloads of tests/faults, in out/faults.
build_preloads() {
    mkdir -p "$out/faults"
    for preload in no_deepbind failing_memory; do
        quietly "$out/faults/$preload.log" g++ -std=c++17 -D_GNU_SOURCE -Wall -Wextra -Werror -O1 -shared -fPIC \
            "$root/tests/faults/$preload.cpp" -o "$out/faults/$preload.so" -ldl
    done
}

with_failing_memory() { # SCRIPT ARGUMENT...
    FAIL_MODULE=$module LD_PRELOAD=$out/faults/no_deepbind.so:$out/faults/failing_memory.so \
        "$PHP" -n -d extension="$module" "$root/tests/faults/$@"
}

# count_script COMMAND...: adds what a script of tests/faults counts.
count_script() {
    status=0
    result=$("$@") || status=$?
    [[ $result =~ ([0-9]+)\ passed,\ ([0-9]+)\ failed$ ]] || BASH_REMATCH=(0 0 0)
    count "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}"
    # A script that ends badly has failed, whatever it counted.
    [ "$status" -eq 0 ] || [ "${BASH_REMATCH[2]}" -gt 0 ] || {
        count 0 1
        say "FAILED: $*"
    }
}

# The engine ends the request in its own way, and the module holds no block.
ends_well() { # CALL KILOBYTES
    status=0
    log=$out/faults/memory_limit
    with_failing_memory memory_limit.php "$@" >"$log.out" 2>"$log.err" || status=$?
    code=255
    end='Allowed memory size of [0-9]* bytes exhausted'
    [ "$1" != exit ] || { code=0 && end='^exit in a text form$'; }
    [ "$status" -eq $code ] && [ ! -s "$log.err" ] && grep -q "$end" "$log.out"
}

# Every allocation of the module at $module fails once, and the engine's limit
# is met in the middle of calls.
memory_runs_out() {
    count_script with_failing_memory allocations.php
    for call in document numbers texts exit handler fiber objects statements accounts references; do
        for kilobytes in 500 900 1300; do
            check "the memory limit, $call, $kilobytes kB" ends_well $call $kilobytes
        done
    done
}
