// Anthropometric scaling: the module-level database commands and the scaler
// of a human (hcAnthroScale).
#include <cstdlib>
#include <cstring>
#include <new>

#include "frame/classes.h"
#include "frame/registry.h"
#include "host/anthro.h"

namespace {
using namespace hk;
using S = hcAnthroScale;

// Module-level commands.  The gender travels as a pointer to a cell holding
// the hcHuman::gender value; the limits land in the script's double cells.
const Row kDatabaseRows[] = {
    fn<"getNumAnthroDatabases", "", &getNumAnthroDatabases>,
    fn<"getAnthroDatabaseName", "indx ", &getAnthroDatabaseName>,
    fn<"getNumPercentiles", "databaseName ", &getNumPercentiles>,
    fn<"getPercentile", "databaseName indx ", &getPercentile>,
    fn<"getStatureValueInCM", "databaseName p g ", &getStatureValueInCM>,
    fn<"getWeightValueInKG", "databaseName p g ", &getWeightValueInKG>,
    fn<"getStatureLimits", "weight dataBase g statureMin statureMax ", &getStatureLimits>,
    fn<"getWeightLimits", "stature dataBase g weightMin weightMax ", &getWeightLimits>,
    fn<"conserveMemoryDuringScaling", "onOff ", &conserveMemoryDuringScaling>,
    fn<"setScalingCacheDir", "path ", &setScalingCacheDir>,
    fn<"getScalingCacheDir", "", &getScalingCacheDir>,
};

// The unit getters answer a new cell from the C allocator holding the host's
// value, so that the script can read it with ptrvalue and release it with
// ptrfree; every call makes a new cell.
template <Text Name, auto Get>
int UnitCell(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  using E = decltype((std::declval<S &>().*Get)());
  if (argc != 2) return UsageError(interp, UsageText<Name, "{ hcAnthroScale * } ">());
  S *scaler = nullptr;
  if (!TakeObject(interp, Name.value, argv[1], scaler)) return TCL_ERROR;
  auto *cell = static_cast<E *>(std::malloc(sizeof(E)));
  if (!cell) return TCL_OK;
  E value = (scaler->*Get)();
  std::memcpy(cell, &value, sizeof value);
  SetPointer(interp, cell, TypeString<E *>());
  return TCL_OK;
}

constexpr auto kGetMeasurement = static_cast<float (S::*)(int)>(&S::getMeasurement);
constexpr auto kGetWeight = static_cast<float (S::*)()>(&S::getWeight);

const Row kRows[] = {
    fn<"hcAnthroScale_scalePercentileHeight", "{ hcAnthroScale * } htPercentile ?anchorSite? ",
       &S::scalePercentileHeight, nullptr>,
    fn<"hcAnthroScale_scalePercentileWeight", "{ hcAnthroScale * } wtPercentile ?anchorSite? ",
       &S::scalePercentileWeight, nullptr>,
    fn<"hcAnthroScale_scalePercentileHeightNWeight",
       "{ hcAnthroScale * } htPercentile wtPercentile ?anchorSite? ", &S::scalePercentileHeightNWeight, nullptr>,
    fn<"hcAnthroScale_scaleHeightNpercentileWeight", "{ hcAnthroScale * } height wtPercentile ?anchorSite? ",
       &S::scaleHeightNpercentileWeight, nullptr>,
    fn<"hcAnthroScale_scaleWeightNpercentileHeight", "{ hcAnthroScale * } weight htPercentile ?anchorSite? ",
       &S::scaleWeightNpercentileHeight, nullptr>,
    fn<"hcAnthroScale_scaleHeightNweight", "{ hcAnthroScale * } height weight ?anchorSite? ",
       &S::scaleHeightNweight, nullptr>,
    fn<"hcAnthroScale_scaleHeight", "{ hcAnthroScale * } height ?anchorSite? ", &S::scaleHeight, nullptr>,
    fn<"hcAnthroScale_scaleWeight", "{ hcAnthroScale * } weight ?anchorSite? ", &S::scaleWeight, nullptr>,
    fn<"hcAnthroScale_copyAnthroscale", "{ hcAnthroScale * } source ", &S::copyAnthroscale>,
    fn<"hcAnthroScale_scaleBodyPart", "{ hcAnthroScale * } bodyPart scaleVec ?anchorSite? ", &S::scaleBodyPart,
       nullptr>,
    fn<"hcAnthroScale_getBodyPartDim", "{ hcAnthroScale * } bodyPart dimIndex ", &S::getBodyPartDim>,
    fn<"hcAnthroScale_getMeasurement", "{ hcAnthroScale * } measurement ", kGetMeasurement>,
    fn<"hcAnthroScale_getWeight", "{ hcAnthroScale * } ", kGetWeight>,
    fn<"hcAnthroScale_lockMeasurement", "{ hcAnthroScale * } measurement ", &S::lockMeasurement>,
    fn<"hcAnthroScale_unlockMeasurement", "{ hcAnthroScale * } measurement ", &S::unlockMeasurement>,
    fn<"hcAnthroScale_isMeasurementLocked", "{ hcAnthroScale * } measurement ", &S::isMeasurementLocked>,
    fn<"hcAnthroScale_scaleMeasurement",
       "{ hcAnthroScale * } measurement desiredVal ?lockAfterScale? ?anchorSite? ", &S::scaleMeasurement, false,
       nullptr>,
    fn<"hcAnthroScale_validateScaleValue", "{ hcAnthroScale * } measurement value ", &S::validateScaleValue>,
    fn<"hcAnthroScale_getAntrhoDatabaseName", "{ hcAnthroScale * } ", &S::getAntrhoDatabaseName>,
    fn<"hcAnthroScale_changeAnthroDatabase", "{ hcAnthroScale * } databaseName ", &S::changeAnthroDatabase>,
    fn<"hcAnthroScale_setAnthroDistUnits", "{ hcAnthroScale * } distunits ", &S::setAnthroDistUnits>,
    fn<"hcAnthroScale_setAnthroWeightUnits", "{ hcAnthroScale * } wtunits ", &S::setAnthroWeightUnits>,
    custom(RowKind::Method, "hcAnthroScale_getAnthroDistUnits",
           &UnitCell<"hcAnthroScale_getAnthroDistUnits", &S::getAnthroDistUnits>),
    custom(RowKind::Method, "hcAnthroScale_getAnthroWeightUnits",
           &UnitCell<"hcAnthroScale_getAnthroWeightUnits", &S::getAnthroWeightUnits>),
    fn<"hcAnthroScale_getHumanType", "{ hcAnthroScale * } ", &S::getHumanType>,
    fn<"hcAnthroScale_getHuman", "{ hcAnthroScale * } ", &S::getHuman>,
    fn<"hcAnthroScale_computeAndUpdateSegmentsMass", "{ hcAnthroScale * } ", &S::computeAndUpdateSegmentsMass>,
    fn<"hcAnthroScale_setWaistToHipRatio", "{ hcAnthroScale * } ?whRatio? ", &S::setWaistToHipRatio, -1.0f>,
    fn<"hcAnthroScale_getWaistToHipRatio", "{ hcAnthroScale * } ", &S::getWaistToHipRatio>,
    fn<"hcAnthroScale_setScalingMode", "{ hcAnthroScale * } scalingMode ", &S::setScalingMode>,
    dtor<"delete_hcAnthroScale", "{ hcAnthroScale * } ", S>,
};

const ConstantDef kConstants[] = {
    {"HEAD", S::HEAD}, {"NECK", S::NECK}, {"TORSO", S::TORSO}, {"BICEP", S::BICEP}, {"FOREARM", S::FOREARM},
    {"HAND", S::HAND}, {"PELVIS", S::PELVIS}, {"THIGH", S::THIGH}, {"CALF", S::CALF}, {"FOOT", S::FOOT},
    {"INVALID_DIM", S::INVALID_DIM}, {"LENGTH", S::LENGTH}, {"BREADTH", S::BREADTH}, {"HEIGHT", S::HEIGHT},
    {"DEPTH", S::DEPTH},
    {"MALE", S::MALE}, {"FEMALE", S::FEMALE}, {"CHILD", S::CHILD},
    {"STATURE", S::STATURE}, {"ABDOMINAL_DEPTH", S::ABDOMINAL_DEPTH}, {"ANKLE_HEIGHT", S::ANKLE_HEIGHT},
    {"ACROMION_HEIGHT", S::ACROMION_HEIGHT}, {"ARM_LENGTH", S::ARM_LENGTH},
    {"BIACROMINAL_BREADTH", S::BIACROMINAL_BREADTH}, {"BIDELTOID_BREADTH", S::BIDELTOID_BREADTH},
    {"BUTTOCK_KNEE_LENGTH", S::BUTTOCK_KNEE_LENGTH}, {"ELBOW_REST_HEIGHT", S::ELBOW_REST_HEIGHT},
    {"ELBOW_FINGERTIP_LENGTH", S::ELBOW_FINGERTIP_LENGTH}, {"FOOT_BREADTH", S::FOOT_BREADTH},
    {"FOOT_LENGTH", S::FOOT_LENGTH}, {"HAND_BREADTH", S::HAND_BREADTH}, {"HAND_LENGTH", S::HAND_LENGTH},
    {"HEAD_BREADTH", S::HEAD_BREADTH}, {"HEAD_HEIGHT", S::HEAD_HEIGHT}, {"HEAD_LENGTH", S::HEAD_LENGTH},
    {"HIP_BREADTH", S::HIP_BREADTH}, {"INTERPUPIL_DISTANCE", S::INTERPUPIL_DISTANCE},
    {"SHOULDER_ELBOW_LENGTH", S::SHOULDER_ELBOW_LENGTH}, {"SITTING_ACROMIAL_HEIGHT", S::SITTING_ACROMIAL_HEIGHT},
    {"SITTING_EYE_HEIGHT", S::SITTING_EYE_HEIGHT}, {"SITTING_HEIGHT", S::SITTING_HEIGHT},
    {"SITTING_KNEE_HEIGHT", S::SITTING_KNEE_HEIGHT}, {"THIGH_CLEARANCE", S::THIGH_CLEARANCE},
    {"THUMBTIP_REACH", S::THUMBTIP_REACH},
    {"SUCCESS", S::SUCCESS}, {"FAIL", S::FAIL}, {"NO_HUMAN", S::NO_HUMAN},
    {"INVALID_SCALE_VEC", S::INVALID_SCALE_VEC}, {"INVALID_PERCENTILE", S::INVALID_PERCENTILE},
    {"INVALID_ARGUMENTS", S::INVALID_ARGUMENTS}, {"ERR_OVERCONSTRAINED", S::ERR_OVERCONSTRAINED},
    {"ERR_LOCKED_MEASUREMENT", S::ERR_LOCKED_MEASUREMENT},
};

// The host declares getMeasurement and getWeight twice; the method list
// names each overload, and both names reach the one exposed.
const char *const kOrder[] = {
    "scalePercentileHeight", "scalePercentileWeight", "scalePercentileHeightNWeight",
    "scaleHeightNpercentileWeight", "scaleWeightNpercentileHeight", "scaleHeightNweight", "scaleHeight",
    "scaleWeight", "copyAnthroscale", "scaleBodyPart", "getBodyPartDim", "getMeasurement", "getMeasurement",
    "getWeight", "getWeight", "lockMeasurement", "unlockMeasurement", "isMeasurementLocked", "scaleMeasurement",
    "validateScaleValue", "getAntrhoDatabaseName", "changeAnthroDatabase", "setAnthroDistUnits",
    "setAnthroWeightUnits", "getAnthroDistUnits", "getAnthroWeightUnits", "getHumanType", "getHuman",
    "computeAndUpdateSegmentsMass", "setWaistToHipRatio", "getWaistToHipRatio", "setScalingMode",
};

}  // namespace

HK_CLASS(hcAnthroScale, nullptr, kRows, kConstants, kOrder);

namespace hk {

const std::vector<CommandEntry> &AnthroDatabaseCommands() {
  static const std::vector<CommandEntry> commands = [] {
    std::vector<CommandEntry> out;
    for (const Row &row : kDatabaseRows) out.push_back({row.name, row.proc});
    return out;
  }();
  return commands;
}

}  // namespace hk
