# Sourced by every suite: loads the module and the test-only journal commands.

# The result and return code of a script, as one list.
proc outcome {script} {
    set code [catch {uplevel 1 $script} result]
    list $code $result
}

# The command names the module registered (everything that was not there
# before it was loaded).
proc module_commands {} {
    set out {}
    foreach c [info commands] {
        if {![info exists ::hk_baseline($c)]} {lappend out $c}
    }
    return [lsort $out]
}

# The variable names the module linked.
proc module_variables {} {
    set out {}
    foreach v [info globals] {
        if {![info exists ::hk_baseline_vars($v)]} {lappend out $v}
    }
    return [lsort $out]
}

if {![info exists ::hk_loaded]} {
    set here [file dirname [file normalize [info script]]]
    set ::hk_lib [expr {[info exists ::env(HK_LIB)] ? $::env(HK_LIB) : [file join $here .. build libhktcl.so]}]
    set ::hk_testlib [expr {[info exists ::env(HK_TESTLIB)] ? $::env(HK_TESTLIB) : [file join [file dirname $::hk_lib] libhktest.so]}]
    load $::hk_testlib Hktest
    foreach c [info commands] {set ::hk_baseline($c) 1}
    foreach v [concat [info globals] hk_baseline_vars hk_loaded] {set ::hk_baseline_vars($v) 1}
    load $::hk_lib
    set ::hk_loaded 1
}
