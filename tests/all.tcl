# Runs the tcltest suites of this directory against the built module.
#   tclsh all.tcl ?tcltest options?     (HK_LIB names libhktcl.so)
package require tcltest 2
namespace import ::tcltest::*
configure -testdir [file dirname [file normalize [info script]]] {*}$argv
configure -tmpdir [file join [expr {[info exists env(TMPDIR)] ? $env(TMPDIR) : "/tmp"}] hktcl-[pid]]
file mkdir [temporaryDirectory]
runAllTests
file delete -force [temporaryDirectory]
