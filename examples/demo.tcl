# A tour of libhktcl against the stand-in host library.
#   tclsh8.6 examples/demo.tcl ?path/to/libhktcl.so?
set lib [expr {$argc ? [lindex $argv 0] : [file join [file dirname [info script]] .. build libhktcl.so]}]
load [file normalize $lib]

proc section {title} {puts "\n== $title"}

section "What the module registered"
puts "libhktcl $HK_MAJOR_VERSION.$HK_MINOR_VERSION, MAX_JOINTS $MAX_JOINTS"
puts "[llength [info commands h*]] commands starting with h, e.g. [lsort [info commands hVector_*]]"

section "Vectors and matrices"
hVector a
hVector b
a setList {1 0 0}
b setList {0 1 0}
set c [new_hVector]
hVector_copy $c [a cget -this]
hVector_cross $c [b cget -this]
puts "a x b = [hVector_getList $c]   a.b = [a dotProd [b cget -this]]"
hMatrix m
hVector z
z setList {0 0 1}
m fromAxisAngle [z cget -this] [expr {acos(-1) / 2}]
a xform [m cget -this]
puts "a rotated 90 degrees about z: [a getList]"
puts "matrix: [m getList]"
delete_hVector $c

section "Objects, names and properties"
hcObject obj
obj setName wheel
set v [new_hcValue]
hcValue_setNumber $v 2.5
obj setProperty radius $v
set w [new_hcValue]
obj getProperty radius $w
puts "[obj getName] has radius [hcValue_getNumber $w] ([hcValue_getTypeName $w]); type [hcType_getName [obj getType]]"
puts "[obj tessprint]"

section "Observers"
hcSubject subj
set watcher [new_hcObserver watcher observer [subj cget -this]]
subj notify $hcObserver_UPDATE
subj notify $hcObserver_UPDATE
puts "observers of the subject: [hcSubject_getObservers [subj cget -this]]"
puts "found by name: [expr {[hcObserver_find watcher] eq $watcher}]"
