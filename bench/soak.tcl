# Runs many iterations of the module's commonest round trips and prints the
# resident memory before and after: construction and release through class
# commands, object-command calls, vector and matrix list conversions, lists
# of objects in and out, pointer-library blocks and message handlers.
#   tclsh8.6 bench/soak.tcl path/to/libhktcl.so ?iterations?
set lib [file normalize [lindex $argv 0]]
set iterations [expr {[llength $argv] > 1 ? [lindex $argv 1] : 1000000}]
load [file join [file dirname $lib] libhktest.so] Hktest
hktest_journal 0
load $lib

proc rss {} {
    set f [open /proc/self/status]
    set kb 0
    foreach line [split [read $f] \n] {
        if {[regexp {^VmRSS:\s+(\d+)} $line -> kb]} break
    }
    close $f
    return $kb
}

set f [hcFigure_createInMemory soak]
set A [hcSegment_createInMemory $f a]
set B [hcSegment_createInMemory $f b]
hcSite_create s1 $A
hcSite_create s2 $B
set bcs [hcBoundChannelSet_createEmpty soak [list $f]]
set ::got 0
proc handler {m} {incr ::got}
hcKit_setMsgHandler handler 1

proc round {i} {
    global f bcs
    hVector v
    v setList [list $i 2 3]
    v getList
    rename v {}
    set m [new_hMatrix]
    hMatrix_setList $m {1 0 0 1 0 1 0 2 0 0 1 3 0 0 0 1}
    hMatrix_getList $m
    delete_hMatrix $m
    hList_tcllist [hcFigure_getSegments $f] hcSegment
    hcBoundChannelSet_bind $bcs [list $f]
    set p [ptrcreate double 1.5 8]
    ptrset $p 2.5 3
    ptrvalue $p 3
    ptrfree $p
    set a [float_array 4]
    float_set $a 1 2.0
    float_destroy $a
    hcKit_sendMsg "step $i" 1
}

# Warm up: the interpreter's own caches and pools settle first.
for {set i 0} {$i < 10000} {incr i} {round $i}
set before [rss]
set t [clock milliseconds]
for {set i 0} {$i < $iterations} {incr i} {round $i}
set after [rss]
puts "iterations $iterations  seconds [expr {([clock milliseconds] - $t) / 1000.0}]  messages $::got"
puts "resident kB before $before after $after  growth [expr {$after - $before}]"
