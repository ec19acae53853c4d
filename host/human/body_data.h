// Stand-in host: the published body data the standard adult is built from.
//
// Sources
// - Segment lengths as fractions of stature H: Drillis, R. and Contini, R.
//   (1966), "Body segment parameters", Report 1166-03, Office of Vocational
//   Rehabilitation, New York University; as tabulated in Winter, D. A.,
//   "Biomechanics and Motor Control of Human Movement", Wiley (figure of
//   segment lengths as fractions of body height).
// - Segment masses as fractions of body weight: Dempster, W. T. (1955),
//   "Space requirements of the seated operator", WADC-TR-55-159, Wright-
//   Patterson Air Force Base; as tabulated in Winter (same book, table of
//   anthropometric data).  Dempster lumps head and neck (0.081) and the hand
//   (0.006); the split of each between our two segments is ours and marked.
// - Stature and weight of the standard adult: the 50th percentile man of
//   the 1988 US Army anthropometric survey (Gordon, C. C. et al. (1989),
//   NATICK/TR-89/044), 175.6 cm and 78.5 kg, as in the database tables.
// - Joint ranges of motion: American Academy of Orthopaedic Surgeons (1965),
//   "Joint Motion: Method of Measuring and Recording" (average adult
//   ranges).  Eye rotations are not in that table: the eyes get a
//   conservative +-35 degrees of our own, marked.
#pragma once

namespace hcbody {

// Standard adult, in metres and kilograms.
constexpr float kStature = 1.756f;
constexpr float kWeight = 78.5f;

// Heights and lengths as fractions of stature (Drillis and Contini).
constexpr float kShoulderHeight = 0.818f;  // acromion above the floor
constexpr float kChinHeight = 0.870f;
constexpr float kEyeHeight = 0.936f;
constexpr float kHipHeight = 0.530f;       // greater trochanter
constexpr float kKneeHeight = 0.285f;
constexpr float kAnkleHeight = 0.039f;
constexpr float kShoulderWidth = 0.259f;   // biacromial
constexpr float kHipWidth = 0.191f;
constexpr float kUpperArm = 0.186f;
constexpr float kForearm = 0.146f;
constexpr float kHand = 0.108f;
constexpr float kFootLength = 0.152f;
constexpr float kFootWidth = 0.055f;
// Not in the table, chosen to sit between its landmarks (ours):
constexpr float kWaistHeight = 0.630f;     // lumbar joint, above the hips
constexpr float kHipJointSpread = 0.5f;    // hip joints at half the hip width
constexpr float kPalmShare = 0.55f;        // palm share of the hand length
constexpr float kHeelBehindAnkle = 0.035f;
constexpr float kEyeSpread = 0.036f;       // interpupillary distance
constexpr float kEyeForward = 0.05f;

// Masses as fractions of weight (Dempster).
constexpr float kMassHeadNeck = 0.081f;
constexpr float kMassHeadShare = 6.0f / 7.0f;   // ours: head 6, neck 1
constexpr float kMassThoraxAbdomen = 0.355f;
constexpr float kMassPelvis = 0.142f;
constexpr float kMassUpperArm = 0.028f;
constexpr float kMassForearm = 0.016f;
constexpr float kMassHand = 0.006f;
constexpr float kMassPalmShare = 0.75f;         // ours
constexpr float kMassThigh = 0.100f;
constexpr float kMassShank = 0.0465f;
constexpr float kMassFoot = 0.0145f;

// Ranges of motion in degrees, lower then upper, per rotation axis of the
// joint (AAOS 1965 averages).
struct Range {
  float lower, upper;
};
constexpr Range kTrunkFlexion{-25, 80}, kTrunkLateral{-35, 35}, kTrunkAxial{-45, 45};
constexpr Range kNeckFlexion{-45, 45}, kNeckLateral{-45, 45}, kNeckAxial{-60, 60};
constexpr Range kShoulderFlexion{-60, 180}, kShoulderAbduction{0, 180}, kShoulderRotation{-70, 90};
constexpr Range kElbowFlexion{0, 150};
constexpr Range kForearmPronation{-80, 80};
constexpr Range kWristFlexion{-70, 80}, kWristDeviation{-20, 30};
constexpr Range kFingerFlexion{0, 90};  // metacarpophalangeal
constexpr Range kHipFlexion{-30, 120}, kHipAbduction{-30, 45}, kHipRotation{-45, 45};
constexpr Range kKneeFlexion{0, 135};
constexpr Range kAnkleFlexion{-50, 20};  // plantar flexion negative
constexpr Range kEyeYaw{-35, 35}, kEyePitch{-35, 35};  // ours

}  // namespace hcbody
