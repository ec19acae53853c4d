# Times representative module commands against a command that does nothing,
# registered with the same interface and called with the same words.
#   tclsh8.6 bench/calls.tcl path/to/libhktcl.so
set lib [file normalize [lindex $argv 0]]
load [file join [file dirname $lib] libhktest.so] Hktest
hktest_journal 0  ;# measure the module, not the stand-in's journal
load $lib

set n 300000
hVector vec
set v [vec cget -this]
vec setList {1 2 3}
set node [new_hcNode]
hcNode_getName $node

proc measure {label script baseline} {
    global n
    # Warm up both, then take the better of three runs each.
    uplevel #0 $script
    uplevel #0 $baseline
    set t1 1e9
    set t0 1e9
    for {set i 0} {$i < 3} {incr i} {
        set t1 [expr {min($t1, [lindex [uplevel #0 [list time $script $n]] 0])}]
        set t0 [expr {min($t0, [lindex [uplevel #0 [list time $baseline $n]] 0])}]
    }
    puts [format "%-44s %8.3f us  (do-nothing %6.3f us)  ratio %5.2f" $label $t1 $t0 [expr {$t1 / $t0}]]
}

measure {hVector_get $v 1} {hVector_get $v 1} {hktest_noop $v 1}
measure {object command: vec get 1} {vec get 1} {hktest_noop vec get 1}
measure {inherited via substitution: hcNode_getName} {hcNode_getName $node} {hktest_noop $node}
measure {hVector_getList $v} {hVector_getList $v} {hktest_noop $v}
