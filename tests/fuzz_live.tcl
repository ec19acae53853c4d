# Calls every command of the module with seeded random word vectors drawn
# from junk words and from live objects of every kind the module can make,
# writing each call to a log before making it, so that a crash names the
# call that caused it.  Run by fuzz_live.test in a child process:
#   tclsh fuzz_live.tcl libhktcl.so logfile seed vectorsPerCommand
# Prints "calls N commands M" at the end.  The commands that destroy what
# they are given run in further child processes, a share each, so that the
# objects made for their calls never pile up in one process:
#   tclsh fuzz_live.tcl libhktcl.so logfile seed vectorsPerCommand first last
lassign $argv lib logfile seed perCommand first last
set share [expr {$first ne ""}]
set cube [file normalize [file join [file dirname [info script]] .. examples data cube.obj]]
set before [info commands]
load $lib
set log [open $logfile [expr {$share ? "a" : "w"}]]
expr {srand($share ? $seed + $first : $seed)}

# ---------------------------------------------------------------------------
# Live objects, made through the module's own commands.

proc vec {x y z} {set v [new_hVector]; hVector_setList $v [list $x $y $z]; return $v}
proc pointers {args} {
    set out {}
    foreach a $args {if {[string match _*_p $a] || [string match _*_pp $a]} {lappend out $a}}
    return $out
}

# A set of live objects of every kind the module makes, and the blocks the
# pointer library and the array commands allocate.  With a class name, a
# lighter set for one call: a figure, a human when the class needs one, the
# blocks, and objects of that class made by whatever constructor it has.
proc make_pool {{class {}}} {
    set z [vec 0 0 1]
    set f [hcFigure_createInMemory fz]
    set A [hcSegment_createInMemory $f a]
    set B [hcSegment_createInMemory $f b]
    set s1 [hcSite_create s1 $A]
    set s2 [hcSite_create s2 $B]
    set tip [hcSite_create tip $B]
    set j [hcJoint_createBetweenSites $s1 $s2]
    hcJoint_appendDOF $j $::hcJoint_ROT $z
    hcFigure_setRoot $f $s1
    set pool [pointers $f $A $B $s1 $s2 $tip $j [hcFigure_getSegments $f] [hcFigure_getSites $f]]
    set h NULL
    if {$class eq "" || [regexp {Human|Anthro|Posture|Twist|Bone|Skin|Landmark} $class]} {
        set hf [hcFigure_createInMemory hz]
        set h [hcHuman_initHuman $hf]
        lappend pool {*}[pointers $hf $h [hcHuman_initAnthroscale $h] [hcHuman_getLandmarkSite $h 4] \
            [hcHuman_getLandmarkJoint $h 0]]
        # A skin is many objects: made only where a skin command is called.
        if {$class eq "" || [string match *Skin* $class]} {
            hcHuman_buildSmoothSkin $h
            lappend pool {*}[pointers [hcHuman_getSmoothSkin $h]]
        }
    }
    set c [hcConstraint_create cz]
    hcConstraint_setEndEffectorSite $c $tip
    lappend pool {*}[pointers $c [hcConstraint_getHistory $c] $z [vec 1 2 3] [new_hMatrix] [new_hcValue] \
        [hcscene_get] [new_hcObserver oz t NULL 2] [hcObserver_getObserverList]]
    set blocks [list [ptrcreate int 0 4] [ptrcreate double 0 4] [ptrcreate char {} 64] [ptrcreate float 0 16] \
        [ptrcreate {char *} x 3] [int_array 3] [float_array 16] [double_array 16] [string_array 4]]
    lappend pool {*}$blocks
    set mesh [new_hcMeshGeometry 4 2 1 $f]
    hcSegment_setGeometry $A [hcGeometry_read $::cube]
    lappend pool {*}[pointers $mesh [new_hcMeshInternals $mesh] [hcGeometry_read $::cube] \
        [ptrcast [hcSegment_getGeometry $A] "hcMeshGeometry *"]]
    if {$class eq ""} {
        set ctors [lsort [info commands new_*]]
        set makers {}
    } else {
        set ctors [info commands new_$class]
        set makers [info commands ${class}_create*]
    }
    # Whatever the constructors make with no words or with one name.
    foreach ctor $ctors {
        if {![catch {$ctor} o]} {lappend pool {*}[pointers $o]}
        if {![catch {$ctor fz} o]} {lappend pool {*}[pointers $o]}
    }
    foreach maker $makers {
        foreach words [list fz [list fz $f] [list $f fz] [list fz $h] [list fz $A]] {
            if {![catch {$maker {*}$words} o]} {lappend pool {*}[pointers $o]}
        }
    }
    if {$class eq ""} {
        foreach g {hcViewConeGlyph hcSiteGlyph hcSegmentTraceGlyph hcGhostGlyph hcProjectionGlyph} {
            foreach on [list $h $f $tip $A] {catch {lappend pool {*}[pointers [${g}_create gz $on]]}}
        }
        catch {lappend pool {*}[pointers [hcMaterial_create mz]]}
        catch {lappend pool {*}[pointers [hcGlobal_getTimeline]]}
    }
    return [list $pool $blocks]
}

if {!$share} {lassign [make_pool] pool blocks}

set junk [list NULL {} "\{" "\}" {[} {$} 2147483647 -2147483648 -1 0 1 3 1e308 nan inf -inf \
    [string repeat x 400] "_0_[string repeat T 300]_p" _0_hcFigure_p _0_hList_pp {1 2} {1 2 3 4 5} 0.5]

# ---------------------------------------------------------------------------
# Which commands, and how many words each takes.

# Commands that free, destroy or remove what they are given, or change what
# other objects hold, would leave the shared pool with stale pointers.
set destroying {delete_* *_destroy* *Destroy* ptrfree hList_destroy *_del[A-Z]* *_delete* *editRemove*
    *_clear *_remove* *Remove* *_free* *_unbind* *_edit* hcFigure_add* hcSegment_add* hcHuman_destroyAnthroscale *_initHuman *_init
    *_buildSmoothSkin
    hcKit_setMsgHandler hcSim_bindCallback hcObserver_setSubject hcRefObject_set_detach_behavior
    hcFigure_setRoot* hcFigure_reset hcObject_setScriptObject}
# The pointer library reads, writes and frees wherever it is pointed: only
# blocks it allocated are checked, so its pointer word comes from those.
set pointerWords {ptrvalue ptrset ptradd ptrfree int_destroy double_destroy float_destroy string_destroy}

proc skipped {c} {
    foreach p $::destroying {if {[string match $p $c]} {return 1}}
    return 0
}

set commands {}
set destroyers {}
foreach c [lsort [info commands]] {
    if {$c in $before || [info procs $c] ne ""} continue
    if {[skipped $c]} {lappend destroyers $c} else {lappend commands $c}
}

# The most words a command takes: from its usage message, else 6.
proc most {c} {
    catch {$c {*}[lrepeat 40 x]} message
    if {[regexp {^Wrong # args\. \S+ (.*)$} $message -> tail]} {
        set n 1
        foreach piece [regexp -all -inline {\{[^\}]*\}|\S+} $tail] {incr n}
        return $n
    }
    return 6
}

proc pick {list} {lindex $list [expr {int(rand() * [llength $list])}]}

# One call: words drawn from pool and junk; the pointer library's pointer
# word comes from the blocks.
# The object word is often one of the command's own class.
proc call {c max pool blocks} {
    set n [expr {int(rand() * ($max + 1))}]
    set words {}
    regexp {^(?:delete_)?([A-Za-z]+)} $c -> class
    set own [lsearch -all -inline -glob $pool "*_${class}_p"]
    for {set w 0} {$w < $n} {incr w} {
        if {$w == 0 && $c in $::pointerWords} {
            lappend words [pick $blocks]
        } elseif {$w == 0 && [llength $own] && rand() < 0.6} {
            lappend words [pick $own]
        } elseif {rand() < 0.5} {
            lappend words [pick $pool]
        } else {
            lappend words [pick $::junk]
        }
    }
    puts $::log [list $c {*}$words]
    flush $::log
    catch {$c {*}$words}
}

# Commands that keep what they are given, with the shared pool; then those
# that may free or destroy it, each call with a pool of its own, so that no
# call follows a pointer an earlier call released.
set calls 0
if {!$share} {
    foreach c $commands {
        set max [expr {[most $c] + 2}]
        for {set i 0} {$i < $perCommand} {incr i} {
            call $c $max $pool $blocks
            incr calls
        }
    }
    close $log
    # About 2000 fresh pools per child process.
    set step [expr {max(1, 2000 / max(1, $perCommand))}]
    for {set k 0} {$k < [llength $destroyers]} {incr k $step} {
        set out [exec [info nameofexecutable] [info script] $lib $logfile $seed $perCommand $k \
            [expr {min($k + $step, [llength $destroyers]) - 1}] 2>@1]
        incr calls [lindex $out 1]
    }
    puts "calls $calls commands [expr {[llength $commands] + [llength $destroyers]}]"
} else {
    foreach c [lrange $destroyers $first $last] {
        set max [expr {[most $c] + 2}]
        regexp {^(?:delete_)?([A-Za-z]+)} $c -> class
        for {set i 0} {$i < $perCommand} {incr i} {
            call $c $max {*}[make_pool $class]
            incr calls
        }
    }
    close $log
    puts "calls $calls"
}
