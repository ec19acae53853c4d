// The standard adult: a figure of 19 segments built from published segment
// lengths, masses and ranges of motion (body_data.h).
#include "human/human_body.h"

#include <cmath>
#include <string>
#include <vector>

#include "figure/figure_detail.h"
#include "human/body_data.h"

namespace hcbody {

const char *const kLandmarkSites[14] = {
    "leftToes", "rightToes", "leftHeel", "rightHeel", "leftHand", "rightHand", "leftEye",
    "rightEye", "leftHip",   "rightHip", "pelvis",    "headSight", "centerOfMass", "hPoint",
};
const char *const kLandmarkJoints[6] = {
    "leftShoulder", "rightShoulder", "leftElbow", "rightElbow", "leftKnee", "rightKnee",
};

const char *sideName(int side, const char *part) {
  static std::string text;
  text = std::string(side == 0 ? "left" : "right") + part;
  return text.c_str();
}

namespace {

constexpr float kDegrees = 3.14159265358979f / 180.0f;

class Builder {
 public:
  explicit Builder(hcFigure *figure) : figure_(figure) {}

  hcSegment *segment(const char *name, float massFraction) {
    hcSegment *seg = hcSegment::createInMemory(figure_, name);
    if (seg) seg->setMass(massFraction * kWeight);
    return seg;
  }

  // A site at (x, y, z) statures from the segment's origin.
  hcSite *site(hcSegment *seg, const std::string &name, float x, float y, float z) {
    hcSite *s = hcSite::create(name.c_str(), seg);
    if (s) s->setPosition(hVector(x * kStature, y * kStature, z * kStature));
    return s;
  }

  struct Dof {
    hVector axis;
    Range range;
  };
  hcJoint *joint(const std::string &name, hcSite *parent, hcSite *child, std::vector<Dof> dofs) {
    hcJoint *j = hcJoint::createBetweenSites(parent, child);
    if (!j) return nullptr;
    j->setName(name.c_str());
    std::vector<float> lower, upper;
    for (Dof &d : dofs) {
      j->appendDOF(hcJoint::ROT, d.axis);
      lower.push_back(d.range.lower * kDegrees);
      upper.push_back(d.range.upper * kDegrees);
    }
    if (!dofs.empty()) {
      j->setLowerLimits(lower.data());
      j->setUpperLimits(upper.data());
    }
    return j;
  }

 private:
  hcFigure *figure_;
};

hVector X(float s = 1) { return hVector(s, 0, 0); }
hVector Y(float s = 1) { return hVector(0, s, 0); }
hVector Z(float s = 1) { return hVector(0, 0, s); }

}  // namespace

bool looksHuman(hcFigure *figure) {
  if (!figure) return false;
  hccore::Quiet quiet;
  for (const char *name : kLandmarkSites)
    if (figure->findSite(name)) return true;
  for (const char *name : kLandmarkJoints)
    if (figure->findJoint(name)) return true;
  return false;
}

bool buildStandardAdult(hcFigure *figure) {
  if (!figure) return false;
  hccore::Quiet quiet;
  if (figure->getNSegments() > 0 || figure->getNJoints() > 0) return false;
  Builder b(figure);

  // Pelvis: origin between the hip joints.  It carries the figure's root.
  const float hipHalf = kHipWidth * kHipJointSpread / 2;
  hcSegment *pelvis = b.segment("pelvis", kMassPelvis);
  hcSite *root = b.site(pelvis, "pelvis", 0, 0, 0);
  b.site(pelvis, "hPoint", 0, 0, 0);
  b.site(pelvis, "centerOfMass", 0, 0, 0);
  hcSite *waist = b.site(pelvis, "waist", 0, kWaistHeight - kHipHeight, 0);
  hcSite *hip[2] = {b.site(pelvis, "leftHip", hipHalf, 0, 0), b.site(pelvis, "rightHip", -hipHalf, 0, 0)};

  // Torso, neck and head up the middle.
  const float torsoLength = kShoulderHeight - kWaistHeight;
  hcSegment *torso = b.segment("torso", kMassThoraxAbdomen);
  hcSite *torsoBase = b.site(torso, "torsoBase", 0, 0, 0);
  hcSite *neckBase = b.site(torso, "neckBase", 0, torsoLength, 0);
  hcSite *armMount[2] = {b.site(torso, "leftArmMount", kShoulderWidth / 2, torsoLength, 0),
                         b.site(torso, "rightArmMount", -kShoulderWidth / 2, torsoLength, 0)};
  b.joint("lumbar", waist, torsoBase,
          {{X(), kTrunkFlexion}, {Z(), kTrunkLateral}, {Y(), kTrunkAxial}});

  hcSegment *neck = b.segment("neck", kMassHeadNeck * (1 - kMassHeadShare));
  hcSite *neckLow = b.site(neck, "neckLow", 0, 0, 0);
  hcSite *neckTop = b.site(neck, "neckTop", 0, kChinHeight - kShoulderHeight, 0);
  b.joint("neck", neckBase, neckLow, {{X(), kNeckFlexion}, {Z(), kNeckLateral}, {Y(), kNeckAxial}});

  const float eyeUp = kEyeHeight - kChinHeight;
  hcSegment *head = b.segment("head", kMassHeadNeck * kMassHeadShare);
  hcSite *headBase = b.site(head, "headBase", 0, 0, 0);
  b.site(head, "headSight", 0, eyeUp, kEyeForward);  // looks along +z
  b.joint("skull", neckTop, headBase, {});  // the head rides on the neck

  // Eyes: a segment each, turned by a joint of their own; the landmark site
  // at the eye's centre looks along its z axis.
  for (int side = 0; side < 2; ++side) {
    const float x = (side == 0 ? 1 : -1) * kEyeSpread / 2;
    hcSite *mount = b.site(head, sideName(side, "EyeMount"), x, eyeUp, kEyeForward);
    hcSegment *eye = b.segment(sideName(side, "Eyeball"), 0);
    hcSite *centre = b.site(eye, sideName(side, "EyeCentre"), 0, 0, 0);
    b.site(eye, sideName(side, "Eye"), 0, 0, 0);
    b.joint(sideName(side, "EyeJoint"), mount, centre, {{Y(), kEyeYaw}, {X(-1), kEyePitch}});
  }

  // Arms hang along -y; flexion raises them forward (about -x), abduction
  // sideways (about +z on the left, -z on the right).
  for (int side = 0; side < 2; ++side) {
    const float s = side == 0 ? 1.0f : -1.0f;
    hcSegment *upper = b.segment(sideName(side, "UpperArm"), kMassUpperArm);
    hcSite *upperTop = b.site(upper, sideName(side, "UpperArmTop"), 0, 0, 0);
    hcSite *upperEnd = b.site(upper, sideName(side, "UpperArmEnd"), 0, -kUpperArm, 0);
    b.joint(sideName(side, "Shoulder"), armMount[side], upperTop,
            {{X(-1), kShoulderFlexion}, {Z(s), kShoulderAbduction}, {Y(s), kShoulderRotation}});

    hcSegment *fore = b.segment(sideName(side, "Forearm"), kMassForearm);
    hcSite *foreTop = b.site(fore, sideName(side, "ForearmTop"), 0, 0, 0);
    hcSite *foreEnd = b.site(fore, sideName(side, "ForearmEnd"), 0, -kForearm, 0);
    b.joint(sideName(side, "Elbow"), upperEnd, foreTop, {{X(-1), kElbowFlexion}});

    const float palmLength = kHand * kPalmShare;
    hcSegment *palm = b.segment(sideName(side, "Palm"), kMassHand * kMassPalmShare);
    hcSite *palmTop = b.site(palm, sideName(side, "PalmTop"), 0, 0, 0);
    hcSite *knuckles = b.site(palm, sideName(side, "Knuckles"), 0, -palmLength, 0);
    b.site(palm, sideName(side, "Hand"), 0, -palmLength / 2, 0);
    // Palms face the body: flexion turns the hand towards the midline.
    b.joint(sideName(side, "Wrist"), foreEnd, palmTop,
            {{Y(s), kForearmPronation}, {Z(-s), kWristFlexion}, {X(), kWristDeviation}});

    hcSegment *fingers = b.segment(sideName(side, "Fingers"), kMassHand * (1 - kMassPalmShare));
    hcSite *fingerBase = b.site(fingers, sideName(side, "FingersBase"), 0, 0, 0);
    b.site(fingers, sideName(side, "Fingertips"), 0, -(kHand - palmLength), 0);
    b.joint(sideName(side, "Knuckle"), knuckles, fingerBase, {{Z(-s), kFingerFlexion}});
  }

  // Legs: the knee bends the shank backwards, the ankle lifts the toes.
  for (int side = 0; side < 2; ++side) {
    const float s = side == 0 ? 1.0f : -1.0f;
    hcSegment *thigh = b.segment(sideName(side, "Thigh"), kMassThigh);
    hcSite *thighTop = b.site(thigh, sideName(side, "ThighTop"), 0, 0, 0);
    hcSite *thighEnd = b.site(thigh, sideName(side, "ThighEnd"), 0, -(kHipHeight - kKneeHeight), 0);
    b.joint(sideName(side, "HipJoint"), hip[side], thighTop,
            {{X(-1), kHipFlexion}, {Z(s), kHipAbduction}, {Y(s), kHipRotation}});

    hcSegment *shank = b.segment(sideName(side, "Shank"), kMassShank);
    hcSite *shankTop = b.site(shank, sideName(side, "ShankTop"), 0, 0, 0);
    hcSite *shankEnd = b.site(shank, sideName(side, "ShankEnd"), 0, -(kKneeHeight - kAnkleHeight), 0);
    b.joint(sideName(side, "Knee"), thighEnd, shankTop, {{X(), kKneeFlexion}});

    hcSegment *foot = b.segment(sideName(side, "Foot"), kMassFoot);
    hcSite *footTop = b.site(foot, sideName(side, "FootTop"), 0, 0, 0);
    b.site(foot, sideName(side, "Heel"), 0, -kAnkleHeight, -kHeelBehindAnkle);
    b.site(foot, sideName(side, "Toes"), 0, -kAnkleHeight, kFootLength - kHeelBehindAnkle);
    b.joint(sideName(side, "Ankle"), shankEnd, footTop, {{X(-1), kAnkleFlexion}});
  }

  figure->setRoot(root);
  hMatrix at;
  for (int i = 0; i < 4; ++i)
    for (int k = 0; k < 4; ++k) at.m[i][k] = i == k ? 1.0f : 0.0f;
  at.m[1][3] = kHipHeight * kStature;
  figure->setLocation(at);
  return true;
}

}  // namespace hcbody
