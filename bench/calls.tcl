# Times representative module commands against references called with the
# same words: a command that does nothing, a minimal hand-written getter,
# and the module's own flat calls.
#   tclsh8.6 bench/calls.tcl path/to/libhktcl.so
set lib [file normalize [lindex $argv 0]]
set testlib [file join [file dirname $lib] libhktest.so]
load $testlib Hktest
hktest_journal 0  ;# measure the module, not the stand-in's journal
load $lib

set n 1000000
hVector vec
set v [vec cget -this]
vec setList {0.1 1.5 3}
set node [new_hcNode]
hcNode_getName $node

# Nanoseconds per call of a command and of its reference: each runs n times
# in a compiled loop, and the time of the same loop with an empty body is
# taken off.  The best of five runs each, taken in turn so that a slow spell
# of the machine falls on both alike.
proc looped {script} {
    set name loop[incr ::loops]
    proc $name {} "global v node; set t \[clock microseconds\]
        for {set i 0} {\$i < $::n} {incr i} {$script}
        expr {(\[clock microseconds\] - \$t) * 1000.0 / $::n}"
    $name
    return $name
}
proc best {loop} {
    set t 1e9
    for {set i 0} {$i < 5} {incr i} {set t [expr {min($t, [$loop])}]}
    return $t
}
set empty [best [looped {}]]
proc measure {label script reference {goal {}}} {
    set loop1 [looped $script]
    set loop0 [looped $reference]
    set t1 1e9
    set t0 1e9
    for {set i 0} {$i < 5} {incr i} {
        set t1 [expr {min($t1, [$loop1] - $::empty)}]
        set t0 [expr {min($t0, [$loop0] - $::empty)}]
    }
    puts [format "%-40s %6.1f ns | %-26s %6.1f ns | ratio %5.2f %s" $label $t1 [lindex $reference 0] $t0 \
        [expr {$t1 / $t0}] [expr {$goal eq "" ? "" : "(goal <= $goal)"}]]
}
puts [format "empty loop: %.1f ns an iteration, taken off every time below" $empty]

measure {hVector_get $v 0 (0.1f)} {hVector_get $v 0} {hktest_vget $v 0} 0.75
measure {hVector_get $v 1 (1.5)} {hVector_get $v 1} {hktest_vget $v 1} 1.0
measure {hVector_get $v 1 vs do-nothing} {hVector_get $v 1} {hktest_noop $v 1}
measure {read: string length [hVector_get $v 0]} {string length [hVector_get $v 0]} {string length [hktest_vget $v 0]}
measure {read: expr {[hVector_get $v 0] * 2}} {expr {[hVector_get $v 0] * 2}} {expr {[hktest_vget $v 0] * 2}}
measure {hVector_getList $v} {hVector_getList $v} {hVector_get $v 0} 2.0
measure {object command: vec get 0} {vec get 0} {hVector_get $v 0} 1.2
measure {inherited: hcObject_getName $node} {hcObject_getName $node} {hcNode_getName $node} 1.1

# Loading the module into a new interpreter and deleting it again.
set load [lindex [time {
    set child [interp create]
    load $lib Hktcl $child
    interp delete $child
} 20] 0]
puts [format "load into a new interpreter and delete it: %.2f ms (goal <= 3 ms)" [expr {$load / 1000.0}]]
