// Host type names and the type strings derived from them.
//
// Every host type that travels through scripts as a typed pointer string has
// a name here: the pointer type T * has the type string "_" + name + "_p",
// T ** is "_" + name + "_pp", and so on.
#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

#include "host/constraint.h"
#include "host/core.h"
#include "host/figure.h"
#include "host/geometry.h"
#include "host/glyph.h"
#include "host/human.h"
#include "host/material.h"
#include "host/scene.h"
#include "host/kit.h"
#include "host/anthro.h"
#include "host/posture.h"
#include "host/skin.h"
#include "host/pybridge.h"
#include "host/motion.h"
#include "host/timeline.h"
#include "host/channel.h"

namespace hk {

// A string usable as a template argument.
template <std::size_t N>
struct Text {
  char value[N];
  constexpr Text(const char (&s)[N]) {
    for (std::size_t i = 0; i < N; ++i) value[i] = s[i];
  }
  static constexpr std::size_t size = N - 1;
};

template <class T>
struct HostName;  // static constexpr Text name{"..."};

template <class T>
concept Named = requires { HostName<T>::name; };

namespace detail {
template <class T, int Depth>
constexpr auto BuildTypeString() {
  constexpr auto name = HostName<T>::name;
  std::array<char, 1 + name.size + (Depth ? 1 + Depth : 0) + 1> out{};
  std::size_t n = 0;
  out[n++] = '_';
  for (std::size_t i = 0; i < name.size; ++i) out[n++] = name.value[i];
  if (Depth) out[n++] = '_';
  for (int d = 0; d < Depth; ++d) out[n++] = 'p';
  out[n] = '\0';
  return out;
}
template <class T, int Depth>
inline constexpr auto kTypeString = BuildTypeString<T, Depth>();

template <class T, int Depth = 0>
struct Indirection {
  using Base = T;
  static constexpr int depth = Depth;
};
template <class T, int Depth>
struct Indirection<T *, Depth> : Indirection<std::remove_cv_t<T>, Depth + 1> {};
}  // namespace detail

// The type string of a pointer type: TypeString<hcFigure *>() is "_hcFigure_p".
template <class P>
constexpr const char *TypeString() {
  using I = detail::Indirection<P>;
  return detail::kTypeString<typename I::Base, I::depth>.data();
}

#define HK_HOST_NAME(T, S)                       \
  template <>                                    \
  struct HostName<T> {                           \
    static constexpr Text name{S};               \
  }

HK_HOST_NAME(void, "void");
HK_HOST_NAME(char, "char");
HK_HOST_NAME(short, "short");
HK_HOST_NAME(int, "int");
HK_HOST_NAME(long, "long");
HK_HOST_NAME(float, "float");
HK_HOST_NAME(double, "double");

HK_HOST_NAME(hList, "hList");
HK_HOST_NAME(hVector, "hVector");
HK_HOST_NAME(hMatrix, "hMatrix");
HK_HOST_NAME(hcType, "hcType");
HK_HOST_NAME(hcTypeTable, "hcTypeTable");
HK_HOST_NAME(hcSubject, "hcSubject");
HK_HOST_NAME(hcObserver, "hcObserver");
HK_HOST_NAME(hcObserver::observerList, "hcObserver::observerList");
HK_HOST_NAME(hcRefObject, "hcRefObject");
HK_HOST_NAME(hcObject, "hcObject");
HK_HOST_NAME(hcNode, "hcNode");
HK_HOST_NAME(hcValue, "hcValue");
HK_HOST_NAME(hcPropertyList, "hcPropertyList");
HK_HOST_NAME(hcPropertyList::charList, "hcPropertyList::charList");
HK_HOST_NAME(PyObject, "PyObject");

HK_HOST_NAME(hcFigure, "hcFigure");
HK_HOST_NAME(hcSegment, "hcSegment");
HK_HOST_NAME(hcJoint, "hcJoint");
HK_HOST_NAME(hcSite, "hcSite");
HK_HOST_NAME(hcMaterial, "hcMaterial");
HK_HOST_NAME(hcConstraint, "hcConstraint");
HK_HOST_NAME(hcConstrHistory, "hcConstrHistory");
HK_HOST_NAME(hcTexture, "hcTexture");
HK_HOST_NAME(hcDOF, "hcDOF");
HK_HOST_NAME(hcFigure::postureList, "hcFigure::postureList");
HK_HOST_NAME(hcFigure::materialList, "hcFigure::materialList");
HK_HOST_NAME(hcHuman, "hcHuman");
HK_HOST_NAME(hcScene, "hcScene");
HK_HOST_NAME(hcASDXMLObject, "hcASDXMLObject");
HK_HOST_NAME(InvDynamics, "InvDynamics");
HK_HOST_NAME(hcHuman::gender, "hcHuman::gender");
HK_HOST_NAME(hcAnthroScale, "hcAnthroScale");
HK_HOST_NAME(hcSmoothSkin, "hcSmoothSkin");
HK_HOST_NAME(hcBodySection, "hcBodySection");
HK_HOST_NAME(hcPsurf, "hcPsurf");
HK_HOST_NAME(std::list<int>, "std_ListInt");
HK_HOST_NAME(hcPosture, "hcPosture");
HK_HOST_NAME(hcGeometry, "hcGeometry");
HK_HOST_NAME(hcDisplayFlags, "hcDisplayFlags");
HK_HOST_NAME(hcLandmark, "hcLandmark");
HK_HOST_NAME(hcLandmarkImpl, "hcLandmarkImpl");
HK_HOST_NAME(sgMaterial, "sgMaterial");
HK_HOST_NAME(sgLandmark, "sgLandmark");
HK_HOST_NAME(hcGlyph, "hcGlyph");
HK_HOST_NAME(hcViewConeGlyph, "hcViewConeGlyph");
HK_HOST_NAME(hcSiteGlyph, "hcSiteGlyph");
HK_HOST_NAME(hcSegmentTraceGlyph, "hcSegmentTraceGlyph");
HK_HOST_NAME(hcGhostGlyph, "hcGhostGlyph");
HK_HOST_NAME(hcProjectionGlyph, "hcProjectionGlyph");
HK_HOST_NAME(sgFigure, "sgFigure");
HK_HOST_NAME(sgSegment, "sgSegment");
HK_HOST_NAME(sgJoint, "sgJoint");
HK_HOST_NAME(sgSite, "sgSite");
HK_HOST_NAME(hcFigPhys, "hcFigPhys");
HK_HOST_NAME(hcSegPhys, "hcSegPhys");
HK_HOST_NAME(hcJointPhys, "hcJointPhys");
HK_HOST_NAME(hcSitePhys, "hcSitePhys");

HK_HOST_NAME(hcSim, "hcSim");
HK_HOST_NAME(hcKit, "hcKit");
HK_HOST_NAME(hcGlobal, "hcGlobal");
HK_HOST_NAME(hcCallback, "hcCallback");
HK_HOST_NAME(sgFactory, "sgFactory");
HK_HOST_NAME(hcTimeline, "hcTimeline");
HK_HOST_NAME(hcMotion, "hcMotion");
HK_HOST_NAME(hcMotion::motionList, "hcMotion::motionList");
HK_HOST_NAME(hcMotionGroup, "hcMotionGroup");
HK_HOST_NAME(hcPath, "hcPath");
HK_HOST_NAME(hcChannel, "hcChannel");
HK_HOST_NAME(hcBoundChannelSet, "hcBoundChannelSet");
HK_HOST_NAME(hcGroupMotion, "hcGroupMotion");
HK_HOST_NAME(hcDummyMotion, "hcDummyMotion");
HK_HOST_NAME(hcFigureMotion, "hcFigureMotion");
HK_HOST_NAME(hcScaleMotion, "hcScaleMotion");
HK_HOST_NAME(hcScaleSegMotion, "hcScaleSegMotion");
HK_HOST_NAME(hcPathMotion, "hcPathMotion");
HK_HOST_NAME(hcFigurePathMotion, "hcFigurePathMotion");
HK_HOST_NAME(hcJointMotion, "hcJointMotion");
HK_HOST_NAME(hcTimedAttach, "hcTimedAttach");
HK_HOST_NAME(hcTimedConstraint, "hcTimedConstraint");
HK_HOST_NAME(hcColorMotion, "hcColorMotion");
HK_HOST_NAME(hcScriptMotion, "hcScriptMotion");
HK_HOST_NAME(hcChannelSetMotion, "hcChannelSetMotion");

HK_HOST_NAME(hcScene::distUnits, "hcScene::distUnits");
HK_HOST_NAME(hcScene::massUnits, "hcScene::massUnits");
HK_HOST_NAME(hcBone, "hcBone");
HK_HOST_NAME(hcSegmentBone, "hcSegmentBone");
HK_HOST_NAME(hcTwistBone, "hcTwistBone");
HK_HOST_NAME(hcTwistLink, "hcTwistLink");
HK_HOST_NAME(twistBoneList, "twistBoneList");
HK_HOST_NAME(vertexList, "vertexList");
HK_HOST_NAME(hcMeshGeometry, "hcMeshGeometry");
HK_HOST_NAME(hcMeshInternals, "hcMeshInternals");
HK_HOST_NAME(hcMeshInternals::intList, "hcMeshInternals::intList");
HK_HOST_NAME(hcMeshInternals::meshList, "hcMeshInternals::meshList");
HK_HOST_NAME(hcMeshInternals::landmarkList, "hcMeshInternals::landmarkList");
HK_HOST_NAME(sgMesh, "sgMesh");
HK_HOST_NAME(hcPy, "hcPy");
HK_HOST_NAME(hcChannel::channelList, "hcChannel::channelList");
HK_HOST_NAME(hcJointChannel, "hcJointChannel");
HK_HOST_NAME(hcJointChannel::Data, "hcJointChannel::Data");
HK_HOST_NAME(hcFigureChannel, "hcFigureChannel");
HK_HOST_NAME(hcFigureChannel::Data, "hcFigureChannel::Data");
HK_HOST_NAME(hcRealtimeChannel, "hcRealtimeChannel");
HK_HOST_NAME(hcRealtimeChannel::Data, "hcRealtimeChannel::Data");
HK_HOST_NAME(VisibilityChannel, "VisibilityChannel");
HK_HOST_NAME(VisibilityChannelObserver, "VisibilityChannelObserver");
HK_HOST_NAME(hcChannelSet, "hcChannelSet");
HK_HOST_NAME(hcChannelBinding, "hcChannelBinding");

}  // namespace hk
