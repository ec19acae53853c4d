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

section "A figure built in memory"
# Two segments, upper and lower, each one unit long along x; the elbow joint
# turns lower about z.
set arm [hcFigure_createInMemory arm]
set upper [hcSegment_createInMemory $arm upper]
set lower [hcSegment_createInMemory $arm lower]
set shoulder [hcSite_create shoulder $upper]
set elbowUp [hcSite_create elbow_up $upper]
set elbowLo [hcSite_create elbow_lo $lower]
set tip [hcSite_create tip $lower]
hVector unitX
unitX setList {1 0 0}
hcSite_setPosition $elbowUp [unitX cget -this]
hcSite_setPosition $tip [unitX cget -this]
set elbow [hcJoint_createBetweenSites $elbowUp $elbowLo]
hcJoint_appendDOF $elbow $hcJoint_ROT [z cget -this]
hcFigure_setRoot $arm $shoulder

hcFigure fig -this $arm
hVector where
hcSite_getGlobalPosition $tip [where cget -this]
puts "[fig getNSegments] segments, [fig getNJoints] joint, [fig getNSites] sites; tip at [where getList]"
set angle [float_array 1]
float_set $angle 0 90
hcJoint_setAngles $elbow $angle 0
hcSite_getGlobalPosition $tip [where cget -this]
puts "elbow bent 90 degrees: tip at [where getList]"

section "Reaching with a constraint"
# A base segment carries the arm; the shoulder turns about z too, so the tip
# can reach anything in the plane within two units of the mount.
set base [hcSegment_createInMemory $arm base]
set mount [hcSite_create mount $base]
set sj [hcJoint_createBetweenSites $mount $shoulder]
hcJoint_appendDOF $sj $hcJoint_ROT [z cget -this]
hcFigure_setRoot $arm $mount
float_set $angle 0 0
hcJoint_setAngles $elbow $angle 0
proc reach {c x y} {
    hMatrix goal
    goal id
    hVector at
    at setList [list $x $y 0]
    goal setTranslation [at cget -this]
    hcConstraint_setGoalTransform $c [goal cget -this]
    set status [hcConstraint_evaluate $c]
    hcSite_getGlobalPosition $::tip [at cget -this]
    set tipAt [lmap v [at getList] {format %.4f [expr {abs($v) < 5e-5 ? 0 : $v}]}]
    set result "goal ($x, $y): status $status, tip at $tipAt, potential [format %.4f [hcConstraint_getPotential $c]]"
    rename goal {}; rename at {}
    return $result
}
set c [hcConstraint_create reach]
hcConstraint_setEndEffectorSite $c $tip
puts [reach $c 1 1]
puts [reach $c 0 1.5]
puts "[reach $c 3 0]  (out of reach: as close as it gets)"
hcConstraint_destroy $c

set file [file join [expr {[info exists env(TMPDIR)] ? $env(TMPDIR) : "/tmp"}] demo-arm.fig]
fig saveToFile $file
set copy [hcFigure_readFromFile $file copy]
hcSite_getGlobalPosition [hcFigure_findSite $copy tip] [where cget -this]
puts "saved to $file and read back as [hcObject_getName $copy]: tip at [where getList]"

section "A motion played, recorded and replayed on the copy"
# The elbow bends from 0 to 90 degrees over frames 0 to 30 of the timeline;
# a channel set samples the arm every 10 frames and poses the copy.
hcMotion_Init
set timeline [hcGlobal_getTimeline]
float_set $angle 0 0
hcJoint_setAngles $elbow $angle 0
set bend [new_hcJointMotion bend]
hcJointMotion_addJoint $bend $elbow
float_set $angle 0 [expr {acos(0)}]
hcJointMotion_setNthAngle $bend 0 $angle
hcMotion_setEndFrame $bend 30
hcTimeline_add $timeline $bend
foreach t {0 15 30} {
    hcTimeline_setTime $timeline $t
    hcSite_getGlobalPosition $tip [where cget -this]
    puts "frame $t: tip at [lmap v [where getList] {format %.3f [expr {abs($v) < 5e-4 ? 0 : $v}]}]"
}
set chs [file join [file dirname $file] demo-bend.chs]
hcChannelSet_save $chs [list $arm] bend 0 30 10 30
set recorded [hcChannelSet_load $chs]
set replay [hcBoundChannelSet_create replay $recorded]
hcBoundChannelSet_bindToPrototype $replay arm $copy
foreach k {0 1 2 3} {
    hcBoundChannelSet_stuff $replay $k
    hcSite_getGlobalPosition [hcFigure_findSite $copy tip] [where cget -this]
    puts "copy at sample $k: tip at [lmap v [where getList] {format %.3f [expr {abs($v) < 5e-4 ? 0 : $v}]}]"
}
hcBoundChannelSet_destroy $replay 1
hcTimeline_remove $timeline $bend
delete_hcJointMotion $bend
file delete $chs

hcFigure_destroy $copy
rename fig {}
hcFigure_destroy $arm
float_destroy $angle
file delete $file

section "A human"
# An empty figure becomes a standing adult of published proportions: the
# 50th percentile man of the database tables.
set adult [hcFigure_createInMemory adult]
set h [hcHuman_initHuman $adult]
set male [ptrcast [ptrcreate int $hcHuman_male] "hcHuman::gender *"]
puts "[hcFigure_getNSegments $adult] segments, [hcFigure_getNJoints $adult] joints, [hcFigure_getNDOFs $adult] degrees of freedom"
foreach p {5 50 95} {
    puts [format "%2dth percentile man: %.1f cm, %.1f kg" $p [getStatureValueInCM ANSUR $p $male] [getWeightValueInKG ANSUR $p $male]]
}
# Two more adults, scaled to the 5th and 95th percentile man: the scaler
# sets stature and weight, the segment masses add up to the weight.
foreach p {5 95} {
    set body [hcFigure_createInMemory p$p]
    set scaled [hcHuman_initHuman $body]
    set scaler [hcHuman_initAnthroscale $scaled]
    hcAnthroScale_scalePercentileHeight $scaler $p
    hcAnthroScale_scalePercentileWeight $scaler $p
    set sum 0
    foreach s [hList_tcllist [hcFigure_getSegments $body] hcSegment] {set sum [expr {$sum + [hcSegment_getMass $s]}]}
    puts [format "scaled to the %dth percentile: stature %.1f cm, weight %.1f kg, segment masses %.1f kg" $p \
        [hcAnthroScale_getMeasurement $scaler $hcAnthroScale_STATURE] [hcAnthroScale_getWeight $scaler] $sum]
    hcHuman_destroy $scaled
    hcFigure_destroy $body
}
proc where {site} {
    hVector p
    hcSite_getGlobalPosition $site [p cget -this]
    set text [lmap x [p getList] {format %.3f $x}]
    rename p {}
    return $text
}
set hand [hcHuman_getLandmarkSite $h $hcHuman_leftHand]
puts "left hand at [where $hand]"
hMatrix cup
cup id
hVector cupAt
cupAt setList {0.3 1.2 0.4}
cup setTranslation [cupAt cget -this]
set status [hcHuman_moveArm $h $hcHuman_leftSide $hcHuman_armShoulder $hcHuman_armPalm NULL [cup cget -this]]
puts "reaching for a cup at [cupAt getList]: status $status, left hand at [where $hand]"
hcHuman_shapeHand $h $hcHuman_leftSide fist 100

section "Glyphs"
# A view cone from the left eye, a marker on the hand and a trace of the
# forearm; the glyph list names them.
set cone [hcViewConeGlyph_create $h $hcViewConeGlyph_leftEye 2 60]
hcSiteGlyph_create $hand
hcSegmentTraceGlyph_create [hcFigure_findSegment $adult leftForearm]
hVector scale
hcViewConeGlyph_getScale $cone [scale cget -this]
puts "view cone scale [lmap x [scale getList] {format %.3f $x}],\
 [hcGeometry_getNumFaces [hcViewConeGlyph_getGeometry $cone]] faces"
puts "glyphs: [lmap g [hcGlyph_getGlyphList] {hcObject_getName $g}]"
rename scale {}

section "Its smooth skin"
# One mesh per segment, rigged to the segment bones and the arm twist bones;
# the skin's box follows the pose.
hcHuman_buildSmoothSkin $h
hcSmoothSkin skin -this [hcHuman_getSmoothSkin $h]
proc skinBox {} {
    hVector lo
    hVector hi
    skin getBoundingBox [lo cget -this] [hi cget -this]
    set text "from [lmap x [lo getList] {format %.3f $x}] to [lmap x [hi getList] {format %.3f $x}]"
    rename lo {}
    rename hi {}
    return $text
}
puts "[skin getNumMeshes] meshes, [skin getNumLandmarks] landmarks, [skin getNumBodySections] body sections"
puts "box with the left arm reaching: [skinBox]"
hcFigure_reset $adult
puts "box standing: [skinBox]"
set forearm [skin getMeshGeometryByName leftForearm]
puts "leftForearm: [hcMeshGeometry_getNumNodes $forearm] vertices, seams with [hcMeshInternals_getNNeighbors [hcMeshGeometry_getMeshInternals $forearm]] neighbours"
rename skin {}
hcHuman_destroy $h
hcFigure_destroy $adult
rename cup {}; rename cupAt {}

section "Geometry read from a file"
set cubeFile [file join [file dirname [info script]] data cube.obj]
set boxFigure [hcGeometry_readFromFile $cubeFile box]
set boxSegment [hcFigure_findSegment $boxFigure box]
set cube [ptrcast [hcSegment_getGeometry $boxSegment] "hcMeshGeometry *"]
puts "[file tail $cubeFile]: [hcMeshGeometry_getNumNodes $cube] nodes, [hcMeshGeometry_getNumFaces $cube] faces,\
 [hcMeshGeometry_getNumEdges $cube] edges, materials [lmap i {0 1} {hcObject_getName [hcMeshGeometry_getMaterial $cube $i]}]"
proc showBox {label global} {
    hMatrix model
    model id
    set lo [float_array 3]
    set hi [float_array 3]
    hcMeshGeometry_bbox $::cube $global [model cget -this] $lo $hi
    puts "$label: from [lmap k {0 1 2} {format %.3f [float_get $lo $k]}] to [lmap k {0 1 2} {format %.3f [float_get $hi $k]}]"
    float_destroy $lo
    float_destroy $hi
    rename model {}
}
showBox "its box" 0
hMatrix turned
turned id
hVector angles
angles setList {0 0 0.785398}
turned setRotation [angles cget -this]
hVector move
move setList {2 0 0}
turned setTranslation [move cget -this]
hcSegment_setGlobal $boxSegment [turned cget -this]
showBox "turned 45 degrees about z and moved 2 along x" 1
set red [hcMaterial_create red]
hVector colour
colour setList {0.8 0.1 0.1}
hcMaterial_setDiffuse $red [colour cget -this]
hcSegment_setMaterial $boxSegment $red
set objFile [file join [file dirname $file] demo-box.obj]
hcSegment_saveGeometryToFile $boxSegment $objFile 1
puts "saved in red as [file tail $objFile] with [file tail [file rootname $objFile].mtl] beside it"
file delete $objFile [file rootname $objFile].mtl
rename colour {}
hcFigure_destroy $boxFigure
hcMaterial_destroy NULL $red
rename turned {}; rename angles {}; rename move {}

section "Messages, the kit, callbacks, a scene and Python"
# Information messages go to a Tcl handler; a callback counts the steps of
# the simulation; a scene is saved, cleared and read back; Python finds the
# figure in it.
proc onInformation {text} {puts "  (information) $text"}
proc onFile {text} {puts "  (file) [lindex $text 0] [file tail [lindex $text 1]]"}
hcKit_setMsgHandler onInformation 2
hcKit_Init [file normalize [file join [file dirname [info script]] data]] NULL
puts "kit initialised: [hcKit_isInited], version [hcKit_getVersion]"
hcKit_toggleDebug ik
set ::steps 0
set counter [hcSim_bindCallback postAdvance count {incr ::steps}]
foreach i {1 2 3} {hcSim_advance}
puts "the postAdvance callback ran $::steps times for 3 steps"
hcSim_unbindCallback $counter
set scene [hcscene_get]
set walker [hcFigure_createInMemory walker]
hcSegment_createInMemory $walker thigh
hcScene_addFigure $scene $walker
set sceneFile [file join [file dirname $file] demo.scene]
hcKit_setMsgHandler onFile 3
hcScene_save $scene $sceneFile
hcScene_clear $scene
set before [llength [hList_tcllist [hcScene_getFigures $scene] hcFigure]]
hcScene_load $scene $sceneFile
puts "scene saved, cleared ($before figures) and read back:\
 [lmap f [hList_tcllist [hcScene_getFigures $scene] hcFigure] {hcObject_getName $f}]"
puts "found from Python: [hcPy_evalToString {hc.findFigure('walker').name}],\
 segment [hcPy_evalToString {hc.findSegment('thigh').name}]"
proc quiet {text} {}
hcKit_setMsgHandler quiet 3
hcScene_clear $scene
file delete $sceneFile {*}[glob -nocomplain $sceneFile.*]
