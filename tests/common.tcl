# Sourced by every suite: loads the module and the test-only journal commands.

# The result and return code of a script, as one list.
proc outcome {script} {
    set code [catch {uplevel 1 $script} result]
    list $code $result
}

# The command names the module registered (everything that was not there
# before it was loaded, procedures of the suites aside).
proc module_commands {} {
    set out {}
    foreach c [info commands] {
        if {![info exists ::hk_baseline($c)] && [info procs $c] eq ""} {lappend out $c}
    }
    return [lsort $out]
}

# Every wrapped class, in registration order.
set ::hk_classes {
    hcType hList hVector hMatrix hcObserver hcSubject hcRefObject hcObject hcNode hcSegment
    hcJoint hcFigure hcSite hcGlyph hcViewConeGlyph hcSiteGlyph hcSegmentTraceGlyph
    hcGhostGlyph hcProjectionGlyph hcConstrHistory hcConstraint hcScene hcAnthroScale
    hcGlobal hcHuman hcPosture hcValue hcPy hcChannel hcJointChannel hcFigureChannel
    hcRealtimeChannel VisibilityChannel VisibilityChannelObserver hcChannelSet
    hcChannelBinding hcBoundChannelSet hcMotion hcGroupMotion hcDummyMotion hcFigureMotion
    hcScaleMotion hcScaleSegMotion hcPathMotion hcFigurePathMotion hcJointMotion
    hcTimedAttach hcTimedConstraint hcColorMotion hcScriptMotion hcChannelSetMotion
    hcTimeline hcMaterial hcSim hcKit hcGeometry hcPropertyList hcTypeTable hcBone
    hcSegmentBone hcTwistBone hcTwistLink hcLandmark hcLandmarkImpl hcDisplayFlags
    hcMeshGeometry hcMeshInternals hcSmoothSkin
}

# The variable names the module linked.
proc module_variables {} {
    set out {}
    foreach v [info globals] {
        if {![info exists ::hk_baseline_vars($v)]} {lappend out $v}
    }
    return [lsort $out]
}

# Runs script in a fresh tclsh with the module loaded and answers what it
# printed.  For behaviour that deliberately leaves objects unreferenced, the
# leak checker is off there.
proc in_child {script} {
    set saved [array get ::env ASAN_OPTIONS]
    set ::env(ASAN_OPTIONS) detect_leaks=0
    try {
        exec [info nameofexecutable] << "load [list $::hk_lib]\n$script"
    } finally {
        unset ::env(ASAN_OPTIONS)
        array set ::env $saved
    }
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
