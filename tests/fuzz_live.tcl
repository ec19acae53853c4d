# Calls every command of the module with seeded random word vectors drawn
# from junk words and from live objects of every kind the module can make,
# writing each call to a log before making it, so that a crash names the
# call that caused it.  Run by fuzz_live.test in a child process:
#   tclsh fuzz_live.tcl libhktcl.so logfile seed vectorsPerCommand
# Prints "calls N commands M" at the end.
lassign $argv lib logfile seed perCommand
set before [info commands]
load $lib
set log [open $logfile w]
expr {srand($seed)}

# ---------------------------------------------------------------------------
# Live objects, made through the module's own commands.

proc vec {x y z} {set v [new_hVector]; hVector_setList $v [list $x $y $z]; return $v}
set z [vec 0 0 1]
set pool {}
proc keep {args} {foreach a $args {if {[string match _*_p $a] || [string match _*_pp $a]} {lappend ::pool $a}}}

set f [hcFigure_createInMemory fz]
set A [hcSegment_createInMemory $f a]
set B [hcSegment_createInMemory $f b]
set s1 [hcSite_create s1 $A]
set s2 [hcSite_create s2 $B]
set tip [hcSite_create tip $B]
set j [hcJoint_createBetweenSites $s1 $s2]
hcJoint_appendDOF $j $hcJoint_ROT $z
hcFigure_setRoot $f $s1
keep $f $A $B $s1 $s2 $tip $j [hcFigure_getSegments $f] [hcFigure_getSites $f]
set hf [hcFigure_createInMemory hz]
set h [hcHuman_initHuman $hf]
keep $hf $h [hcHuman_initAnthroscale $h] [hcHuman_getLandmarkSite $h 4] [hcHuman_getLandmarkJoint $h 0]
set c [hcConstraint_create cz]
hcConstraint_setEndEffectorSite $c $tip
keep $c [hcConstraint_getHistory $c] $z [vec 1 2 3] [new_hMatrix] [new_hcValue] [hcscene_get]
keep [new_hcObserver oz t NULL 2] [hcObserver_getObserverList]
keep [int_array 8] [float_array 16] [double_array 16] [string_array 4]
set blocks [list [ptrcreate int 0 4] [ptrcreate double 0 4] [ptrcreate char {} 64] [ptrcreate float 0 16] \
    [ptrcreate {char *} x 3] [int_array 3] [float_array 3]]
keep {*}$blocks
# Whatever the constructors make with no words or with one name.
foreach ctor [lsort [info commands new_*]] {
    if {![catch {$ctor} o]} {keep $o}
    if {![catch {$ctor fz} o]} {keep $o}
}
foreach g {hcViewConeGlyph hcSiteGlyph hcSegmentTraceGlyph hcGhostGlyph hcProjectionGlyph} {
    catch {keep [${g}_create gz $h]}
    catch {keep [${g}_create gz $f]}
    catch {keep [${g}_create gz $tip]}
    catch {keep [${g}_create gz $A]}
}
catch {keep [hcMaterial_create mz NULL]}
catch {keep [hcTimeline_getCurrent]}
catch {keep [hcGlobal_getTimeline]}

set junk [list NULL {} "\{" "\}" {[} {$} 2147483647 -2147483648 -1 0 1 3 1e308 nan inf -inf \
    [string repeat x 400] "_0_[string repeat T 300]_p" _0_hcFigure_p _0_hList_pp {1 2} {1 2 3 4 5} 0.5]

# ---------------------------------------------------------------------------
# Which commands, and how many words each takes.

# Commands that free, destroy or remove what they are given would leave the
# pool holding stale pointers; the junk sweep covers their word checks.
set destroying {delete_* *_destroy* *Destroy* ptrfree hList_destroy *_del[A-Z]* *_delete* *editRemove*
    *_clear *_remove* *Remove* *_free* *_unbind* hcHuman_destroyAnthroscale *_initHuman *_init
    hcKit_setMsgHandler hcSim_bindCallback hcObserver_setSubject hcRefObject_set_detach_behavior
    hcFigure_setRoot* hcFigure_reset hcObject_setScriptObject}
# The pointer library reads and writes wherever it is pointed: only blocks
# it allocated are checked, so its pointer word comes from those.
set pointerWords {ptrvalue ptrset ptradd}

proc skipped {c} {
    foreach p $::destroying {if {[string match $p $c]} {return 1}}
    return 0
}

set commands {}
foreach c [lsort [info commands]] {
    if {$c in $before || [info procs $c] ne "" || [skipped $c]} continue
    lappend commands $c
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

set calls 0
foreach c $commands {
    set max [expr {[most $c] + 2}]
    for {set i 0} {$i < $perCommand} {incr i} {
        set n [expr {int(rand() * ($max + 1))}]
        set words {}
        for {set w 0} {$w < $n} {incr w} {
            if {$w == 0 && $c in $pointerWords} {
                lappend words [pick $blocks]
            } elseif {rand() < 0.5} {
                lappend words [pick $pool]
            } else {
                lappend words [pick $junk]
            }
        }
        puts $log [list $c {*}$words]
        flush $log
        catch {$c {*}$words}
        incr calls
    }
}
close $log
puts "calls $calls commands [llength $commands]"
